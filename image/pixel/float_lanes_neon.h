// Integers of a vector as floats, four at a time, and back.
#pragma once

#include <array>

#include "frame/dispatch.h"
#include "frame/lanes.h"

#if DAX_HAVE_NEON
namespace dax::neon {

template <class T>
using Quarters = std::array<float32x4_t, 4 / sizeof(T)>;

// One look-up in place of widening twice.
inline Quarters<uint8_t> toFloats(uint8x16_t v) {
  const auto quarter = [=](uint8_t first) {
    uint8_t index[16];
    for (int i = 0; i < 16; ++i) index[i] = i % 4 == 0 ? static_cast<uint8_t>(first + i / 4) : 0xFF;
    return vcvtq_f32_u32(vreinterpretq_u32_u8(vqtbl1q_u8(v, vld1q_u8(index))));
  };
  return {quarter(0), quarter(4), quarter(8), quarter(12)};
}
inline Quarters<uint16_t> toFloats(uint16x8_t v) {
  return {vcvtq_f32_u32(vmovl_u16(vget_low_u16(v))), vcvtq_f32_u32(vmovl_high_u16(v))};
}
inline Quarters<int16_t> toFloats(int16x8_t v) {
  return {vcvtq_f32_s32(vmovl_s16(vget_low_s16(v))), vcvtq_f32_s32(vmovl_high_s16(v))};
}

#if defined(__aarch64__)
inline int32x4_t nearest(float32x4_t v) {
  return vcvtnq_s32_f32(v);
}
#else
inline int32x4_t nearest(float32x4_t v) {
  return vcvtq_s32_f32(vrndnq_f32(v));
}
#endif

#if defined(__aarch64__)
inline float64x2_t upperDoubles(float32x4_t v) {
  return vcvt_high_f64_f32(v);
}
#else
inline float64x2_t upperDoubles(float32x4_t v) {
  return vcvt_f64_f32(vget_high_f32(v));
}
#endif

// Saturated.
inline uint16x8_t narrowed(uint16_t, int32x4_t a, int32x4_t b) {
  return vcombine_u16(vqmovun_s32(a), vqmovun_s32(b));
}
inline int16x8_t narrowed(int16_t, int32x4_t a, int32x4_t b) {
  return vqmovn_high_s32(vqmovn_s32(a), b);
}
inline uint8x16_t narrowed(uint8_t, const std::array<int32x4_t, 4>& v) {
  return vqmovn_high_u16(vqmovn_u16(narrowed(uint16_t{}, v[0], v[1])), narrowed(uint16_t{}, v[2], v[3]));
}
template <class T>
auto narrowed(T, const std::array<int32x4_t, 2>& v) {
  return narrowed(T{}, v[0], v[1]);
}

// The nearest integers, halves to the even one, saturated; below 2^31 in size.
template <class T>
auto fromFloats(const Quarters<T>& v) {
  std::array<int32x4_t, std::tuple_size_v<Quarters<T>>> whole;
  for (size_t k = 0; k < whole.size(); ++k) whole[k] = nearest(v[k]);
  return narrowed(T{}, whole);
}

}  // namespace dax::neon
#endif
