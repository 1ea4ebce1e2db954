/* Whether pixels lie within limits, the limits included: a mask of 255 and 0.
 *
 * C3C1R: of three interleaved channels all must lie within the limits of their channel. No value lies within low >
 * high, nor does NaN lie within any limits, nor any value within a limit that is NaN. Steps count elements: those of
 * dst are bytes. Images do not overlap, but a mask of 8u of one channel may replace its source, at the same address
 * with the same step. No work buffer. Thread-safe. The results are the same bits on every machine.
 *
 * Checks, in order:
 *   an image or an array of limits null                        0x10000014
 *   width < 1 or height < 1                                    0x1000001a
 *   width, of src three times for C3, above the image's step   0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_IN_RANGE_H
#define DAXI_IN_RANGE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = 255 where low <= src <= high. */
DAX_API DaxStatus DAXI_InRange_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      uint8_t low, uint8_t high);
DAX_API DaxStatus DAXI_InRange_8u_C3C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, const uint8_t low[3], const uint8_t high[3]);
DAX_API DaxStatus DAXI_InRange_16u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, uint16_t low, uint16_t high);
DAX_API DaxStatus DAXI_InRange_16u_C3C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const uint16_t low[3], const uint16_t high[3]);
DAX_API DaxStatus DAXI_InRange_16s_C1R(const int16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int16_t low, int16_t high);
DAX_API DaxStatus DAXI_InRange_16s_C3C1R(const int16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const int16_t low[3], const int16_t high[3]);
DAX_API DaxStatus DAXI_InRange_32f_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                       float low, float high);
DAX_API DaxStatus DAXI_InRange_32f_C3C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const float low[3], const float high[3]);

DAX_END_DECLS

#endif
