// Twins of the kernels of sampling_portable.h.
#pragma once

#include <bit>
#include <cstring>

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/warp/sampling_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// The fractions of four positions, in 2^-32.
inline uint32x4_t fourFractions(const int64_t* positions) {
  return vuzp1q_u32(vreinterpretq_u32_s64(vld1q_s64(positions)), vreinterpretq_u32_s64(vld1q_s64(positions + 2)));
}

// The upper 16 bits of those of eight.
inline uint16x8_t fractionsOf(const int64_t* positions) {
  return vcombine_u16(vshrn_n_u32(fourFractions(positions), 16), vshrn_n_u32(fourFractions(positions + 4), 16));
}

#if defined(__aarch64__)
// --- Linear, integers ---

// first 2^16 + (second - first) f.
inline uint32x4_t mixed(uint16x4_t first, uint16x4_t second, uint16x4_t f) {
  return vmlsl_u16(vmlal_u16(vshll_n_u16(first, 16), second, f), first, f);
}
inline uint64x2_t mixed(uint32x2_t first, uint32x2_t second, uint32x2_t f) {
  return vmlsl_u32(vmlal_u32(vshll_n_u32(first, 16), second, f), first, f);
}

// (top 2^16 + (bottom - top) f) / 2^32, halves to the even number: the lower words tell whether to round up.
inline uint16x4_t betweenRows(uint32x4_t top, uint32x4_t bottom, uint16x4_t fractions) {
  const uint32x4_t f = vmovl_u16(fractions);
  const uint32x4_t low = vreinterpretq_u32_u64(mixed(vget_low_u32(top), vget_low_u32(bottom), vget_low_u32(f)));
  const uint32x4_t high = vreinterpretq_u32_u64(mixed(vget_high_u32(top), vget_high_u32(bottom), vget_high_u32(f)));
  const uint32x4_t whole = vuzp2q_u32(low, high), rest = vuzp1q_u32(low, high);
  const uint32x4_t half = vsubq_u32(vdupq_n_u32(0x80000000), vandq_u32(whole, vdupq_n_u32(1)));
  return vmovn_u32(vsubq_u32(whole, vcgtq_u32(rest, half)));
}

// Eight pairs of pixels as unsigned numbers; signed ones with 2^15 added.
struct LanePairs {
  uint16x8_t left, right;
};
inline uint16x8_t flipped(uint16x8_t v) {
  return veorq_u16(v, vdupq_n_u16(0x8000));
}
inline LanePairs pairsOf(const uint8_t* from) {
  const uint16x8_t both = vreinterpretq_u16_u8(vld1q_u8(from));
  return {vandq_u16(both, vdupq_n_u16(255)), vshrq_n_u16(both, 8)};
}
inline LanePairs pairsOf(const uint16_t* from) {
  const uint16x8_t a = vld1q_u16(from), b = vld1q_u16(from + 8);
  return {vuzp1q_u16(a, b), vuzp2q_u16(a, b)};
}
inline LanePairs pairsOf(const int16_t* from) {
  const uint16x8_t a = vreinterpretq_u16_s16(vld1q_s16(from)), b = vreinterpretq_u16_s16(vld1q_s16(from + 8));
  return {flipped(vuzp1q_u16(a, b)), flipped(vuzp2q_u16(a, b))};
}
inline void storeLevels(uint8_t* to, uint16x8_t v) {
  vst1_u8(to, vmovn_u16(v));
}
inline void storeLevels(uint16_t* to, uint16x8_t v) {
  vst1q_u16(to, v);
}
inline void storeLevels(int16_t* to, uint16x8_t v) {
  vst1q_s16(to, vreinterpretq_s16_u16(flipped(v)));
}

template <class T>
void linearRun(const Neighbours<T>& around, const int64_t* px, const int64_t* py, int32_t count, T* dst) {
  int32_t i = 0;
  for (; i + 8 <= count; i += 8) {
    const uint16x8_t fx = fractionsOf(px + i), fy = fractionsOf(py + i);
    const LanePairs a = pairsOf(around.above + 2 * i), b = pairsOf(around.below + 2 * i);
    const auto low = [&](const LanePairs& p) {
      return mixed(vget_low_u16(p.left), vget_low_u16(p.right), vget_low_u16(fx));
    };
    const auto high = [&](const LanePairs& p) {
      return mixed(vget_high_u16(p.left), vget_high_u16(p.right), vget_high_u16(fx));
    };
    storeLevels(dst + i, vcombine_u16(betweenRows(low(a), low(b), vget_low_u16(fy)),
                                      betweenRows(high(a), high(b), vget_high_u16(fy))));
  }
  portable::linearRun(around, px, py, count, dst, i);
}

