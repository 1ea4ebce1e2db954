/* Norms of the pixels of a region, or of those that a mask chooses, and of the differences of two images.
 *
 * L1 is the sum of magnitudes, L2 the root of the sum of squares, Inf the largest magnitude; 0 where the mask chooses nothing.
 * Integers: sums are exact at any size. Floats: differences, magnitudes and squares are doubles, added in the order that
 * daxi/sum.h describes; a NaN among the pixels gives NaN. An image of three channels counts as one of three times the width.
 *
 *   src, srcStep                   image, step in elements (src1, step1, src2, step2 of a difference)
 *   mask, maskStep                 of the same size: pixels where it is not 0 count (C1MR)
 *   size                           of the region
 *   norm                           receives the norm
 *
 * No work buffer. Thread-safe. The results are the same bits on every machine.
 *
 * Checks, in order:
 *   norm, an image or the mask null                     0x10000014
 *   width < 1 or height < 1                             0x1000001a
 *   width above the smallest step of the sources        0x1000001b
 *   maskStep < width                                    0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_NORM_H
#define DAXI_NORM_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Sum of |x|. */
DAX_API DaxStatus DAXI_NormL1_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL1_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                      DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL1_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL1_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL1_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL1_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL1_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL1_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, double* norm);

/* Sum of |x1 - x2|. */
DAX_API DaxStatus DAXI_NormDiffL1_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                         DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL1_8u_C1MR(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                          const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL1_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                          DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL1_16u_C1MR(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                           const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL1_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                          DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL1_16s_C1MR(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                           const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL1_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                          DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL1_32f_C1MR(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                           const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);

/* Root of the sum of x^2. */
DAX_API DaxStatus DAXI_NormL2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL2_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                      DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL2_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL2_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL2_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL2_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL2_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormL2_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, double* norm);

/* Root of the sum of (x1 - x2)^2. */
DAX_API DaxStatus DAXI_NormDiffL2_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                         DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL2_8u_C1MR(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                          const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL2_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                          DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL2_16u_C1MR(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                           const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL2_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                          DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL2_16s_C1MR(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                           const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL2_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                          DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffL2_32f_C1MR(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                           const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);

/* Largest |x|. */
DAX_API DaxStatus DAXI_NormInf_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormInf_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormInf_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormInf_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                        DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormInf_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormInf_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                        DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormInf_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormInf_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                        DaxiSize size, double* norm);

/* Largest |x1 - x2|. */
DAX_API DaxStatus DAXI_NormDiffInf_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                          DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffInf_8u_C1MR(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                           const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffInf_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                           DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffInf_16u_C1MR(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                            const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffInf_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                           DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffInf_16s_C1MR(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                            const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffInf_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                           DaxiSize size, double* norm);
DAX_API DaxStatus DAXI_NormDiffInf_32f_C1MR(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                            const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm);

DAX_END_DECLS

#endif
