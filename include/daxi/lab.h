/* XYZ and CIE 1976 L*a*b* of sRGB colours (IEC 61966-2-1, white D65), and back.
 *
 * XYZ of linear light is the matrix of the primaries of the standard, whose row sums, the white point, are 0.950456, 1 and 1.089058:
 *
 *   0.4123908 0.3575843 0.1804808      RGB names take linear light, SRGB names (and SBGR) the usual coded colours: a level c of
 *   0.2126390 0.7151687 0.0721923      0..1 is c / 12.92 of linear light where c <= 0.04045, else ((c + 0.055) / 1.055)^2.4.
 *   0.0193308 0.1191948 0.9505322      Back, the inverse; linear light up to 0.04045 / 12.92 is coded linearly.
 *
 * Lab always takes coded colours. With f(t) = t^(1/3) where t > 216 / 24389, else (841 / 108) t + 4 / 29, of X, Y, Z by white:
 *
 *   L = 116 f(Y) - 16      a = 500 (f(X) - f(Y))      b = 200 (f(Y) - f(Z))
 *
 * Grey has a = b = 0. 8u: L 255 / 100, a + 128, b + 128. 16u: L 65535 / 100, a 256 + 32768, b 256 + 32768. 32f: L 0..100, of colours in
 * 0..1. XYZ of 16u is 32768 for 1, since Z reaches 1.089; for the same reason there is none of 8u.
 *
 * XYZ of linear light is computed in double precision and rounded once, the others in single precision: 8u Lab differs from the
 * real formula by at most 0.501, 16u by 0.53, 32f by 0.0005, from colours; integers saturate. C3IR works in place; dst may equal src with the
 * same step, else they must not overlap. Steps count elements. No work buffer. Thread-safe. The forms that end in _MT run on the
 * host's pool, in at most `threads` tiles of rows, with the same result; pool may be null, and they return the host's status. The
 * results are the same bits on every machine (NaN payloads apart).
 *
 * Checks, in order:
 *   an image null                                             0x10000014
 *   width < 1 or height < 1                                   0x1000001a
 *   a step below three times the width                        0x1000001b
 * When a check fails, nothing is written. */
#ifndef DAXI_LAB_H
#define DAXI_LAB_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* XYZ of linear red, green, blue. */
DAX_API DaxStatus DAXI_RGBToXYZ_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_RGBToXYZ_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToXYZ_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToXYZ_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToXYZ_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToXYZ_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Linear red, green, blue of XYZ. */
DAX_API DaxStatus DAXI_XYZToRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_XYZToRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* XYZ of red, green, blue. */
DAX_API DaxStatus DAXI_SRGBToXYZ_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_SRGBToXYZ_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_SRGBToXYZ_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_SRGBToXYZ_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_SRGBToXYZ_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                            int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_SRGBToXYZ_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Red, green, blue of XYZ. */
DAX_API DaxStatus DAXI_XYZToSRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_XYZToSRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToSRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToSRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToSRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                            int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToSRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Lab of red, green, blue. */
DAX_API DaxStatus DAXI_RGBToLab_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_RGBToLab_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToLab_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToLab_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_RGBToLab_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToLab_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToLab_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToLab_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_RGBToLab_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Red, green, blue of Lab. */
DAX_API DaxStatus DAXI_LabToRGB_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_LabToRGB_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_LabToRGB_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_LabToRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_LabToRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_LabToRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_LabToRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_LabToRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_LabToRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* XYZ of linear blue, green, red. */
DAX_API DaxStatus DAXI_BGRToXYZ_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_BGRToXYZ_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToXYZ_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToXYZ_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToXYZ_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToXYZ_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Linear blue, green, red of XYZ. */
DAX_API DaxStatus DAXI_XYZToBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_XYZToBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* XYZ of blue, green, red. */
DAX_API DaxStatus DAXI_SBGRToXYZ_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_SBGRToXYZ_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_SBGRToXYZ_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_SBGRToXYZ_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_SBGRToXYZ_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                            int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_SBGRToXYZ_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Blue, green, red of XYZ. */
DAX_API DaxStatus DAXI_XYZToSBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_XYZToSBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToSBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToSBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToSBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                            int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_XYZToSBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Lab of blue, green, red. */
DAX_API DaxStatus DAXI_BGRToLab_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_BGRToLab_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToLab_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToLab_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_BGRToLab_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToLab_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToLab_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToLab_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_BGRToLab_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

/* Blue, green, red of Lab. */
DAX_API DaxStatus DAXI_LabToBGR_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_LabToBGR_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_LabToBGR_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_LabToBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_LabToBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_LabToBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_LabToBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_LabToBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_LabToBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);

DAX_END_DECLS

#endif
