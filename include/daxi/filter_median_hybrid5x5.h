/* Hybrid median of 5 x 5 pixels, which keeps corners and thin lines that a median takes away.
 *
 * dst(x, y) is the median of three values:
 *   the median of the nine pixels (x, y), (x +- k, y), (x, y +- k), k = 1, 2
 *   the median of the nine pixels (x, y), (x +- k, y +- k), (x +- k, y -+ k), k = 1, 2
 *   src(x, y)
 * (Nieminen, Heinonen and Neuvo, A new class of detail-preserving filters for image processing, IEEE Transactions on Pattern
 * Analysis and Machine Intelligence 9, 1987).
 *
 * Borders: replicated, mirrored, symmetric, circular, constant, in memory, where the pixels around the region must be there, or
 * clipped, where the two medians are of the pixels inside, of an even number the upper of the two in the middle.
 *
 * Values are exact, pixels of the source bit for bit. Floats are ordered as by totalOrder of IEEE 754-2008: -0 before +0, and
 * NaN beyond the infinity of its sign.
 *
 * Steps count elements. src and dst must not overlap. `value` is that of a constant border. No work buffer. Forms ending in _MT
 * run on the host's pool, in at most `threads` tiles; any number works with any pool, results do not depend on it, and pool may
 * be null. Thread-safe for distinct destinations.
 *
 * Checks, in order:
 *   src or dst null                                           0x10000014
 *   width < 1 or height < 1                                   0x1000001a
 *   width above the smaller of the two steps                  0x1000001b
 *   border outside 0..6: DAXI_BORDER_REPLICATE to ..._CLIP    0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_FILTER_MEDIAN_HYBRID5X5_H
#define DAXI_FILTER_MEDIAN_HYBRID5X5_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

DAX_API DaxStatus DAXI_FilterMedianHybrid5x5_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                    DaxiSize size, int32_t border, uint8_t value);
DAX_API DaxStatus DAXI_FilterMedianHybrid5x5_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                                     int32_t dstStep, DaxiSize size, int32_t border, uint16_t value);
DAX_API DaxStatus DAXI_FilterMedianHybrid5x5_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                     DaxiSize size, int32_t border, int16_t value);
DAX_API DaxStatus DAXI_FilterMedianHybrid5x5_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                     DaxiSize size, int32_t border, float value);
DAX_API DaxStatus DAXI_FilterMedianHybrid5x5_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src,
                                                       int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                       int32_t border, uint8_t value);
DAX_API DaxStatus DAXI_FilterMedianHybrid5x5_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src,
                                                        int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                        int32_t border, uint16_t value);
DAX_API DaxStatus DAXI_FilterMedianHybrid5x5_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src,
                                                        int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                                        int32_t border, int16_t value);
DAX_API DaxStatus DAXI_FilterMedianHybrid5x5_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                        float* dst, int32_t dstStep, DaxiSize size, int32_t border,
                                                        float value);

DAX_END_DECLS

#endif
