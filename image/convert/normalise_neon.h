// Rows of stretched grey values, sixteen at a time, in double precision or, where that is exact, in single.
#pragma once

#include "image/convert/convert_neon.h"
#include "image/convert/normalise_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

inline uint16x8_t differences(uint16x8_t a, uint16x8_t b) {
  return vsubq_u16(a, b);
}
inline uint16x8_t differences(int16x8_t a, int16x8_t b) {
  return vreinterpretq_u16_s16(vsubq_s16(a, b));
}

// In single precision, where that is exact.
template <class From>
int32_t stretchBlocks(const From* src, uint8_t* dst, int32_t count, const Stretch& stretch) {
  using L = Lanes<From>;
  const auto low = L::all(static_cast<From>(stretch.low)), high = L::all(static_cast<From>(stretch.high));
  const uint16x8_t outRange = vdupq_n_u16(static_cast<uint16_t>(stretch.outRange));
  const float32x4_t range = vdupq_n_f32(static_cast<float>(stretch.range));
  const auto quotients = [=](uint32x4_t n) {
    return roundedLanes(vdivq_f32(vcvtq_f32_s32(vreinterpretq_s32_u32(n)), range));
  };
  const auto eight = [=](const From* from) {
    const uint16x8_t above = differences(L::min(L::max(L::load(from), low), high), low);
    return signedHalves(quotients(vmull_u16(vget_low_u16(above), vget_low_u16(outRange))),
                        quotients(vmull_high_u16(above, outRange)));
  };
  return forBlocks(
      count, [=](int32_t first) { vst1q_u8(dst + first, unsignedHalves(eight(src + first), eight(src + first + 8))); });
}

template <class From, class To>
void stretchRow(const From* src, To* dst, int32_t count, const Stretch& stretch) {
  if constexpr (sizeof(From) == 2 && sizeof(To) == 1) {
    if (stretch.singleIsExact()) {
      const int32_t x = stretchBlocks(src, dst, count, stretch);
      return portable::stretchRow(src + x, dst + x, count - x, stretch);
    }
  }
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
