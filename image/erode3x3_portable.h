// Rows of the erosion, any instruction set.
#pragma once

#include <cstdint>

namespace dax::portable {

inline uint8_t erodedPixel(uint8_t before, uint8_t pixel, uint8_t after) {
  return pixel != 0 && (before == 0 || after != 0) ? 255 : 0;
}

// Along a row: n pixels inside it, `before` the one left of them, src[n] the one right of them. In place as well.
inline void erodeRun(const uint8_t* src, uint8_t* dst, int32_t n, uint8_t before) {
  for (int32_t i = 0; i < n; ++i) {
    const uint8_t pixel = src[i];
    dst[i] = erodedPixel(before, pixel, src[i + 1]);
    before = pixel;
  }
}

// Across rows. Tells whether the result differs from `old`, which may be dst.
inline bool erodeAcross(const uint8_t* above, const uint8_t* centre, const uint8_t* below, uint8_t* dst,
                        const uint8_t* old, int32_t n) {
  uint32_t difference = 0;
  for (int32_t i = 0; i < n; ++i) {
    const uint8_t pixel = erodedPixel(above[i], centre[i], below[i]);
    difference |= static_cast<uint32_t>(pixel ^ old[i]);
    dst[i] = pixel;
  }
  return difference != 0;
}

// The rule of the first and the last row.
inline bool keepWhereSet(const uint8_t* centre, const uint8_t* neighbour, uint8_t* dst, const uint8_t* old, int32_t n) {
  uint32_t difference = 0;
  for (int32_t i = 0; i < n; ++i) {
    const uint8_t pixel = centre[i] != 0 ? neighbour[i] : 0;
    difference |= static_cast<uint32_t>(pixel ^ old[i]);
    dst[i] = pixel;
  }
  return difference != 0;
}

}  // namespace dax::portable
