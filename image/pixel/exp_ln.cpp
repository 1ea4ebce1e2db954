#include "image/pixel/exp_ln.h"

#include <algorithm>
#include <array>
#include <bit>
#include <limits>

#include "frame/op2d.h"
#include "frame/simd.h"
#include "frame/tiles.h"
#include "frame/vector4.h"

namespace dax {

using Int4 = int32_t __attribute__((vector_size(16)));
using Word4 = uint32_t __attribute__((vector_size(16)));

namespace {

Float4 splat(float value) {
  return Float4{value, value, value, value};
}

// A constant that the compiler does not know: it stays in a register, where a known one would be loaded again and again.
Float4 opaque(float value) {
  const volatile float hidden = value;
  return splat(hidden);
}

}  // namespace

// e^x = 2^n e^r with the integer n nearest to x / ln 2, so that |r| < 0.347; e^r = 1 + r + r^2 p(r), p a polynomial of degree 4
// whose largest error is 2^-28 of the result.
struct ExpOp {
  // Where the result and 2^n are normal.
  static Int4 usual(Float4 x) { return (std::bit_cast<Int4>(x) & 0x7FFFFFFF) <= std::bit_cast<int32_t>(86.0f); }

  Float4 log2E = opaque(0x1.715476p+0f), ln2High = opaque(0x1.62Ep-1f), ln2Low = opaque(0x1.0BFBE8p-15f);
  Float4 whole = opaque(0x1.8p+23f);  // a sum with it is rounded to an integer, which its last bits hold
  Float4 p0 = opaque(0.5f), p1 = opaque(0x1.55548Ep-3f), p2 = opaque(0x1.55545Cp-5f), p3 = opaque(0x1.123C02p-7f);
  Float4 p4 = opaque(0x1.6DB516p-10f), one = opaque(1);

  template <bool kUsual>
  Float4 of(Float4 x) const {
    // Beyond these limits results are 0 or infinite.
    Float4 held = x;
    if constexpr (!kUsual) held = x < splat(-104) ? splat(-104) : x > splat(89) ? splat(89) : x;
    const Float4 rounded = held * log2E + whole, n = rounded - whole;
    const Float4 high = held - n * ln2High, low = n * ln2Low, r = high - low;
    const Float4 p = (((p4 * r + p3) * r + p2) * r + p1) * r + p0;
    const Float4 e = one + (high + ((r * r) * p - low));
    const Int4 integer = std::bit_cast<Int4>(rounded);
    if constexpr (kUsual) return std::bit_cast<Float4>(std::bit_cast<Int4>(e) + (integer << 23));
    const Int4 power = integer - std::bit_cast<Int4>(whole);
    // In two factors: subnormal results are rounded once, great ones are infinite. NaN stays NaN with any of them.
    const Int4 half = power >> 1;
    return e * powerOfTwo(half) * powerOfTwo(power - half);
  }

  static Float4 powerOfTwo(Int4 n) { return std::bit_cast<Float4>((n + 127) << 23); }
};

// ln x = n ln 2 + ln(1 + f) with 1 + f in [sqrt 1/2, sqrt 2) = 2^-n x; ln(1 + f) = f - f^2 / 2 + f^3 p(f), p a polynomial of
// degree 7 whose largest error is 2^-27 of the result.
struct LnOp {
  // Positive normal numbers.
  static Int4 usual(Float4 x) { return std::bit_cast<Word4>(x) - 0x00800000u < 0x7F000000u; }

  Float4 ln2High = opaque(0x1.62E4p-1f), ln2Low = opaque(0x1.7F7D1Cp-20f), half = opaque(0.5f), one = opaque(1);
  Float4 p0 = opaque(0x1.555554p-2f), p1 = opaque(-0x1.000228p-2f), p2 = opaque(0x1.99A014p-3f);
  Float4 p3 = opaque(-0x1.5471F8p-3f), p4 = opaque(0x1.22D8CEp-3f), p5 = opaque(-0x1.0D86FEp-3f);
  Float4 p6 = opaque(0x1.056632p-3f), p7 = opaque(-0x1.38C7EEp-4f);
  Int4 rootHalf = std::bit_cast<Int4>(opaque(0x1.6A09E6p-1f));

