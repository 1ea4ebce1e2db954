// Rows of grey from bytes of colour by BT.601, 16 pixels at a time.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/colour/gray_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// With m = 299 R + 587 G + 114 B + 500 and 299 = 256 + 43, 587 = 512 + 75, the sum of the small parts fits 16 bits, and so
// does m div 8. Then m div 1000 = ((m div 8) 33555) div 2^22 for all sums of bytes, where 33555 = 2^15 + 787.
inline uint8x8_t gray601(uint8x8_t red, uint8x8_t green, uint8x8_t blue) {
  uint16x8_t part = vmlal_u8(vdupq_n_u16(500), red, vdup_n_u8(299 - 256));
  part = vmlal_u8(part, green, vdup_n_u8(587 - 512));
  part = vmlal_u8(part, blue, vdup_n_u8(114));
  uint16x8_t eighth = vshrq_n_u16(part, 3);
  eighth = vmlal_u8(eighth, red, vdup_n_u8(256 / 8));
  eighth = vmlal_u8(eighth, green, vdup_n_u8(512 / 8));
  const uint16x8_t high = vreinterpretq_u16_s16(vqdmulhq_s16(vreinterpretq_s16_u16(eighth), vdupq_n_s16(787)));
  return vshrn_n_u16(vaddq_u16(eighth, high), 7);
}

template <class Standard, class Order, class T>
void grayRow(const T* src, T* dst, int32_t count) {
  ptrdiff_t x = 0;
  if constexpr (std::is_same_v<Standard, Bt601Gray> && std::is_same_v<T, uint8_t>) {
    for (; x <= count - 16; x += 16) {
      const uint8x16x3_t v = vld3q_u8(src + 3 * x);
      const uint8x16_t red = v.val[Order::kRed], green = v.val[1], blue = v.val[Order::kBlue];
      const uint8x8_t low = gray601(vget_low_u8(red), vget_low_u8(green), vget_low_u8(blue));
      const uint8x8_t high = gray601(vget_high_u8(red), vget_high_u8(green), vget_high_u8(blue));
      vst1q_u8(dst + x, vcombine_u8(low, high));
    }
  }
  portable::grayRow<Standard, Order>(src + 3 * x, dst + x, static_cast<int32_t>(count - x));
}

}  // namespace dax::neon
#endif
