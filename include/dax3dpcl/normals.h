/* Surface normals from neighbourhoods, by principal components.
 *
 * Mean and covariance of m points are taken in single precision in two passes (mean = sum / m, covariance = sum of
 * outer products of (q - mean), divided by m), the eigenvalues l0 <= l1 <= l2 of the covariance in double precision in
 * closed form, then rounded to float. The normal is the unit eigenvector of l0, the curvature |l0 / (l0 + l1 + l2)|. An
 * eigenvalue below 4 FLT_EPSILON l2, or below FLT_MIN, is rounding noise and counts as 0: points in a plane have
 * curvature 0, and when l1 is 0 too, as for points on a line, no normal can be estimated. When l0 and l1 are equal up
 * to rounding, the normal is any vector orthogonal to the third axis; {0, 0, 1} when all three are.
 *
 * The sign of a normal is arbitrary unless it is turned towards a viewpoint. Points far from the origin lose accuracy
 * by rounding of the mean: for neighbourhoods of size 1 the error of the normal is 1e-5 at coordinates of 1e4 and 0.06
 * at 1e6. Move such clouds to the origin. */
#ifndef DAX3DPCL_NORMALS_H
#define DAX3DPCL_NORMALS_H

#include "../dax/status.h"
#include "kdtree.h"

DAX_BEGIN_DECLS

typedef struct DAX3DPCL_NORMAL {
  float nx;
  float ny;
  float nz;
  float curvature;
} DAX3DPCL_NORMAL;

/* Work-buffer need: R(12k) + 2 R(4k) bytes, R rounding up to a multiple of 128.
 *
 * Checks, in order: bytes null -> 0x10000014; n < 3 or k < 3 -> 0x10000019. */
DAX_API DaxStatus DAX3DPCL_FEATURE_NORM_PCAEstimate_BufferSize(int32_t n, int32_t k, uint64_t* bytes);

/* A normal for each of n points {x, y, z}, from those of its k nearest neighbours (itself among them) that are nearer
 * than `radius`: squared distance < radius * radius. With fewer than three of them, or when no normal can be estimated,
 * the record is {0, 0, 1} with curvature 0.
 *
 * `tree` was built over these points (first generation; its scratch is used, so one thread at a time). `viewpoint`,
 * three floats, may be null; otherwise every normal, the default one too, is turned towards it.
 *
 * Checks, in order: points, tree, buffer or normals null -> 0x10000014; n < 3, radius < 1.1920929e-7 (or NaN) or
 * k < 3 -> 0x10000019; a tree of another dimension than 3 or of more than n points -> 0x10000019. A failed call writes
 * nothing. */
DAX_API DaxStatus DAX3DPCL_FEATURE_NORM_PCAEstimate(const float* points, int32_t n, DAX3DPCL_KDTREE* tree, int32_t k,
                                                    const float* viewpoint, DAX3DPCL_NORMAL* normals, void* buffer,
                                                    float radius);

/* One normal for `count` points {x, y, z} as a whole. *estimated receives 1, or 0 when no normal can be estimated; then
 * the record is not written.
 *
 * Checks, in order: a pointer null -> 0x10000014; count < 4 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAX3DPCL_FEATURE_NORM_Compute_32f(const float* points, int32_t count, DAX3DPCL_NORMAL* normal,
                                                    int32_t* estimated);

/* Negates nx, ny and nz when the normal of `point` points away from the viewpoint: (viewpoint - point) . n < 0. A
 * normal at a right angle is kept. Check: a pointer null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAX3DPCL_FEATURE_NORM_FlipTowardsViewPoint_I(DAX3DPCL_NORMAL* normal, const float* point,
                                                               const float* viewpoint);

DAX_END_DECLS

#endif