  template <bool kUsual>
  Float4 of(Float4 x) const {
    Int4 bits = std::bit_cast<Int4>(x), shift = {};
    if constexpr (!kUsual) {
      const Int4 subnormal = bits < 0x00800000;
      bits = subnormal ? std::bit_cast<Int4>(x * splat(0x1p+23f)) : bits;
      shift = subnormal & 23;
    }
    const Int4 above = std::bit_cast<Int4>(std::bit_cast<Word4>(bits) - std::bit_cast<Word4>(rootHalf));
    const Float4 n = __builtin_convertvector((above >> 23) - shift, Float4);
    const Float4 f = std::bit_cast<Float4>((above & 0x007FFFFF) + rootHalf) - one;
    const Float4 p = ((((((p7 * f + p6) * f + p5) * f + p4) * f + p3) * f + p2) * f + p1) * f + p0;
    const Float4 square = f * f;
    const Float4 rest = (f * square) * p + (n * ln2Low - half * square);
    const Float4 result = n * ln2High + (f + rest);
    if constexpr (kUsual) return result;
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    const Float4 ordinary = x > splat(0) ? (x < splat(kInfinity) ? result : x) : splat(-kInfinity);
    return x >= splat(0) ? ordinary : splat(std::numeric_limits<float>::quiet_NaN());
  }
};

namespace {

constexpr int32_t kElementaryBlock = 16;

using Block = std::array<Float4, 4>;

#if DAX_HAVE_NEON
Block loadBlock(const float* from) {
  const float32x4x4_t four = vld1q_f32_x4(from);
  return {four.val[0], four.val[1], four.val[2], four.val[3]};
}
void storeBlock(float* to, const Block& block) {
  vst1q_f32_x4(to, {{block[0], block[1], block[2], block[3]}});
}
#else
Block loadBlock(const float* from) {
  return {load4(from), load4(from + 4), load4(from + 8), load4(from + 12)};
}
void storeBlock(float* to, const Block& block) {
  for (const Float4& each : block) store4(to, each), to += 4;
}
#endif

// Sixteen values of any kind. Apart from the loop over usual ones, which keeps its constants in registers.
template <class Op>
[[gnu::noinline]] void anyBlock(const float* src, float* dst) {
  const Op op;
  for (int32_t x = 0; x < kElementaryBlock; x += 4) store4(dst + x, op.template of<false>(load4(src + x)));
}

template <class Op>
void elementaryRow(const float* src, float* dst, int32_t count) {
  const Op op;
  int32_t x = 0;
  for (; x <= count - kElementaryBlock; x += kElementaryBlock) {
    auto values = loadBlock(src + x);
    const Int4 usual = (Op::usual(values[0]) & Op::usual(values[1])) & (Op::usual(values[2]) & Op::usual(values[3]));
    const auto halves = std::bit_cast<std::array<int64_t, 2>>(usual);
    if ((halves[0] & halves[1]) != -1) [[unlikely]] {
      anyBlock<Op>(src + x, dst + x);
      continue;
    }
    for (Float4& each : values) each = op.template of<true>(each);
    storeBlock(dst + x, values);
  }
  if (x == count) return;
  float rest[kElementaryBlock];
  std::fill(std::copy(src + x, src + count, rest), rest + kElementaryBlock, 1.0f);
  anyBlock<Op>(rest, rest);
  std::copy(rest, rest + (count - x), dst + x);
}

}  // namespace

template <class Op>
DaxStatus elementary32f(PoolThreads on, const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  return forEachRow(on, size, 1, elementaryRow<Op>, from, to);
}

template DaxStatus elementary32f<ExpOp>(PoolThreads, const float*, int32_t, float*, int32_t, DaxiSize);
template DaxStatus elementary32f<LnOp>(PoolThreads, const float*, int32_t, float*, int32_t, DaxiSize);

}  // namespace dax
