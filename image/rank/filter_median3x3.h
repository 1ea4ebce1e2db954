// The 3 x 3 median of a band of rows.
#pragma once

#include <cstdint>

#include "dax/types.h"

namespace dax {

// Computes rows first..end - 1, at least one, of an image of at least 3 x 3 pixels. For uint8_t, uint16_t, int16_t,
// float and double.
template <class T>
void filterMedian3x3(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t first, int32_t end,
                     int32_t isa);

}  // namespace dax
