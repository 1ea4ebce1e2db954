/* Sample consensus: the model that explains most of the data although many of them may be gross errors.
 *
 * Models are computed from samples of as few data as determine one, drawn at random; each is rated by its residuals to all
 * data; the best one wins and is fitted to its inliers, the data whose residual is at most the threshold.
 *
 *   method            cost of a model, which the best one has least of            samples
 *   PRMT_SAC_RANSAC   number of outliers                                          uniform
 *   PRMT_SAC_MSAC     sum of min(r^2 / threshold^2, 1)                            uniform
 *   PRMT_SAC_LMEDS    the median of r^2, of an even number the upper one          uniform
 *   PRMT_SAC_PROSAC   number of outliers                                          best data first: those of the first
 *                     indices, from a pool that grows to all of them by maxIterations
 *
 * (Fischler and Bolles 1981; Torr and Zisserman 2000; Rousseeuw 1984; Chum and Matas 2005.)
 *
 * LMEDS needs no threshold that fits the noise: inliers are data within 2.5 sigma, where
 * sigma = 1.4826 (1 + 5 / (n - sampleSize)) sqrt(median), but not less than the threshold. It breaks down where half of the
 * data are outliers.
 *
 * Iteration k draws its sample from stream k of the generator PCG32 of the caller's seed, without repetition (Floyd); seeds next to
 * each other draw related samples. Iterations
 * run in batches of 64. After a batch with a new best model, this is improved locally (LO-RANSAC, Chum, Matas and Kittler 2003):
 * localIterations times it is fitted to a random part of its inliers, then to the inliers of that fit, and what is better
 * stays. The run ends when a sample without outliers has been drawn with the wanted confidence,
 * k >= ln(1 - confidence) / ln(1 - w) with w = prod (I - i) / (n - i) over i < sampleSize, where I is the number of inliers,
 * or after maxIterations; with PROSAC the first n' of the data may decide alone, if they have more inliers than chance
 * would give. Last, the model is fitted to its inliers until these repeat, at most 10 times, as long as it gets no worse.
 * The best of equal models is the one of the first iteration, and of the first in its sample. So the result is the same bits on
 * every machine and with any number of threads.
 *
 * WHETHER THE DATA HAVE SUCH A MODEL AT ALL THE STATUS DOES NOT SAY: look at `inliers` and at PRMT_SAC_LIMIT.
 *
 * Checks, in order: a pointer null but those that may be -> -21; a field of model outside its range -> -26; n below sampleSize, for
 * LMEDS below twice of it -> -26; a field of cfg outside its range, in their order -> -26. Then the status of a callback, of the
 * lowest iteration; a count of models outside 0..maxModels -> -26; no sample had a model that is better than none -> -35. A failed
 * call writes nothing but the buffer.
 *
 * The call allocates nothing; it is thread-safe on distinct results and buffers. _MT: runs the iterations of a batch on the host's
 * thread pool, in at most `threads` tiles and at most 16, where pool is not null and threads > 1; then callbacks are called
 * by several threads at a time. Returns the status of the host's parallel-for, unchanged. */
#ifndef PRMT_CONSENSUS_H
#define PRMT_CONSENSUS_H

#include "status.h"

DAX_BEGIN_DECLS

enum { PRMT_SAC_RANSAC = 0, PRMT_SAC_MSAC = 1, PRMT_SAC_LMEDS = 2, PRMT_SAC_PROSAC = 3 };

enum { PRMT_SAC_MODEL_DOUBLES = 32 };

/* Flag of a result: maxIterations ended the run before the wanted confidence was reached. */
enum { PRMT_SAC_LIMIT = 1 };

/* Writes the models through a sample of sampleSize data and their count, 0 where the sample determines none. */
typedef int32_t (*PrmtSacSolve)(const int32_t* sample, void* user, double* models, int32_t* count);

/* Writes the squared residuals of the data first .. first + count - 1; what is NaN is an outlier. */
typedef int32_t (*PrmtSacResidual2)(const double* model, int32_t first, int32_t count, void* user, double* residual2);

/* Fits a model to `count` >= sampleSize data, in ascending order of their indices; in: the model whose inliers they are. Sets
 * *found to 0 where they determine none; it is 1 before the call. */
typedef int32_t (*PrmtSacRefit)(const int32_t* indices, int32_t count, void* user, double* model, int32_t* found);

/* A kind of models. The callbacks must give the same results for the same arguments; no pointer to what they get may be kept. A
 * status other than 0 ends the call, which returns it. 40 bytes. */
typedef struct PrmtSacModel {
  int32_t sampleSize;   /* 1..16: data that determine a model */
  int32_t maxModels;    /* 1..16: number of models that a sample may have */
  int32_t modelDoubles; /* 1..32: numbers that describe a model */
  int32_t reserved;     /* not read */
  PrmtSacSolve solve;
  PrmtSacResidual2 residual2;
  PrmtSacRefit refit; /* may be null: models stay as samples make them */
} PrmtSacModel;

/* Configuration. 40 bytes. */
typedef struct PrmtSacCfg {
  int32_t method;          /* 0..3: PRMT_SAC_RANSAC, PRMT_SAC_MSAC (the default), ..._LMEDS, ..._PROSAC */
  int32_t maxIterations;   /* at least 1, default 10000 */
  double threshold;        /* 1e-150..1e150, default 1: residual of inliers, in units of the data, not squared */
  double confidence;       /* 0..0.999999999999, default 0.99 */
  uint64_t seed;           /* default 1 */
  int32_t localIterations; /* 0..1000, default 10; 0: no local optimisation */
  int32_t reserved;        /* not read */
} PrmtSacCfg;

/* Result. 296 bytes. */
typedef struct PrmtSacResult {
  double model[PRMT_SAC_MODEL_DOUBLES]; /* those beyond modelDoubles are 0 */
  double cost;                          /* of the model, by the method */
  double threshold;                     /* residual up to which data were taken as inliers */
  double confidence;                    /* reached: 1 - (1 - w)^iterations */
  int32_t inliers;
  int32_t iterations;
  int32_t degenerate; /* samples that had no model */
  uint32_t flags;     /* PRMT_SAC_LIMIT */
} PrmtSacResult;

/* Fills in the defaults. cfg null -> -21. Thread-safe. */
DAX_API int32_t PRMT_SAC_DefaultCfg(PrmtSacCfg* cfg);

/* Bytes of work buffer for n data and at most `threads` threads.
 *
 * Checks, in order: model, one of its callbacks but refit, cfg or bytes null -> -21; a field of model outside its range -> -26; n below
 * sampleSize, for LMEDS below twice of it -> -26; a field of cfg outside its range -> -26; a size beyond 64 bits -> -22.
 * Thread-safe. */
DAX_API int32_t PRMT_SAC_RunBufferSize_f64(const PrmtSacModel* model, int32_t n, const PrmtSacCfg* cfg,
                                           uint32_t threads, uint64_t* bytes);

/* The best model of a kind for n data. user: passed to the callbacks, may be null. inlierMask: receives n bytes, 1 for inliers
 * and 0 for others; may be null. buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API int32_t PRMT_SAC_Run_f64(const PrmtSacModel* model, int32_t n, const PrmtSacCfg* cfg, void* user,
                                 PrmtSacResult* result, uint8_t* inlierMask, void* buffer);
DAX_API int32_t PRMT_SAC_Run_f64_MT(void* pool, uint32_t threads, const PrmtSacModel* model, int32_t n,
                                    const PrmtSacCfg* cfg, void* user, PrmtSacResult* result, uint8_t* inlierMask,
                                    void* buffer);

DAX_END_DECLS

#endif
