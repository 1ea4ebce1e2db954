/* Alignment of paired points: the motion that takes points `from` nearest to points `to`, in the sense of least
 * squares.
 *
 * sum w |scale R from_i + t - to_i|^2 is least, over all rotations R, translations t and, of similarities, scales > 0.
 * In closed form: with the cross-covariance H = sum w (from - mean) (to - mean)^T = U S V^T, R = V diag(1, 1, det(U)
 * det(V)) U^T and scale = tr(S diag(1, 1, det(U) det(V))) / sum w |from - mean|^2 (Horn 1987; Umeyama 1991).
 * Reflections are excluded.
 *
 * Sums are taken in double precision over blocks of 1024 points, each shifted by its first point that has a weight, so
 * that clouds far from the origin lose no digits; points of even and of odd number are summed apart, and blocks are
 * merged pairwise (Chan, Golub and LeVeque 1983). Scaling all points by a power of two changes no bit but the scale of
 * the results. The same bits on every machine. Thread-safe.
 *
 * from, to   n points each, as triples x, y, z
 * weights    n numbers >= 0, or null: all 1
 *
 * Checks, in order:
 *   from, to or alignment null                           0x10000014
 *   n < 3                                                0x10000019
 *   a coordinate or weight infinite or NaN               0x10000032
 *   a weight below 0, or all 0                           0x10000019
 *   no unique answer                                     0x10000033
 *   a result that doubles cannot hold                    0x10000032
 * A failed call writes nothing. There is no unique answer where `from`, `to` or H lie on a line or at a place, to a second
 * singular value of 1e-9 of the first one, nor of mirrored sets for which several rotations are as good. */
#ifndef DAX3D_ALIGN_H
#define DAX3D_ALIGN_H

#include "status.h"

DAX_BEGIN_DECLS

typedef struct Dax3dAlignment {
  double pose[16];    /* R and t, row by row */
  double scale;       /* 1 of rigid motions */
  double rms;         /* root mean square of the weighted distances left, to about 1e-7 of the points' extent */
  int32_t isMirrored; /* 1: a reflection would fit better; points in a plane: 0 */
  int32_t reserved;   /* 0 */
} Dax3dAlignment;

DAX_API DaxStatus DAX3D_ALIGN_Rigid_f64(const double* from, const double* to, const double* weights, int32_t n,
                                        Dax3dAlignment* alignment);
DAX_API DaxStatus DAX3D_ALIGN_Rigid_f32(const float* from, const float* to, const float* weights, int32_t n,
                                        Dax3dAlignment* alignment);

/* With a scale. */
DAX_API DaxStatus DAX3D_ALIGN_Similarity_f64(const double* from, const double* to, const double* weights, int32_t n,
                                             Dax3dAlignment* alignment);
DAX_API DaxStatus DAX3D_ALIGN_Similarity_f32(const float* from, const float* to, const float* weights, int32_t n,
                                             Dax3dAlignment* alignment);

DAX_END_DECLS

#endif
