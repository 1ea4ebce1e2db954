// Bytes resized with whole weights, eight elements at a time: a table look-up brings two taps of each side by side.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/warp/resize_bytes_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// --- What SIMDe would do element by element, or in many steps ---

#if defined(__aarch64__)
inline uint8x16_t bytesOfSpan(const uint8_t* from, uint8x16_t index) {
  const uint8x16x2_t bytes = {{vld1q_u8(from), vld1q_u8(from + 16)}};
  return vqtbl2q_u8(bytes, index);
}

inline uint32x4x2_t products(uint16x8_t a, uint16x8_t b) {
  return {{vmull_u16(vget_low_u16(a), vget_low_u16(b)), vmull_high_u16(a, b)}};
}
inline uint32x4x2_t addProducts(uint32x4x2_t sums, uint16x8_t a, uint16x8_t b) {
  return {{vmlal_u16(sums.val[0], vget_low_u16(a), vget_low_u16(b)), vmlal_high_u16(sums.val[1], a, b)}};
}

template <int kShift>
uint16x8_t roundedShift(uint32x4x2_t v) {
  return vrshrn_high_n_u32(vrshrn_n_u32(v.val[0], kShift), v.val[1], kShift);
}
// Shifted by 16 and more to bytes.
template <int kShift>
uint8x8_t upperBytes(uint32x4x2_t v) {
  return vshrn_n_u16(vuzp2q_u16(vreinterpretq_u16_u32(v.val[0]), vreinterpretq_u16_u32(v.val[1])), kShift - 16);
}

// To the nearest integer, halves to even, from 0 to at least 255.
inline uint16x4_t nearestLevels(float32x4_t v) {
  return vqmovun_s32(vcvtnq_s32_f32(v));
}
#else
inline uint8x16_t bytesOfSpan(const uint8_t* from, uint8x16_t index) {
  return vorrq_u8(vqtbl1q_u8(vld1q_u8(from), index), vqtbl1q_u8(vld1q_u8(from + 16), vsubq_u8(index, vdupq_n_u8(16))));
}

inline uint32x4x2_t products(uint16x8_t a, uint16x8_t b) {
  const __m128i low = _mm_mullo_epi16((__m128i)a, (__m128i)b), high = _mm_mulhi_epu16((__m128i)a, (__m128i)b);
  return {{(uint32x4_t)_mm_unpacklo_epi16(low, high), (uint32x4_t)_mm_unpackhi_epi16(low, high)}};
}
inline uint32x4x2_t addProducts(uint32x4x2_t sums, uint16x8_t a, uint16x8_t b) {
  const uint32x4x2_t more = products(a, b);
  return {{sums.val[0] + more.val[0], sums.val[1] + more.val[1]}};
}

template <int kShift>
uint16x8_t roundedShift(uint32x4x2_t v) {
  constexpr uint32_t kHalf = 1u << (kShift - 1);
  return (uint16x8_t)_mm_packus_epi32((__m128i)((v.val[0] + kHalf) >> kShift), (__m128i)((v.val[1] + kHalf) >> kShift));
}
template <int kShift>
uint8x8_t upperBytes(uint32x4x2_t v) {
  const __m128i words = _mm_packus_epi32((__m128i)(v.val[0] >> kShift), (__m128i)(v.val[1] >> kShift));
  return vget_low_u8((uint8x16_t)_mm_packus_epi16(words, words));
}

inline uint16x4_t nearestLevels(float32x4_t v) {
  const __m128i whole = _mm_cvtps_epi32((__m128)v);
  return vget_low_u16((uint16x8_t)_mm_packus_epi32(whole, whole));
}
#endif

inline void pairAlongX(const ByteTaps<uint16_t>& at, const uint8_t* row, uint16_t* mid) {
  constexpr int32_t kShift = kWeightBits - portable::kPairMidBits;
  const uint16_t* w = at.weights;
  for (int32_t g = 0; g < at.groups; ++g, w += 2 * kResizeGroup) {
    const ByteSpan& span = at.spans[g];
    if (span.base < 0) {
      portable::pairGroups(at, row, g, g + 1, mid);
      continue;
    }
    const uint8x16_t taps = bytesOfSpan(row + span.base, vld1q_u8(span.index));
    const uint16x8_t a = vmovl_u8(vget_low_u8(taps)), b = vmovl_high_u8(taps);
    const uint16x8_t wa = vld1q_u16(w), wb = vld1q_u16(w + kResizeGroup);
    vst1q_u16(mid + ptrdiff_t{g} * kResizeGroup, roundedShift<kShift>(addProducts(products(a, wa), b, wb)));
  }
}

// Adds up a tap of eight elements.
inline int32x4x2_t addTap(int32x4x2_t sums, uint16x8_t tap, const int32_t* w) {
  const int32x4_t low = vreinterpretq_s32_u32(vmovl_u16(vget_low_u16(tap)));
  const int32x4_t high = vreinterpretq_s32_u32(vmovl_high_u16(tap));
  return {{vmlaq_s32(sums.val[0], low, vld1q_s32(w)), vmlaq_s32(sums.val[1], high, vld1q_s32(w + 4))}};
}

