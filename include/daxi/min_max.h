/* The smaller or the greater one of two images, or of an image and a constant, pixel by pixel.
 *
 * Floats: NaN loses to a number; of two NaN the result is NaN. -0 is below +0.
 *
 * C1IR works in place: srcDst is the first operand. The destination may be one of the sources, with the same step;
 * else they must not overlap. Steps count elements. An image of three interleaved channels is one of three times the
 * width. No work buffer. Thread-safe. The results are the same bits on every machine (NaN payloads apart).
 *
 * Checks, in order:
 *   an image null                       0x10000014
 *   width < 1 or height < 1             0x1000001a
 *   width above the smallest step       0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_MIN_MAX_H
#define DAXI_MIN_MAX_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = min(src1, src2). */
DAX_API DaxStatus DAXI_Min_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Min_8u_C1IR(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep,
                                   DaxiSize size);
DAX_API DaxStatus DAXI_Min_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                   uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Min_16u_C1IR(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                                    DaxiSize size);
DAX_API DaxStatus DAXI_Min_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                                   int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Min_16s_C1IR(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep,
                                    DaxiSize size);
DAX_API DaxStatus DAXI_Min_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                                   int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Min_32f_C1IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                    DaxiSize size);

/* dst = max(src1, src2). */
DAX_API DaxStatus DAXI_Max_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Max_8u_C1IR(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep,
                                   DaxiSize size);
DAX_API DaxStatus DAXI_Max_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                   uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Max_16u_C1IR(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                                    DaxiSize size);
DAX_API DaxStatus DAXI_Max_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, int16_t* dst,
                                   int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Max_16s_C1IR(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep,
                                    DaxiSize size);
DAX_API DaxStatus DAXI_Max_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2, float* dst,
                                   int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Max_32f_C1IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                    DaxiSize size);

/* dst = min(src, value): no pixel is above the value. dst may equal src. */
DAX_API DaxStatus DAXI_MinC_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   uint8_t value);
DAX_API DaxStatus DAXI_MinC_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, uint8_t value);
DAX_API DaxStatus DAXI_MinC_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                    uint16_t value);
DAX_API DaxStatus DAXI_MinC_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, uint16_t value);
DAX_API DaxStatus DAXI_MinC_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                    int16_t value);
DAX_API DaxStatus DAXI_MinC_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size, int16_t value);
DAX_API DaxStatus DAXI_MinC_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                    float value);
DAX_API DaxStatus DAXI_MinC_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, float value);

/* dst = max(src, value): no pixel is below the value. dst may equal src. */
DAX_API DaxStatus DAXI_MaxC_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   uint8_t value);
DAX_API DaxStatus DAXI_MaxC_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, uint8_t value);
DAX_API DaxStatus DAXI_MaxC_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                    uint16_t value);
DAX_API DaxStatus DAXI_MaxC_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, uint16_t value);
DAX_API DaxStatus DAXI_MaxC_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                    int16_t value);
DAX_API DaxStatus DAXI_MaxC_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size, int16_t value);
DAX_API DaxStatus DAXI_MaxC_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                    float value);
DAX_API DaxStatus DAXI_MaxC_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, float value);

DAX_END_DECLS

#endif
