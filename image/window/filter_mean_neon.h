// From sums to means in vectors, and the mean of floats.
#pragma once

#include <cstdint>

#include "image/window/filter_mean_portable.h"
#include "image/window/row_lanes_neon.h"
#include "image/window/window_reach.h"

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

// Stores 16 pixels; lane i of vector k is pixel 4 i + k. Bits above those of a pixel are not looked at.
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

// The mean of floats, four rows at a time. `columns` holds the column sums of the first row and becomes those of the
// row after the fourth; enter[k] and leave[k] are the rows that lead from row k to the next. `turned` takes 4 n floats:
// the column sums of the four rows, column by column.
inline void turnColumns(float* columns, const float* const (&enter)[4], const float* const (&leave)[4], float* turned,
                        int32_t n) {
  int32_t x = 0;
  for (; x <= n - 4; x += 4) {
    float32x4_t sums = vld1q_f32(columns + x);
    float32x4x4_t rows;
    for (int k = 0; k < 4; ++k) {
      rows.val[k] = sums;
      sums = vsubq_f32(vaddq_f32(sums, vld1q_f32(enter[k] + x)), vld1q_f32(leave[k] + x));
    }
    vst1q_f32(columns + x, sums);
    vst1q_f32_x4(turned + ptrdiff_t{4} * x, transposed(rows));
  }
  for (; x < n; ++x) {
    for (int k = 0; k < 4; ++k) {
      turned[ptrdiff_t{4} * x + k] = columns[x];
      columns[x] = (columns[x] + enter[k][x]) - leave[k][x];
    }
  }
}

// Twin of portable::slide for four rows of a symmetric extension.
inline void meanOfTurned(const float* turned, float* const (&dst)[4], int32_t n, WindowReach reach, float reciprocal) {
  const FourRowWriter<float> to{dst};
  const auto column = [&](int64_t i) { return vld1q_f32(turned + 4 * mirrored(i, n)); };
  float32x4_t sum = vdupq_n_f32(0);
  const auto slide = [&](float32x4_t enter, float32x4_t leave) {
    sum = vsubq_f32(vaddq_f32(sum, enter), leave);
    return vmulq_n_f32(sum, reciprocal);
  };
  for (int64_t i = -int64_t{reach.before}; i <= reach.after; ++i) sum = vaddq_f32(sum, column(i));
  to.column(0, vmulq_n_f32(sum, reciprocal));

  int32_t x = 1;
  const auto slideOne = [&] {
    to.column(x, slide(column(int64_t{x} + reach.after), column(int64_t{x} - 1 - reach.before)));
    ++x;
  };
  while (x < n && x <= reach.before) slideOne();
  for (; int64_t{x} + 3 + reach.after < n; x += 4) {
    const float* const enter = turned + 4 * (ptrdiff_t{x} + reach.after);
    const float* const leave = turned + 4 * (ptrdiff_t{x} - 1 - reach.before);
    float32x4x4_t means;
    for (int k = 0; k < 4; ++k) means.val[k] = slide(vld1q_f32(enter + 4 * k), vld1q_f32(leave + 4 * k));
    to.columns(x, means);
  }
  while (x < n) slideOne();
}

}  // namespace dax::neon
