// Rows of bytes to YCbCr and back, 16 pixels at a time.
#pragma once

#include "frame/dispatch.h"
#include "frame/simd.h"
#include "image/colour/ycbcr_portable.h"
#include "image/convert/convert_neon.h"

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

// A factor in units of 2^-16 as a whole number and a fraction of at most a half: the fraction fits the 16 bits of a widening
// product, and the whole number moves no bit that a shift by 16 drops.
struct SplitFactor {
  explicit SplitFactor(int32_t factor)
      : whole(static_cast<int16_t>((factor + kYCbCrHalf) >> kYCbCrBits)),
        fraction(static_cast<int16_t>(factor - whole * (1 << kYCbCrBits))) {}
  int16_t whole, fraction;
};

// The factors of a decoder; that of Y is 1 and a fraction, that of Cb in green only a fraction, and those of green are subtracted.
struct SplitDecoder {
  explicit SplitDecoder(const YCbCrDecoder& by)
      : redCr(by.redCr),
        greenCr(-by.greenCr),
        blueCb(by.blueCb),
        greenCb(SplitFactor(-by.greenCb).fraction),
        y(SplitFactor(by.y).fraction),
        bias(by.bias) {}
  SplitFactor redCr, greenCr, blueCb;
  int16_t greenCb, y;
  int32_t bias;
};

// Eight numbers in units of 2^-16, of which a sum's upper half is the whole part.
struct Fractions8 {
  int32x4_t low, high;
};

#if defined(__aarch64__)
inline Fractions8 fractionsOf(int16x8_t v, int16_t factor) {
  return {vmull_n_s16(vget_low_s16(v), factor), vmull_high_n_s16(v, factor)};
}
inline Fractions8 fractionsOf(int16x8_t v, int16_t factor, int16x8_t w, int16_t factorOfW) {
  const Fractions8 first = fractionsOf(v, factor);
  return {vmlal_n_s16(first.low, vget_low_s16(w), factorOfW), vmlal_high_n_s16(first.high, w, factorOfW)};
}
inline int16x8_t wholeOfSum(const Fractions8& a, const Fractions8& b) {
  return vaddhn_high_s32(vaddhn_s32(a.low, b.low), a.high, b.high);
}
#else
// What SIMDe lacks, or does in pieces.
inline Fractions8 fractionsOf(int16x8_t v, int16_t factor, int16x8_t w, int16_t factorOfW) {
  const __m128i factors = _mm_set1_epi32(int32_t{factorOfW} * 65536 + static_cast<uint16_t>(factor));
  return {int32x4_t(_mm_madd_epi16(_mm_unpacklo_epi16(__m128i(v), __m128i(w)), factors)),
          int32x4_t(_mm_madd_epi16(_mm_unpackhi_epi16(__m128i(v), __m128i(w)), factors))};
}
inline Fractions8 fractionsOf(int16x8_t v, int16_t factor) {
  return fractionsOf(v, factor, v, 0);
}
inline int16x8_t wholeOfSum(const Fractions8& a, const Fractions8& b) {
  return int16x8_t(_mm_packs_epi32(_mm_srai_epi32(__m128i(vaddq_s32(a.low, b.low)), kYCbCrBits),
                                   _mm_srai_epi32(__m128i(vaddq_s32(a.high, b.high)), kYCbCrBits)));
}
#endif

// Eight pixels. kFull: the factor of Y is 1; then the products of one channel are rounded by themselves, by half the fraction,
// which gives the same for all of the 256 values and the factors of both standards.
template <bool kFull>
struct DecodedYCbCr {
  DecodedYCbCr(int16x8_t y, int16x8_t cb, int16x8_t cr, const SplitDecoder& by) {
    Fractions8 luma = {vdupq_n_s32(by.bias), vdupq_n_s32(by.bias)};
    if (!kFull) {
      const Fractions8 product = fractionsOf(y, by.y);
      luma = {vaddq_s32(luma.low, product.low), vaddq_s32(luma.high, product.high)};
    }
    const auto ofOne = [&](int16x8_t chroma, SplitFactor factor) {
      const int16x8_t part = kFull ? vqrdmulhq_n_s16(chroma, static_cast<int16_t>(factor.fraction / 2))
                                   : wholeOfSum(luma, fractionsOf(chroma, factor.fraction));
      return vmlaq_n_s16(vaddq_s16(part, y), chroma, factor.whole);
    };
    const int16x8_t part = wholeOfSum(luma, fractionsOf(cr, by.greenCr.fraction, cb, by.greenCb));
    red = ofOne(cr, by.redCr), blue = ofOne(cb, by.blueCb);
    green = vmlaq_n_s16(vaddq_s16(part, y), cr, by.greenCr.whole);
  }
  int16x8_t red, green, blue;
};

// Whole blocks of 16 pixels; load(x) gives Y, Cb and Cr of those from x on. Returns the number of pixels.
template <bool kFull, class Order, class Load>
ptrdiff_t decodeBlocks(uint8_t* dst, int32_t count, const YCbCrDecoder& decoder, Load load) {
  const SplitDecoder by(decoder);
  const uint8x16_t centre = vdupq_n_u8(128);
  const auto low = [=](uint8x16_t v) { return vreinterpretq_s16_u16(lowDifference(v, centre)); };
  const auto high = [=](uint8x16_t v) { return vreinterpretq_s16_u16(highDifference(v, centre)); };
  ptrdiff_t x = 0;
  for (; x <= count - 16; x += 16) {
    const uint8x16x3_t from = load(x);
    const uint8x16_t y = from.val[0], cb = from.val[1], cr = from.val[2];
    const DecodedYCbCr<kFull> first(vreinterpretq_s16_u16(vmovl_u8(vget_low_u8(y))), low(cb), low(cr), by);
    const DecodedYCbCr<kFull> second(vreinterpretq_s16_u16(vmovl_high_u8(y)), high(cb), high(cr), by);
    uint8x16x3_t to;
    to.val[Order::kRed] = unsignedHalves(first.red, second.red);
    to.val[1] = unsignedHalves(first.green, second.green);
    to.val[Order::kBlue] = unsignedHalves(first.blue, second.blue);
    vst3q_u8(dst + 3 * x, to);
  }
  return x;
}

template <class Order, class Load>
ptrdiff_t decodeBlocks(uint8_t* dst, int32_t count, const YCbCrDecoder& by, Load load) {
  auto* const blocks = by.y == 1 << kYCbCrBits ? decodeBlocks<true, Order, Load> : decodeBlocks<false, Order, Load>;
  return blocks(dst, count, by, load);
}

template <class Order>
void decodeYCbCrRow(const uint8_t* src, uint8_t* dst, int32_t count, const YCbCrDecoder& by) {
  const ptrdiff_t x = decodeBlocks<Order>(dst, count, by, [=](ptrdiff_t first) { return vld3q_u8(src + 3 * first); });
  portable::decodeYCbCrRow<Order>(src + 3 * x, dst + 3 * x, static_cast<int32_t>(count - x), by);
}

}  // namespace dax::neon
#endif
