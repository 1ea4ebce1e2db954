// Rows of pixels of another type, sixteen at a time, four times in turn.
#pragma once

#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "image/convert/blocks_neon.h"
#include "image/convert/convert_portable.h"
#include "image/pixel/float_lanes_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

#if !defined(__aarch64__)
// Missing from SIMDe.
inline uint16x8_t vaddhn_high_u32(uint16x4_t low, uint32x4_t a, uint32x4_t b) {
  return vcombine_u16(low, vaddhn_u32(a, b));
}
inline float32x4_t vcvt_high_f32_f64(float32x2_t low, float64x2_t high) {
  return vcombine_f32(low, vcvt_f32_f64(high));
}
#endif

// --- Sixteen pixels as floats, exactly ---

// Byte k of four as lane k: the indices of the other bytes lie outside the vector, which gives 0.
inline float32x4x4_t loadFloats(const uint8_t* from) {
  constexpr uint8_t kFirst[16] = {0, 255, 255, 255, 1, 255, 255, 255, 2, 255, 255, 255, 3, 255, 255, 255};
  const uint8x16_t bytes = vld1q_u8(from), first = vld1q_u8(kFirst);
  const auto quarter = [&](uint32_t start) {
    const uint8x16_t indices = vorrq_u8(first, vreinterpretq_u8_u32(vdupq_n_u32(start)));
    return vcvtq_f32_s32(vreinterpretq_s32_u8(vqtbl1q_u8(bytes, indices)));
  };
  return {{quarter(0), quarter(4), quarter(8), quarter(12)}};
}
inline float32x4x4_t loadFloats(const uint16_t* from) {
  const uint16x8_t low = vld1q_u16(from), high = vld1q_u16(from + 8);
  const auto floats = [](uint32x4_t v) { return vcvtq_f32_s32(vreinterpretq_s32_u32(v)); };
  return {{floats(vmovl_u16(vget_low_u16(low))), floats(vmovl_high_u16(low)), floats(vmovl_u16(vget_low_u16(high))),
           floats(vmovl_high_u16(high))}};
}
inline float32x4x4_t loadFloats(const int16_t* from) {
  const int16x8_t low = vld1q_s16(from), high = vld1q_s16(from + 8);
  return {{vcvtq_f32_s32(vmovl_s16(vget_low_s16(low))), vcvtq_f32_s32(vmovl_high_s16(low)),
           vcvtq_f32_s32(vmovl_s16(vget_low_s16(high))), vcvtq_f32_s32(vmovl_high_s16(high))}};
}
inline float32x4x4_t loadFloats(const float* from) {
  return vld1q_f32_x4(from);
}

// --- To integers: rounded half to even, saturated, NaN to 0 ---

#if defined(__aarch64__)
inline int32x4_t roundedLanes(float32x4_t v) {
  return vcvtnq_s32_f32(v);
}
inline int32x4_t roundedLanes(float64x2_t low, float64x2_t high) {
  return vqmovn_high_s64(vqmovn_s64(vcvtnq_s64_f64(low)), vcvtnq_s64_f64(high));
}
#else
// Beyond the pixel types any limit will do; the processor's own conversion knows one result for all that it cannot hold.
inline int32x4_t roundedLanes(float32x4_t v) {
  const __m128 low = _mm_set1_ps(-0x1p24f), high = _mm_set1_ps(0x1p24f), value = v;
  const __m128 held = _mm_min_ps(_mm_max_ps(value, low), high);
  return int32x4_t(_mm_and_si128(_mm_cvtps_epi32(held), _mm_castps_si128(_mm_cmpord_ps(value, value))));
}
inline __m128i roundedPair(__m128d v) {
  const __m128d held = _mm_min_pd(_mm_max_pd(v, _mm_set1_pd(-0x1p24)), _mm_set1_pd(0x1p24));
  return _mm_cvtpd_epi32(_mm_and_pd(held, _mm_cmpord_pd(v, v)));
}
inline int32x4_t roundedLanes(float64x2_t low, float64x2_t high) {
  return int32x4_t(_mm_unpacklo_epi64(roundedPair(__m128d(low)), roundedPair(__m128d(high))));
}
#endif

