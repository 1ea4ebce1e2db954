// Rows of weighted sums in vectors.
#pragma once

#include "image/pixel/add_weighted_portable.h"
#include "image/pixel/element_rows_neon.h"
#include "image/pixel/float_lanes_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

struct DoublePair {
  float64x2_t low, high;
};

inline DoublePair weightedSum(float32x4_t a, float32x4_t b, const DaxiAddWeightedCfg& cfg) {
  const float64x2_t w1 = vdupq_n_f64(cfg.a), w2 = vdupq_n_f64(cfg.b), offset = vdupq_n_f64(cfg.c);
  const auto sum = [=](float64x2_t first, float64x2_t second) {
    return vaddq_f64(vaddq_f64(vmulq_f64(w1, first), vmulq_f64(w2, second)), offset);
  };
  return {sum(vcvt_f64_f32(vget_low_f32(a)), vcvt_f64_f32(vget_low_f32(b))),
          sum(vcvt_high_f64_f32(a), vcvt_high_f64_f32(b))};
}

// The nearest integers, halves to the even one, of numbers within 2^16 in size; what is beyond stays beyond, NaN gives 0.
#if defined(__aarch64__)
// Rounding to odd keeps on which side of a half a number lies.
inline int32x4_t nearest(DoublePair v) {
  return vcvtnq_s32_f32(vcvtx_high_f32_f64(vcvtx_f32_f64(v.low), v.high));
}
#else
// The last bits of a sum with 1.5 2^52 are the integer.
inline int32x4_t nearest(DoublePair v) {
  const auto bits = [](float64x2_t x) {
    const float64x2_t held = vminq_f64(vmaxq_f64(x, vdupq_n_f64(-0x1p20)), vdupq_n_f64(0x1p20));
    return vreinterpretq_s32_f64(vaddq_f64(held, vdupq_n_f64(0x1.8p52)));
  };
  return vuzp1q_s32(bits(v.low), bits(v.high));
}
#endif

template <class T, class Vector>
Vector weightedVector(Vector a, Vector b, const DaxiAddWeightedCfg& cfg) {
  if constexpr (std::is_floating_point_v<T>) {
    const DoublePair sum = weightedSum(a, b, cfg);
    return vcombine_f32(vcvt_f32_f64(sum.low), vcvt_f32_f64(sum.high));
  } else {
    const Quarters<T> first = toFloats(a), second = toFloats(b);
    std::array<int32x4_t, std::tuple_size_v<Quarters<T>>> whole;
    for (size_t k = 0; k < whole.size(); ++k) whole[k] = nearest(weightedSum(first[k], second[k], cfg));
    return narrowed(T{}, whole);
  }
}

template <class T>
void addWeightedRow(const T* a, const T* b, T* dst, int32_t count, const DaxiAddWeightedCfg& cfg) {
  const int32_t x = forEachBlock<Operand::row>(
      a, b, dst, count, [cfg](auto first, auto second) { return weightedVector<T>(first, second, cfg); });
  portable::addWeightedRow(a + x, b + x, dst + x, count - x, cfg);
}

}  // namespace dax::neon
#endif