// --- Linear, floats ---

// What the fractions of four positions make of the neighbours, exactly: all bits fit floats.
struct FloatParts {
  explicit FloatParts(const int64_t* positions) {
    const uint32x4_t units = vshrq_n_u32(fourFractions(positions), 8);
    counts = vcgtq_u32(units, vdupq_n_u32(0));
    second = vmulq_n_f32(vcvtq_f32_s32(vreinterpretq_s32_u32(units)), 0x1p-24f);
    first = vsubq_f32(vdupq_n_f32(1), second);
  }
  float32x4_t first, second;
  uint32x4_t counts;  // whether the second neighbour does
};

inline float32x4_t masked(float32x4_t v, uint32x4_t mask) {
  return vreinterpretq_f32_u32(vandq_u32(vreinterpretq_u32_f32(v), mask));
}

inline float64x2_t between(float64x2_t first, float64x2_t second, float64x2_t firstPart, float64x2_t secondPart) {
  return vaddq_f64(vmulq_f64(firstPart, first), vmulq_f64(secondPart, second));
}

struct FloatPairs {
  explicit FloatPairs(const float* from, uint32x4_t counts) {
    const float32x4_t a = vld1q_f32(from), b = vld1q_f32(from + 4);
    left = vuzp1q_f32(a, b);
    right = masked(vuzp2q_f32(a, b), counts);
  }
  float32x4_t left, right;
};

inline void linearRun(const Neighbours<float>& around, const int64_t* px, const int64_t* py, int32_t count,
                      float* dst) {
  int32_t i = 0;
  for (; i + 4 <= count; i += 4) {
    const FloatParts x(px + i), y(py + i);
    const FloatPairs above(around.above + 2 * i, x.counts);
    FloatPairs below(around.below + 2 * i, vandq_u32(x.counts, y.counts));
    below.left = masked(below.left, y.counts);
    const auto of = [&](auto half) {
      const float64x2_t first = half(x.first), second = half(x.second);
      const float64x2_t top = between(half(above.left), half(above.right), first, second);
      const float64x2_t bottom = between(half(below.left), half(below.right), first, second);
      return vcvt_f32_f64(between(top, bottom, half(y.first), half(y.second)));
    };
    const float32x2_t low = of([](float32x4_t v) { return vcvt_f64_f32(vget_low_f32(v)); });
    vst1q_f32(dst + i, vcombine_f32(low, of([](float32x4_t v) { return vcvt_f64_f32(vget_high_f32(v)); })));
  }
  portable::linearRun(around, px, py, count, dst, i);
}

// --- Rounding ---

inline void storeNarrow(uint8_t* to, int32x4_t low, int32x4_t high) {
  vst1_u8(to, vqmovn_u16(vcombine_u16(vqmovun_s32(low), vqmovun_s32(high))));
}
inline void storeNarrow(uint16_t* to, int32x4_t low, int32x4_t high) {
  vst1q_u16(to, vcombine_u16(vqmovun_s32(low), vqmovun_s32(high)));
}
inline void storeNarrow(int16_t* to, int32x4_t low, int32x4_t high) {
  vst1q_s16(to, vcombine_s16(vqmovn_s32(low), vqmovn_s32(high)));
}

// Conversions round halves to even, saturate, and make 0 of NaN.
template <class T>
void roundSums(const double* sums, int32_t count, T* dst) {
  int32_t i = 0;
  if constexpr (std::is_integral_v<T>) {
    const auto four = [&](const double* from) {
      return vcombine_s32(vqmovn_s64(vcvtnq_s64_f64(vld1q_f64(from))), vqmovn_s64(vcvtnq_s64_f64(vld1q_f64(from + 2))));
    };
    for (; i + 8 <= count; i += 8) storeNarrow(dst + i, four(sums + i), four(sums + i + 4));
  }
  portable::roundSums(sums, count, dst, i);
}

