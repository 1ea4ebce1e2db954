// Rows of the erosion in blocks of 64 pixels.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/morphology/erode3x3_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Works on masks of clear pixels: the result is clear where the pixel is clear, or where its right neighbour is clear
// and its left one is set.
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

// For rows that hold 0 and 255 only. The second block overlaps the first, so that the others start at multiples of 64
// in rows whose first inner column is src; the last one overlaps the one before it.
template <bool kCompare>
bool erodeSweep(const uint8_t* src, const SweepRows& rows, uint8_t* dst, const uint8_t* old, int32_t n) {
  if (n < 64) return portable::erodeSweep<kCompare>(src, rows, dst, old, n);
  uint8x16_t difference = vdupq_n_u8(0);
  for (int32_t i = 0;;) {
    const uint8x16x4_t before = vld1q_u8_x4(src + i - 1), after = vld1q_u8_x4(src + i + 1);
    const uint8x16x4_t above = vld1q_u8_x4(rows.above + i);
    uint8x16x4_t below = vld1q_u8_x4(src + i), result = vld1q_u8_x4(rows.centre + i);
    for (int k = 0; k < 4; ++k) {
      const uint8x16_t ends = vbicq_u8(vceqzq_u8(after.val[k]), vceqzq_u8(before.val[k]));
      below.val[k] = vmvnq_u8(vorrq_u8(vceqzq_u8(below.val[k]), ends));
      result.val[k] = vbicq_u8(result.val[k], vbicq_u8(above.val[k], below.val[k]));
    }
    if constexpr (kCompare) {
      const uint8x16x4_t was = vld1q_u8_x4(old + i);
      for (int k = 0; k < 4; ++k) difference = vorrq_u8(difference, veorq_u8(result.val[k], was.val[k]));
    }
    vst1q_u8_x4(rows.below + i, below);
    vst1q_u8_x4(dst + i, result);
    if (i == n - 64) break;
    i = std::min(i == 0 ? 63 : i + 64, n - 64);
  }
  return kCompare && vmaxvq_u8(difference) != 0;
}

}  // namespace dax::neon
#endif
