/* Sums and running averages of images, pixel by pixel, in single precision.
 *
 * Integers are added exactly until a sum reaches 2^24: 65793 images of 8u, 256 of 16u. A running average stops half a
 * unit in its last place, divided by alpha, before the value: 16u with alpha = 0.0001 may stay 19 levels away from it.
 *
 * Images must not overlap. Steps count elements. An image of three interleaved channels is one of three times the
 * width. No work buffer. Thread-safe. The results are the same bits on every machine (NaN payloads apart).
 *
 * Checks, in order:
 *   an image null                       0x10000014
 *   width < 1 or height < 1             0x1000001a
 *   width above the smallest step       0x1000001b
 *   alpha outside 0..1                  0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_ACCUMULATE_H
#define DAXI_ACCUMULATE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* srcDst = srcDst + src. */
DAX_API DaxStatus DAXI_Accumulate_8u32f_C1IR(const uint8_t* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                             DaxiSize size);
DAX_API DaxStatus DAXI_Accumulate_16u32f_C1IR(const uint16_t* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                              DaxiSize size);

/* srcDst = srcDst + alpha (src - srcDst), each operation rounded: a running average that forgets by the share alpha. */
DAX_API DaxStatus DAXI_AccumulateWeighted_8u32f_C1IR(const uint8_t* src, int32_t srcStep, float* srcDst,
                                                     int32_t srcDstStep, DaxiSize size, float alpha);
DAX_API DaxStatus DAXI_AccumulateWeighted_16u32f_C1IR(const uint16_t* src, int32_t srcStep, float* srcDst,
                                                      int32_t srcDstStep, DaxiSize size, float alpha);

DAX_END_DECLS

#endif
