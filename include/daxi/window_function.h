/* Windows: weights that fall to 0 at the ends of a signal or a picture, so that its spectrum does not show where it was
 * cut off.
 *
 * Of N weights, with t = 2 pi n / N (periodic, the default: what a transform wants) or 2 pi n / (N - 1) (symmetric):
 *   Hann      0.5 - 0.5 cos t
 *   Hamming   0.54 - 0.46 cos t
 *   Blackman  0.42 - 0.5 cos t + 0.08 cos 2t
 *   Tukey     Hann's flanks over the share alpha of the length, 1 between: alpha 0 is all ones, 1 is Hann
 * One weight alone is 1. Weights are within 1e-15, then rounded to the type. Thread-safe. The results are the same bits on
 * every machine. */
#ifndef DAXI_WINDOW_FUNCTION_H
#define DAXI_WINDOW_FUNCTION_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

typedef enum DaxiWindowKind {
  DAXI_WINDOW_HANN = 0,
  DAXI_WINDOW_HAMMING = 1,
  DAXI_WINDOW_BLACKMAN = 2,
  DAXI_WINDOW_TUKEY = 3
} DaxiWindowKind;

/* Configuration. 16 bytes. */
typedef struct DaxiWindowCfg {
  int32_t kind;      /* 0..3: DAXI_WINDOW_HANN, the default, to ..._TUKEY */
  int32_t symmetric; /* 0, the default: periodic; 1: the last weight is the first */
  double alpha;      /* 0..1, default 0.5; of Tukey's only */
} DaxiWindowCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_WindowDefaultCfg(DaxiWindowCfg* cfg);

/* `count` weights.
 *
 * Checks, in order: weights or cfg null -> 0x10000014; count outside 1..1048576 -> 0x10000001; the configuration, in
 * the order of its fields -> 0x10000019. A failed call writes nothing. Thread-safe. */
DAX_API DaxStatus DAXI_Window_32f(int32_t count, const DaxiWindowCfg* cfg, float* weights);
DAX_API DaxStatus DAXI_Window_64f(int32_t count, const DaxiWindowCfg* cfg, double* weights);

/* Bytes of work buffer of ApplyWindow.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_ApplyWindowBufferSize_8u32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_ApplyWindowBufferSize_16u32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_ApplyWindowBufferSize_32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_ApplyWindowBufferSize_64f(DaxiSize size, uint64_t* bytes);

/* dst(x, y) = src(x, y) wX(x) wY(y), with the weights of W columns and H rows; in double precision, rounded once.
 *
 * src and dst must not overlap. Steps count elements.
 * _MT: on the host's thread pool, in bands of ceil(height / threads) rows, where pool is not null and threads > 1; the
 * result does not depend on it.
 *
 * Checks, in order: src, dst, cfg or buffer null -> 0x10000014; width < 1 or height < 1 -> 0x1000001a; width above the
 * smaller step -> 0x1000001b; the configuration, in the order of its fields -> 0x10000019. A failed call writes
 * nothing; _MT forms return the status of the host's parallel-for, unchanged. Thread-safe for distinct destinations and
 * buffers. */
DAX_API DaxStatus DAXI_ApplyWindow_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiWindowCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ApplyWindow_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                float* dst, int32_t dstStep, DaxiSize size, const DaxiWindowCfg* cfg,
                                                void* buffer);
DAX_API DaxStatus DAXI_ApplyWindow_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiWindowCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ApplyWindow_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                 float* dst, int32_t dstStep, DaxiSize size, const DaxiWindowCfg* cfg,
                                                 void* buffer);
DAX_API DaxStatus DAXI_ApplyWindow_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiWindowCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ApplyWindow_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                              float* dst, int32_t dstStep, DaxiSize size, const DaxiWindowCfg* cfg,
                                              void* buffer);
DAX_API DaxStatus DAXI_ApplyWindow_64f_C1R(const double* src, int32_t srcStep, double* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiWindowCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ApplyWindow_64f_C1R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep,
                                              double* dst, int32_t dstStep, DaxiSize size, const DaxiWindowCfg* cfg,
                                              void* buffer);

DAX_END_DECLS

#endif
