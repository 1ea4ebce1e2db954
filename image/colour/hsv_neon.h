// Rows of bytes to HSV and HLS and back, 16 pixels at a time. Numbers of the portable form that are whole are integers here, all
// others floats by the same operations in the same order.
#pragma once

#include "frame/dispatch.h"
#include "image/colour/hsv_portable.h"
#include "image/pixel/float_lanes_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// --- To hue ---

// Sixteen whole numbers.
struct HueWide {
  uint16x8_t low, high;
};

inline HueWide hueWide(uint8x16_t v) {
  return {vmovl_u8(vget_low_u8(v)), vmovl_high_u8(v)};
}

// Eight quotients n up / (d down), rounded: quotients of floats, which hold the products exactly.
inline uint16x8_t roundedQuotients(uint16x8_t n, uint16_t up, uint16x8_t d, uint16_t down) {
  const uint16x8_t ups = vdupq_n_u16(up), downs = vdupq_n_u16(down);
  const auto quotients = [](uint32x4_t a, uint32x4_t b) {
    return nearest(vdivq_f32(vcvtq_f32_s32(vreinterpretq_s32_u32(a)), vcvtq_f32_s32(vreinterpretq_s32_u32(b))));
  };
  const int32x4_t low =
      quotients(vmull_u16(vget_low_u16(n), vget_low_u16(ups)), vmull_u16(vget_low_u16(d), vget_low_u16(downs)));
  const int32x4_t high = quotients(vmull_high_u16(n, ups), vmull_high_u16(d, downs));
  return vuzp1q_u16(vreinterpretq_u16_s32(low), vreinterpretq_u16_s32(high));
}

// 256 becomes 0.
inline uint8x16_t roundedQuotients(const HueWide& n, uint16_t up, const HueWide& d, uint16_t down) {
  return vcombine_u8(vmovn_u16(roundedQuotients(n.low, up, d.low, down)),
                     vmovn_u16(roundedQuotients(n.high, up, d.high, down)));
}

struct HueOfBytes {
  HueOfBytes(uint8x16_t red, uint8x16_t green, uint8x16_t blue)
      : max(vmaxq_u8(vmaxq_u8(red, green), blue)), min(vminq_u8(vminq_u8(red, green), blue)), d(vsubq_u8(max, min)) {
    const uint8x16_t isRed = vceqq_u8(red, max), isGreen = vceqq_u8(green, max);
    const uint8x16_t plus = vbslq_u8(isRed, green, vbslq_u8(isGreen, blue, red));
    const uint8x16_t minus = vbslq_u8(isRed, blue, vbslq_u8(isGreen, red, green));
    const uint8x16_t turned = vandq_u8(vcltq_u8(green, blue), vdupq_n_u8(6));
    const uint8x16_t first = vbslq_u8(isRed, turned, vbslq_u8(isGreen, vdupq_n_u8(2), vdupq_n_u8(4)));
    position.low = vmlal_u8(lowDifference(plus, minus), vget_low_u8(first), vget_low_u8(d));
    position.high = vmlal_u8(highDifference(plus, minus), vget_high_u8(first), vget_high_u8(d));
  }

  uint8x16_t of(uint16_t turn) const {
    const uint8x16_t hue = roundedQuotients(position, turn, hueWide(vmaxq_u8(d, vdupq_n_u8(1))), 6);
    return vbicq_u8(hue, vceqq_u8(hue, vdupq_n_u8(static_cast<uint8_t>(turn))));
  }

  uint8x16_t max, min, d;
  HueWide position;  // times d, in sixths of a turn
};

inline uint8x16x3_t huePixels(portable::RgbToHsvPixel, uint8x16_t red, uint8x16_t green, uint8x16_t blue,
                              uint16_t turn) {
  const HueOfBytes hue(red, green, blue);
  const HueWide per = hueWide(vmaxq_u8(hue.max, vdupq_n_u8(1)));
  return {{hue.of(turn), roundedQuotients(hueWide(hue.d), 255, per, 1), hue.max}};
}

inline uint8x16x3_t huePixels(portable::RgbToHlsPixel, uint8x16_t red, uint8x16_t green, uint8x16_t blue,
                              uint16_t turn) {
  const HueOfBytes hue(red, green, blue);
  const auto below = [](uint16x8_t sum) {
    return vmaxq_u16(vminq_u16(sum, vsubq_u16(vdupq_n_u16(510), sum)), vdupq_n_u16(1));
  };
  const HueWide per = {below(vaddl_u8(vget_low_u8(hue.max), vget_low_u8(hue.min))),
                       below(vaddl_high_u8(hue.max, hue.min))};
  // Of a half, the even neighbour.
  const uint8x16_t floor = vhaddq_u8(hue.max, hue.min);
  const uint8x16_t up = vandq_u8(vandq_u8(floor, veorq_u8(hue.max, hue.min)), vdupq_n_u8(1));
  return {{hue.of(turn), vaddq_u8(floor, up), roundedQuotients(hueWide(hue.d), 255, per, 1)}};
}

