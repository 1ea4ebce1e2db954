// Sums over the columns of the blocks of a row, in vectors.
#pragma once

#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "image/statistics/moments_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline void widen(uint16x8_t v, uint32x4_t* to) {
  to[0] = vmovl_u16(vget_low_u16(v)), to[1] = vmovl_high_u16(v);
}
inline uint32x4x4_t widePixels(const uint16_t* from) {
  uint32x4x4_t wide;
  widen(vld1q_u16(from), wide.val), widen(vld1q_u16(from + 8), wide.val + 2);
  return wide;
}
inline uint32x4x4_t widePixels(const uint8_t* from) {
  const uint8x16_t v = vld1q_u8(from);
  uint32x4x4_t wide;
  widen(vmovl_u8(vget_low_u8(v)), wide.val), widen(vmovl_high_u8(v), wide.val + 2);
  return wide;
}

template <class T>
ColumnSums columnSums(const T* part, int32_t blocks) {
  uint32x4_t s[4][4] = {};
  for (const T* block = part + ptrdiff_t{blocks} * kMomentLanes; block != part;) {
    block -= kMomentLanes;
    const uint32x4x4_t pixels = widePixels(block);
    for (int k = 0; k < 4; ++k) {
      s[0][k] = vaddq_u32(s[0][k], pixels.val[k]);
      for (int p = 1; p < 4; ++p) s[p][k] = vaddq_u32(s[p][k], s[p - 1][k]);
    }
  }
  ColumnSums sums;
  for (int i = 0; i < 16; ++i) vst1q_u32(sums.s[i / 4] + i % 4 * 4, s[i / 4][i % 4]);
  return sums;
}

}  // namespace dax::neon
#endif
