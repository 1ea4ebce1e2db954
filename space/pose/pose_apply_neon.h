// Twins: four points at a time in single precision, two in double.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "space/pose/pose_apply_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

#if defined(__aarch64__)
inline float64x2x3_t loadTwoPoints(const double* from) {
  return vld3q_f64(from);
}
inline void storePoints(double* to, const float64x2x3_t& points) {
  vst3q_f64(to, points);
}
inline void storePoints(float* to, const float32x4x3_t& points) {
  vst3q_f32(to, points);
}
#else  // SIMDe moves single elements.
inline float64x2x3_t loadTwoPoints(const double* from) {
  const float64x2_t a = vld1q_f64(from), b = vld1q_f64(from + 2), c = vld1q_f64(from + 4);
  return {
      {__builtin_shufflevector(a, b, 0, 3), __builtin_shufflevector(a, c, 1, 2), __builtin_shufflevector(b, c, 0, 3)}};
}
inline void storePoints(double* to, const float64x2x3_t& points) {
  const auto& [x, y, z] = points.val;
  vst1q_f64(to, __builtin_shufflevector(x, y, 0, 2));
  vst1q_f64(to + 2, __builtin_shufflevector(z, x, 0, 3));
  vst1q_f64(to + 4, __builtin_shufflevector(y, z, 1, 3));
}
inline void storePoints(float* to, const float32x4x3_t& points) {
  const auto& [x, y, z] = points.val;
  const float32x4_t xy = __builtin_shufflevector(x, y, 0, 4, 1, 5), next = __builtin_shufflevector(x, y, 2, 6, 3, 7);
  vst1q_f32(to, __builtin_shufflevector(xy, z, 0, 1, 4, 2));
  vst1q_f32(to + 4, __builtin_shufflevector(__builtin_shufflevector(y, z, 1, 5, 2, 6), next, 0, 1, 4, 5));
  vst1q_f32(to + 8, __builtin_shufflevector(z, next, 2, 6, 7, 3));
}
#endif

inline float32x4_t allLanes(float value) {
  return vdupq_n_f32(value);
}
inline float64x2_t allLanes(double value) {
  return vdupq_n_f64(value);
}

// The numbers of a motion as vectors, which no result can overlap.
template <class T>
struct SpreadMotion {
  explicit SpreadMotion(const Motion<T>& motion) {
    for (int k = 0; k < 9; ++k) rotation[k] = allLanes(motion.rotation[k]);
    for (int k = 0; k < 3; ++k) translation[k] = allLanes(motion.translation[k]);
  }
  decltype(allLanes(T{})) rotation[9], translation[3];
};

inline void movePoints(const Motion<float>& motion, const float* points, int64_t count, float* result) {
  const SpreadMotion<float> m(motion);
  int64_t i = 0;
  for (; i + 4 <= count; i += 4) {
    const float32x4x3_t p = vld3q_f32(points + 3 * i);
    float32x4x3_t moved;
    for (int k = 0; k < 3; ++k) {
      const float32x4_t* const row = m.rotation + 3 * k;
      const float32x4_t plane = vaddq_f32(vmulq_f32(p.val[0], row[0]), vmulq_f32(p.val[1], row[1]));
      moved.val[k] = vaddq_f32(vaddq_f32(plane, vmulq_f32(p.val[2], row[2])), m.translation[k]);
    }
    storePoints(result + 3 * i, moved);
  }
  portable::movePoints(motion, points + 3 * i, count - i, result + 3 * i);
}

inline void movePoints(const Motion<double>& motion, const double* points, int64_t count, double* result) {
  const SpreadMotion<double> m(motion);
  int64_t i = 0;
  for (; i + 2 <= count; i += 2) {
    const float64x2x3_t p = loadTwoPoints(points + 3 * i);
    float64x2x3_t moved;
    for (int k = 0; k < 3; ++k) {
      const float64x2_t* const row = m.rotation + 3 * k;
      const float64x2_t plane = vaddq_f64(vmulq_f64(p.val[0], row[0]), vmulq_f64(p.val[1], row[1]));
      moved.val[k] = vaddq_f64(vaddq_f64(plane, vmulq_f64(p.val[2], row[2])), m.translation[k]);
    }
    storePoints(result + 3 * i, moved);
  }
  portable::movePoints(motion, points + 3 * i, count - i, result + 3 * i);
}

}  // namespace dax::neon
#endif
