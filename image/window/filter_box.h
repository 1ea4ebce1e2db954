// The box filter, unchecked, with a choice of kernels.
#pragma once

#include <cstdint>

#include "dax/types.h"

namespace dax {

// From uint8_t or uint32_t to uint32_t, from int16_t or float to float. Sums of integers are modulo 2^32. dst may equal
// src with the same step.
template <class T, class Sum>
void filterBox(const T* src, int32_t srcStep, Sum* dst, int32_t dstStep, DaxiSize size, int32_t radius, void* buffer,
               int32_t isa);

}  // namespace dax
