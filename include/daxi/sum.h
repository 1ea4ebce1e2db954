/* Sum, mean and standard deviation of the pixels of a region, or of those that a mask chooses.
 *
 * Integers: sums of values and of squares are exact at any size, and rounded to double once. Floats: doubles are added in a
 * fixed order, whatever the step: the chosen pixels in raster order in blocks of 4096; within a block number i goes to lane i
 * modulo 8, lanes are added as ((0 + 4) + (2 + 6)) + ((1 + 5) + (3 + 7)); blocks are added in pairs, these in pairs again, what
 * has no partner from the last to the first. Infinities and NaN follow IEEE.
 *
 *   src, srcStep    image, step in elements
 *   mask, maskStep  of the same size, one channel: pixels where it is not 0 count (C1MR, C3MR)
 *   size            of the region
 *   results         one number, of C3R and C3MR an array of one for each channel
 *
 * No work buffer. Thread-safe. The results are the same bits on every machine.
 *
 * Checks, in order:
 *   a result, an image or the mask null                 0x10000014
 *   width < 1 or height < 1                             0x1000001a
 *   width, three times for C3, above the source's step  0x1000001b
 *   maskStep < width                                    0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_SUM_H
#define DAXI_SUM_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* The sum; 0 where the mask chooses nothing. */
DAX_API DaxStatus DAXI_Sum_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* sum);
DAX_API DaxStatus DAXI_Sum_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize size, double sum[3]);
DAX_API DaxStatus DAXI_Sum_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                   DaxiSize size, double* sum);
DAX_API DaxStatus DAXI_Sum_8u_C3MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                   DaxiSize size, double sum[3]);
DAX_API DaxStatus DAXI_Sum_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* sum);
DAX_API DaxStatus DAXI_Sum_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize size, double sum[3]);
DAX_API DaxStatus DAXI_Sum_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, double* sum);
DAX_API DaxStatus DAXI_Sum_16u_C3MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, double sum[3]);
DAX_API DaxStatus DAXI_Sum_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* sum);
DAX_API DaxStatus DAXI_Sum_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize size, double sum[3]);
DAX_API DaxStatus DAXI_Sum_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, double* sum);
DAX_API DaxStatus DAXI_Sum_16s_C3MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, double sum[3]);
DAX_API DaxStatus DAXI_Sum_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* sum);
DAX_API DaxStatus DAXI_Sum_32f_C3R(const float* src, int32_t srcStep, DaxiSize size, double sum[3]);
DAX_API DaxStatus DAXI_Sum_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, double* sum);
DAX_API DaxStatus DAXI_Sum_32f_C3MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, double sum[3]);

/* The mean. Last check: the mask chooses nothing -> 0x10000033. */
DAX_API DaxStatus DAXI_Mean_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* mean);
DAX_API DaxStatus DAXI_Mean_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize size, double mean[3]);
DAX_API DaxStatus DAXI_Mean_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, double* mean);
DAX_API DaxStatus DAXI_Mean_8u_C3MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, double mean[3]);
DAX_API DaxStatus DAXI_Mean_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* mean);
DAX_API DaxStatus DAXI_Mean_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize size, double mean[3]);
DAX_API DaxStatus DAXI_Mean_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     DaxiSize size, double* mean);
DAX_API DaxStatus DAXI_Mean_16u_C3MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     DaxiSize size, double mean[3]);
DAX_API DaxStatus DAXI_Mean_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* mean);
DAX_API DaxStatus DAXI_Mean_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize size, double mean[3]);
DAX_API DaxStatus DAXI_Mean_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     DaxiSize size, double* mean);
DAX_API DaxStatus DAXI_Mean_16s_C3MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     DaxiSize size, double mean[3]);
DAX_API DaxStatus DAXI_Mean_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* mean);
DAX_API DaxStatus DAXI_Mean_32f_C3R(const float* src, int32_t srcStep, DaxiSize size, double mean[3]);
DAX_API DaxStatus DAXI_Mean_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     DaxiSize size, double* mean);
DAX_API DaxStatus DAXI_Mean_32f_C3MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     DaxiSize size, double mean[3]);

/* The mean and the standard deviation of the population, sqrt(sum (x - mean)^2 / n): of integers from the exact n sum x^2 -
 * (sum x)^2; of floats in a second pass. Last check: the mask chooses nothing -> 0x10000033. */
DAX_API DaxStatus DAXI_MeanStdDev_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* mean,
                                         double* stdDev);
DAX_API DaxStatus DAXI_MeanStdDev_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize size, double mean[3],
                                         double stdDev[3]);
DAX_API DaxStatus DAXI_MeanStdDev_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                          DaxiSize size, double* mean, double* stdDev);
DAX_API DaxStatus DAXI_MeanStdDev_8u_C3MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                          DaxiSize size, double mean[3], double stdDev[3]);
DAX_API DaxStatus DAXI_MeanStdDev_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* mean,
                                          double* stdDev);
DAX_API DaxStatus DAXI_MeanStdDev_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize size, double mean[3],
                                          double stdDev[3]);
DAX_API DaxStatus DAXI_MeanStdDev_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                           DaxiSize size, double* mean, double* stdDev);
DAX_API DaxStatus DAXI_MeanStdDev_16u_C3MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                           DaxiSize size, double mean[3], double stdDev[3]);
DAX_API DaxStatus DAXI_MeanStdDev_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* mean,
                                          double* stdDev);
DAX_API DaxStatus DAXI_MeanStdDev_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize size, double mean[3],
                                          double stdDev[3]);
DAX_API DaxStatus DAXI_MeanStdDev_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                           DaxiSize size, double* mean, double* stdDev);
DAX_API DaxStatus DAXI_MeanStdDev_16s_C3MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                           DaxiSize size, double mean[3], double stdDev[3]);
DAX_API DaxStatus DAXI_MeanStdDev_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* mean,
                                          double* stdDev);
DAX_API DaxStatus DAXI_MeanStdDev_32f_C3R(const float* src, int32_t srcStep, DaxiSize size, double mean[3],
                                          double stdDev[3]);
DAX_API DaxStatus DAXI_MeanStdDev_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                           DaxiSize size, double* mean, double* stdDev);
DAX_API DaxStatus DAXI_MeanStdDev_32f_C3MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                           DaxiSize size, double mean[3], double stdDev[3]);

DAX_END_DECLS

#endif
