/* Median of 5 x 5 pixels.
 *
 * dst(x, y) is the thirteenth smallest of the 25 source pixels at columns x - 2..x + 2 and rows y - 2..y + 2; the edge is
 * replicated: columns and rows outside read the nearest one inside. The median is exact, a value of the source bit for bit.
 * Floats are ordered as by totalOrder of IEEE 754-2008: -0 before +0, and NaN beyond the infinity of its sign, so that the
 * result is one value whatever the pixels are.
 *
 * Every function filters the region `size` of src into dst. Steps count elements. src and dst must not overlap. No work
 * buffer. Thread-safe. Forms ending in _MT run on the host's pool, in at most `threads` tiles; any number works with any pool,
 * results do not depend on it, and pool may be null.
 *
 * Checks, in order:
 *   src null or dst null                       0x10000014
 *   width < 5 or height < 5                    0x1000001a
 *   width above the smaller of the two steps   0x1000001b
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_FILTER_MEDIAN5X5_H
#define DAXI_FILTER_MEDIAN5X5_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

DAX_API DaxStatus DAXI_FilterMedian5x5_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size);
DAX_API DaxStatus DAXI_FilterMedian5x5_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                               DaxiSize size);
DAX_API DaxStatus DAXI_FilterMedian5x5_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                               DaxiSize size);
DAX_API DaxStatus DAXI_FilterMedian5x5_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                               DaxiSize size);
DAX_API DaxStatus DAXI_FilterMedian5x5_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                 uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_FilterMedian5x5_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                  uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_FilterMedian5x5_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                  int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_FilterMedian5x5_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                  float* dst, int32_t dstStep, DaxiSize size);

DAX_END_DECLS

#endif
