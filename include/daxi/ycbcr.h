/* YCbCr: luma and two colour differences, in this order, and back.
 *
 * With the weights Kr and Kb of the standard (DAXI_COLOUR_BT601, ..._BT709), of values from 0 to 1:
 *
 *   Y = Kr R + (1 - Kr - Kb) G + Kb B      Cb = (B - Y) / (2 (1 - Kb))      Cr = (R - Y) / (2 (1 - Kr))
 *
 * Full range (DAXI_COLOUR_FULL), 8u: 255 Y, 128 + 255 Cb, 128 + 255 Cr. Video range (DAXI_COLOUR_VIDEO): 16 + 219 Y, 128 + 224 Cb,
 * 128 + 224 Cr. 16u: full range 65535 Y, 32768 + 65535 Cb; video range 256 times the numbers of 8u. 32f: those of 8u by 255, but with a
 * centre of 0.5 in full range. Decoding is the inverse; values outside, as Y below 16, are legal, and only the results saturate.
 *
 * Integers differ from the real formula by at most 0.51; 32f is computed in double precision and rounded once. C3IR works in
 * place; dst may equal src with the same step, else they must not overlap. Steps count elements. No work buffer. Thread-safe. The
 * forms that end in _MT run on the host's pool, in at most `threads` tiles of rows, with the same result; pool may be null, and
 * they return the host's status. The results are the same bits on every machine (NaN payloads apart).
 *
 * Checks, in order:
 *   an image null                                             0x10000014
 *   width < 1 or height < 1                                   0x1000001a
 *   a step below three times the width                        0x1000001b
 *   standard other than 0 and 1                               0x10000019
 *   range other than 0 and 1                                  0x10000019
 * When a check fails, nothing is written. */
#ifndef DAXI_YCBCR_H
#define DAXI_YCBCR_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "colour.h"

DAX_BEGIN_DECLS

/* From red, green, blue. */
DAX_API DaxStatus DAXI_RGBToYCbCr_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_RGBToYCbCr_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                            int32_t range);
DAX_API DaxStatus DAXI_RGBToYCbCr_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t standard,
                                          int32_t range);
DAX_API DaxStatus DAXI_RGBToYCbCr_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_RGBToYCbCr_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_RGBToYCbCr_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t standard,
                                           int32_t range);
DAX_API DaxStatus DAXI_RGBToYCbCr_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                          int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_RGBToYCbCr_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_RGBToYCbCr_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range);

/* From blue, green, red. */
DAX_API DaxStatus DAXI_BGRToYCbCr_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_BGRToYCbCr_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                            int32_t range);
DAX_API DaxStatus DAXI_BGRToYCbCr_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t standard,
                                          int32_t range);
DAX_API DaxStatus DAXI_BGRToYCbCr_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_BGRToYCbCr_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_BGRToYCbCr_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t standard,
                                           int32_t range);
DAX_API DaxStatus DAXI_BGRToYCbCr_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                          int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_BGRToYCbCr_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_BGRToYCbCr_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range);

/* To red, green, blue. */
DAX_API DaxStatus DAXI_YCbCrToRGB_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_YCbCrToRGB_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                            int32_t range);
DAX_API DaxStatus DAXI_YCbCrToRGB_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t standard,
                                          int32_t range);
DAX_API DaxStatus DAXI_YCbCrToRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_YCbCrToRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_YCbCrToRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t standard,
                                           int32_t range);
DAX_API DaxStatus DAXI_YCbCrToRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                          int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_YCbCrToRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_YCbCrToRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range);

/* To blue, green, red. */
DAX_API DaxStatus DAXI_YCbCrToBGR_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_YCbCrToBGR_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                            int32_t range);
DAX_API DaxStatus DAXI_YCbCrToBGR_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t standard,
                                          int32_t range);
DAX_API DaxStatus DAXI_YCbCrToBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_YCbCrToBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_YCbCrToBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t standard,
                                           int32_t range);
DAX_API DaxStatus DAXI_YCbCrToBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                          int32_t standard, int32_t range);
DAX_API DaxStatus DAXI_YCbCrToBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, int32_t standard,
                                             int32_t range);
DAX_API DaxStatus DAXI_YCbCrToBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range);

DAX_END_DECLS

#endif
