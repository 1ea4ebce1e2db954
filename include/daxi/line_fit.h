/* Robust line fitting: a line a x + b y + c = 0, with (a, b) of length 1, through points with outliers.
 *
 * An initial line is refined round by round, at most `maxIterations` times:
 *   1. r(k) = |a x(k) + b y(k) + c|, computed in double precision and rounded to single.
 *   2. Threshold th = min(T, u). With K = maxRejected > 0, u is the mean of the K-th and the (K + 1)-th largest
 *      residual plus 1.1920929e-7, in single precision, so that the K worst points fall beyond it; if residuals from 2
 *      on are equal at this cut, all of them do. With K = 0, u is unlimited.
 *   3. Points with r < th are inliers. The weight function gives their weights; all others have weight 0. With m the
 *      median of all residuals (for an even number the mean of the middle two) and c = 2.96516 m + 1.1920929e-7 (twice
 *      the robust standard deviation 1.4826 m), unlimited for fewer than 3 points:
 *        least squares  1
 *        Huber          1 where r < c, else c / r
 *        Tukey          (1 - r^2 / c^2)^2 where r < c, else 0: such an inlier takes no part
 *   4. The line that minimises the weighted sum of squared distances (total least squares), by the smaller eigenvalue
 *      of the matrix of second moments about the weighted centre, in double precision. a, b and c are stored in single.
 *   5. rms = root of the mean, over the points that take part, of r^2; for a point that Huber weighs below 1, of the
 *      square of its weight. The r are those of step 1: of the line that the round began with.
 *   6. Stop when rms < 1e-5 or when it changed by less than 1e-5 of the previous rms.
 * Either sign of (a, b) describes the line; the result has the one from step 4.
 *
 * Initial lines, by `initMethod`:
 *   1  total least squares over all points. Outliers shift this line: T must allow for that, or inliers are lost.
 *   2  search over pairs. For each point i and each j > i that is not within 0.5 of a line already tried through i, the
 *      line through both points is tried, unless they are closer than the root of 1.1920929e-7. The support of a line
 *      is the set of points within T + 1.1920929e-7; its count is their number + 1. Of the lines with a count of at
 *      least count - K, the one with the smallest mean distance (sum of distances / count; of equal ones the last) is
 *      chosen; if there is none, the line with the largest count (of equal ones the first). Time is proportional to the
 *      number of points times the number of lines tried: quadratic in the number of points when most lie on one line,
 *      cubic when they are scattered.
 *   3  up to 200 points as 2; for more points the lines of a fixed sequence of min(20000, max(1000, 4000000 / count))
 *      pairs, with the same rule. Pair n takes two steps of s <- 6364136223846793005 s + 1442695040888963407 (mod 2^64)
 *      from s = 0 on; each gives a point, number (s >> 32) * count >> 32.
 *
 * Angle constraint: the direction of the line, modulo pi, differs from `expectedAngle` by at most `angleTolerance` (the
 * sine of the difference by at most the sine of the tolerance + 1.1920929e-7). Methods 2 and 3 try only such lines; a
 * result outside fails.
 *
 * A point with an infinity or a NaN is beyond every threshold and takes no part in methods 1 to 3. The precision of
 * the line is that of its single-precision coefficients: about 1e-7 of the distance from the origin.
 *
 * Results are bit-identical on every machine. Thread-safe.
 *
 * Checks, in order:
 *   points, cfg, line, inliers, weights, rms or buffer null                            0x10000014
 *   initMethod or weightFunction not 1..3, maxIterations < 1, maxRejected < 0,
 *   distanceThreshold < 1.1920929e-7, angleConstraint > 1, and with the constraint on
 *   expectedAngle outside -3.1415927..3.1415927, angleTolerance outside 0..3.1415927   0x10000019
 *   count < 2, maxRejected + 1 >= count                                                0x10000019
 *   all points as the first, |dx| + |dy| <= 1.1920929e-7                               0x10000019
 * Then the fit itself can fail:
 *   no initial line; in a round fewer than two points, weights that sum to less than
 *   2.22e-16, or no direction that fits better than the others; coefficients beyond single
 *   precision; a result outside the angle constraint                                   0x10000038
 * A failed call writes nothing but the buffer. */
#ifndef DAXI_LINE_FIT_H
#define DAXI_LINE_FIT_H

#include "../dax/status.h"
#include "point.h"

DAX_BEGIN_DECLS

/* a x + b y + c = 0, a^2 + b^2 = 1. */
typedef struct DaxiLine {
  float a;
  float b;
  float c; /* pixels */
} DaxiLine;

enum { DAXI_LINE_INIT_LEAST_SQUARES = 1, DAXI_LINE_INIT_ALL_PAIRS = 2, DAXI_LINE_INIT_SOME_PAIRS = 3 };
enum { DAXI_LINE_LEAST_SQUARES = 1, DAXI_LINE_HUBER = 2, DAXI_LINE_TUKEY = 3 };

/* 32 bytes. */
typedef struct LineFitCfg {
  int32_t initMethod;       /* 1..3 */
  int32_t weightFunction;   /* 1..3 */
  int32_t maxIterations;    /* >= 1 */
  int32_t maxRejected;      /* K >= 0 */
  float distanceThreshold;  /* T, pixels, >= 1.1920929e-7 */
  uint32_t angleConstraint; /* 0 or 1 */
  float expectedAngle;      /* radians, -pi..pi, from x towards y */
  float angleTolerance;     /* radians, 0..pi */
} LineFitCfg;

/* Bytes of work buffer for this many points: x and y in double precision, three arrays of floats and one of bytes, each
 * rounded up to a multiple of 128 bytes.
 *
 * Checks, in order: bytes null -> 0x10000014; count < 2 -> 0x10000019. */
DAX_API DaxStatus DAXI_LineFitRegreBufferSize_32f(int32_t count, uint64_t* bytes);
DAX_API DaxStatus DAXI_LineFitRegreBufferSize_16s(int32_t count, uint64_t* bytes);
DAX_API DaxStatus DAXI_LineFitRegreBufferSize_32s(int32_t count, uint64_t* bytes);

/* inliers: 1 or 0 for each point; weights: 0..1 for each point, those of the last round. Both have room for `count`. No
 * output may overlap another or an input. `buffer` has at least the queried bytes and is aligned to 8. */
DAX_API DaxStatus DAXI_LineFitRegre_32f(const DaxiPoint32f* points, int32_t count, const LineFitCfg* cfg,
                                        DaxiLine* line, uint8_t* inliers, float* weights, float* rms, void* buffer);
DAX_API DaxStatus DAXI_LineFitRegre_16s32f(const DaxiPoint16s* points, int32_t count, const LineFitCfg* cfg,
                                           DaxiLine* line, uint8_t* inliers, float* weights, float* rms, void* buffer);
DAX_API DaxStatus DAXI_LineFitRegre_32s32f(const DaxiPoint32s* points, int32_t count, const LineFitCfg* cfg,
                                           DaxiLine* line, uint8_t* inliers, float* weights, float* rms, void* buffer);

DAX_END_DECLS

#endif
