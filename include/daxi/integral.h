/* Integral images: sums over any upright rectangle from four pixels.
 *
 * dst is one pixel wider and higher than the region: dst(x, y) is the sum of the pixels above row y and left of column x, of
 * IntegralSqr of their squares; the first row and the first column are 0. The sum over columns x0..x1 - 1 and rows y0..y1 - 1
 * is dst(x1, y1) - dst(x0, y1) - dst(x1, y0) + dst(x0, y0).
 *
 * Integers: exact; what does not fit the type of the result is refused. Floats: doubles, the sum of each row from left to right,
 * added to the pixel above.
 *
 *   src, srcStep    image, step in elements
 *   dst, dstStep    receives (width + 1) x (height + 1) pixels, step in elements; must not overlap src
 *   size            of the region
 *
 * Forms ending in _MT run on the host's thread pool, the sums of the rows first, then those of columns, where pool is not
 * null and threads > 1; else on the calling thread. They return the status of the host's parallel-for, unchanged.
 *
 * No work buffer. Thread-safe. The results are the same bits on every machine (NaN payloads apart).
 *
 * Checks, in order:
 *   src or dst null                                   0x10000014
 *   width < 1 or height < 1                           0x1000001a
 *   more pixels than the result can add up: 16843009 for Integral_8u32u, 4295098372 for IntegralSqr_16u64u,
 *   in all other cases more than any memory holds     0x1000001a
 *   srcStep < width, dstStep < width + 1              0x1000001b
 * When a check fails, nothing is written. */
#ifndef DAXI_INTEGRAL_H
#define DAXI_INTEGRAL_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Sums of pixels. */
DAX_API DaxStatus DAXI_Integral_8u32u_C1R(const uint8_t* src, int32_t srcStep, uint32_t* dst, int32_t dstStep,
                                          DaxiSize size);
DAX_API DaxStatus DAXI_Integral_8u32u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                             uint32_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Integral_8u64u_C1R(const uint8_t* src, int32_t srcStep, uint64_t* dst, int32_t dstStep,
                                          DaxiSize size);
DAX_API DaxStatus DAXI_Integral_8u64u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                             uint64_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Integral_16u64u_C1R(const uint16_t* src, int32_t srcStep, uint64_t* dst, int32_t dstStep,
                                           DaxiSize size);
DAX_API DaxStatus DAXI_Integral_16u64u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                              uint64_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Integral_16s64s_C1R(const int16_t* src, int32_t srcStep, int64_t* dst, int32_t dstStep,
                                           DaxiSize size);
DAX_API DaxStatus DAXI_Integral_16s64s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                              int64_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Integral_32f64f_C1R(const float* src, int32_t srcStep, double* dst, int32_t dstStep,
                                           DaxiSize size);
DAX_API DaxStatus DAXI_Integral_32f64f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                              double* dst, int32_t dstStep, DaxiSize size);

/* Sums of squares. */
DAX_API DaxStatus DAXI_IntegralSqr_8u64u_C1R(const uint8_t* src, int32_t srcStep, uint64_t* dst, int32_t dstStep,
                                             DaxiSize size);
DAX_API DaxStatus DAXI_IntegralSqr_8u64u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                uint64_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_IntegralSqr_16u64u_C1R(const uint16_t* src, int32_t srcStep, uint64_t* dst, int32_t dstStep,
                                              DaxiSize size);
DAX_API DaxStatus DAXI_IntegralSqr_16u64u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                 uint64_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_IntegralSqr_16s64u_C1R(const int16_t* src, int32_t srcStep, uint64_t* dst, int32_t dstStep,
                                              DaxiSize size);
DAX_API DaxStatus DAXI_IntegralSqr_16s64u_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                 uint64_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_IntegralSqr_32f64f_C1R(const float* src, int32_t srcStep, double* dst, int32_t dstStep,
                                              DaxiSize size);
DAX_API DaxStatus DAXI_IntegralSqr_32f64f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                 double* dst, int32_t dstStep, DaxiSize size);

DAX_END_DECLS

#endif
