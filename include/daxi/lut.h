/* Look-up tables: given as such, or as a line through knots.
 *
 * Layouts: C1R has one channel, C3R three interleaved ones with the same table for all; C1IR and C3IR work in place. In the other
 * forms between images of one type dst may be src with the same step; else they must not overlap. Steps count elements. No work
 * buffer. Thread-safe for distinct destinations. The results are the same bits on every machine (NaN payloads apart).
 *
 * Checks, in order:
 *   an image or an array null                           0x10000014
 *   width < 1 or height < 1                             0x1000001a
 *   width, three times for C3, above the smallest step  0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_LUT_H
#define DAXI_LUT_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = table[src]; table: an entry for each value of the source's type. It must not overlap dst. */
DAX_API DaxStatus DAXI_Lut_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                  const uint8_t table[256]);
DAX_API DaxStatus DAXI_Lut_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                  const uint8_t table[256]);
DAX_API DaxStatus DAXI_Lut_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, const uint8_t table[256]);
DAX_API DaxStatus DAXI_Lut_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, const uint8_t table[256]);
DAX_API DaxStatus DAXI_Lut_8u16u_C1R(const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                     const uint16_t table[256]);
DAX_API DaxStatus DAXI_Lut_8u16u_C3R(const uint8_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                     const uint16_t table[256]);
DAX_API DaxStatus DAXI_Lut_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                     const float table[256]);
DAX_API DaxStatus DAXI_Lut_8u32f_C3R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                     const float table[256]);
DAX_API DaxStatus DAXI_Lut_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                   const uint16_t table[65536]);
DAX_API DaxStatus DAXI_Lut_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                   const uint16_t table[65536]);
DAX_API DaxStatus DAXI_Lut_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, const uint16_t table[65536]);
DAX_API DaxStatus DAXI_Lut_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, const uint16_t table[65536]);

/* A line through knots: with levels[i] <= src < levels[i + 1],
 *   dst = values[i] + (src - levels[i]) * (values[i + 1] - values[i]) / (levels[i + 1] - levels[i])
 * in double precision, rounded half to even and saturated; values[0] below the knots, values[count - 1] from the last one on. Of 32f
 * one rounding; NaN stays NaN. levels, values: `count` numbers each; levels strictly ascending.
 *
 * Checks after those above, in order: count outside 2..256 -> 0x10000019; levels not finite or not ascending, then values not
 * finite -> 0x10000019. */
DAX_API DaxStatus DAXI_LutLinear_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, const double* levels, const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, const double* levels, const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, const double* levels,
                                         const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, const double* levels,
                                         const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size, const double* levels, const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size, const double* levels, const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, const double* levels,
                                          const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, const double* levels,
                                          const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                         DaxiSize size, const double* levels, const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_16s_C3R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                         DaxiSize size, const double* levels, const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size, const double* levels,
                                          const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_16s_C3IR(int16_t* srcDst, int32_t step, DaxiSize size, const double* levels,
                                          const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                         const double* levels, const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                         const double* levels, const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, const double* levels,
                                          const double* values, int32_t count);
DAX_API DaxStatus DAXI_LutLinear_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, const double* levels,
                                          const double* values, int32_t count);

DAX_END_DECLS

#endif
