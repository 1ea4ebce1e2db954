/* Polygonal approximation of chains of points (Douglas and Peucker, Algorithms for the reduction of the number of points required to
 * represent a digitized line or its caricature, 1973).
 *
 * An open chain keeps its ends. Of each piece between two kept points the one farthest from the segment between these (of
 * equally far ones the first) is kept where its distance is above the tolerance, and the two pieces are treated alike. So every
 * point lies within the tolerance of the segment of its piece. A closed chain is cut at its first point and at the one
 * farthest from it.
 *
 * A chain can be such that this takes count^2 / 2 distances. After 64 count log2(count) of them, pieces are cut in their middle instead:
 * the result still lies within the tolerance, but has more points than it needs; DAXI_CONTOUR_LIMIT tells so.
 *
 * Distances are computed in double precision; the results are the same on every machine. Thread-safe.
 *
 * Checks, in order:
 *   points, indices, kept, flags or buffer null          0x10000014
 *   count < 1                                            0x10000001
 *   closed > 1                                           0x10000019
 *   tolerance below 0, NaN or infinite                   0x10000019
 *   a coordinate infinite or NaN                         0x10000032
 * A failed call writes nothing but the buffer. */
#ifndef DAXI_CONTOUR_APPROX_H
#define DAXI_CONTOUR_APPROX_H

#include "../dax/status.h"
#include "point.h"

DAX_BEGIN_DECLS

enum { DAXI_CONTOUR_LIMIT = 1 };

/* Bytes of work buffer for a chain of this many points.
 *
 * Checks, in order: bytes null -> 0x10000014; count < 1 -> 0x10000001. Thread-safe. */
DAX_API DaxStatus DAX_ContourApproxBufferSize(int32_t count, uint64_t* bytes);

/* closed: 0 or 1: 1 joins the last point to the first. tolerance: units of the points. indices: receives `count` numbers at most,
 * of the points that are kept, ascending; kept: how many; flags: 0 or DAXI_CONTOUR_LIMIT. Of indices, what lies behind those that are
 * kept is not written. buffer: at least as many bytes as the query says, at any address. */
DAX_API DaxStatus DAXI_ContourApprox_32f(const DaxiPoint32f* points, int32_t count, uint32_t closed, double tolerance,
                                         int32_t* indices, int32_t* kept, uint32_t* flags, void* buffer);
DAX_API DaxStatus DAXI_ContourApprox_32s(const DaxiPoint32s* points, int32_t count, uint32_t closed, double tolerance,
                                         int32_t* indices, int32_t* kept, uint32_t* flags, void* buffer);

DAX_END_DECLS

#endif
