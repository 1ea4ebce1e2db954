// Vectors of flags, all bits set or clear, as bytes of a mask.
#pragma once

#include "frame/dispatch.h"
#include "frame/lanes.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// The lower halves of the elements of two vectors.
inline uint8x16_t lowerHalves(uint16x8_t a, uint16x8_t b) {
  return vuzp1q_u8(vreinterpretq_u8_u16(a), vreinterpretq_u8_u16(b));
}
inline uint16x8_t lowerHalves(uint32x4_t a, uint32x4_t b) {
  return vuzp1q_u16(vreinterpretq_u16_u32(a), vreinterpretq_u16_u32(b));
}

// Sixteen bytes of a mask; flags(k) tells those of the k-th vector of T.
template <class T, class Flags>
[[gnu::always_inline]] inline uint8x16_t maskOf16(Flags flags) {
  if constexpr (sizeof(T) == 1) {
    return uint8x16_t(flags(0));
  } else if constexpr (sizeof(T) == 2) {
    return lowerHalves(uint16x8_t(flags(0)), uint16x8_t(flags(1)));
  } else {
    return lowerHalves(lowerHalves(uint32x4_t(flags(0)), uint32x4_t(flags(1))),
                       lowerHalves(uint32x4_t(flags(2)), uint32x4_t(flags(3))));
  }
}

// dst = mask by blocks of 64, then of 16; returns how many elements these were. mask(x): sixteen bytes from x on.
template <class Mask>
int32_t forEach16(uint8_t* dst, int32_t count, Mask mask) {
  int32_t x = 0;
  for (; x <= count - 64; x += 64) vst1q_u8_x4(dst + x, {{mask(x), mask(x + 16), mask(x + 32), mask(x + 48)}});
  for (; x <= count - 16; x += 16) vst1q_u8(dst + x, mask(x));
  return x;
}

// The same by flags(x), those of the vector at x.
template <class T, class Flags>
int32_t forEachMask(uint8_t* dst, int32_t count, Flags flags) {
  return forEach16(dst, count,
                   [=](int32_t x) { return maskOf16<T>([&](int32_t k) { return flags(x + k * Lanes<T>::kCount); }); });
}

}  // namespace dax::neon
#endif
