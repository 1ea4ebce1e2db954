// Rows of copies where a mask says so.
#pragma once

#include <cstdint>

namespace dax {

// One row of `width` pixels; `isConstant`: src has one pixel for all.
template <class T, int kChannels>
void maskedCopyRow(const T* src, bool isConstant, const uint8_t* mask, T* dst, int32_t width, int32_t isa);

}  // namespace dax
