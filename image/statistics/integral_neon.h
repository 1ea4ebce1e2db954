// Rows of integral images of bytes, 16 pixels at a time.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/statistics/integral_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Running sums of pairs tell the sums up to the odd pixels; without the odd pixel itself that up to the even one before.
inline void integralOfBytes(const uint8_t* src, const uint32_t* above, uint32_t* dst, int32_t width) {
  const uint16x8_t zero = vdupq_n_u16(0);
  uint32x4_t before = vdupq_n_u32(0);
  int32_t x = 0;
  for (; x <= width - 16; x += 16) {
    const uint8x16_t pixels = vld1q_u8(src + x);
    uint16x8_t odd = vpaddlq_u8(pixels);
    odd = vaddq_u16(odd, vextq_u16(zero, odd, 7));
    odd = vaddq_u16(odd, vextq_u16(zero, odd, 6));
    odd = vaddq_u16(odd, vextq_u16(zero, odd, 4));
    const uint16x8_t even = vsubq_u16(odd, vshrq_n_u16(vreinterpretq_u16_u8(pixels), 8));
    const uint16x8_t low = vzip1q_u16(even, odd), high = vzip2q_u16(even, odd);
    const uint32x4x4_t over = vld1q_u32_x4(above + x);
    const uint32x4_t last = vaddw_high_u16(before, high);
    vst1q_u32_x4(dst + x,
                 {{vaddq_u32(over.val[0], vaddw_u16(before, vget_low_u16(low))),
                   vaddq_u32(over.val[1], vaddw_high_u16(before, low)),
                   vaddq_u32(over.val[2], vaddw_u16(before, vget_low_u16(high))), vaddq_u32(over.val[3], last)}});
    before = vdupq_laneq_u32(last, 3);
  }
  portable::integralRow<Itself>(src + x, above + x, dst + x, width - x, vgetq_lane_u32(before, 0));
}

}  // namespace dax::neon
#endif
