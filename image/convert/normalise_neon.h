// Rows of stretched grey values, sixteen at a time in double precision.
#pragma once

#include "image/convert/convert_neon.h"
#include "image/convert/normalise_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

template <class From, class To>
void stretchRow(const From* src, To* dst, int32_t count, const Stretch& stretch) {
  // Both are pixels, so single precision holds them.
  const float32x4_t min = vdupq_n_f32(static_cast<float>(stretch.low)),
                    max = vdupq_n_f32(static_cast<float>(stretch.high));
  const float64x2_t low = vdupq_n_f64(stretch.low), outLow = vdupq_n_f64(stretch.outLow);
  const float64x2_t outRange = vdupq_n_f64(stretch.outRange), range = vdupq_n_f64(stretch.range);
  const auto at = [=](float64x2_t v) { return vaddq_f64(outLow, vmulq_f64(vsubq_f64(v, low), outRange) / range); };
  const int32_t x = forBlocks(count, [=](int32_t first) {
    storeDoubles(dst + first, loadFloats(src + first), [=](float32x4_t v, float64x2_t& lower, float64x2_t& upper) {
      const float32x4_t held = vminq_f32(vmaxq_f32(v, min), max);
      lower = at(vcvt_f64_f32(vget_low_f32(held))), upper = at(vcvt_high_f64_f32(held));
    });
  });
  portable::stretchRow(src + x, dst + x, count - x, stretch);
}

}  // namespace dax::neon
#endif
