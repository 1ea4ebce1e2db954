/* The convex hull of points in space, by exact predicates: no rounding leaves a hole, a fold or a point outside. */
#ifndef DAX3D_HULL_H
#define DAX3D_HULL_H

#include "status.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer for n points: about 120 n.
 *
 * Checks, in order: bytes null -> 0x10000014; n outside 4..100000000 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAX3D_HULL_BufferSize(int32_t n, uint64_t* bytes);

/* Triangles of the hull of n points (x, y, z): indices of three points each, counter-clockwise seen from outside.
 * Corners are the extreme points only: none lies inside, on a face or on an edge of the hull; of equal points the
 * lowest index stands for all. A face of more than three corners, all exactly in one plane, is a fan from its lowest
 * index.
 *
 * Points are inserted, after the extremes along 7 axes, in an order drawn by the library's generator from seed 1, each
 * on the side of the faces that it sees (Clarkson and Shor 1989), which takes n log n steps of any set on average; on
 * which side of a plane a point lies is exact (Shewchuk 1997). The same triangles in the same order on every machine.
 * Thread-safe on distinct results and buffers.
 *
 * triangles  room for 3 (2 n - 4) indices; what lies behind the 3 * count that are written stays
 * count      receives the number of triangles
 *
 * Checks, in order: a pointer null -> 0x10000014; n outside 4..100000000 -> 0x10000019; a coordinate that is NaN, not 0
 * and below 1e-60, or above 1e90 in magnitude -> 0x10000032; all points in one plane -> 0x10000033. A failed call
 * writes nothing but the buffer. */
DAX_API DaxStatus DAX3D_HULL_f64(const double* points, int32_t n, int32_t* triangles, int32_t* count, void* buffer);
DAX_API DaxStatus DAX3D_HULL_f32(const float* points, int32_t n, int32_t* triangles, int32_t* count, void* buffer);

DAX_END_DECLS

#endif
