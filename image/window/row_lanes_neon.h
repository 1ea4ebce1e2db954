// Four rows as the four lanes of vectors, one vector a column: sums along rows are so formed in the order of the
// columns, as float sums must be, four at a time.
#pragma once

#include <cstdint>

#include "frame/simd.h"

namespace dax::neon {

// Vectors of sums.
template <class Sum>
struct SumLanes;

template <>
struct SumLanes<uint32_t> {
  using Vector = uint32x4_t;
  using Four = uint32x4x4_t;
  static constexpr uint32_t kNeutral = 0;
  static Vector all(uint32_t value) { return vdupq_n_u32(value); }
  static Vector load(const uint32_t* from) { return vld1q_u32(from); }
  static void store(uint32_t* to, Vector v) { vst1q_u32(to, v); }
  static Four loadFour(const uint32_t* from) { return vld1q_u32_x4(from); }
  static void storeFour(uint32_t* to, const Four& v) { vst1q_u32_x4(to, v); }
  static Vector add(Vector a, Vector b) { return vaddq_u32(a, b); }
  static Vector subtract(Vector a, Vector b) { return vsubq_u32(a, b); }
};

template <>
struct SumLanes<float> {
  using Vector = float32x4_t;
  using Four = float32x4x4_t;
  static constexpr float kNeutral = -0.0f;  // -0 + x is x for every x, 0 + -0 is not
  static Vector all(float value) { return vdupq_n_f32(value); }
  static Vector load(const float* from) { return vld1q_f32(from); }
  static Vector load(const int16_t* from) { return vcvtq_f32_s32(vmovl_s16(vld1_s16(from))); }
  static void store(float* to, Vector v) { vst1q_f32(to, v); }
  static Four loadFour(const float* from) { return vld1q_f32_x4(from); }
  static void storeFour(float* to, const Four& v) { vst1q_f32_x4(to, v); }
  static Vector add(Vector a, Vector b) { return vaddq_f32(a, b); }
  static Vector subtract(Vector a, Vector b) { return vsubq_f32(a, b); }
};

template <class T, class Sum>
struct FourRowReader {
  using Lanes = SumLanes<Sum>;
  const T* const (&rows)[4];

  typename Lanes::Vector column(int32_t x) const {
    const Sum values[4] = {static_cast<Sum>(rows[0][x]), static_cast<Sum>(rows[1][x]), static_cast<Sum>(rows[2][x]),
                           static_cast<Sum>(rows[3][x])};
    return Lanes::load(values);
  }
  // Columns x..x + 3.
  typename Lanes::Four columns(int32_t x) const {
    const typename Lanes::Four four = {
        {Lanes::load(rows[0] + x), Lanes::load(rows[1] + x), Lanes::load(rows[2] + x), Lanes::load(rows[3] + x)}};
    return transposed(four);
  }
};

template <class Sum>
struct FourRowWriter {
  using Lanes = SumLanes<Sum>;
  Sum* const (&rows)[4];

  void column(int32_t x, typename Lanes::Vector v) const {
    Sum values[4];
    Lanes::store(values, v);
    for (int i = 0; i < 4; ++i) rows[i][x] = values[i];
  }
  void columns(int32_t x, const typename Lanes::Four& v) const {
    const auto turned = transposed(v);
    for (int i = 0; i < 4; ++i) Lanes::store(rows[i] + x, turned.val[i]);
  }
};

}  // namespace dax::neon
