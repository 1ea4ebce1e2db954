/* Gains of white balance, estimated from an image.
 *
 * gains[k] multiplies channel k (DAXI_WhiteBalance); that of the middle channel, green, is 1. Pixels of which a channel is
 * saturated, 255, 65535 or at least 1, or NaN, do not count, since the ratios of their channels are lost.
 *
 * GrayWorld: the channels get the same mean, on the assumption that the scene is grey on average. Sums of integers are exact;
 * of floats they are in double precision, each row from left to right, then the rows from top to bottom.
 *
 * WhitePatch: the channels get the same `percentile` p in 0..1, the element of rank max(1, ceil(p n)) of the n sorted levels of
 * each; 0.99 by custom, the brightest but for glints. Levels that are not positive have no gain.
 *
 * Steps count elements. Thread-safe. The results are the same bits on every machine.
 *
 * Checks, in order:
 *   src, gains or buffer null                                             0x10000014
 *   width < 1 or height < 1                                               0x1000001a
 *   srcStep below three times the width                                   0x1000001b
 *   percentile outside 0..1                                               0x10000019
 *   no pixel that counts, or a mean or level that is not positive         0x10000033
 * A failed call writes nothing but the buffer. */
#ifndef DAXI_WHITE_BALANCE_H
#define DAXI_WHITE_BALANCE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

DAX_API DaxStatus DAXI_GrayWorld_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize size, double gains[3]);
DAX_API DaxStatus DAXI_GrayWorld_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize size, double gains[3]);
DAX_API DaxStatus DAXI_GrayWorld_32f_C3R(const float* src, int32_t srcStep, DaxiSize size, double gains[3]);

/* Bytes of work buffer, which do not depend on the image. Checks, in order: bytes null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_WhitePatchBufferSize_8u_C3R(uint64_t* bytes);
DAX_API DaxStatus DAXI_WhitePatchBufferSize_16u_C3R(uint64_t* bytes);
DAX_API DaxStatus DAXI_WhitePatchBufferSize_32f_C3R(uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_WhitePatch_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize size, double percentile,
                                         double gains[3], void* buffer);
DAX_API DaxStatus DAXI_WhitePatch_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize size, double percentile,
                                          double gains[3], void* buffer);
DAX_API DaxStatus DAXI_WhitePatch_32f_C3R(const float* src, int32_t srcStep, DaxiSize size, double percentile,
                                          double gains[3], void* buffer);

DAX_END_DECLS

#endif
