// Rows of grey from bytes of colour by BT.601, 16 pixels at a time.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/colour/gray_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// 299 = 256 + 43 and 587 = 512 + 75, so that the sum of the small parts fits 16 bits. e = (299 R + 587 G + 114 B + 4) div 8 does
// too, and (e + (e 786) div 2^15 + 64) div 2^7 is the exact quotient by 1000, rounded, for all sums of bytes (by trying them).
inline uint16x8_t gray601Times128(uint16x8_t parts, uint16x8_t eighth) {
  const uint16x8_t e = vrsraq_n_u16(eighth, parts, 3);
  return vaddq_u16(e, vreinterpretq_u16_s16(vqdmulhq_s16(vreinterpretq_s16_u16(e), vdupq_n_s16(786))));
}

inline uint16x8_t gray601Times128(uint8x8_t red, uint8x8_t green, uint8x8_t blue) {
  uint16x8_t parts = vmull_u8(red, vdup_n_u8(299 - 256));
  parts = vmlal_u8(parts, green, vdup_n_u8(587 - 512));
  parts = vmlal_u8(parts, blue, vdup_n_u8(114));
  return gray601Times128(parts, vmlal_u8(vmull_u8(red, vdup_n_u8(256 / 8)), green, vdup_n_u8(512 / 8)));
}

inline uint8x8_t gray601(uint8x8_t red, uint8x8_t green, uint8x8_t blue) {
  return vrshrn_n_u16(gray601Times128(red, green, blue), 7);
}

inline uint8x16_t gray601(uint8x16_t red, uint8x16_t green, uint8x16_t blue) {
  const uint16x8_t low = gray601Times128(vget_low_u8(red), vget_low_u8(green), vget_low_u8(blue));
  uint16x8_t parts = vmull_high_u8(red, vdupq_n_u8(299 - 256));
  parts = vmlal_high_u8(parts, green, vdupq_n_u8(587 - 512));
  parts = vmlal_high_u8(parts, blue, vdupq_n_u8(114));
  const uint16x8_t eighth = vmlal_high_u8(vmull_high_u8(red, vdupq_n_u8(256 / 8)), green, vdupq_n_u8(512 / 8));
  return vrshrn_high_n_u16(vrshrn_n_u16(low, 7), gray601Times128(parts, eighth), 7);
}

template <class Standard, class Order, class T>
void grayRow(const T* src, T* dst, int32_t count) {
  ptrdiff_t x = 0;
  if constexpr (std::is_same_v<Standard, Bt601Gray> && std::is_same_v<T, uint8_t>) {
    for (; x <= count - 16; x += 16) {
      const uint8x16x3_t v = vld3q_u8(src + 3 * x);
      vst1q_u8(dst + x, gray601(v.val[Order::kRed], v.val[1], v.val[Order::kBlue]));
    }
  }
  portable::grayRow<Standard, Order>(src + 3 * x, dst + x, static_cast<int32_t>(count - x));
}

}  // namespace dax::neon
#endif
