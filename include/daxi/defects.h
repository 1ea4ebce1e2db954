/* Replaces the defective pixels of a sensor.
 *
 * Where `map` is not 0, dst is the mean of the nearest good pixels: of those to the left, to the right, above and below at
 * `distance`, 2 `distance`, ... up to 7 `distance` pixels, the first of these distances at which there are any in the image
 * whose map is 0; rounded half to even. With distance 2 they have the colour of the pixel in a Bayer pattern. A replaced pixel
 * never counts as good. A pixel without any is copied, and counted in *unmended. Where the map is 0, dst is src.
 *
 * dst may equal src with the same step, else the images must not overlap. Steps count elements. No work buffer. Thread-safe.
 *
 * Checks, in order:
 *   src, map, dst or unmended null              0x10000014
 *   width < 1 or height < 1                     0x1000001a
 *   width above the smallest step               0x1000001b
 *   distance outside 1..2                       0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_DEFECTS_H
#define DAXI_DEFECTS_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

DAX_API DaxStatus DAXI_ReplaceDefects_8u_C1R(const uint8_t* src, int32_t srcStep, const uint8_t* map, int32_t mapStep,
                                             uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t distance,
                                             int64_t* unmended);
DAX_API DaxStatus DAXI_ReplaceDefects_16u_C1R(const uint16_t* src, int32_t srcStep, const uint8_t* map, int32_t mapStep,
                                              uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t distance,
                                              int64_t* unmended);

DAX_END_DECLS

#endif