// --- From hue ---

struct FloatTriple {
  float32x4_t a, b, c;
};

// period parts of a turn, for hues below two turns.
inline float32x4_t partsOfTurn(float32x4_t hue, float turn, float period) {
  const float32x4_t turns = vdivq_f32(hue, vdupq_n_f32(turn)), one = vdupq_n_f32(1);
  const auto ones = vandq_u32(vcgeq_f32(turns, one), vreinterpretq_u32_f32(one));
  return vmulq_n_f32(vsubq_f32(turns, vreinterpretq_f32_u32(ones)), period);
}

inline float32x4_t shiftedPlace(float32x4_t place, float n, float period) {
  const float32x4_t sum = vaddq_f32(place, vdupq_n_f32(n)), all = vdupq_n_f32(period);
  return vsubq_f32(sum, vreinterpretq_f32_u32(vandq_u32(vcgeq_f32(sum, all), vreinterpretq_u32_f32(all))));
}

inline float32x4_t heldLanes(float32x4_t value, float low, float high) {
  return vmaxq_f32(vdupq_n_f32(low), vminq_f32(value, vdupq_n_f32(high)));
}

inline FloatTriple colourOfHue(portable::HsvToRgbPixel, const FloatTriple& hsv, float turn) {
  const float32x4_t sixths = partsOfTurn(hsv.a, turn, 6), v = hsv.c;
  const float32x4_t depth = vdivq_f32(vmulq_f32(v, hsv.b), vdupq_n_f32(255));
  const auto channel = [=](float n) {
    const float32x4_t k = shiftedPlace(sixths, n, 6);
    return vsubq_f32(v, vmulq_f32(depth, heldLanes(vminq_f32(k, vsubq_f32(vdupq_n_f32(4), k)), 0, 1)));
  };
  return {channel(5), channel(3), channel(1)};
}

inline FloatTriple colourOfHue(portable::HlsToRgbPixel, const FloatTriple& hls, float turn) {
  const float32x4_t twelfths = partsOfTurn(hls.a, turn, 12), l = hls.b, full = vdupq_n_f32(255);
  const float32x4_t depth = vdivq_f32(vmulq_f32(hls.c, vminq_f32(l, vsubq_f32(full, l))), full);
  const auto channel = [=](float n) {
    const float32x4_t k = shiftedPlace(twelfths, n, 12);
    const float32x4_t place = vminq_f32(vsubq_f32(k, vdupq_n_f32(3)), vsubq_f32(vdupq_n_f32(9), k));
    return vsubq_f32(l, vmulq_f32(depth, heldLanes(place, -1, 1)));
  };
  return {channel(0), channel(8), channel(4)};
}

// Inline, for the sake of constants in registers.
template <class Pixel>
[[gnu::always_inline]] inline uint8x16x3_t colourPixels(const uint8x16x3_t& from, float turn) {
  const Quarters<uint8_t> a = toFloats(from.val[0]), b = toFloats(from.val[1]), c = toFloats(from.val[2]);
  Quarters<uint8_t> to[3];
  for (size_t i = 0; i < a.size(); ++i) {
    const FloatTriple rgb = colourOfHue(Pixel{}, {a[i], b[i], c[i]}, turn);
    to[0][i] = rgb.a, to[1][i] = rgb.b, to[2][i] = rgb.c;
  }
  return {{fromFloats<uint8_t>(to[0]), fromFloats<uint8_t>(to[1]), fromFloats<uint8_t>(to[2])}};
}

// --- Rows ---

template <class Conversion, class T>
void hueRow(const T* src, T* dst, int32_t count, double turn) {
  using Pixel = typename Conversion::Pixel;
  ptrdiff_t x = 0;
  if constexpr (std::is_same_v<T, uint8_t>) {
    for (; x <= count - 16; x += 16) {
      const uint8x16x3_t v = vld3q_u8(src + 3 * x);
      constexpr int kRed = Conversion::kMakesHue ? Conversion::kFrom : Conversion::kTo;
      uint8x16x3_t to;
      if constexpr (Conversion::kMakesHue) {
        to = huePixels(Pixel{}, v.val[kRed], v.val[1], v.val[2 - kRed], static_cast<uint16_t>(turn));
      } else {
        const uint8x16x3_t rgb = colourPixels<Pixel>(v, static_cast<float>(turn));
        to.val[kRed] = rgb.val[0], to.val[1] = rgb.val[1], to.val[2 - kRed] = rgb.val[2];
      }
      vst3q_u8(dst + 3 * x, to);
    }
  }
  portable::hueRow<Conversion>(src + 3 * x, dst + 3 * x, static_cast<int32_t>(count - x), turn);
}

}  // namespace dax::neon
#endif
