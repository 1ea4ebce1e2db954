// Rows of the YUV formats, 16 pixels at a time.
#pragma once

#include "image/camera/yuv_portable.h"
#include "image/colour/ycbcr_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Samples of 16 pixels: eight of chroma in lanes of 16 bits.
struct YuvSamples {
  uint8x16_t y;
  uint16x8_t u, v;
};

// Pairs of chroma: the first of a pair is the lower byte.
inline YuvSamples withPairs(uint8x16_t y, uint8x16_t pairs, bool uFirst) {
  const uint16x8_t both = vreinterpretq_u16_u8(pairs);
  const uint16x8_t low = vandq_u16(both, vdupq_n_u16(255)), high = vshrq_n_u16(both, 8);
  return uFirst ? YuvSamples{y, low, high} : YuvSamples{y, high, low};
}

template <class Format>
YuvSamples loadYuv(const YuvRow& src, ptrdiff_t x) {
  if constexpr (Format::kChroma == 1) {
    return {vld1q_u8(src.y + x), vmovl_u8(vld1_u8(src.u + x / 2)), vmovl_u8(vld1_u8(src.v + x / 2))};
  } else if constexpr (Format::kChroma == 2) {
    return withPairs(vld1q_u8(src.y + x), vld1q_u8((Format::kUFirst ? src.u : src.v) + x), Format::kUFirst);
  } else {
    const bool yFirst = src.y < src.u;
    const uint8x16x2_t both = vld2q_u8((yFirst ? src.y : src.u) + 2 * x);
    return withPairs(both.val[yFirst ? 0 : 1], both.val[yFirst ? 1 : 0], true);
  }
}

// Each sample of chroma stands for two pixels.
inline ChromaTerms spreadChroma(const YuvSamples& from, const YCbCrDecoder& by) {
  const auto wide = [](uint16x4_t v) { return vreinterpretq_s32_u32(vmovl_u16(v)); };
  const ChromaTerm low = chromaTerm(wide(vget_low_u16(from.u)), wide(vget_low_u16(from.v)), by);
  const ChromaTerm high = chromaTerm(wide(vget_high_u16(from.u)), wide(vget_high_u16(from.v)), by);
  const auto first = [](const ChromaTerm& t) {
    return ChromaTerm{vzip1q_s32(t.red, t.red), vzip1q_s32(t.green, t.green), vzip1q_s32(t.blue, t.blue)};
  };
  const auto second = [](const ChromaTerm& t) {
    return ChromaTerm{vzip2q_s32(t.red, t.red), vzip2q_s32(t.green, t.green), vzip2q_s32(t.blue, t.blue)};
  };
  return {{first(low), second(low), first(high), second(high)}};
}

template <class Format, class Order>
void decodeYuvRow(const YuvRow& src, uint8_t* dst, int32_t count, const YCbCrDecoder& by) {
  ptrdiff_t x = 0;
  for (; x <= count - 16; x += 16) {
    const YuvSamples from = loadYuv<Format>(src, x);
    storeDecoded<Order>(from.y, spreadChroma(from, by), dst + 3 * x, by);
  }
  portable::decodeYuvRow<Format, Order>(src, dst, static_cast<int32_t>(x), count, by);
}

}  // namespace dax::neon
#endif
