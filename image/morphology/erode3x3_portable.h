// Rows of the erosion, any instruction set.
#pragma once

#include <cstdint>

namespace dax {

// Three rows of the result of the row pass.
struct SweepRows {
  const uint8_t *above, *centre;
  uint8_t* below;

  SweepRows from(int32_t x) const { return {above + x, centre + x, below + x}; }
};

}  // namespace dax

namespace dax::portable {

inline uint8_t erodedPixel(uint8_t before, uint8_t pixel, uint8_t after) {
  return pixel != 0 && (before == 0 || after != 0) ? 255 : 0;
}

// Along a row: n pixels inside it, `before` the one left of them, src[n] the one right of them. dst may be src.
inline void erodeRun(const uint8_t* src, uint8_t* dst, int32_t n, uint8_t before) {
  for (int32_t i = 0; i < n; ++i) {
    const uint8_t pixel = src[i];
    dst[i] = erodedPixel(before, pixel, src[i + 1]);
    before = pixel;
  }
}

// Across rows. Returns whether the result differs from `old`, which may be dst.
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

// The rule of the first and the last row. Returns whether the result differs from `old`.
inline bool keepWhereSet(const uint8_t* centre, const uint8_t* neighbour, uint8_t* dst, const uint8_t* old, int32_t n) {
  uint32_t difference = 0;
  for (int32_t i = 0; i < n; ++i) {
    const uint8_t pixel = centre[i] != 0 ? neighbour[i] : 0;
    difference |= static_cast<uint32_t>(pixel ^ old[i]);
    dst[i] = pixel;
  }
  return difference != 0;
}

// Both passes at once, for n pixels inside a row: the row pass of `src` into rows.below, and the column pass of the
// three rows into dst. With kCompare it returns whether the result differs from `old`, else false.
template <bool kCompare>
bool erodeSweep(const uint8_t* src, const SweepRows& rows, uint8_t* dst, const uint8_t* old, int32_t n) {
  erodeRun(src, rows.below, n, src[-1]);
  return erodeAcross(rows.above, rows.centre, rows.below, dst, old, n) && kCompare;
}

}  // namespace dax::portable
