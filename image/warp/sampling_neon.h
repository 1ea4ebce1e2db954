// The twin of sampling_portable.h for bytes.
#pragma once

#include "frame/simd.h"
#include "image/warp/sampling_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// The upper 16 bits of the fractions of eight positions.
inline uint16x8_t fractionsOf(const int64_t* positions) {
  const auto* const words = reinterpret_cast<const uint16_t*>(positions);
  const auto four = [&](int first) {
    const uint32x4_t a = vreinterpretq_u32_u16(vld1q_u16(words + 4 * first));
    const uint32x4_t b = vreinterpretq_u32_u16(vld1q_u16(words + 4 * first + 8));
    return vshrn_n_u32(vuzp1q_u32(a, b), 16);
  };
  return vcombine_u16(four(0), four(4));
}

// first 2^16 + (second - first) f. (SIMDe multiplies and widens in pieces.)
#if defined(__aarch64__)
inline uint32x4_t mixed(uint16x4_t first, uint16x4_t second, uint16x4_t f) {
  return vmlsl_u16(vmlal_u16(vshll_n_u16(first, 16), second, f), first, f);
}
inline uint64x2_t mixed(uint32x2_t first, uint32x2_t second, uint32x2_t f) {
  return vmlsl_u32(vmlal_u32(vshll_n_u32(first, 16), second, f), first, f);
}
#else
inline uint32x4_t mixed(uint16x4_t first, uint16x4_t second, uint16x4_t f) {
  const uint32x4_t a = vmovl_u16(first), b = vmovl_u16(second), part = vmovl_u16(f);
  return (a << 16) + b * part - a * part;
}
inline uint64x2_t mixed(uint32x2_t first, uint32x2_t second, uint32x2_t f) {
  const auto wide = [](uint32x2_t v) {
    return _mm_cvtepu32_epi64((__m128i)__builtin_shufflevector(v, v, 0, 1, -1, -1));
  };
  const __m128i a = wide(first), b = wide(second), part = wide(f);
  return ((uint64x2_t)a << 16) + (uint64x2_t)_mm_mul_epu32(b, part) - (uint64x2_t)_mm_mul_epu32(a, part);
}
#endif

// (top 2^16 + (bottom - top) f) / 2^32, halves to the even number: the lower words tell whether to round up.
inline uint16x4_t betweenRows(uint32x4_t top, uint32x4_t bottom, uint16x4_t fractions) {
  const uint32x4_t f = vmovl_u16(fractions);
  const uint32x4_t low = vreinterpretq_u32_u64(mixed(vget_low_u32(top), vget_low_u32(bottom), vget_low_u32(f)));
  const uint32x4_t high = vreinterpretq_u32_u64(mixed(vget_high_u32(top), vget_high_u32(bottom), vget_high_u32(f)));
  const uint32x4_t whole = vuzp2q_u32(low, high), rest = vuzp1q_u32(low, high);
  const uint32x4_t half = vsubq_u32(vdupq_n_u32(0x80000000), vandq_u32(whole, vdupq_n_u32(1)));
  return vmovn_u32(vsubq_u32(whole, vcgtq_u32(rest, half)));
}

template <class T>
void linearRun(const Neighbours<T>& around, const int64_t* px, const int64_t* py, int32_t count, T* dst) {
  portable::linearRun(around, px, py, count, dst);
}

template <>
inline void linearRun(const Neighbours<uint8_t>& around, const int64_t* px, const int64_t* py, int32_t count,
                      uint8_t* dst) {
  int32_t i = 0;
  for (; i + 8 <= count; i += 8) {
    const uint16x8_t fx = fractionsOf(px + i), fy = fractionsOf(py + i);
    // A pair of bytes is a number of 16 bits.
    const auto row = [&](const uint8_t* pairs, uint32x4_t& low, uint32x4_t& high) {
      const uint16x8_t both = vreinterpretq_u16_u8(vld1q_u8(pairs + 2 * i));
      const uint16x8_t left = vandq_u16(both, vdupq_n_u16(255)), right = vshrq_n_u16(both, 8);
      low = mixed(vget_low_u16(left), vget_low_u16(right), vget_low_u16(fx));
      high = mixed(vget_high_u16(left), vget_high_u16(right), vget_high_u16(fx));
    };
    uint32x4_t topLow, topHigh, bottomLow, bottomHigh;
    row(around.above, topLow, topHigh);
    row(around.below, bottomLow, bottomHigh);
    const uint16x4_t low = betweenRows(topLow, bottomLow, vget_low_u16(fy));
    const uint16x4_t high = betweenRows(topHigh, bottomHigh, vget_high_u16(fy));
    vst1_u8(dst + i, vmovn_u16(vcombine_u16(low, high)));
  }
  portable::linearRun(around, px, py, count, dst, i);
}

}  // namespace dax::neon
#endif
