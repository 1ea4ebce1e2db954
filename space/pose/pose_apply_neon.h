// Twins: four points at a time in single precision, two in double.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "space/pose/pose_apply_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline void movePoints(const Motion<float>& motion, const float* points, int64_t count, float* result) {
  const float* const r = motion.rotation;
  int64_t i = 0;
  for (; i + 4 <= count; i += 4) {
    const float32x4x3_t p = vld3q_f32(points + 3 * i);
    float32x4x3_t moved;
    for (int k = 0; k < 3; ++k) {
      const float32x4_t plane = vaddq_f32(vmulq_n_f32(p.val[0], r[3 * k]), vmulq_n_f32(p.val[1], r[3 * k + 1]));
      const float32x4_t turned = vaddq_f32(plane, vmulq_n_f32(p.val[2], r[3 * k + 2]));
      moved.val[k] = vaddq_f32(turned, vdupq_n_f32(motion.translation[k]));
    }
    vst3q_f32(result + 3 * i, moved);
  }
  portable::movePoints(motion, points + 3 * i, count - i, result + 3 * i);
}

#if defined(__aarch64__)
inline float64x2x3_t loadTwoPoints(const double* from) {
  return vld3q_f64(from);
}
inline void storeTwoPoints(double* to, const float64x2x3_t& points) {
  vst3q_f64(to, points);
}
#else  // SIMDe moves single elements.
inline float64x2x3_t loadTwoPoints(const double* from) {
  const float64x2_t a = vld1q_f64(from), b = vld1q_f64(from + 2), c = vld1q_f64(from + 4);
  return {
      {__builtin_shufflevector(a, b, 0, 3), __builtin_shufflevector(a, c, 1, 2), __builtin_shufflevector(b, c, 0, 3)}};
}
inline void storeTwoPoints(double* to, const float64x2x3_t& points) {
  const auto& [x, y, z] = points.val;
  vst1q_f64(to, __builtin_shufflevector(x, y, 0, 2));
  vst1q_f64(to + 2, __builtin_shufflevector(z, x, 0, 3));
  vst1q_f64(to + 4, __builtin_shufflevector(y, z, 1, 3));
}
#endif

inline void movePoints(const Motion<double>& motion, const double* points, int64_t count, double* result) {
  const double* const r = motion.rotation;
  int64_t i = 0;
  for (; i + 2 <= count; i += 2) {
    const float64x2x3_t p = loadTwoPoints(points + 3 * i);
    float64x2x3_t moved;
    for (int k = 0; k < 3; ++k) {
      const float64x2_t plane = vaddq_f64(vmulq_n_f64(p.val[0], r[3 * k]), vmulq_n_f64(p.val[1], r[3 * k + 1]));
      const float64x2_t turned = vaddq_f64(plane, vmulq_n_f64(p.val[2], r[3 * k + 2]));
      moved.val[k] = vaddq_f64(turned, vdupq_n_f64(motion.translation[k]));
    }
    storeTwoPoints(result + 3 * i, moved);
  }
  portable::movePoints(motion, points + 3 * i, count - i, result + 3 * i);
}

}  // namespace dax::neon
#endif