inline void storeLanes(uint8_t* to, const int32x4x4_t& v) {
  vst1q_u8(to, unsignedHalves(signedHalves(v.val[0], v.val[1]), signedHalves(v.val[2], v.val[3])));
}
inline void storeLanes(uint16_t* to, const int32x4x4_t& v) {
  vst1q_u16(to, unsignedHalves(v.val[0], v.val[1]));
  vst1q_u16(to + 8, unsignedHalves(v.val[2], v.val[3]));
}
inline void storeLanes(int16_t* to, const int32x4x4_t& v) {
  vst1q_s16(to, signedHalves(v.val[0], v.val[1]));
  vst1q_s16(to + 8, signedHalves(v.val[2], v.val[3]));
}

// --- Kernels ---

template <class To>
void storeFloats(To* to, const float32x4x4_t& v) {
  if constexpr (std::is_same_v<To, float>) {
    vst1q_f32_x4(to, v);
  } else {
    storeLanes(to, {{roundedLanes(v.val[0]), roundedLanes(v.val[1]), roundedLanes(v.val[2]), roundedLanes(v.val[3])}});
  }
}

inline void convertBlock(const uint8_t* from, uint16_t* to) {
  const uint8x16_t v = vld1q_u8(from);
  vst1q_u16(to, vmovl_u8(vget_low_u8(v)));
  vst1q_u16(to + 8, vmovl_high_u8(v));
}
inline void convertBlock(const uint8_t* from, int16_t* to) {
  convertBlock(from, reinterpret_cast<uint16_t*>(to));
}
inline void convertBlock(const uint16_t* from, uint8_t* to) {
  vst1q_u8(to, unsignedHalves(vld1q_u16(from), vld1q_u16(from + 8)));
}
inline void convertBlock(const int16_t* from, uint8_t* to) {
  vst1q_u8(to, unsignedHalves(vld1q_s16(from), vld1q_s16(from + 8)));
}
inline void convertBlock(const uint16_t* from, int16_t* to) {
  const uint16x8_t max = vdupq_n_u16(INT16_MAX);
  for (int k = 0; k < 16; k += 8) vst1q_s16(to + k, vreinterpretq_s16_u16(vminq_u16(vld1q_u16(from + k), max)));
}
inline void convertBlock(const int16_t* from, uint16_t* to) {
  const int16x8_t min = vdupq_n_s16(0);
  for (int k = 0; k < 16; k += 8) vst1q_u16(to + k, vreinterpretq_u16_s16(vmaxq_s16(vld1q_s16(from + k), min)));
}
template <class From, class To>
void convertBlock(const From* from, To* to) {
  storeFloats(to, loadFloats(from));
}

template <class From, class To>
void plainRow(const From* src, To* dst, int32_t count) {
  const int32_t x = forBlocks(count, [=](int32_t first) { convertBlock(src + first, dst + first); });
  portable::plainRow(src + x, dst + x, count - x);
}

template <class From, class To>
void singleBlocks(const From* src, To* dst, int32_t count, const DaxiConvertCfg& cfg) {
  const float32x4_t scale = vdupq_n_f32(static_cast<float>(cfg.scale)),
                    offset = vdupq_n_f32(static_cast<float>(cfg.offset));
  forBlocks(count, [=](int32_t first) {
    float32x4x4_t v = loadFloats(src + first);
    for (float32x4_t& lanes : v.val) lanes = vaddq_f32(vmulq_f32(lanes, scale), offset);
    storeFloats(dst + first, v);
  });
}

// f(v, lower, upper): four pixels as doubles.
template <class To, class F>
void storeDoubles(To* to, const float32x4x4_t& v, F f) {
  constexpr bool kIsReal = std::is_same_v<To, float>;
  std::conditional_t<kIsReal, float32x4x4_t, int32x4x4_t> result;
  for (int k = 0; k < 4; ++k) {
    float64x2_t lower, upper;
    f(v.val[k], lower, upper);
    if constexpr (kIsReal)
      result.val[k] = vcvt_high_f32_f64(vcvt_f32_f64(lower), upper);
    else
      result.val[k] = roundedLanes(lower, upper);
  }
  if constexpr (kIsReal)
    vst1q_f32_x4(to, result);
  else
    storeLanes(to, result);
}

