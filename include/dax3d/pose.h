/* Poses: rigid motions, compared, combined, averaged and applied to points.
 *
 * A pose is a 4 x 4 matrix, row by row, (R t; 0 0 0 1): p' = R p + t. Of poses that are read the last row is taken for
 * (0, 0, 0, 1) and need not be there. Points and normals lie as triples x, y, z. Results may lie where sources did.
 * Lengths are in the unit of the translations, angles are radians. The same bits on every machine and with any number
 * of threads. Thread-safe on distinct results.
 *
 * Compose, Inverse and the functions that apply a pose compute with whatever numbers they are given: no rotation is
 * checked, NaN and infinities go through as IEEE says. The others need rotations, to the tolerance of
 * rotation.h.
 *
 * _MT: on the host's thread pool, in bands of ceil(n / threads) points, where pool is not null and threads > 1; else on
 * the calling thread. Returns the status of the host's parallel-for, unchanged.
 *
 * Checks, in order:
 *   a pointer null                                       0x10000014
 *   n < 1                                                0x10000019
 * A failed call writes nothing. */
#ifndef DAX3D_POSE_H
#define DAX3D_POSE_H

#include "status.h"

DAX_BEGIN_DECLS

/* a b: what b does, then a. */
DAX_API DaxStatus DAX3D_POSE_Compose_f64(const double a[16], const double b[16], double ab[16]);

/* (R^T, -R^T t). */
DAX_API DaxStatus DAX3D_POSE_Inverse_f64(const double pose[16], double inverse[16]);

/* R p + t of one point: ((r0 x + r1 y) + r2 z) + t in each row. */
DAX_API DaxStatus DAX3D_POSE_Apply_f64(const double pose[16], const double point[3], double result[3]);

/* R p + t of n points, in the precision of the points, the pose rounded to it: ((r0 x + r1 y) + r2 z) + t in each row.
 * Results differ from the exact ones by at most 4 epsilon (|x| + |y| + |z| + |t|): in single precision clouds far from
 * the origin lose digits, as they have before. `result` equals `points` or does not overlap it. */
DAX_API DaxStatus DAX3D_POSE_ApplyCloud_f64(const double pose[16], const double* points, int32_t n, double* result);
DAX_API DaxStatus DAX3D_POSE_ApplyCloud_f64_MT(void* pool, uint32_t threads, const double pose[16],
                                               const double* points, int32_t n, double* result);
DAX_API DaxStatus DAX3D_POSE_ApplyCloud_f32(const double pose[16], const float* points, int32_t n, float* result);
DAX_API DaxStatus DAX3D_POSE_ApplyCloud_f32_MT(void* pool, uint32_t threads, const double pose[16], const float* points,
                                               int32_t n, float* result);

/* R v of n normals, as DAX3D_POSE_ApplyCloud_f64 without a translation. */
DAX_API DaxStatus DAX3D_POSE_ApplyNormals_f64(const double pose[16], const double* normals, int32_t n, double* result);
DAX_API DaxStatus DAX3D_POSE_ApplyNormals_f32(const double pose[16], const float* normals, int32_t n, float* result);

/* Between a, t = 0, and b, t = 1: the translation (1 - t) t_a + t t_b, the rotation by the shorter arc at constant
 * speed (slerp, Shoemake 1985). Where a and b are half a turn apart both arcs are as short; that of the canonical
 * quaternions is taken.
 *
 * Checks, in order: a pointer null -> 0x10000014; not 0 <= t <= 1 -> 0x10000019; a translation infinite or NaN ->
 * 0x10000032; a rotation that is none -> 0x1000030e. */
DAX_API DaxStatus DAX3D_POSE_Interpolate_f64(const double a[16], const double b[16], double t, double pose[16]);

/* How far a and b are apart: |t_a - t_b| and the angle between the rotations, 0..pi, to 2e-15.
 *
 * Checks, in order: a pointer null -> 0x10000014; a translation infinite or NaN -> 0x10000032; a rotation that is none
 * -> 0x1000030e. */
DAX_API DaxStatus DAX3D_POSE_Distance_f64(const double a[16], const double b[16], double* translation, double* angle);

/* The weighted mean of n poses, one behind the other: the mean of the translations; the rotation with the least sum of
 * w angle^2, which starts as the eigenvector of the largest eigenvalue of sum w q q^T (Markley et al. 2007) and takes
 * Karcher's steps, R <- R exp(sum w log(R^T R_i) / sum w), while they become shorter, at most 50. weights: n of them,
 * >= 0, or null: all 1.
 *
 * Checks, in order: poses or mean null -> 0x10000014; n < 1 -> 0x10000019; a weight infinite or NaN, or a translation
 * beyond 1e300 in magnitude or NaN -> 0x10000032; a rotation that is none -> 0x1000030e; a weight below 0, or all 0
 * -> 0x10000019; the two largest eigenvalues closer than 1e-9 sum w, so that no rotation is the mean -> 0x10000033. */
DAX_API DaxStatus DAX3D_POSE_Mean_f64(const double* poses, const double* weights, int32_t n, double mean[16]);

/* The same with the least sums of w |t - t_i| and of w angle, which less than half of the weight cannot carry away: the
 * geometric medians, from the mean by Weiszfeld's steps (with those of Vardi and Zhang 2000 where a pose lies within
 * 1e-9 of the estimate: radians, or of the translations' extent), until one is shorter than 1e-12, at most 500. Checks
 * as DAX3D_POSE_Mean_f64. */
DAX_API DaxStatus DAX3D_POSE_MeanRobust_f64(const double* poses, const double* weights, int32_t n, double mean[16]);

DAX_END_DECLS

#endif
