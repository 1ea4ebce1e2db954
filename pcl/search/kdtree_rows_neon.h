// Twins for rows of three floats.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "pcl/search/kdtree_rows_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Minimum and maximum of a NaN and a number are NaN: then the portable kernel, which treats NaN as +infinity, repeats
// the axis. The last block overlaps the one before it.
inline void exactBox(const KdRows& rows, uint32_t lo, uint32_t hi, float* box) {
  if (hi - lo < 4) return portable::exactBox(rows, lo, hi, box);
  const uint32_t last = hi - 4;
  float32x4x3_t low = vld3q_f32(rows.row(last)), high = low;
  for (uint32_t i = lo; i < last; i += 4) {
    const float32x4x3_t p = vld3q_f32(rows.row(i));
    for (int axis = 0; axis < 3; ++axis) {
      low.val[axis] = vminq_f32(low.val[axis], p.val[axis]);
      high.val[axis] = vmaxq_f32(high.val[axis], p.val[axis]);
    }
  }
  for (int axis = 0; axis < 3; ++axis) {
    box[2 * axis] = vminvq_f32(low.val[axis]) + 0.0f;
    box[2 * axis + 1] = vmaxvq_f32(high.val[axis]) + 0.0f;
    if (!(box[2 * axis] <= box[2 * axis + 1])) portable::axisExtent(rows, lo, hi, axis, box + 2 * axis);
  }
}

template <int kAxis>
void axisExtent(const KdRows& rows, uint32_t lo, uint32_t hi, float* interval) {
  if (hi - lo < 4) return portable::axisExtent(rows, lo, hi, kAxis, interval);
  const uint32_t last = hi - 4;
  float32x4_t low = vld3q_f32(rows.row(last)).val[kAxis], high = low;
  for (uint32_t i = lo; i < last; i += 4) {
    const float32x4_t x = vld3q_f32(rows.row(i)).val[kAxis];
    low = vminq_f32(low, x);
    high = vmaxq_f32(high, x);
  }
  interval[0] = vminvq_f32(low) + 0.0f;
  interval[1] = vmaxvq_f32(high) + 0.0f;
  if (!(interval[0] <= interval[1])) portable::axisExtent(rows, lo, hi, kAxis, interval);
}

inline void axisExtent(const KdRows& rows, uint32_t lo, uint32_t hi, int32_t axis, float* interval) {
  if (axis == 0) return axisExtent<0>(rows, lo, hi, interval);
  if (axis == 1) return axisExtent<1>(rows, lo, hi, interval);
  return axisExtent<2>(rows, lo, hi, interval);
}

// A lane where the comparison holds is -1.
template <int kAxis>
CutCounts countCut(const KdRows& rows, uint32_t lo, uint32_t hi, float cut) {
  uint32x4_t below = vdupq_n_u32(0), upTo = below;
  uint32_t i = lo;
  for (; i + 4 <= hi; i += 4) {
    const float32x4_t x = vld3q_f32(rows.row(i)).val[kAxis];
    below = vsubq_u32(below, vcltq_f32(x, vdupq_n_f32(cut)));
    upTo = vsubq_u32(upTo, vcleq_f32(x, vdupq_n_f32(cut)));
  }
  const CutCounts rest = portable::countCut(rows, i, hi, kAxis, cut);
  return {vaddvq_u32(below) + rest.below, vaddvq_u32(upTo) + rest.upTo};
}

inline CutCounts countCut(const KdRows& rows, uint32_t lo, uint32_t hi, int32_t axis, float cut) {
  // NaNs count as infinity: the comparison would miss them.
  if (cut == portable::kInfinity) return portable::countCut(rows, lo, hi, axis, cut);
  if (axis == 0) return countCut<0>(rows, lo, hi, cut);
  if (axis == 1) return countCut<1>(rows, lo, hi, cut);
  return countCut<2>(rows, lo, hi, cut);
}

}  // namespace dax::neon
#endif
