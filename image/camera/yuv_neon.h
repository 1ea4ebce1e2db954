// Rows of the YUV formats, 16 pixels at a time.
#pragma once

#include "image/camera/yuv_portable.h"
#include "image/colour/ycbcr_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Both samples of each pair of chroma, twice: those of the even and those of the odd places.
inline uint8x16x3_t withPairs(uint8x16_t y, uint8x16_t pairs, bool uFirst) {
  const uint8x16_t even = vtrn1q_u8(pairs, pairs), odd = vtrn2q_u8(pairs, pairs);
  return uFirst ? uint8x16x3_t{{y, even, odd}} : uint8x16x3_t{{y, odd, even}};
}

// Y, U and V of 16 pixels. Each sample of chroma stands for two.
template <class Format>
uint8x16x3_t loadYuv(const YuvRow& src, ptrdiff_t x) {
  if constexpr (Format::kChroma == 1) {
    const auto twice = [=](const uint8_t* from) {
      const uint8x8_t eight = vld1_u8(from + x / 2);
      return vcombine_u8(vzip1_u8(eight, eight), vzip2_u8(eight, eight));
    };
    return {{vld1q_u8(src.y + x), twice(src.u), twice(src.v)}};
  } else if constexpr (Format::kChroma == 2) {
    return withPairs(vld1q_u8(src.y + x), vld1q_u8((Format::kUFirst ? src.u : src.v) + x), Format::kUFirst);
  } else {
    const bool yFirst = src.y < src.u;
    const uint8x16x2_t both = vld2q_u8((yFirst ? src.y : src.u) + 2 * x);
    return withPairs(both.val[yFirst ? 0 : 1], both.val[yFirst ? 1 : 0], true);
  }
}

template <class Format, class Order>
void decodeYuvRow(const YuvRow& src, uint8_t* dst, int32_t count, const YCbCrDecoder& by) {
  const ptrdiff_t x = decodeBlocks<Order>(dst, count, by, [&](ptrdiff_t first) { return loadYuv<Format>(src, first); });
  portable::decodeYuvRow<Format, Order>(src, dst, static_cast<int32_t>(x), count, by);
}

}  // namespace dax::neon
#endif
