// The passes of the box filter in vectors. Along rows the four lanes are four rows, so that each row's sums are added
// in the same order as by the portable twin.
#pragma once

#include <cstdint>

#include "frame/simd.h"
#include "image/filter_box_portable.h"

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

// Four rows, column by column.
template <class T, class Sum>
struct FourRows {
  using Lanes = SumLanes<Sum>;
  const T* const (&src)[4];
  Sum* const (&dst)[4];

  typename Lanes::Vector column(int32_t x) const {
    const Sum values[4] = {static_cast<Sum>(src[0][x]), static_cast<Sum>(src[1][x]), static_cast<Sum>(src[2][x]),
                           static_cast<Sum>(src[3][x])};
    return Lanes::load(values);
  }
  void storeColumn(int32_t x, typename Lanes::Vector v) const {
    Sum values[4];
    Lanes::store(values, v);
    for (int i = 0; i < 4; ++i) dst[i][x] = values[i];
  }
  typename Lanes::Four columns(int32_t x) const {
    const typename Lanes::Four rows = {
        {Lanes::load(src[0] + x), Lanes::load(src[1] + x), Lanes::load(src[2] + x), Lanes::load(src[3] + x)}};
    return transposed(rows);
  }
  void storeColumns(int32_t x, const typename Lanes::Four& v) const {
    const auto rows = transposed(v);
    for (int i = 0; i < 4; ++i) Lanes::store(dst[i] + x, rows.val[i]);
  }
};

// Twin of portable::boxRow for four rows, not in place: the two running sums that it subtracts are formed side by side,
// so that nothing needs to be stored.
template <class T, class Sum>
void boxFourRows(const T* const (&src)[4], Sum* const (&dst)[4], int32_t width, int32_t radius) {
  using Lanes = SumLanes<Sum>;
  const FourRows<T, Sum> rows{src, dst};
  auto lead = Lanes::all(Lanes::kNeutral), trail = lead;
  const int32_t right = width - radius;
  int32_t x = 0;
  for (; x < radius; ++x) lead = Lanes::add(lead, rows.column(x));
  for (x = 0; x <= radius; ++x) {
    lead = Lanes::add(lead, rows.column(x + radius));
    rows.storeColumn(x, lead);
  }
  for (; x <= right - 4; x += 4) {
    auto columns = rows.columns(x + radius);
    const auto leaving = rows.columns(x - radius - 1);
    for (int k = 0; k < 4; ++k) {
      lead = Lanes::add(lead, columns.val[k]);
      trail = Lanes::add(trail, leaving.val[k]);
      columns.val[k] = Lanes::subtract(lead, trail);
    }
    rows.storeColumns(x, columns);
  }
  for (; x < width; ++x) {
    if (x < right) lead = Lanes::add(lead, rows.column(x + radius));
    trail = Lanes::add(trail, rows.column(x - radius - 1));
    rows.storeColumn(x, Lanes::subtract(lead, trail));
  }
}

// Twins of the portable steps down columns.
template <class Sum>
void boxStep(const Sum* before, const Sum* enter, Sum* slot, Sum* dst, int32_t n) {
  using Lanes = SumLanes<Sum>;
  int32_t x = 0;
  for (; x <= n - 16; x += 16) {
    auto sums = Lanes::loadFour(before + x), result = Lanes::loadFour(slot + x);
    const auto in = Lanes::loadFour(enter + x);
    for (int k = 0; k < 4; ++k) {
      sums.val[k] = Lanes::add(sums.val[k], in.val[k]);
      result.val[k] = Lanes::subtract(sums.val[k], result.val[k]);
    }
    Lanes::storeFour(dst + x, result);
    Lanes::storeFour(slot + x, sums);
  }
  portable::boxStep(before + x, enter + x, slot + x, dst + x, n - x);
}

template <class Sum>
void addTo(Sum* dst, const Sum* before, int32_t n) {
  using Lanes = SumLanes<Sum>;
  int32_t x = 0;
  for (; x <= n - 16; x += 16) {
    auto sums = Lanes::loadFour(before + x);
    const auto in = Lanes::loadFour(dst + x);
    for (int k = 0; k < 4; ++k) sums.val[k] = Lanes::add(sums.val[k], in.val[k]);
    Lanes::storeFour(dst + x, sums);
  }
  portable::addTo(dst + x, before + x, n - x);
}

template <class Sum>
void subtractInto(Sum* dst, const Sum* lead, const Sum* trail, int32_t n) {
  using Lanes = SumLanes<Sum>;
  int32_t x = 0;
  for (; x <= n - 16; x += 16) {
    auto sums = Lanes::loadFour(lead + x);
    const auto out = Lanes::loadFour(trail + x);
    for (int k = 0; k < 4; ++k) sums.val[k] = Lanes::subtract(sums.val[k], out.val[k]);
    Lanes::storeFour(dst + x, sums);
  }
  portable::subtractInto(dst + x, lead + x, trail + x, n - x);
}

}  // namespace dax::neon
