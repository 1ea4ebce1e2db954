/* Weighted median of 3 x 3 pixels.
 *
 * Each of the nine pixels at columns x - 1..x + 1 and rows y - 1..y + 1 has a weight, weights[3 (j + 1) + i + 1] that of column
 * x + i and row y + j. dst(x, y) is the smallest pixel v for which twice the weight of all pixels <= v is at least the weight of
 * all nine (D. R. K. Brownrigg, The weighted median filter, Communications of the ACM 27, 1984). Pixels without weight are
 * passed over; nine equal weights give the median.
 *
 * Borders: replicated, mirrored, symmetric, circular, constant, in memory, where the pixels around the region must be there, or
 * clipped, where pixels outside have no weight; dst(x, y) is src(x, y) where no pixel inside has one.
 *
 * Values are exact, pixels of the source bit for bit. Floats are ordered as by totalOrder of IEEE 754-2008: -0 before +0, and
 * NaN beyond the infinity of its sign.
 *
 * Steps count elements. src and dst must not overlap. `value` is that of a constant border. No work buffer. Forms ending in _MT
 * run on the host's pool, in at most `threads` tiles; any number works with any pool, results do not depend on it, and pool may
 * be null. Thread-safe for distinct destinations.
 *
 * Checks, in order:
 *   src, dst or weights null                                  0x10000014
 *   width < 1 or height < 1                                   0x1000001a
 *   width above the smaller of the two steps                  0x1000001b
 *   all weights 0                                             0x10000019
 *   border outside 0..6: DAXI_BORDER_REPLICATE to ..._CLIP    0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_FILTER_MEDIAN_WEIGHTED3X3_H
#define DAXI_FILTER_MEDIAN_WEIGHTED3X3_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

/* weights[9]: nine numbers, row by row. */
DAX_API DaxStatus DAXI_FilterMedianWeighted3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                                      int32_t dstStep, DaxiSize size, const uint8_t* weights,
                                                      int32_t border, uint8_t value);
DAX_API DaxStatus DAXI_FilterMedianWeighted3x3_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                                       int32_t dstStep, DaxiSize size, const uint8_t* weights,
                                                       int32_t border, uint16_t value);
DAX_API DaxStatus DAXI_FilterMedianWeighted3x3_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst,
                                                       int32_t dstStep, DaxiSize size, const uint8_t* weights,
                                                       int32_t border, int16_t value);
DAX_API DaxStatus DAXI_FilterMedianWeighted3x3_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                       DaxiSize size, const uint8_t* weights, int32_t border,
                                                       float value);
DAX_API DaxStatus DAXI_FilterMedianWeighted3x3_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src,
                                                         int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                         const uint8_t* weights, int32_t border, uint8_t value);
DAX_API DaxStatus DAXI_FilterMedianWeighted3x3_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src,
                                                          int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                                          DaxiSize size, const uint8_t* weights, int32_t border,
                                                          uint16_t value);
DAX_API DaxStatus DAXI_FilterMedianWeighted3x3_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src,
                                                          int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                                          const uint8_t* weights, int32_t border, int16_t value);
DAX_API DaxStatus DAXI_FilterMedianWeighted3x3_32f_C1R_MT(void* pool, uint32_t threads, const float* src,
                                                          int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                                          const uint8_t* weights, int32_t border, float value);

DAX_END_DECLS

#endif
