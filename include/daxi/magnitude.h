/* Absolute values, squares and square roots, pixel by pixel.
 *
 * C1IR works in place; in the other forms dst may equal src with the same step, else they must not overlap. Steps
 * count elements. An image of three interleaved channels is one of three times the width. No work buffer. Thread-safe.
 * The results are the same bits on every machine (NaN payloads apart).
 *
 * _MT: on the host's thread pool, in bands of ceil(height / threads) rows, where pool is not null and threads > 1;
 * else on the calling thread. The result does not depend on it. Returns the status of the host's parallel-for,
 * unchanged.
 *
 * Checks, in order:
 *   an image null                       0x10000014
 *   width < 1 or height < 1             0x1000001a
 *   width above the smallest step       0x1000001b
 *   scaleFactor outside -31..31         0x10000019
 * When a check fails, nothing is written. */
#ifndef DAXI_MAGNITUDE_H
#define DAXI_MAGNITUDE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = |src|; 16s saturates: |-32768| is 32767. */
DAX_API DaxStatus DAXI_Abs_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Abs_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep, int16_t* dst,
                                      int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Abs_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Abs_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Abs_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                      int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Abs_32f_C1IR(float* srcDst, int32_t step, DaxiSize size);

/* dst = src^2. Integers: times 2^-scaleFactor, rounded to the nearest integer, halves to the even one, saturated. */
DAX_API DaxStatus DAXI_Sqr_8u_C1RSfs(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                     int32_t scaleFactor);
DAX_API DaxStatus DAXI_Sqr_8u_C1IRSfs(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Sqr_16u_C1RSfs(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                      DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Sqr_16u_C1IRSfs(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Sqr_16s_C1RSfs(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                      int32_t scaleFactor);
DAX_API DaxStatus DAXI_Sqr_16s_C1IRSfs(int16_t* srcDst, int32_t step, DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Sqr_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Sqr_32f_C1IR(float* srcDst, int32_t step, DaxiSize size);

/* dst = sqrt(src). Integers: the nearest one, 0 of what is below 0. 32f: correctly rounded, NaN of what is below 0. */
DAX_API DaxStatus DAXI_Sqrt_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Sqrt_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                      int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Sqrt_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Sqrt_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                    DaxiSize size);
DAX_API DaxStatus DAXI_Sqrt_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                       uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Sqrt_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Sqrt_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Sqrt_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep, int16_t* dst,
                                       int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Sqrt_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Sqrt_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Sqrt_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                       int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Sqrt_32f_C1IR(float* srcDst, int32_t step, DaxiSize size);

DAX_END_DECLS

#endif