#else
// What takes an instruction above takes SIMDe many; the portable loops become longer vectors.
template <class T>
void linearRun(const Neighbours<T>& around, const int64_t* px, const int64_t* py, int32_t count, T* dst) {
  portable::linearRun(around, px, py, count, dst);
}
template <class T>
void roundSums(const double* sums, int32_t count, T* dst) {
  portable::roundSums(sums, count, dst);
}
#endif

// --- More taps ---

inline float32x4_t floatsOf(uint16x4_t v) {
  return vcvtq_f32_s32(vreinterpretq_s32_u32(vmovl_u16(v)));
}

// The next kCount pixels, 2 or 4, as floats.
template <int kCount, class T>
float32x4_t tapsOf(const T* at) {
  if constexpr (std::is_same_v<T, float>) {
    return kCount == 4 ? vld1q_f32(at) : vcombine_f32(vld1_f32(at), vdup_n_f32(0));
  } else {
    uint64_t bits = 0;
    std::memcpy(&bits, at, kCount * sizeof(T));
    if constexpr (std::is_same_v<T, uint8_t>) return floatsOf(vget_low_u16(vmovl_u8(vcreate_u8(bits))));
    if constexpr (std::is_same_v<T, uint16_t>) return floatsOf(vcreate_u16(bits));
    if constexpr (std::is_same_v<T, int16_t>) return vcvtq_f32_s32(vmovl_s16(vcreate_s16(bits)));
  }
}

// The taps of two pixels: tap k of both in taps[k].
template <int kCount, class T>
[[gnu::always_inline]] inline void pairTaps(const T* a, const T* b, float64x2_t* taps) {
  const float32x4_t ta = tapsOf<kCount>(a), tb = tapsOf<kCount>(b), low = vzip1q_f32(ta, tb);
  taps[0] = vcvt_f64_f32(vget_low_f32(low));
  taps[1] = vcvt_f64_f32(vget_high_f32(low));
  if constexpr (kCount == 4) {
    const float32x4_t high = vzip2q_f32(ta, tb);
    taps[2] = vcvt_f64_f32(vget_low_f32(high));
    taps[3] = vcvt_f64_f32(vget_high_f32(high));
  }
}

inline bool areFinite(const double* values, int32_t count) {
  constexpr auto kInfinity = std::bit_cast<int64_t>(std::numeric_limits<double>::infinity());
  int64_t others = 0;
  for (int32_t i = 0; i < count; ++i) {
    others |= -int64_t{(std::bit_cast<int64_t>(values[i]) & INT64_MAX) >= kInfinity};
  }
  return others == 0;
}

// Two pixels at a time. Pixels of weight 0 are added, which shows only where they are not finite; the portable kernel then
// sums again.
template <int kTaps, class T>
void sumTaps(const Footprints<T>& at, int32_t count, const TapWeights<kTaps>& x, const TapWeights<kTaps>& y,
             double* sums) {
  int32_t i = 0;
  for (; i + 2 <= count; i += 2) {
    const T *a = at.first + at.offsets[i], *b = at.first + at.offsets[i + 1];
    float64x2_t sum = vdupq_n_f64(0);
#pragma GCC unroll 6
    for (int j = 0; j < kTaps; ++j) {
      float64x2_t taps[kTaps];
      pairTaps<4>(a + j * at.step, b + j * at.step, taps);
      if constexpr (kTaps == 6) pairTaps<2>(a + j * at.step + 4, b + j * at.step + 4, taps + 4);
      float64x2_t row = vmulq_f64(vld1q_f64(&x[0][i]), taps[0]);
#pragma GCC unroll 6
      for (int k = 1; k < kTaps; ++k) row = vaddq_f64(row, vmulq_f64(vld1q_f64(&x[k][i]), taps[k]));
      sum = vaddq_f64(sum, vmulq_f64(vld1q_f64(&y[j][i]), row));
    }
    vst1q_f64(sums + i, sum);
  }
  portable::sumTaps<kTaps>(at, count, x, y, sums, areFinite(sums, i) ? i : 0);
}

}  // namespace dax::neon
#endif
