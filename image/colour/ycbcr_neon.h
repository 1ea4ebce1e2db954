// Rows of bytes to YCbCr and back, 16 pixels at a time, in lanes of 32 bits.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/colour/ycbcr_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// 16 numbers.
struct Wide16 {
  int32x4_t v[4];
};

inline Wide16 wideOf(uint8x16_t bytes) {
  const uint16x8_t low = vmovl_u8(vget_low_u8(bytes)), high = vmovl_u8(vget_high_u8(bytes));
  return {{vreinterpretq_s32_u32(vmovl_u16(vget_low_u16(low))), vreinterpretq_s32_u32(vmovl_u16(vget_high_u16(low))),
           vreinterpretq_s32_u32(vmovl_u16(vget_low_u16(high))),
           vreinterpretq_s32_u32(vmovl_u16(vget_high_u16(high)))}};
}

// Whole parts of sums in units of 2^-16, saturated. The sums hold half a unit.
inline uint8x16_t bytesOfYCbCr(const Wide16& sums) {
  uint16x4_t part[4];
  for (int i = 0; i < 4; ++i) part[i] = vqshrun_n_s32(sums.v[i], kYCbCrBits);
  return vcombine_u8(vqmovn_u16(vcombine_u16(part[0], part[1])), vqmovn_u16(vcombine_u16(part[2], part[3])));
}

template <class Order>
void encodeYCbCrRow(const uint8_t* src, uint8_t* dst, int32_t count, const YCbCrEncoder& by) {
  ptrdiff_t x = 0;
  for (; x <= count - 16; x += 16) {
    const uint8x16x3_t from = vld3q_u8(src + 3 * x);
    const Wide16 red = wideOf(from.val[Order::kRed]), green = wideOf(from.val[1]),
                 blue = wideOf(from.val[Order::kBlue]);
    uint8x16x3_t to;
    for (int k = 0; k < 3; ++k) {
      Wide16 sum;
      for (int i = 0; i < 4; ++i) {
        sum.v[i] = vmlaq_n_s32(vdupq_n_s32(by.bias[k]), red.v[i], by.c[k][0]);
        sum.v[i] = vmlaq_n_s32(vmlaq_n_s32(sum.v[i], green.v[i], by.c[k][1]), blue.v[i], by.c[k][2]);
      }
      to.val[k] = bytesOfYCbCr(sum);
    }
    vst3q_u8(dst + 3 * x, to);
  }
  portable::encodeYCbCrRow<Order>(src + 3 * x, dst + 3 * x, static_cast<int32_t>(count - x), by);
}

// What Cb and Cr add to four pixels, and to sixteen.
struct ChromaTerm {
  int32x4_t red, green, blue;
};
struct ChromaTerms {
  ChromaTerm of[4];
};

inline ChromaTerm chromaTerm(int32x4_t cb, int32x4_t cr, const YCbCrDecoder& by) {
  const int32x4_t blue = vsubq_s32(cb, vdupq_n_s32(128)), red = vsubq_s32(cr, vdupq_n_s32(128));
  const int32x4_t green = vmlaq_n_s32(vmulq_n_s32(red, -by.greenCr), blue, -by.greenCb);
  return {vmulq_n_s32(red, by.redCr), green, vmulq_n_s32(blue, by.blueCb)};
}

template <class Order>
void storeDecoded(uint8x16_t y, const ChromaTerms& chroma, uint8_t* to, const YCbCrDecoder& by) {
  const Wide16 from = wideOf(y);
  Wide16 red, green, blue;
  for (int i = 0; i < 4; ++i) {
    const int32x4_t luma = vmlaq_n_s32(vdupq_n_s32(by.bias), from.v[i], by.y);
    red.v[i] = vaddq_s32(luma, chroma.of[i].red), green.v[i] = vaddq_s32(luma, chroma.of[i].green);
    blue.v[i] = vaddq_s32(luma, chroma.of[i].blue);
  }
  uint8x16x3_t all;
  all.val[Order::kRed] = bytesOfYCbCr(red), all.val[1] = bytesOfYCbCr(green);
  all.val[Order::kBlue] = bytesOfYCbCr(blue);
  vst3q_u8(to, all);
}

template <class Order>
void decodeYCbCrRow(const uint8_t* src, uint8_t* dst, int32_t count, const YCbCrDecoder& by) {
  ptrdiff_t x = 0;
  for (; x <= count - 16; x += 16) {
    const uint8x16x3_t from = vld3q_u8(src + 3 * x);
    const Wide16 cb = wideOf(from.val[1]), cr = wideOf(from.val[2]);
    ChromaTerms chroma;
    for (int i = 0; i < 4; ++i) chroma.of[i] = chromaTerm(cb.v[i], cr.v[i], by);
    storeDecoded<Order>(from.val[0], chroma, dst + 3 * x, by);
  }
  portable::decodeYCbCrRow<Order>(src + 3 * x, dst + 3 * x, static_cast<int32_t>(count - x), by);
}

}  // namespace dax::neon
#endif
