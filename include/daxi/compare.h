/* Comparisons of two images, or of an image and a constant, pixel by pixel: 255 where they hold, else 0.
 *
 * With NaN no comparison holds but NE. Steps count elements: those of dst are bytes. Images do not overlap, but a mask
 * of 8u may replace a source, at the same address with the same step. No work buffer. Thread-safe. The results are the
 * same bits on every machine.
 *
 * Checks, in order:
 *   an image null                             0x10000014
 *   width < 1 or height < 1                   0x1000001a
 *   width above the smallest step             0x1000001b
 *   op outside 0..5; not (eps >= 0)           0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_COMPARE_H
#define DAXI_COMPARE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

enum {
  DAXI_COMPARE_LT = 0, /* first < second */
  DAXI_COMPARE_LE = 1, /* first <= second */
  DAXI_COMPARE_EQ = 2, /* first == second */
  DAXI_COMPARE_NE = 3, /* first != second */
  DAXI_COMPARE_GE = 4, /* first >= second */
  DAXI_COMPARE_GT = 5  /* first > second */
};

/* dst = 255 where src1 and src2 compare as DAXI_COMPARE_... `op` says. */
DAX_API DaxStatus DAXI_Compare_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                      uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t op);
DAX_API DaxStatus DAXI_Compare_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                       uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t op);
DAX_API DaxStatus DAXI_Compare_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                       uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t op);
DAX_API DaxStatus DAXI_Compare_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2, uint8_t* dst,
                                       int32_t dstStep, DaxiSize size, int32_t op);

/* dst = 255 where src and the value compare as DAXI_COMPARE_... `op` says. */
DAX_API DaxStatus DAXI_CompareC_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, uint8_t value, int32_t op);
DAX_API DaxStatus DAXI_CompareC_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, uint16_t value, int32_t op);
DAX_API DaxStatus DAXI_CompareC_16s_C1R(const int16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, int16_t value, int32_t op);
DAX_API DaxStatus DAXI_CompareC_32f_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                        float value, int32_t op);

/* dst = 255 where |src1 - src2| <= eps, in double precision; not at NaN, nor where both are the same infinity. */
DAX_API DaxStatus DAXI_CompareEqualEps_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                               uint8_t* dst, int32_t dstStep, DaxiSize size, double eps);

/* dst = 255 where |src - value| <= eps, in double precision. */
DAX_API DaxStatus DAXI_CompareEqualEpsC_32f_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                DaxiSize size, float value, double eps);

DAX_END_DECLS

#endif
