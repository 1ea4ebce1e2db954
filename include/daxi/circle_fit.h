/* Circles through points with outliers, with the standard errors of what is found.
 *
 *   DAXI_CircleFitRegre        algebraic, Hyper (Al-Sharadqah and Chernov, Error analysis for circle fitting algorithms, 2009):
 *                              no iteration on distances, and of the algebraic fits the one without essential bias. On a full
 *                              circle of radius R and noise sigma the geometric fit errs by sigma^2 / 2R, Taubin's by
 *                              sigma^2 / R, Pratt's by 2 sigma^2 / R
 *   DAXI_CircleFitLeastSquare  geometric: the least sum of squared distances, by damped Gauss-Newton steps from the
 *                              algebraic fit, at most 50, until a step is below 1e-13 R. On short arcs with much noise it can end
 *                              on the wrong side of the points (of 5 % of the arcs of 20 degrees at sigma = 2 for R = 100)
 *   DAXI_CircleFitRansac       by sample consensus (prmt/consensus.h, MSAC): the best circle of three points each, fitted to the
 *                              points within inlierDistance by least squares of their distances
 *
 * The first two start with all points and work in rounds, at most maxIterations of them, until x, y and r change by less
 * than 1e-12 r:
 *   1. d(k) is the distance of point k from the circle. Inliers have d < distanceThreshold, unless that is 0, and d < u:
 *      with K = maxRejected > 0, u is the mean of the K-th and the (K + 1)-th largest distance, so that the K worst points
 *      fall beyond it.
 *   2. With s = 1.4826 max(median of all d, minScale) and c = 2 s the weights of inliers are
 *        least squares  1
 *        Huber          1 where d < c, else c / d
 *        Tukey          (1 - d^2 / c^2)^2 where d < c, else 0
 *   3. The circle is fitted with these weights.
 * After rounds with Huber's or Tukey's weights comes a last one of weights 1 for inliers within 3 s, since those weights
 * waste good points (Tukey's half of them).
 *
 * Points that are not finite take no part. All is computed in double precision about the points' mean. The results are the same
 * bits on every machine. Thread-safe.
 *
 * Checks, in order:
 *   points, cfg, circle, inliers, weights or buffer null                               0x10000014
 *   count < 1                                                                          0x1000001a
 *   a field of cfg outside its range, in their order                                   0x10000019
 * Then the fit itself can fail:
 *   fewer than 3 finite points, points on a line: a radius above 10^4 times the root mean
 *   square distance of the points from their mean                                      0x10000033
 *   fewer than 3 points left in a round, no sample with a circle, a radius outside
 *   minRadius..maxRadius                                                               0x10000038
 * A failed call writes nothing but the buffer. */
#ifndef DAXI_CIRCLE_FIT_H
#define DAXI_CIRCLE_FIT_H

#include "../dax/status.h"
#include "point.h"

DAX_BEGIN_DECLS

enum { DAXI_CIRCLE_LEAST_SQUARES = 1, DAXI_CIRCLE_HUBER = 2, DAXI_CIRCLE_TUKEY = 3 };

/* 72 bytes. All functions read minRadius and maxRadius. */
typedef struct CircleFitCfg {
  int32_t weightFunction;   /* 1..3, default 2 */
  int32_t maxIterations;    /* >= 1, default 50 */
  int32_t maxRejected;      /* K >= 0, default 0 */
  int32_t trials;           /* >= 1, default 10000: most samples of RANSAC */
  double distanceThreshold; /* >= 0 and finite, pixels, default 0: no limit */
  double inlierDistance;    /* 1e-9..1e9, pixels, default 1: of RANSAC */
  double minScale;          /* >= 0 and finite, pixels, default 0.005 */
  double minRadius;         /* >= 0 and finite, pixels, default 0 */
  double maxRadius;         /* at least 0, pixels, default 1e9 */
  double confidence;        /* 0..0.999999999999, default 0.99: that a sample of RANSAC had no outlier */
  uint64_t seed;            /* of RANSAC, default 1 */
} CircleFitCfg;