inline void wideAlongX(const ByteTaps<int32_t>& at, const uint8_t* row, float* mid) {
  const uint8x16_t next = vdupq_n_u8(static_cast<uint8_t>(2 * at.channels));
  const int32_t* w = at.weights;
  for (int32_t g = 0; g < at.groups; ++g) {
    const ByteSpan& span = at.spans[g];
    if (span.base < 0) {
      portable::wideGroups(at, row, g, g + 1, mid);
      w += ptrdiff_t{at.taps} * kResizeGroup;
      continue;
    }
    uint8x16_t index = vld1q_u8(span.index);
    int32x4x2_t sums = {{vdupq_n_s32(0), vdupq_n_s32(0)}};
    for (int32_t k = 0; k < at.taps; k += 2, w += 2 * kResizeGroup) {
      const uint8x16_t taps = bytesOfSpan(row + span.base, index);
      sums = addTap(sums, vmovl_u8(vget_low_u8(taps)), w);
      sums = addTap(sums, vmovl_high_u8(taps), w + kResizeGroup);
      index = vaddq_u8(index, next);
    }
    vst1q_f32(mid + ptrdiff_t{g} * kResizeGroup, vcvtq_f32_s32(sums.val[0]));
    vst1q_f32(mid + ptrdiff_t{g} * kResizeGroup + 4, vcvtq_f32_s32(sums.val[1]));
  }
}

// Halves to even: what is added to the sum is just below a half, and the lowest bit of the result. With the former already
// in the sum that bit differs only where it has no effect.
inline uint8x8_t pairOfRows(const uint16_t* a, const uint16_t* b, uint16x8_t wa, uint16x8_t wb) {
  constexpr int32_t kShift = kWeightBits + portable::kPairMidBits;
  const uint32x4_t half = vdupq_n_u32((1u << (kShift - 1)) - 1);
  const uint32x4x2_t halves = {{half, half}};
  uint32x4x2_t sums = addProducts(addProducts(halves, vld1q_u16(a), wa), vld1q_u16(b), wb);
  for (uint32x4_t& sum : sums.val) sum = vsraq_n_u32(sum, vshlq_n_u32(sum, 31 - kShift), 31);
  return upperBytes<kShift>(sums);
}

inline void pairAlongY(const uint16_t* a, const uint16_t* b, uint32_t wa, uint32_t wb, uint8_t* dst, int32_t count) {
  const uint16x8_t va = vdupq_n_u16(static_cast<uint16_t>(wa)), vb = vdupq_n_u16(static_cast<uint16_t>(wb));
  int32_t i = 0;
  for (; i + 16 <= count; i += 16) {
    vst1q_u8(dst + i, vcombine_u8(pairOfRows(a + i, b + i, va, vb), pairOfRows(a + i + 8, b + i + 8, va, vb)));
  }
  portable::pairAlongY(a + i, b + i, wa, wb, dst + i, count - i);
}

// Sixteen columns of a sum of rows.
inline void addRow(float32x4x4_t& sums, const float* row, float32x4_t weight) {
  for (int j = 0; j < 4; ++j) sums.val[j] = vaddq_f32(sums.val[j], vmulq_f32(vld1q_f32(row + 4 * j), weight));
}

inline void wideAlongY(const float* const* rows, const float* weights, int32_t taps, uint8_t* dst, int32_t count) {
  int32_t i = 0;
  for (; i + 16 <= count; i += 16) {
    const float32x4_t first = vdupq_n_f32(weights[0]);
    float32x4x4_t sums;
    for (int j = 0; j < 4; ++j) sums.val[j] = vmulq_f32(vld1q_f32(rows[0] + i + 4 * j), first);
    for (int32_t k = 1; k < taps; ++k) addRow(sums, rows[k] + i, vdupq_n_f32(weights[k]));
    const uint16x8_t low = vcombine_u16(nearestLevels(sums.val[0]), nearestLevels(sums.val[1]));
    const uint16x8_t high = vcombine_u16(nearestLevels(sums.val[2]), nearestLevels(sums.val[3]));
    vst1q_u8(dst + i, vcombine_u8(vqmovn_u16(low), vqmovn_u16(high)));
  }
  portable::wideColumns(rows, weights, taps, dst, i, count);
}

// A quarter of sums of four, halves to even: bits 1 and 2, or 1 and bit 2, take what is above a half, or a half above an odd
// quarter, to the next one. Moving the lowest three bits up and down again, with rounding, adds them both. (SIMDe rounds in pieces.)
inline uint8x8_t quarterOf(uint8x16_t a, uint8x16_t b) {
  const uint16x8_t sum = vpadalq_u8(vpaddlq_u8(a), b);
#if defined(__aarch64__)
  return vshrn_n_u16(vrsraq_n_u16(sum, vshlq_n_u16(sum, 13), 15), 2);
#else
  return vshrn_n_u16(vaddq_u16(vsraq_n_u16(sum, vshlq_n_u16(sum, 13), 15), vdupq_n_u16(1)), 2);
#endif
}

template <int kChannels>
void halveRows(const uint8_t* a, const uint8_t* b, uint8_t* dst, int32_t width) {
  int32_t x = 0;
  if constexpr (kChannels == 1) {
    for (; x + 32 <= width; x += 32) {
      const uint8x16x4_t above = vld1q_u8_x4(a + 2 * ptrdiff_t{x}), below = vld1q_u8_x4(b + 2 * ptrdiff_t{x});
      for (int k = 0; k < 4; k += 2) {
        vst1q_u8(dst + x + 8 * k,
                 vcombine_u8(quarterOf(above.val[k], below.val[k]), quarterOf(above.val[k + 1], below.val[k + 1])));
      }
    }
  }
  portable::halveRows<kChannels>(a + 2 * ptrdiff_t{x} * kChannels, b + 2 * ptrdiff_t{x} * kChannels,
                                 dst + ptrdiff_t{x} * kChannels, width - x);
}

}  // namespace dax::neon
#endif
