// The 5 x 5 median of a band of rows.
#pragma once

#include <cstdint>

#include "dax/types.h"

namespace dax {

// Computes rows first..end - 1 of an image of at least 5 x 5 pixels. For uint8_t, uint16_t, int16_t and float.
template <class T>
void filterMedian5x5(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t first, int32_t end,
                     int32_t isa);

}  // namespace dax
