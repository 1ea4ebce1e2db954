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
// Two vectors as one of half as wide lanes, saturated.
inline int16x8_t signedHalves(int32x4_t a, int32x4_t b) {
  return vqmovn_high_s32(vqmovn_s32(a), b);
}
inline uint16x8_t unsignedHalves(int32x4_t a, int32x4_t b) {
  return vqmovun_high_s32(vqmovun_s32(a), b);
}
inline uint8x16_t unsignedHalves(int16x8_t a, int16x8_t b) {
  return vqmovun_high_s16(vqmovun_s16(a), b);
}
inline uint8x16_t unsignedHalves(uint16x8_t a, uint16x8_t b) {
  return vqmovn_high_u16(vqmovn_u16(a), b);
}
#else
inline int32x4_t nearest(float32x4_t v) {
  return vcvtq_s32_f32(vrndnq_f32(v));
}
// Missing from SIMDe.
inline float64x2_t vcvt_high_f64_f32(float32x4_t v) {
  return vcvt_f64_f32(vget_high_f32(v));
}
inline int16x8_t signedHalves(int32x4_t a, int32x4_t b) {
  return int16x8_t(_mm_packs_epi32(__m128i(a), __m128i(b)));
}
inline uint16x8_t unsignedHalves(int32x4_t a, int32x4_t b) {
  return uint16x8_t(_mm_packus_epi32(__m128i(a), __m128i(b)));
}
inline uint8x16_t unsignedHalves(int16x8_t a, int16x8_t b) {
  return uint8x16_t(_mm_packus_epi16(__m128i(a), __m128i(b)));
}
inline uint8x16_t unsignedHalves(uint16x8_t a, uint16x8_t b) {
  const uint16x8_t max = vdupq_n_u16(UINT8_MAX);
  return uint8x16_t(_mm_packus_epi16(__m128i(vminq_u16(a, max)), __m128i(vminq_u16(b, max))));
}
#endif

// Saturated.
inline uint8x16_t narrowed(uint8_t, const std::array<int32x4_t, 4>& v) {
  return unsignedHalves(signedHalves(v[0], v[1]), signedHalves(v[2], v[3]));
}
inline uint16x8_t narrowed(uint16_t, const std::array<int32x4_t, 2>& v) {
  return unsignedHalves(v[0], v[1]);
}
inline int16x8_t narrowed(int16_t, const std::array<int32x4_t, 2>& v) {
  return signedHalves(v[0], v[1]);
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
