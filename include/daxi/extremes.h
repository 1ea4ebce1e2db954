/* The extremes of a region with their first places, and the number of pixels within limits, of all pixels or of those that a mask
 * chooses.
 *
 *   src, srcStep    image, step in elements
 *   mask, maskStep  of the same size, one channel: pixels where it is not 0 count (C1MR, C3MR)
 *   size            of the region
 *   results         one, of C3R and C3MR an array of one for each channel
 *
 * No work buffer. Thread-safe. The results are the same on every machine.
 *
 * Checks, in order:
 *   a result, an image or the mask null                 0x10000014
 *   width < 1 or height < 1                             0x1000001a
 *   width, three times for C3, above the source's step  0x1000001b
 *   maskStep < width                                    0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_EXTREMES_H
#define DAXI_EXTREMES_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "point.h"

DAX_BEGIN_DECLS

/* The least and the greatest pixel, and where they come first in raster order, relative to the region's corner. NaN is passed
 * over; -0 equals +0. minAt may be null; maxAt may be null. Last check: the mask chooses nothing, or in a channel only NaN ->
 * 0x10000033. */
DAX_API DaxStatus DAXI_MinMax_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, uint8_t* min, uint8_t* max,
                                     DaxiPoint32s* minAt, DaxiPoint32s* maxAt);
DAX_API DaxStatus DAXI_MinMax_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize size, uint8_t min[3], uint8_t max[3],
                                     DaxiPoint32s minAt[3], DaxiPoint32s maxAt[3]);
DAX_API DaxStatus DAXI_MinMax_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                      DaxiSize size, uint8_t* min, uint8_t* max, DaxiPoint32s* minAt,
                                      DaxiPoint32s* maxAt);
DAX_API DaxStatus DAXI_MinMax_8u_C3MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                      DaxiSize size, uint8_t min[3], uint8_t max[3], DaxiPoint32s minAt[3],
                                      DaxiPoint32s maxAt[3]);
DAX_API DaxStatus DAXI_MinMax_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, uint16_t* min, uint16_t* max,
                                      DaxiPoint32s* minAt, DaxiPoint32s* maxAt);
DAX_API DaxStatus DAXI_MinMax_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize size, uint16_t min[3],
                                      uint16_t max[3], DaxiPoint32s minAt[3], DaxiPoint32s maxAt[3]);
DAX_API DaxStatus DAXI_MinMax_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, uint16_t* min, uint16_t* max, DaxiPoint32s* minAt,
                                       DaxiPoint32s* maxAt);
DAX_API DaxStatus DAXI_MinMax_16u_C3MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, uint16_t min[3], uint16_t max[3], DaxiPoint32s minAt[3],
                                       DaxiPoint32s maxAt[3]);
DAX_API DaxStatus DAXI_MinMax_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, int16_t* min, int16_t* max,
                                      DaxiPoint32s* minAt, DaxiPoint32s* maxAt);
DAX_API DaxStatus DAXI_MinMax_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize size, int16_t min[3],
                                      int16_t max[3], DaxiPoint32s minAt[3], DaxiPoint32s maxAt[3]);
DAX_API DaxStatus DAXI_MinMax_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, int16_t* min, int16_t* max, DaxiPoint32s* minAt,
                                       DaxiPoint32s* maxAt);
DAX_API DaxStatus DAXI_MinMax_16s_C3MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, int16_t min[3], int16_t max[3], DaxiPoint32s minAt[3],
                                       DaxiPoint32s maxAt[3]);
DAX_API DaxStatus DAXI_MinMax_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, float* min, float* max,
                                      DaxiPoint32s* minAt, DaxiPoint32s* maxAt);
DAX_API DaxStatus DAXI_MinMax_32f_C3R(const float* src, int32_t srcStep, DaxiSize size, float min[3], float max[3],
                                      DaxiPoint32s minAt[3], DaxiPoint32s maxAt[3]);
DAX_API DaxStatus DAXI_MinMax_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, float* min, float* max, DaxiPoint32s* minAt, DaxiPoint32s* maxAt);
DAX_API DaxStatus DAXI_MinMax_32f_C3MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, float min[3], float max[3], DaxiPoint32s minAt[3],
                                       DaxiPoint32s maxAt[3]);

/* The number of pixels with low <= x <= high: 0 where low is above high; a NaN is in no range. */
DAX_API DaxStatus DAXI_CountInRange_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, uint8_t low,
                                           uint8_t high, uint64_t* count);
DAX_API DaxStatus DAXI_CountInRange_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                            DaxiSize size, uint8_t low, uint8_t high, uint64_t* count);
DAX_API DaxStatus DAXI_CountInRange_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, uint16_t low,
                                            uint16_t high, uint64_t* count);
DAX_API DaxStatus DAXI_CountInRange_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask,
                                             int32_t maskStep, DaxiSize size, uint16_t low, uint16_t high,
                                             uint64_t* count);
DAX_API DaxStatus DAXI_CountInRange_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, int16_t low,
                                            int16_t high, uint64_t* count);
DAX_API DaxStatus DAXI_CountInRange_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                             DaxiSize size, int16_t low, int16_t high, uint64_t* count);
DAX_API DaxStatus DAXI_CountInRange_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, float low, float high,
                                            uint64_t* count);
DAX_API DaxStatus DAXI_CountInRange_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                             DaxiSize size, float low, float high, uint64_t* count);

DAX_END_DECLS

#endif
