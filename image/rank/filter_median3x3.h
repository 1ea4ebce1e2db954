// The 3 x 3 median, unchecked, with a choice of kernels.
#pragma once

#include <cstdint>

#include "dax/types.h"

namespace dax {

// Rows first..end - 1, at least one, of an image of at least 3 x 3 pixels. For uint8_t, uint16_t, int16_t, float and
// double.
template <class T>
void filterMedian3x3(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t first, int32_t end,
                     int32_t isa);

}  // namespace dax

// All rows.
extern "C" void _DAXI_FilterMedian3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t isa);
