// Whether pixels lie within limits.
#pragma once

#include "image/pixel/element_rows.h"

namespace dax {

// `low` and `high` hold a number for each channel.
template <class T, int kChannels>
DaxStatus inRange(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, const T* low,
                  const T* high);

// One row of `width` pixels.
template <class T, int kChannels>
void inRangeRow(const T* src, uint8_t* dst, int32_t width, const T* low, const T* high, int32_t isa);

}  // namespace dax
