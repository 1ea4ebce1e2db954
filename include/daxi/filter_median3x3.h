/* Median of 3 x 3 pixels.
 *
 * dst(x, y) is the fifth smallest of the nine source pixels at columns x - 1..x + 1 and rows y - 1..y + 1; the edge is
 * replicated: column -1 reads column 0, column w reads column w - 1; rows likewise. The median is exact, a value of
 * the source bit for bit. Floats are ordered as by totalOrder of IEEE 754-2008: -0 before +0, and NaN beyond the
 * infinity of its sign, so the result is well defined for all pixels.
 *
 * Every function filters the region `size` of src into dst. Steps count elements. src and dst must not overlap. No work
 * buffer. Thread-safe.
 *
 * Checks, in order:
 *   src null or dst null                       0x10000014
 *   width < 3 or height < 3                    0x1000001a
 *   width above the smaller of the two steps   0x1000001b
 * When a check fails, nothing is written. */
#ifndef DAXI_FILTER_MEDIAN3X3_H
#define DAXI_FILTER_MEDIAN3X3_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

DAX_API DaxStatus DAXI_FilterMedian3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size);
DAX_API DaxStatus DAXI_FilterMedian3x3_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                               DaxiSize size);
DAX_API DaxStatus DAXI_FilterMedian3x3_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                               DaxiSize size);
DAX_API DaxStatus DAXI_FilterMedian3x3_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                               DaxiSize size);
DAX_API DaxStatus DAXI_FilterMedian3x3_64f_C1R(const double* src, int32_t srcStep, double* dst, int32_t dstStep,
                                               DaxiSize size);

/* The NEON kernel by its own name, where the library has one. Checks and result as of DAXI_FilterMedian3x3_8u_C1R. */
DAX_API DaxStatus DAXI_FilterMedian3x3_8u_C1R_NEON(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                   DaxiSize size);

/* The same on the host's thread pool, in bands of ceil(height / threads) rows, where pool is not null and threads is
 * above 1; else on the calling thread. `threads` is the number of bands: any number works with any pool, and the result
 * does not depend on it. Checks as above; pool may be null. Returns the status of the host's parallel-for, unchanged. */
DAX_API DaxStatus DAXI_FilterMedian3x3_8u_C1R_NEON_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                      uint8_t* dst, int32_t dstStep, DaxiSize size);

DAX_END_DECLS

#endif
