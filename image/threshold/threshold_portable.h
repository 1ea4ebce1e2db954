// Rows of thresholding, any instruction set.
#pragma once

#include <cstdint>

namespace dax::portable {

// 255 where the level lies in the cyclic interval first..first + span, else 0.
inline void maskRow(const uint8_t* src, uint8_t* dst, int32_t width, uint8_t first, uint8_t span) {
  for (int32_t x = 0; x < width; ++x) dst[x] = static_cast<uint8_t>(src[x] - first) <= span ? 255 : 0;
}

inline void mapRow(const uint8_t* src, uint8_t* dst, int32_t width, const uint8_t* table) {
  for (int32_t x = 0; x < width; ++x) dst[x] = table[src[x]];
}

}  // namespace dax::portable
