// The mean filter, unchecked, with a choice of kernels.
#pragma once

#include <cstdint>

#include "dax/types.h"

namespace dax {

// Rows first..end - 1 of DAXI_FilterMean, for uint8_t, uint16_t, int16_t, float and double. Floats are computed from
// the first row on: first must be 0 for them.
template <class T>
void filterMean(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, DaxiSize mask, int32_t first,
                int32_t end, void* buffer, int32_t isa);

}  // namespace dax
