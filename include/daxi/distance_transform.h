/* Distance transforms: how far each set pixel of a mask is from the nearest clear one. A pixel is set when it is not 0. Clear
 * pixels have the distance 0; pixels outside the image are not clear, so an object that touches the edge goes on there.
 *
 * With dx, dy columns and rows to a clear pixel, the distance is the minimum of
 *   L2    sqrt(dx^2 + dy^2); the 32s forms store its square, dx^2 + dy^2
 *   L1    |dx| + |dy|
 *   Linf  max(|dx|, |dy|)
 * Integers are exact; those of 32f are the nearest to the exact distance's double, (float)sqrt((double)d2). Without any clear
 * pixel 32s is 2147483647, 32f infinity.
 *
 * Distances in columns, then the lower envelope of each row (Meijster, Roerdink, Hesselink, A general algorithm for computing
 * distance transforms in linear time, 2000), between clear pixels run by run: the cost of a pixel does not depend on the
 * distances. Forms ending in _MT run on the host's pool, in at most 64 tiles; results do not depend on it, and pool may be
 * null. Thread-safe for distinct destinations and buffers.
 *
 * Steps count elements. src and dst must not overlap.
 *
 * Checks, in order:
 *   src, dst or buffer null                               0x10000014
 *   width or height below 1 or above 32768                0x1000001a
 *   width above the smaller step                          0x1000001b
 *   metric outside 0..2                                   0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_DISTANCE_TRANSFORM_H
#define DAXI_DISTANCE_TRANSFORM_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* DaxiDistanceMetric. */
enum { DAXI_DISTANCE_L2 = 0, DAXI_DISTANCE_L1 = 1, DAXI_DISTANCE_LINF = 2 };

/* Bytes of work buffer for the same arguments, for the forms ending in _MT too: about two a pixel.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height below 1 or above 32768 -> 0x10000019; metric outside 0..2 ->
 * 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_DistanceTransformBufferSize_8u32s(DaxiSize size, int32_t metric, uint64_t* bytes);
DAX_API DaxStatus DAXI_DistanceTransformBufferSize_8u32f(DaxiSize size, int32_t metric, uint64_t* bytes);

/* The distance of each pixel. metric: one of DaxiDistanceMetric. buffer: at least as many bytes as the query says, aligned as by
 * malloc. */
DAX_API DaxStatus DAXI_DistanceTransform_8u32s_C1R(const uint8_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep,
                                                   DaxiSize size, int32_t metric, void* buffer);
DAX_API DaxStatus DAXI_DistanceTransform_8u32s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                      int32_t* dst, int32_t dstStep, DaxiSize size, int32_t metric,
                                                      void* buffer);
DAX_API DaxStatus DAXI_DistanceTransform_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                   DaxiSize size, int32_t metric, void* buffer);
DAX_API DaxStatus DAXI_DistanceTransform_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                      float* dst, int32_t dstStep, DaxiSize size, int32_t metric,
                                                      void* buffer);

DAX_END_DECLS

#endif
