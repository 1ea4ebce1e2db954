// Sums along rows of bytes, sixteen at a time.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/pyramid/pyramid_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// The even and the odd ones of 32 bytes.
#if defined(__aarch64__)
inline uint8x16x2_t evenAndOdd(const uint8_t* from) {
  return vld2q_u8(from);
}
#else
// SIMDe moves single elements.
inline uint8x16x2_t evenAndOdd(const uint8_t* from) {
  const uint16x8_t a = vreinterpretq_u16_u8(vld1q_u8(from)), b = vreinterpretq_u16_u8(vld1q_u8(from + 16));
  return {{(uint8x16_t)_mm_packus_epi16((__m128i)(a & 255), (__m128i)(b & 255)),
           (uint8x16_t)_mm_packus_epi16((__m128i)(a >> 8), (__m128i)(b >> 8))}};
}
#endif

// Of eight columns: the even pixels before, at and behind them, and the odd ones between.
inline uint16x8_t halvedSums(uint8x8_t a, uint8x8_t b, uint8x8_t c, uint8x8_t d, uint8x8_t e) {
  const uint16x8_t outer = vaddl_u8(a, e);
  return vmlal_u8(vaddq_u16(outer, vshlq_n_u16(vaddl_u8(b, d), 2)), c, vdup_n_u8(6));
}

template <int kChannels, class T>
void halveAlongX(const T* src, int32_t width, PyramidSum<T>* sums, int32_t first, int32_t end) {
  if constexpr (kChannels == 1 && sizeof(T) == 1) {
    int32_t x = first;
    if (x == 0) portable::halveAlongX<1>(src, width, sums, 0, 1), x = 1;
    // The last of the bytes that are read is 2x + 33.
    for (; x + 16 <= end && 2 * x + 34 <= width; x += 16) {
      const uint8x16x2_t before = evenAndOdd(src + 2 * x - 2), at = evenAndOdd(src + 2 * x),
                         behind = evenAndOdd(src + 2 * x + 2);
      const uint8x16_t a = before.val[0], b = before.val[1], c = at.val[0], d = at.val[1], e = behind.val[0];
      vst1q_u16(sums + x, halvedSums(vget_low_u8(a), vget_low_u8(b), vget_low_u8(c), vget_low_u8(d), vget_low_u8(e)));
      vst1q_u16(sums + x + 8,
                halvedSums(vget_high_u8(a), vget_high_u8(b), vget_high_u8(c), vget_high_u8(d), vget_high_u8(e)));
    }
    portable::halveAlongX<1>(src, width, sums, x, end);
  } else {
    portable::halveAlongX<kChannels>(src, width, sums, first, end);
  }
}

}  // namespace dax::neon
#endif