/* 120 bytes; lengths in pixels. Errors are one standard deviation, from the spread of the points that were used: the
 * covariance is sigma^2 (J^T J)^-1; infinite where 3 points were used. */
typedef struct DaxiCircleFit {
  double x, y, r;
  double rms;         /* root mean square distance of the points that were used */
  double maxAbs;      /* the largest of these distances */
  double sigma;       /* sqrt(sum of their squares / (used - 3)) */
  double se[3];       /* standard errors of x, y and r */
  double cov[3];      /* covariances of x and y, x and r, y and r */
  double arc;         /* angle that they span about the centre: 2 pi without the largest gap, radians */
  int32_t dof;        /* used - 3 */
  int32_t used;       /* points that were used: the sum of inliers */
  int32_t iterations; /* rounds, or samples of RANSAC */
  uint32_t flags;     /* DAXI_CIRCLE_LIMIT */
} DaxiCircleFit;

/* maxIterations rounds had not converged, or RANSAC made all its trials without the confidence that was asked for. */
enum { DAXI_CIRCLE_LIMIT = 1 };

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_CircleFitDefaultCfg(CircleFitCfg* cfg);

/* Bytes of work buffer for this many points, for all functions.
 *
 * Checks, in order: bytes null -> 0x10000014; count < 1 -> 0x1000001a. Thread-safe. */
DAX_API DaxStatus DAXI_CircleFitBufferSize(int32_t count, uint64_t* bytes);

/* inliers: 1 for points that were used, else 0; weights: 0..1 for each point, those of the last round. Both have room for `count`. No
 * output may overlap another or an input. `buffer` has at least the queried bytes, aligned as by malloc. */
DAX_API DaxStatus DAXI_CircleFitRegre_32f(const DaxiPoint32f* points, int32_t count, const CircleFitCfg* cfg,
                                          DaxiCircleFit* circle, uint8_t* inliers, float* weights, void* buffer);
DAX_API DaxStatus DAXI_CircleFitRegre_16s32f(const DaxiPoint16s* points, int32_t count, const CircleFitCfg* cfg,
                                             DaxiCircleFit* circle, uint8_t* inliers, float* weights, void* buffer);
DAX_API DaxStatus DAXI_CircleFitRegre_32s32f(const DaxiPoint32s* points, int32_t count, const CircleFitCfg* cfg,
                                             DaxiCircleFit* circle, uint8_t* inliers, float* weights, void* buffer);

DAX_API DaxStatus DAXI_CircleFitLeastSquare_32f(const DaxiPoint32f* points, int32_t count, const CircleFitCfg* cfg,
                                                DaxiCircleFit* circle, uint8_t* inliers, float* weights, void* buffer);
DAX_API DaxStatus DAXI_CircleFitLeastSquare_16s32f(const DaxiPoint16s* points, int32_t count, const CircleFitCfg* cfg,
                                                   DaxiCircleFit* circle, uint8_t* inliers, float* weights,
                                                   void* buffer);
DAX_API DaxStatus DAXI_CircleFitLeastSquare_32s32f(const DaxiPoint32s* points, int32_t count, const CircleFitCfg* cfg,
                                                   DaxiCircleFit* circle, uint8_t* inliers, float* weights,
                                                   void* buffer);

DAX_API DaxStatus DAXI_CircleFitRansac_32f(const DaxiPoint32f* points, int32_t count, const CircleFitCfg* cfg,
                                           DaxiCircleFit* circle, uint8_t* inliers, float* weights, void* buffer);
DAX_API DaxStatus DAXI_CircleFitRansac_16s32f(const DaxiPoint16s* points, int32_t count, const CircleFitCfg* cfg,
                                              DaxiCircleFit* circle, uint8_t* inliers, float* weights, void* buffer);
DAX_API DaxStatus DAXI_CircleFitRansac_32s32f(const DaxiPoint32s* points, int32_t count, const CircleFitCfg* cfg,
                                              DaxiCircleFit* circle, uint8_t* inliers, float* weights, void* buffer);

DAX_END_DECLS

#endif
