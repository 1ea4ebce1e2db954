// NEON twin of the filter of calipers.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "measure/caliper/caliper_filter_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline void filter(const float* extended, const float* kernel, int32_t length, int32_t n, float* out) {
  int32_t i = 0;
  for (; i <= n - 8; i += 8) {
    float32x4_t low = vdupq_n_f32(0), high = low;
    for (int32_t k = 0; k < length; ++k) {
      const float32x4_t weight = vdupq_n_f32(kernel[k]);
      low = vaddq_f32(low, vmulq_f32(weight, vld1q_f32(extended + i + k)));
      high = vaddq_f32(high, vmulq_f32(weight, vld1q_f32(extended + i + k + 4)));
    }
    vst1q_f32(out + i, low);
    vst1q_f32(out + i + 4, high);
  }
  portable::filter(extended, kernel, length, i, n, out);
}

}  // namespace dax::neon
#endif
