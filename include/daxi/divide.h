/* Quotients of two images, or of an image and a constant, pixel by pixel.
 *
 * Integers: the exact quotient is multiplied by 2^-scaleFactor, rounded to the nearest integer, halves to the even
 * one, and saturated to the range of the type. A zero among the divisors fails the call, before anything is written.
 * Floats: one IEEE division, no scale factor; x / 0 is an infinity, 0 / 0 NaN.
 *
 * Layouts: C1R has one channel and one constant, C3R three interleaved channels and an array of one constant for each;
 * C1IR and C3IR work in place: srcDst is the first operand. Steps count elements; scaleFactor is -31..31. The
 * destination may be one of the sources, with the same step; else they must not overlap. No work buffer. Thread-safe.
 * The results are the same bits on every machine (NaN payloads apart).
 *
 * _MT: on the host's thread pool, in bands of ceil(height / threads) rows, where pool is not null and threads > 1;
 * else on the calling thread. The result does not depend on it. Returns the status of the host's parallel-for,
 * unchanged.
 *
 * Checks, in order:
 *   an image or the array of constants null             0x10000014
 *   width < 1 or height < 1                             0x1000001a
 *   width, three times for C3, above the smallest step  0x1000001b
 *   scaleFactor outside -31..31                         0x10000019
 *   integers: a zero among the constants                0x10000019
 *   integers: a zero in src2, in place in src           0x10000032
 * When a check fails, nothing is written. */
#ifndef DAXI_DIVIDE_H
#define DAXI_DIVIDE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = (src1 / src2) * 2^-scaleFactor; in place srcDst is the first operand. */
DAX_API DaxStatus DAXI_Div_8u_C1RSfs(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                     uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_8u_C1RSfs_MT(void* pool, uint32_t threads, const uint8_t* src1, int32_t step1,
                                        const uint8_t* src2, int32_t step2, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_8u_C3RSfs(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                     uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_8u_C3RSfs_MT(void* pool, uint32_t threads, const uint8_t* src1, int32_t step1,
                                        const uint8_t* src2, int32_t step2, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_8u_C1IRSfs(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep,
                                      DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_8u_C3IRSfs(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep,
                                      DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16u_C1RSfs(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                      uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16u_C1RSfs_MT(void* pool, uint32_t threads, const uint16_t* src1, int32_t step1,
                                         const uint16_t* src2, int32_t step2, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16u_C3RSfs(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                      uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16u_C3RSfs_MT(void* pool, uint32_t threads, const uint16_t* src1, int32_t step1,
                                         const uint16_t* src2, int32_t step2, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16u_C1IRSfs(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                                       DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16u_C3IRSfs(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                                       DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16s_C1RSfs(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                      int16_t* dst, int32_t dstStep, DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16s_C1RSfs_MT(void* pool, uint32_t threads, const int16_t* src1, int32_t step1,
                                         const int16_t* src2, int32_t step2, int16_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16s_C3RSfs(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                      int16_t* dst, int32_t dstStep, DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16s_C3RSfs_MT(void* pool, uint32_t threads, const int16_t* src1, int32_t step1,
                                         const int16_t* src2, int32_t step2, int16_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16s_C1IRSfs(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep,
                                       DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_16s_C3IRSfs(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep,
                                       DaxiSize size, int32_t scaleFactor);
DAX_API DaxStatus DAXI_Div_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                                   int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Div_32f_C1R_MT(void* pool, uint32_t threads, const float* src1, int32_t step1, const float* src2,
                                      int32_t step2, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Div_32f_C3R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                                   int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Div_32f_C3R_MT(void* pool, uint32_t threads, const float* src1, int32_t step1, const float* src2,
                                      int32_t step2, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Div_32f_C1IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                    DaxiSize size);
DAX_API DaxStatus DAXI_Div_32f_C3IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                    DaxiSize size);

/* dst = (src / value) * 2^-scaleFactor. */
DAX_API DaxStatus DAXI_DivC_8u_C1RSfs(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      uint8_t value, int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_8u_C1RSfs_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                         uint8_t* dst, int32_t dstStep, DaxiSize size, uint8_t value,
                                         int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_8u_C3RSfs(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      const uint8_t value[3], int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_8u_C3RSfs_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                         uint8_t* dst, int32_t dstStep, DaxiSize size, const uint8_t value[3],
                                         int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_8u_C1IRSfs(uint8_t* srcDst, int32_t step, DaxiSize size, uint8_t value,
                                       int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_8u_C3IRSfs(uint8_t* srcDst, int32_t step, DaxiSize size, const uint8_t value[3],
                                       int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16u_C1RSfs(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                       DaxiSize size, uint16_t value, int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16u_C1RSfs_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                          uint16_t* dst, int32_t dstStep, DaxiSize size, uint16_t value,
                                          int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16u_C3RSfs(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                       DaxiSize size, const uint16_t value[3], int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16u_C3RSfs_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                          uint16_t* dst, int32_t dstStep, DaxiSize size, const uint16_t value[3],
                                          int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16u_C1IRSfs(uint16_t* srcDst, int32_t step, DaxiSize size, uint16_t value,
                                        int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16u_C3IRSfs(uint16_t* srcDst, int32_t step, DaxiSize size, const uint16_t value[3],
                                        int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16s_C1RSfs(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                       DaxiSize size, int16_t value, int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16s_C1RSfs_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                          int16_t* dst, int32_t dstStep, DaxiSize size, int16_t value,
                                          int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16s_C3RSfs(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                       DaxiSize size, const int16_t value[3], int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16s_C3RSfs_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                          int16_t* dst, int32_t dstStep, DaxiSize size, const int16_t value[3],
                                          int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16s_C1IRSfs(int16_t* srcDst, int32_t step, DaxiSize size, int16_t value,
                                        int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_16s_C3IRSfs(int16_t* srcDst, int32_t step, DaxiSize size, const int16_t value[3],
                                        int32_t scaleFactor);
DAX_API DaxStatus DAXI_DivC_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                    float value);
DAX_API DaxStatus DAXI_DivC_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                       int32_t dstStep, DaxiSize size, float value);
DAX_API DaxStatus DAXI_DivC_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                    const float value[3]);
DAX_API DaxStatus DAXI_DivC_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                       int32_t dstStep, DaxiSize size, const float value[3]);
DAX_API DaxStatus DAXI_DivC_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, float value);
DAX_API DaxStatus DAXI_DivC_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, const float value[3]);

DAX_END_DECLS

#endif
