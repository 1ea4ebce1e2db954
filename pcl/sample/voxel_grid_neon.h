// Twin of the portable keys: four points at a time.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "pcl/sample/voxel_grid_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline uint32x4_t isInside(const VoxelAxis& axis, float32x4_t values) {
  return vandq_u32(vcgeq_f32(values, vdupq_n_f32(axis.low)), vcleq_f32(values, vdupq_n_f32(axis.high)));
}

// 0 outside the box, where cell numbers may not fit 32 bits.
inline int32x4_t keyPart(const VoxelAxis& axis, float32x4_t values, uint32x4_t inside) {
  const uint32x4_t cells = vreinterpretq_u32_s32(vcvtq_s32_f32(vmulq_n_f32(values, axis.perUnit)));
  const uint32x4_t fromBase = vsubq_u32(cells, vdupq_n_u32(static_cast<uint32_t>(axis.base)));
  return vmulq_n_s32(vreinterpretq_s32_u32(vandq_u32(fromBase, inside)), axis.stride);
}

inline int32_t keyPoints(const VoxelGrid& grid, const float* points, int32_t first, int32_t n, KeyedPoint* pairs,
                         int32_t count) {
  constexpr int32_t kSteps[4] = {0, 1, 2, 3};
  int32_t i = first;
  for (; i <= n - 4; i += 4) {
    const float32x4x3_t p = vld3q_f32(points + ptrdiff_t{3} * i);
    const uint32x4_t inside =
        vandq_u32(vandq_u32(isInside(grid.x, p.val[0]), isInside(grid.y, p.val[1])), isInside(grid.z, p.val[2]));
    const int32x4_t keys = vaddq_s32(vaddq_s32(keyPart(grid.x, p.val[0], inside), keyPart(grid.y, p.val[1], inside)),
                                     keyPart(grid.z, p.val[2], inside));
    const int32x4_t indices = vaddq_s32(vdupq_n_s32(i), vld1q_s32(kSteps));
    // There is room for four pairs: count <= i and i + 4 <= n.
    int32_t* const to = &pairs[count].key;
    const int32x4_t low = vzip1q_s32(keys, indices), high = vzip2q_s32(keys, indices);
    const uint64x2_t flags = vreinterpretq_u64_u32(inside);
    if ((vgetq_lane_u64(flags, 0) & vgetq_lane_u64(flags, 1)) == UINT64_MAX) {
      vst1q_s32(to, low);
      vst1q_s32(to + 4, high);
      count += 4;
      continue;
    }
    KeyedPoint four[4];
    uint32_t keep[4];
    vst1q_s32(&four[0].key, low);
    vst1q_s32(&four[2].key, high);
    vst1q_u32(keep, inside);
    for (int k = 0; k < 4; ++k) {
      pairs[count] = four[k];
      count += keep[k] != 0;
    }
  }
  return portable::keyPoints(grid, points, i, n, pairs, count);
}

}  // namespace dax::neon
#endif
