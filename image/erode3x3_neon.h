// Rows of the erosion in blocks of 64 pixels, the rest by the portable twins.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/simd.h"
#include "image/erode3x3_portable.h"

namespace dax::neon {

// Works on masks of the clear pixels: a pixel goes where it is clear, or its right neighbour is and its left one is
// not.
inline void erodeRun(const uint8_t* src, uint8_t* dst, int32_t n, uint8_t before) {
  uint8x16_t clearBefore = vdupq_n_u8(before == 0 ? 255 : 0);
  const auto erode = [&](uint8x16_t pixels, uint8x16_t after) {
    const uint8x16_t clear = vceqzq_u8(pixels);
    const uint8x16_t ends = vbicq_u8(vceqzq_u8(after), vextq_u8(clearBefore, clear, 15));
    clearBefore = clear;
    return vmvnq_u8(vorrq_u8(clear, ends));
  };
  int32_t i = 0;
  for (; i <= n - 64; i += 64) {
    uint8x16x4_t pixels = vld1q_u8_x4(src + i);
    const uint8x16x4_t after = vld1q_u8_x4(src + i + 1);
    for (int k = 0; k < 4; ++k) pixels.val[k] = erode(pixels.val[k], after.val[k]);
    vst1q_u8_x4(dst + i, pixels);
  }
  for (; i <= n - 16; i += 16) vst1q_u8(dst + i, erode(vld1q_u8(src + i), vld1q_u8(src + i + 1)));
  portable::erodeRun(src + i, dst + i, n - i, vgetq_lane_u8(clearBefore, 15) ? 0 : 255);
}

// Across rows that hold 0 and 255 only. Compares with `old` only when asked to, and else returns false. The last block
// overlaps the one before it, so dst must not overlap the rows.
template <bool kCompare>
bool erodeMasksAcross(const uint8_t* above, const uint8_t* centre, const uint8_t* below, uint8_t* dst,
                      const uint8_t* old, int32_t n) {
  if (n < 64) return portable::erodeAcross(above, centre, below, dst, old, n);
  uint8x16_t difference = vdupq_n_u8(0);
  for (int32_t i = 0; i < n; i += 64) {
    i = std::min(i, n - 64);
    const uint8x16x4_t a = vld1q_u8_x4(above + i), b = vld1q_u8_x4(below + i);
    uint8x16x4_t result = vld1q_u8_x4(centre + i);
    for (int k = 0; k < 4; ++k) result.val[k] = vbicq_u8(result.val[k], vbicq_u8(a.val[k], b.val[k]));
    if constexpr (kCompare) {
      const uint8x16x4_t before = vld1q_u8_x4(old + i);
      for (int k = 0; k < 4; ++k) difference = vorrq_u8(difference, veorq_u8(result.val[k], before.val[k]));
    }
    vst1q_u8_x4(dst + i, result);
  }
  return kCompare && vmaxvq_u8(difference) != 0;
}

}  // namespace dax::neon
