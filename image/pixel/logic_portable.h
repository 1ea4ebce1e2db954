// Rows of bitwise operations, any instruction set.
#pragma once

#include <cstdint>

namespace dax::portable {

inline void invertRow(const uint8_t* src, uint8_t* dst, int32_t width) {
  for (int32_t x = 0; x < width; ++x) dst[x] = static_cast<uint8_t>(~src[x]);
}

}  // namespace dax::portable