// An offset of 0 changes no integer.
template <bool kHasOffset, class From, class To>
void doubleBlocks(const From* src, To* dst, int32_t count, const DaxiConvertCfg& cfg) {
  const float64x2_t scale = vdupq_n_f64(cfg.scale), offset = vdupq_n_f64(cfg.offset);
  const auto linear = [=](float64x2_t v) {
    const float64x2_t product = vmulq_f64(v, scale);
    return kHasOffset || std::is_same_v<To, float> ? vaddq_f64(product, offset) : product;
  };
  forBlocks(count, [=](int32_t first) {
    storeDoubles(dst + first, loadFloats(src + first), [=](float32x4_t v, float64x2_t& lower, float64x2_t& upper) {
      lower = linear(vcvt_f64_f32(vget_low_f32(v))), upper = linear(vcvt_high_f64_f32(v));
    });
  });
}

template <class Real, class From, class To>
void linearRow(const From* src, To* dst, int32_t count, const DaxiConvertCfg& cfg) {
  if constexpr (std::is_same_v<Real, float>)
    singleBlocks(src, dst, count, cfg);
  else if (cfg.offset != 0)
    doubleBlocks<true>(src, dst, count, cfg);
  else
    doubleBlocks<false>(src, dst, count, cfg);
  const int32_t x = count / 16 * 16;
  portable::linearRow<Real>(src + x, dst + x, count - x, cfg);
}

template <class From>
void splitRow(const From* src, float* dst, int32_t count, double scale) {
  const portable::SplitScale parts(scale);
  const float32x4_t high = vdupq_n_f32(parts.high), low = vdupq_n_f32(parts.low);
  const int32_t x = forBlocks(count, [=](int32_t first) {
    float32x4x4_t v = loadFloats(src + first);
    for (float32x4_t& lanes : v.val) lanes = vaddq_f32(vmulq_f32(lanes, high), vmulq_f32(lanes, low));
    vst1q_f32_x4(dst + first, v);
  });
  portable::splitRow(src + x, dst + x, count - x, scale);
}

// 255 / 65535 in units of 2^-16, of which the upper half is left: the exact quotient rounded, of every pixel.
inline void fullRangeRow(const uint16_t* src, uint8_t* dst, int32_t count) {
  const uint32x4_t half = vdupq_n_u32(0x807F);
  const auto eight = [=](const uint16_t* from) {
    const uint16x8_t v = vld1q_u16(from), factor = vdupq_n_u16(255);
    const uint32x4_t low = vmull_u16(vget_low_u16(v), vget_low_u16(factor)), high = vmull_high_u16(v, factor);
    return vaddhn_high_u32(vaddhn_u32(low, half), high, half);
  };
  const int32_t x = forBlocks(count, [=](int32_t first) {
    vst1q_u8(dst + first, vmovn_high_u16(vmovn_u16(eight(src + first)), eight(src + first + 8)));
  });
  portable::fullRangeRow(src + x, dst + x, count - x);
}
// A byte twice is 257 times the byte.
inline void fullRangeRow(const uint8_t* src, uint16_t* dst, int32_t count) {
  const int32_t x = forBlocks(count, [=](int32_t first) {
    const uint8x16_t v = vld1q_u8(src + first);
    vst1q_u16(dst + first, vreinterpretq_u16_u8(vzip1q_u8(v, v)));
    vst1q_u16(dst + first + 8, vreinterpretq_u16_u8(vzip2q_u8(v, v)));
  });
  portable::fullRangeRow(src + x, dst + x, count - x);
}
template <class From>
void fullRangeRow(const From* src, float* dst, int32_t count) {
  const float32x4_t divisor = vdupq_n_f32(portable::kFullRange<From>);
  const int32_t x = forBlocks(count, [=](int32_t first) {
    float32x4x4_t v = loadFloats(src + first);
    for (float32x4_t& lanes : v.val) lanes = vdivq_f32(lanes, divisor);
    vst1q_f32_x4(dst + first, v);
  });
  portable::fullRangeRow(src + x, dst + x, count - x);
}
template <class To>
void fullRangeRow(const float* src, To* dst, int32_t count) {
  linearRow<double>(src, dst, count, {portable::kFullRange<To>, 0});
}
template <class From, class To>
void fullRangeRow(const From* src, To* dst, int32_t count) {
  portable::fullRangeRow(src, dst, count);
}

}  // namespace dax::neon
#endif
