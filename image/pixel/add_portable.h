// Saturated sum of two rows, any instruction set.
#pragma once

#include <algorithm>
#include <cstdint>

namespace dax::portable {

inline void addRow(const uint8_t* a, const uint8_t* b, uint8_t* dst, int32_t width) {
  for (int32_t x = 0; x < width; ++x) dst[x] = static_cast<uint8_t>(std::min(a[x] + b[x], 255));
}

}  // namespace dax::portable
