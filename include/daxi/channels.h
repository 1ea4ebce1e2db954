/* Channels of an image: taken apart, put together, in another order.
 *
 * Layouts: C1, C3 and C4 have one, three or four interleaved channels, P3 and P4 three or four planes of one step; C3P3R reads the
 * former and writes the latter, C3IR works in place. Values keep every bit. Steps count elements. Source and destination, and
 * planes that are written, must not overlap. No work buffer. Thread-safe for distinct destinations.
 *
 * Checks, in order:
 *   an image, a plane or order null                              0x10000014
 *   width < 1 or height < 1                                      0x1000001a
 *   width times the channels of an image above its step          0x1000001b
 *   order or channel names no channel                            0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_CHANNELS_H
#define DAXI_CHANNELS_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Channel c of src becomes plane dst[c]. */
DAX_API DaxStatus DAXI_Split_8u_C3P3R(const uint8_t* src, int32_t srcStep, uint8_t* const dst[3], int32_t dstStep,
                                      DaxiSize size);
DAX_API DaxStatus DAXI_Split_8u_C4P4R(const uint8_t* src, int32_t srcStep, uint8_t* const dst[4], int32_t dstStep,
                                      DaxiSize size);
DAX_API DaxStatus DAXI_Split_16u_C3P3R(const uint16_t* src, int32_t srcStep, uint16_t* const dst[3], int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_Split_16u_C4P4R(const uint16_t* src, int32_t srcStep, uint16_t* const dst[4], int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_Split_16s_C3P3R(const int16_t* src, int32_t srcStep, int16_t* const dst[3], int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_Split_16s_C4P4R(const int16_t* src, int32_t srcStep, int16_t* const dst[4], int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_Split_32f_C3P3R(const float* src, int32_t srcStep, float* const dst[3], int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_Split_32f_C4P4R(const float* src, int32_t srcStep, float* const dst[4], int32_t dstStep,
                                       DaxiSize size);

/* Plane src[c] becomes channel c of dst. */
DAX_API DaxStatus DAXI_Merge_8u_P3C3R(const uint8_t* const src[3], int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                      DaxiSize size);
DAX_API DaxStatus DAXI_Merge_8u_P4C4R(const uint8_t* const src[4], int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                      DaxiSize size);
DAX_API DaxStatus DAXI_Merge_16u_P3C3R(const uint16_t* const src[3], int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_Merge_16u_P4C4R(const uint16_t* const src[4], int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_Merge_16s_P3C3R(const int16_t* const src[3], int32_t srcStep, int16_t* dst, int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_Merge_16s_P4C4R(const int16_t* const src[4], int32_t srcStep, int16_t* dst, int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_Merge_32f_P3C3R(const float* const src[3], int32_t srcStep, float* dst, int32_t dstStep,
                                       DaxiSize size);
DAX_API DaxStatus DAXI_Merge_32f_P4C4R(const float* const src[4], int32_t srcStep, float* dst, int32_t dstStep,
                                       DaxiSize size);

/* Channel c of dst is channel order[c] of src, or value where order[c] is -1; a channel may be taken more than once. {2, 1, 0}
 * turns RGB to BGR, in C3C4R {0, 1, 2, -1} adds a channel of opacity, C4C3R drops one. */
DAX_API DaxStatus DAXI_SwapChannels_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const int32_t order[3], uint8_t value);
DAX_API DaxStatus DAXI_SwapChannels_8u_C4R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const int32_t order[4], uint8_t value);
DAX_API DaxStatus DAXI_SwapChannels_8u_C3C4R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, const int32_t order[4], uint8_t value);
DAX_API DaxStatus DAXI_SwapChannels_8u_C4C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, const int32_t order[3], uint8_t value);
DAX_API DaxStatus DAXI_SwapChannels_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, const int32_t order[3],
                                            uint8_t value);
DAX_API DaxStatus DAXI_SwapChannels_8u_C4IR(uint8_t* srcDst, int32_t step, DaxiSize size, const int32_t order[4],
                                            uint8_t value);
DAX_API DaxStatus DAXI_SwapChannels_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                            DaxiSize size, const int32_t order[3], uint16_t value);
DAX_API DaxStatus DAXI_SwapChannels_16u_C4R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                            DaxiSize size, const int32_t order[4], uint16_t value);
DAX_API DaxStatus DAXI_SwapChannels_16u_C3C4R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                              DaxiSize size, const int32_t order[4], uint16_t value);
DAX_API DaxStatus DAXI_SwapChannels_16u_C4C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                              DaxiSize size, const int32_t order[3], uint16_t value);
DAX_API DaxStatus DAXI_SwapChannels_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, const int32_t order[3],
                                             uint16_t value);
DAX_API DaxStatus DAXI_SwapChannels_16u_C4IR(uint16_t* srcDst, int32_t step, DaxiSize size, const int32_t order[4],
                                             uint16_t value);
DAX_API DaxStatus DAXI_SwapChannels_16s_C3R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                            DaxiSize size, const int32_t order[3], int16_t value);
DAX_API DaxStatus DAXI_SwapChannels_16s_C4R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                            DaxiSize size, const int32_t order[4], int16_t value);
DAX_API DaxStatus DAXI_SwapChannels_16s_C3C4R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                              DaxiSize size, const int32_t order[4], int16_t value);
DAX_API DaxStatus DAXI_SwapChannels_16s_C4C3R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                              DaxiSize size, const int32_t order[3], int16_t value);
DAX_API DaxStatus DAXI_SwapChannels_16s_C3IR(int16_t* srcDst, int32_t step, DaxiSize size, const int32_t order[3],
                                             int16_t value);
DAX_API DaxStatus DAXI_SwapChannels_16s_C4IR(int16_t* srcDst, int32_t step, DaxiSize size, const int32_t order[4],
                                             int16_t value);
DAX_API DaxStatus DAXI_SwapChannels_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, const int32_t order[3], float value);
DAX_API DaxStatus DAXI_SwapChannels_32f_C4R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, const int32_t order[4], float value);
DAX_API DaxStatus DAXI_SwapChannels_32f_C3C4R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, const int32_t order[4], float value);
DAX_API DaxStatus DAXI_SwapChannels_32f_C4C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, const int32_t order[3], float value);
DAX_API DaxStatus DAXI_SwapChannels_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, const int32_t order[3],
                                             float value);
DAX_API DaxStatus DAXI_SwapChannels_32f_C4IR(float* srcDst, int32_t step, DaxiSize size, const int32_t order[4],
                                             float value);

/* dst = channel `channel` of src, counted from 0. */
DAX_API DaxStatus DAXI_PickChannel_8u_C3C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size, int32_t channel);
DAX_API DaxStatus DAXI_PickChannel_8u_C4C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size, int32_t channel);
DAX_API DaxStatus DAXI_PickChannel_16u_C3C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t channel);
DAX_API DaxStatus DAXI_PickChannel_16u_C4C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t channel);
DAX_API DaxStatus DAXI_PickChannel_16s_C3C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t channel);
DAX_API DaxStatus DAXI_PickChannel_16s_C4C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t channel);
DAX_API DaxStatus DAXI_PickChannel_32f_C3C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                             DaxiSize size, int32_t channel);
DAX_API DaxStatus DAXI_PickChannel_32f_C4C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                             DaxiSize size, int32_t channel);

DAX_END_DECLS

#endif
