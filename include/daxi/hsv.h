/* HSV (hue, saturation, value) and HLS (hue, lightness, saturation), in these orders, and back.
 *
 * Of red, green, blue in 0..1 with the largest max, the smallest min and d = max - min, in degrees, the first case that holds:
 *
 *   h = 60 (G - B) / d where R = max, 120 + 60 (B - R) / d where G = max, 240 + 60 (R - G) / d else; 360 more below 0
 *   HSV: v = max, s = d / max      HLS: l = (max + min) / 2, s = d / (max + min), or d / (2 - max - min) where l > 1/2
 *
 * and h = s = 0 where d = 0. Hue of 8u is 256 h / 360 modulo 256, or with hue180 = 1 h / 2 modulo 180; of 16u 65536 h / 360 modulo
 * 65536; of 32f degrees in 0..360, without 360. The others are levels like those of the colours: 255 s, 65535 s, or s. Integers are
 * the nearest to the real formula, halves to even: exact from colours, and within 0.5001 back. 32f is computed in double
 * precision. Back, a hue counts modulo a turn.
 *
 * C3IR works in place; dst may equal src with the same step, else they must not overlap. Steps count elements. No work buffer.
 * Thread-safe. The forms that end in _MT run on the host's pool, in at most `threads` tiles of rows, with the same result; pool may
 * be null, and they return the host's status. The results are the same bits on every machine (NaN payloads apart).
 *
 * Checks, in order:
 *   an image null                                             0x10000014
 *   width < 1 or height < 1                                   0x1000001a
 *   a step below three times the width                        0x1000001b
 *   hue180 other than 0 and 1                                 0x10000019
 * When a check fails, nothing is written. */
#ifndef DAXI_HSV_H
#define DAXI_HSV_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* HSV of red, green, blue. */
DAX_API DaxStatus DAXI_RGBToHSV_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_RGBToHSV_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_RGBToHSV_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_RGBToHSV_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_RGBToHSV_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToHSV_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToHSV_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToHSV_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToHSV_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Red, green, blue of HSV. */
DAX_API DaxStatus DAXI_HSVToRGB_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HSVToRGB_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HSVToRGB_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HSVToRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_HSVToRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HSVToRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_HSVToRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HSVToRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HSVToRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* HSV of blue, green, red. */
DAX_API DaxStatus DAXI_BGRToHSV_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_BGRToHSV_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_BGRToHSV_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_BGRToHSV_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_BGRToHSV_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToHSV_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToHSV_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToHSV_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToHSV_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Blue, green, red of HSV. */
DAX_API DaxStatus DAXI_HSVToBGR_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HSVToBGR_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HSVToBGR_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HSVToBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_HSVToBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HSVToBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_HSVToBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HSVToBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HSVToBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* HLS of red, green, blue. */
DAX_API DaxStatus DAXI_RGBToHLS_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_RGBToHLS_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_RGBToHLS_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_RGBToHLS_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_RGBToHLS_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToHLS_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToHLS_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToHLS_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToHLS_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Red, green, blue of HLS. */
DAX_API DaxStatus DAXI_HLSToRGB_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HLSToRGB_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HLSToRGB_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HLSToRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_HLSToRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HLSToRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_HLSToRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HLSToRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HLSToRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* HLS of blue, green, red. */
DAX_API DaxStatus DAXI_BGRToHLS_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_BGRToHLS_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_BGRToHLS_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_BGRToHLS_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_BGRToHLS_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToHLS_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToHLS_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToHLS_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToHLS_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Blue, green, red of HLS. */
DAX_API DaxStatus DAXI_HLSToBGR_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HLSToBGR_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HLSToBGR_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180);
DAX_API DaxStatus DAXI_HLSToBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_HLSToBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HLSToBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_HLSToBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HLSToBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_HLSToBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

DAX_END_DECLS

#endif
