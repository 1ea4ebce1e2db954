/* Boxes around points.
 *
 * A box has a pose, whose columns are its axes, at its centre, and sizes along these axes. Coordinates are finite, at
 * most 1e90 in magnitude, and 0 or at least 1e-60. The same bits on every machine. Thread-safe on distinct results and
 * buffers.
 *
 * points     n of them, as triples x, y, z
 *
 * Checks, in order:
 *   a pointer null                                       0x10000014
 *   n < 1                                                0x10000019
 *   a coordinate out of range or NaN                     0x10000032
 * A failed call writes nothing but the buffer. */
#ifndef DAX3D_BOX_H
#define DAX3D_BOX_H

#include "status.h"

DAX_BEGIN_DECLS

typedef struct Dax3dBox {
  double pose[16]; /* centre and axes, row by row */
  double size[3];  /* >= 0 */
} Dax3dBox;

/* The smallest and the largest coordinates. */
DAX_API DaxStatus DAX3D_BOX_Upright_f64(const double* points, int32_t n, double lower[3], double upper[3]);
DAX_API DaxStatus DAX3D_BOX_Upright_f32(const float* points, int32_t n, double lower[3], double upper[3]);

/* The box along the principal axes of the points, that of the largest variance first; of each of the first two the
 * component of largest magnitude is positive. Of equal variances any axes. It need not be small: points that are dense
 * on one side turn it. */
DAX_API DaxStatus DAX3D_BOX_Pca_f64(const double* points, int32_t n, Dax3dBox* box);
DAX_API DaxStatus DAX3D_BOX_Pca_f32(const float* points, int32_t n, Dax3dBox* box);

/* Bytes of work buffer for n points.
 *
 * Checks, in order: bytes null -> 0x10000014; n outside 4..100000000 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAX3D_BOX_MinVolume_BufferSize(int32_t n, uint64_t* bytes);

/* The box of least volume, the longest side first, the last one the shortest. Two adjacent faces of it hold edges of
 * the convex hull (O'Rourke 1985): for each two edges that can, the turn about the first one is searched, at nine
 * places and then around the best by golden sections, so that a box of several minima between two places may be missed;
 * none of the tests' is. Hulls of more than 300 edges are first reduced to their extremes in 100 directions; then the
 * box of all points turns downhill; of 20000 points on balls, ovals, plates and needles and in blocks its volume is at
 * most that of the body's own box.
 *
 * Checks, in order: points, box or buffer null -> 0x10000014; n outside 4..100000000 -> 0x10000019; a coordinate out of
 * range or NaN -> 0x10000032; all points in one plane -> 0x10000033. */
DAX_API DaxStatus DAX3D_BOX_MinVolume_f64(const double* points, int32_t n, Dax3dBox* box, void* buffer);
DAX_API DaxStatus DAX3D_BOX_MinVolume_f32(const float* points, int32_t n, Dax3dBox* box, void* buffer);

DAX_END_DECLS

#endif
