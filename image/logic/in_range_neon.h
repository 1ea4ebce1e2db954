// Rows of pixels within limits in vectors.
#pragma once

#include "image/logic/in_range_portable.h"
#include "image/logic/mask_rows_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline uint8x16x3_t loadThree(const uint8_t* from) {
  return vld3q_u8(from);
}
inline uint16x8x3_t loadThree(const uint16_t* from) {
  return vld3q_u16(from);
}
inline int16x8x3_t loadThree(const int16_t* from) {
  return vld3q_s16(from);
}
inline float32x4x3_t loadThree(const float* from) {
  return vld3q_f32(from);
}

template <class Vector>
auto insideOf(Vector value, Vector low, Vector high) {
  return (value >= low) & (value <= high);
}
inline uint32x4_t insideOf(float32x4_t value, float32x4_t low, float32x4_t high) {
  return vandq_u32(vcgeq_f32(value, low), vcleq_f32(value, high));
}

template <class T, int kChannels>
void inRangeRow(const T* src, uint8_t* dst, int32_t width, const T* low, const T* high) {
  using L = Lanes<T>;
  const auto within = [=](auto value, int c) { return insideOf(value, L::all(low[c]), L::all(high[c])); };
  const int32_t x = forEachMask<T>(dst, width, [=](int32_t i) {
    if constexpr (kChannels == 1) {
      return within(L::load(src + i), 0);
    } else {
      const auto pixel = loadThree(src + 3 * i);
      return within(pixel.val[0], 0) & within(pixel.val[1], 1) & within(pixel.val[2], 2);
    }
  });
  portable::inRangeRow<T, kChannels>(src + kChannels * ptrdiff_t{x}, dst + x, width - x, low, high);
}

}  // namespace dax::neon
#endif
