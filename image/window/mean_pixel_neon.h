// From sums to means and pixels, in vectors.
#pragma once

#include <cstdint>

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/window/mean_pixel_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Twin of portable::floatFromSum. Sums of 8-bit pixels stay below 2^31 here.
template <class T>
float32x4_t floatFromSum(uint32x4_t sum) {
  if constexpr (std::is_same_v<T, uint16_t>) return vcvtq_f32_u32(sum);
  return vcvtq_f32_s32(vreinterpretq_s32_u32(sum));
}

// Twin of portable::pixelFromMean, in lanes of 32 bits.
template <class T>
uint32x4_t roundedMean(float32x4_t mean) {
  float32x4_t half = vdupq_n_f32(0.5f);
  if constexpr (std::is_signed_v<T>) half = vbslq_f32(vdupq_n_u32(0x80000000u), mean, half);
  return vreinterpretq_u32_s32(vcvtq_s32_f32(vaddq_f32(mean, half)));
}

// Stores 16 pixels; lane i of vector k is pixel 4 i + k. Bits above those of a pixel are ignored.
inline uint16x8_t lowHalves(uint32x4_t even, uint32x4_t odd) {
  return vtrn1q_u16(vreinterpretq_u16_u32(even), vreinterpretq_u16_u32(odd));
}

inline void storePixels(uint16_t* dst, const uint32x4x4_t& v) {
  const uint32x4_t first = vreinterpretq_u32_u16(lowHalves(v.val[0], v.val[1]));
  const uint32x4_t second = vreinterpretq_u32_u16(lowHalves(v.val[2], v.val[3]));
  vst1q_u16(dst, vreinterpretq_u16_u32(vzip1q_u32(first, second)));
  vst1q_u16(dst + 8, vreinterpretq_u16_u32(vzip2q_u32(first, second)));
}

inline void storePixels(uint8_t* dst, const uint32x4x4_t& v) {
  const auto lowBytes = [](uint32x4_t even, uint32x4_t odd) {
    return vtrn1q_u8(vreinterpretq_u8_u32(even), vreinterpretq_u8_u32(odd));
  };
  const uint16x8_t first = vreinterpretq_u16_u8(lowBytes(v.val[0], v.val[1]));
  const uint16x8_t second = vreinterpretq_u16_u8(lowBytes(v.val[2], v.val[3]));
  vst1q_u8(dst, vreinterpretq_u8_u16(vtrn1q_u16(first, second)));
}

inline void storePixels(int16_t* dst, const uint32x4x4_t& v) {
  storePixels(reinterpret_cast<uint16_t*>(dst), v);
}

}  // namespace dax::neon
#endif
