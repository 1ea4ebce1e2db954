/* Voxel-grid downsampling: one point for every occupied cell of a regular grid, the centroid of the cell's points.
 *
 * CENTROIDS ARE FLOAT SUMS, WHICH LOSE DIGITS FAR FROM THE ORIGIN: with n points in a cell at a coordinate x the error
 * is up to n |x| 2^-25. Greatest error of a coordinate, leaf 1:
 *   |x|          100      1e4      1e5
 *   n = 10       1e-5     0.002    0.02
 *   n = 1000     1e-4     0.01     0.9
 *   n = 8700     3e-4     0.8      12
 * Coordinates themselves are spaced by |x| 2^-23. Subtract an origin near the cloud first, a multiple of the leaf.
 *
 * With ix = 1 / leafX in float, and trunc towards zero, the cell of a point along x is
 *   trunc(x * ix) - bx  in 0..nx - 1,  bx = trunc(xmin * ix),  nx = trunc(xmax * ix) - bx + 1,
 * and so along y and z; its key is cx + cy * nx + cz * nx * ny. Since trunc rounds towards zero, the cell around zero
 * is twice as wide as the others. Points outside the box, whose faces belong to it, are dropped, and so are points with
 * a NaN. The results come in ascending order of their keys: z slowest, x fastest. A centroid is the float sum of the
 * points in input order, times (1 / count).
 *
 * When at most one point lies in the box, the result is that point, or point 0 of the input when there is none.
 *
 * cloud, box, work and result must not overlap. Thread-safe. */
#ifndef DAX3DPCL_VOXEL_GRID_H
#define DAX3DPCL_VOXEL_GRID_H

#include "cloud.h"

DAX_BEGIN_DECLS

/* Work-buffer need for a cloud of n points: 8 * n bytes, rounded up to a multiple of 128. Checks, in order: bytes null
 * -> 0x10000014; n < 1 -> 0x10000019. */
DAX_API DaxStatus DAX3DPCL_PREP_SAMPLE_VoxelGridBufferSize(int32_t n, uint64_t* bytes);

/* Bytes of the result: 12 * n, rounded up to a multiple of 128, and 128. Checks as above. */
DAX_API DaxStatus DAX3DPCL_PREP_SAMPLE_VoxelGridResultSize(int32_t n, uint64_t* bytes);

/* box: {xmin, ymin, zmin, xmax, ymax, zmax}. *out receives the address of the cloud record at the start of `result`;
 * its points follow 128 bytes after it, its capacity is the input's count. The rest of `result` is undefined.
 * The alignment of `work` is 4, of `result` 8.
 *
 * Checks, in order:
 *   cloud, its points, box, out, result or work null                      0x10000014
 *   count < 1                                                             0x10000019
 *   a leaf size <= FLT_EPSILON                                            0x10000019
 *   a minimum of the box above its maximum                                0x10000019
 *   a corner's cell along an axis, or the number of cells, beyond 32 bits
 *   (2^31 - 1): so also a box that is not finite                          0x10000019
 * A failed call writes nothing. */
DAX_API DaxStatus DAX3DPCL_PREP_SAMPLE_VoxelGrid(const DAX3DPCL_CLOUD3D* cloud, const float* box,
                                                 DAX3DPCL_CLOUD3D** out, void* result, void* work, float leafX,
                                                 float leafY, float leafZ);

DAX_END_DECLS

#endif
