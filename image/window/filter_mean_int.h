// The mean over the part of a window that lies inside the image, unchecked, with a choice of kernels.
#pragma once

#include <cstdint>

#include "dax/types.h"

namespace dax {

// DAXI_FilterMeanInt, for uint8_t, uint16_t, int16_t, float and double.
template <class T>
void filterMeanInt(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, DaxiSize mask, void* buffer,
                   int32_t isa);

}  // namespace dax
