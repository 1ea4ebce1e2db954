// Twin of the portable leaf kernel, four points at a time. It may read three points beyond the last one, which is safe
// because other pieces of the tree's block follow the points.
#pragma once

#include <bit>

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "pcl/search/kdtree_leaf_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

template <class Visitor>
bool scanLeaf(const float* points, uint32_t lo, uint32_t hi, const float* query, Visitor& visitor) {
  const float32x4_t qx = vdupq_n_f32(query[0]), qy = vdupq_n_f32(query[1]), qz = vdupq_n_f32(query[2]);
  const float* p = points + size_t{3} * lo;
  for (uint32_t i = lo; i < hi; i += 4, p += 12) {
    const float32x4x3_t four = vld3q_f32(p);
    const float32x4_t x = vsubq_f32(qx, four.val[0]), y = vsubq_f32(qy, four.val[1]), z = vsubq_f32(qz, four.val[2]);
    const float32x4_t distance = vaddq_f32(vaddq_f32(vmulq_f32(x, x), vmulq_f32(y, y)), vmulq_f32(z, z));
    const uint16x4_t nearer = vmovn_u32(vcltq_f32(distance, vdupq_n_f32(visitor.limit())));
    uint64_t lanes = vget_lane_u64(vreinterpret_u64_u16(nearer), 0) & 0x0001000100010001u;
    if (hi - i < 4) lanes &= (uint64_t{1} << 16 * (hi - i)) - 1;
    if (lanes == 0) continue;
    float distances[4];
    vst1q_f32(distances, distance);
    for (; lanes != 0; lanes &= lanes - 1) {
      const auto lane = static_cast<uint32_t>(std::countr_zero(lanes)) / 16;
      if (!visitor.take(i + lane, distances[lane])) return false;
    }
  }
  return true;
}

}  // namespace dax::neon
#endif
