// Twins of the portable rows: sixteen pixels at a time.
#pragma once

#include <cstring>

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "pcl/convert/range_to_xyz_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

constexpr int32_t kBlock = 16;

inline float32x4x4_t loadFloats(const int16_t* from) {
  const int16x8_t low = vld1q_s16(from), high = vld1q_s16(from + 8);
  return {{vcvtq_f32_s32(vmovl_s16(vget_low_s16(low))), vcvtq_f32_s32(vmovl_high_s16(low)),
           vcvtq_f32_s32(vmovl_s16(vget_low_s16(high))), vcvtq_f32_s32(vmovl_high_s16(high))}};
}

inline float32x4x4_t loadFloats(const int32_t* from) {
  return {{vcvtq_f32_s32(vld1q_s32(from)), vcvtq_f32_s32(vld1q_s32(from + 4)), vcvtq_f32_s32(vld1q_s32(from + 8)),
           vcvtq_f32_s32(vld1q_s32(from + 12))}};
}

inline float32x4x4_t loadFloats(const float* from) {
  return vld1q_f32_x4(from);
}

// Columns c..c + 3.
inline float32x4_t columns(int32_t c) {
  constexpr int32_t kSteps[4] = {0, 1, 2, 3};
  return vcvtq_f32_s32(vaddq_s32(vdupq_n_s32(c), vld1q_s32(kSteps)));
}

inline float32x4x3_t fourPoints(const portable::GridRow& row, int32_t c, float32x4_t v) {
  const GridFormula& f = row.f;
  return {{vaddq_f32(vmulq_n_f32(columns(c), f.sx), vdupq_n_f32(f.ox)), vdupq_n_f32(row.y),
           vaddq_f32(vmulq_n_f32(v, f.sz), vdupq_n_f32(f.oz))}};
}

inline float32x4x3_t fourPoints(const portable::PinholeRow& row, int32_t c, float32x4_t v) {
  const PinholeFormula& f = row.f;
  const float32x4_t z = vaddq_f32(vmulq_n_f32(v, f.a), vdupq_n_f32(f.b));
  const float32x4_t dx = vsubq_f32(columns(c), vdupq_n_f32(f.cx));
  return {{vmulq_n_f32(vmulq_f32(dx, z), f.perFx), vmulq_n_f32(vmulq_n_f32(z, row.dy), f.perFy), z}};
}

// Stores the sixteen points from column c on.
template <class T, class Row>
void storePoints(const Row& row, const T* values, int32_t c, float* to) {
  const float32x4x4_t v = loadFloats(values + c);
  for (int32_t k = 0; k < 4; ++k) vst3q_f32(to + ptrdiff_t{12} * k, fourPoints(row, c + 4 * k, v.val[k]));
}

enum class Validity { none, some, all };

inline Validity validityOf(const uint8_t* mask) {
  const uint64x2_t zeros = vreinterpretq_u64_u8(vceqzq_u8(vld1q_u8(mask)));
  const uint64_t low = vgetq_lane_u64(zeros, 0), high = vgetq_lane_u64(zeros, 1);
  if ((low | high) == 0) return Validity::all;
  return (low & high) == UINT64_MAX ? Validity::none : Validity::some;
}

// Packs the valid ones of sixteen points; returns their number.
inline int32_t packPoints(const float* points, const uint8_t* mask, float* to) {
  int32_t count = 0;
  for (int32_t k = 0; k < kBlock; ++k) {
    std::memcpy(to + ptrdiff_t{3} * count, points + ptrdiff_t{3} * k, 3 * sizeof(float));
    count += mask[k] != 0;
  }
  return count;
}

template <class T, class Row>
void organizedRow(const Row& row, const T* values, const uint8_t* mask, int32_t first, int32_t cols, float* points) {
  int32_t c = first;
  for (; c <= cols - kBlock; c += kBlock) {
    const Validity validity = validityOf(mask + c);
    if (validity == Validity::all) {
      storePoints(row, values, c, points + ptrdiff_t{3} * c);
    } else if (validity == Validity::some) {
      portable::organizedRow(row, values, mask, c, c + kBlock, points);
    }
  }
  portable::organizedRow(row, values, mask, c, cols, points);
}

template <class T, class Row>
float* packedRow(const Row& row, const T* values, const uint8_t* mask, int32_t first, int32_t cols, float* points) {
  int32_t c = first;
  for (; c <= cols - kBlock; c += kBlock) {
    const Validity validity = validityOf(mask + c);
    if (validity == Validity::all) {
      storePoints(row, values, c, points);
      points += 3 * kBlock;
    } else if (validity == Validity::some) {
      // Goes through a copy: nothing may be written beyond the last valid point.
      float all[3 * kBlock], valid[3 * kBlock];
      storePoints(row, values, c, all);
      const int32_t count = packPoints(all, mask + c, valid);
      std::memcpy(points, valid, static_cast<size_t>(count) * 3 * sizeof(float));
      points += ptrdiff_t{3} * count;
    }
  }
  return portable::packedRow(row, values, mask, c, cols, points);
}

}  // namespace dax::neon
#endif
