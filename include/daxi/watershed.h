/* Watershed from markers: regions that grow from labelled pixels uphill, until they meet.
 *
 * `labels` holds the markers, and gets the regions: > 0 a marker, 0 open, < 0 a barrier, which stays and is not passed.
 * Pixels are flooded as by Meyer: each marked pixel enters a queue with its own value as its level, in raster order. The
 * pixel of the lowest level leaves it, of several the one that entered first; each of its open neighbours, in raster
 * order, gets its label at once, and enters with the greater of its own value and the level of the pixel that left. So
 * where regions meet is defined for equal values too, and there are no lines between regions. Open pixels that no path
 * leads to stay 0; so do pixels that are NaN, and marked ones that are NaN pass nothing on.
 *
 * Floats are ordered as by totalOrder of IEEE 754-2008: -0 before +0. Each pixel enters once, into a list of its level,
 * so the time does not depend on the image. Steps count elements. src and labels must not overlap. Thread-safe for
 * distinct labels and buffers.
 *
 * Checks, in order:
 *   src, labels or buffer null                      0x10000014
 *   width or height below 1 or above 32768          0x1000001a
 *   width above the smaller step                    0x1000001b
 *   connectivity other than 4 and 8                 0x10000012
 * A failed call writes nothing. */
#ifndef DAXI_WATERSHED_H
#define DAXI_WATERSHED_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer for the same arguments.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height below 1 or above 32768 -> 0x10000019; connectivity other
 * than 4 and 8 -> 0x10000012. Thread-safe. */
DAX_API DaxStatus DAXI_WatershedBufferSize_8u32s(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_WatershedBufferSize_16u32s(DaxiSize size, int32_t connectivity, uint64_t* bytes);
DAX_API DaxStatus DAXI_WatershedBufferSize_32f32s(DaxiSize size, int32_t connectivity, uint64_t* bytes);

/* connectivity: 4 or 8 neighbours. buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_Watershed_8u32s_C1R(const uint8_t* src, int32_t srcStep, int32_t* labels, int32_t labelsStep,
                                           DaxiSize size, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_Watershed_16u32s_C1R(const uint16_t* src, int32_t srcStep, int32_t* labels, int32_t labelsStep,
                                            DaxiSize size, int32_t connectivity, void* buffer);
DAX_API DaxStatus DAXI_Watershed_32f32s_C1R(const float* src, int32_t srcStep, int32_t* labels, int32_t labelsStep,
                                            DaxiSize size, int32_t connectivity, void* buffer);

DAX_END_DECLS

#endif
