#include "frame/numeric/elementary.h"

#include <array>
#include <bit>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <numbers>

#include "frame/numeric/double_double.h"

namespace dax::elementary {
namespace {

using std::fabs;

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();

constexpr DoubleDouble kLn2 = {0x1.62E42FEFA39EFp-1, 0x1.ABC9E3B39803Fp-56};
// The same with 32 bits in the high part, whose products with integers of 21 bits are exact.
constexpr DoubleDouble kLn2Short = {0x1.62E42FEEp-1, 0x1.A39EF35793C76p-33};
constexpr DoubleDouble kHalfPi = {0x1.921FB54442D18p+0, 0x1.1A62633145C07p-54};
constexpr DoubleDouble kPi = {2 * kHalfPi.high, 2 * kHalfPi.low};

constexpr DoubleDouble whole(int n) {
  return {static_cast<double>(n), 0};
}

bool isNaN(double x) {
  return !(x == x);
}

bool isInfinite(double x) {
  return fabs(x) == kInfinity;
}

double powerOfTwo(int n) {
  return std::bit_cast<double>(static_cast<uint64_t>(n + 1023) << 52);
}

// x 2^n, rounded once where x is about 1; n in -2000..2000.
double scaled(double x, int n) {
  return x * powerOfTwo(n / 2) * powerOfTwo(n - n / 2);
}

// x = mantissa 2^exponent, with the mantissa in [1, 2).
struct Parts {
  double mantissa;
  int exponent;
};

Parts partsOf(double x) {
  const bool subnormal = x < 0x1p-1022;
  const auto bits = std::bit_cast<uint64_t>(subnormal ? x * 0x1p54 : x);
  return {std::bit_cast<double>((bits & 0x000FFFFFFFFFFFFF) | 0x3FF0000000000000),
          static_cast<int>(bits >> 52) - (subnormal ? 1077 : 1023)};
}

// --- Exponential ---

constexpr int kPowerBits = 7, kPowers = 1 << kPowerBits;

// 2^(i / 128) by the power series.
constexpr auto kPowerOf = [] {
  std::array<DoubleDouble, kPowers> table = {};
  for (size_t i = 0; i < kPowers; ++i) {
    const DoubleDouble x = kLn2 * DoubleDouble{static_cast<double>(i) / kPowers, 0};
    DoubleDouble sum = {1, 0};
    for (int n = 27; n >= 1; --n) sum = DoubleDouble{1, 0} + x * sum / whole(n);
    table[i] = sum;
  }
  return table;
}();

// e^x: x less the nearest multiple of (ln 2) / 128, which leaves |r| < 0.0028, and the series of e^r - 1 from there on.
double expOf(DoubleDouble x) {
  if (!(x.high < 710)) return kInfinity;
  if (!(x.high > -746)) return 0;
  const double steps = std::floor(x.high * (kPowers / std::numbers::ln2) + 0.5);
  const double r = (x.high - steps * (kLn2Short.high / kPowers)) - (steps * (kLn2Short.low / kPowers) - x.low);
  const double series = r + r * r * (1.0 / 2 + r * (1.0 / 6 + r * (1.0 / 24 + r * (1.0 / 120 + r * (1.0 / 720)))));
  const int n = static_cast<int>(steps);
  const DoubleDouble power = kPowerOf[static_cast<size_t>(n & (kPowers - 1))];
  return scaled(power.high + (power.low + power.high * series), n >> kPowerBits);
}

// --- Logarithm ---

// A factor near 1 / m, a multiple of 1/128, for the mantissas m of one interval of [1, 2), or of half of it; and what
// the factor takes from the logarithm.
struct LogStep {
  double factor;
  DoubleDouble log;
};

constexpr int kLogSteps = 128;
constexpr int kHalvedFrom =
    53;  // mantissas above about sqrt(2) are halved, so that logarithms near 0 keep their digits

// -log(c) = -2 artanh((c - 1) / (c + 1)) by its series.
constexpr DoubleDouble minusLog(double c) {
  const DoubleDouble z = DoubleDouble{c - 1, 0} / DoubleDouble{c + 1, 0}, square = z * z;
  DoubleDouble sum = {0, 0};
  for (int n = 49; n >= 1; n -= 2) sum = DoubleDouble{1, 0} / whole(n) + square * sum;
  return DoubleDouble{-2, 0} * z * sum;
}

constexpr auto kLogStep = [] {
  std::array<LogStep, kLogSteps> table = {};
  for (int i = 0; i < kLogSteps; ++i) {
    const double middle = (1 + (i + 0.5) / kLogSteps) / (i < kHalvedFrom ? 1 : 2);
    const double factor = static_cast<int>(kLogSteps / middle + 0.5) / static_cast<double>(kLogSteps);
    table[static_cast<size_t>(i)] = {factor, minusLog(factor)};
  }
  return table;
}();

// log(1 + r) for |r| < 0.01: r - r^2/2 to 106 bits, the rest of the series to 53.
DoubleDouble logNearOne(DoubleDouble r) {
  const double x = r.high;
  const DoubleDouble square = twoProduct(x, x);
  const double series =
      1.0 / 3 -
      x * (1.0 / 4 - x * (1.0 / 5 - x * (1.0 / 6 - x * (1.0 / 7 - x * (1.0 / 8 - x * (1.0 / 9 - x * (1.0 / 10)))))));
  const DoubleDouble sum = twoSum(x, -0.5 * square.high);
  return fastTwoSum(sum.high, sum.low + (r.low - x * r.low - 0.5 * square.low + x * square.high * series));
}

// Logarithm of a positive finite number to about 2^-67 of itself.
DoubleDouble logOf(double x) {
  auto [mantissa, exponent] = partsOf(x);
  const int i = static_cast<int>((mantissa - 1) * kLogSteps);
  if (i >= kHalvedFrom) {
    mantissa *= 0.5;
    ++exponent;
  }
  const LogStep& step = kLogStep[static_cast<size_t>(i)];
  const DoubleDouble product = twoProduct(mantissa, step.factor);
  const DoubleDouble r = fastTwoSum(product.high - 1, product.low);
  return DoubleDouble{exponent * kLn2Short.high, exponent * kLn2Short.low} + step.log + logNearOne(r);
}

// --- Sine and cosine ---

// An angle less a multiple of pi/2, in about [-pi/4, pi/4].
struct Reduced {
  DoubleDouble rest;
  int quadrant;
};

// |x| < 2^20: pi/2 in parts of 33 bits, whose products with the number of quarter turns are exact.
Reduced reduceSmall(double x) {
  const double turns = std::floor(x * (2 / std::numbers::pi) + 0.5);
  const DoubleDouble rest = twoSum(x - turns * 0x1.921FB544p+0, -turns * 0x1.0B4611A6p-34);
  const DoubleDouble tail = {turns * 0x1.3198A2Ep-69, turns * 0x1.B839A252049C1p-104};
  return {rest - tail, static_cast<int>(turns) & 3};
}

// 2 / pi, behind 64 zero bits.
constexpr uint64_t kTwoOverPi[20] = {
    0x0000000000000000, 0xA2F9836E4E441529, 0xFC2757D1F534DDC0, 0xDB6295993C439041, 0xFE5163ABDEBBC561,
    0xB7246E3A424DD2E0, 0x06492EEA09D1921C, 0xFE1DEB1CB129A73E, 0xE88235F52EBB4484, 0xE99C7026B45F7E41,
    0x3991D639835339F4, 0x9C845F8BBDF9283B, 0x1FF897FFDE05980F, 0xEF2F118B5A0A6D1F, 0x6D367ECF27CB09B7,
    0x4F463F669E5FEA2D, 0x7527BAC7EBE5F17B, 0x3D0739F78A5292EA, 0x6BFB5FB11F8D5D08, 0x56033046FC7B6BAB,
};

// 64 bits of the table from a bit on.
uint64_t bitsOfTwoOverPi(int first) {
  const uint64_t high = kTwoOverPi[first / 64], low = kTwoOverPi[first / 64 + 1];
  return first % 64 == 0 ? high : high << (first % 64) | low >> (64 - first % 64);
}

// A whole number below 2^127 as an integer. (The compiler's own conversion may use a fused operation.)
__int128 integerOf(double whole) {
  const auto bits = std::bit_cast<uint64_t>(whole);
  const int exponent = static_cast<int>(bits >> 52 & 0x7FF) - 1075;
  if (exponent == -1075) return 0;
  const uint64_t mantissa = (bits & ((uint64_t{1} << 52) - 1)) | uint64_t{1} << 52;
  const auto magnitude = static_cast<__int128>(exponent >= 0 ? static_cast<unsigned __int128>(mantissa) << exponent
                                                             : mantissa >> -exponent);
  return whole < 0 ? -magnitude : magnitude;
}

// 2^20 <= x, finite. Payne and Hanek, Radian reduction for trigonometric functions, SIGNUM Newsletter 18, 1983: of x 2/pi
// the bits that count whole turns are never computed. With x = m 2^e and W the 192 bits of 2/pi from the (e - 1)-th on, the
// quarter turns are m W / 2^190 modulo 4.
Reduced reduceLarge(double x) {
  using Wide = unsigned __int128;
  const auto [mantissa, exponent] = partsOf(x);
  const auto m = static_cast<uint64_t>(mantissa * 0x1p52);
  const int first = 64 + (exponent - 52) - 2;
  const Wide low = Wide{m} * bitsOfTwoOverPi(first + 128);
  const Wide middle = Wide{m} * bitsOfTwoOverPi(first + 64) + (low >> 64);
  const Wide turns = middle + (Wide{m * bitsOfTwoOverPi(first)} << 64);  // in units of 2^-126
  // To the nearest quarter turn; the rest, signed, in units of 2^-127, so that its rounding cannot overflow.
  const __int128 rest = static_cast<__int128>(turns << 2) >> 1;
  const int quadrant = static_cast<int>((turns >> 126) + (rest < 0 ? 1 : 0)) & 3;
  const auto high = static_cast<double>(rest);
  const auto rounding = static_cast<double>(rest - integerOf(high));
  return {DoubleDouble{high * 0x1p-127, rounding * 0x1p-127} * kHalfPi, quadrant};
}

SinCos sinCosOf(DoubleDouble r) {
  const double x = r.high, square = x * x, half = 0.5 * square;
  // clang-format off
  const double sine = x * square * (-1.0 / 6 + square * (1.0 / 120 + square * (-1.0 / 5040 + square * (1.0 / 362880
      + square * (-1.0 / 39916800 + square * (1.0 / 6227020800 + square * (-1.0 / 1307674368000
      + square * (1.0 / 355687428096000))))))));
  const double cosine = square * square * (1.0 / 24 + square * (-1.0 / 720 + square * (1.0 / 40320
      + square * (-1.0 / 3628800 + square * (1.0 / 479001600 + square * (-1.0 / 87178291200
      + square * (1.0 / 20922789888000)))))));
  // clang-format on
  // 1 - square / 2, whose rounding error is added again.
  const double start = 1 - half;
  return {x + (sine + r.low * (1 - half)), start + (((1 - start) - half) + (cosine - r.low * (x + sine)))};
}

// --- Arc tangent ---

constexpr int kArcs = 16;

// atan(z) for z <= 1/16 by its series.
constexpr DoubleDouble smallArc(DoubleDouble z) {
  const DoubleDouble square = z * z;
  DoubleDouble sum = {0, 0};
  for (int n = 29; n >= 1; n -= 2) sum = DoubleDouble{1, 0} / whole(n) - square * sum;
  return z * sum;
}

// atan(i / 16), each from the one before: atan(a) - atan(b) = atan((a - b) / (1 + a b)).
constexpr auto kArcOf = [] {
  std::array<DoubleDouble, kArcs + 1> table = {};
  for (int i = 1; i <= kArcs; ++i) {
    const DoubleDouble step = whole(kArcs) / whole(kArcs * kArcs + i * (i - 1));
    table[static_cast<size_t>(i)] = table[static_cast<size_t>(i - 1)] + smallArc(step);
  }
  return table;
}();

// atan(y / x) for 0 <= y <= x, x in [1, 2): the nearest multiple c of 1/16, and atan((y - c x) / (x + c y)) by the series.
DoubleDouble arcOf(double y, double x) {
  const int i = static_cast<int>(y / x * kArcs + 0.5);
  const double c = i / static_cast<double>(kArcs);
  const DoubleDouble r = (DoubleDouble{y, 0} - twoProduct(c, x)) / (DoubleDouble{x, 0} + twoProduct(c, y));
  const double s = r.high * r.high;
  const double series =
      s * (-1.0 / 3 + s * (1.0 / 5 + s * (-1.0 / 7 + s * (1.0 / 9 + s * (-1.0 / 11 + s * (1.0 / 13))))));
  return kArcOf[static_cast<size_t>(i)] + fastTwoSum(r.high, r.low + r.high * series);
}

// Angle of (x, y), neither negative, not both 0.
DoubleDouble angleOf(double y, double x) {
  const bool steep = y > x;
  const double longer = steep ? y : x, shorter = steep ? x : y;
  const auto [mantissa, exponent] = partsOf(longer);
  const DoubleDouble arc = arcOf(scaled(shorter, -exponent), mantissa);
  return steep ? kHalfPi - arc : arc;
}

bool isInteger(double y) {
  return std::floor(y) == y;
}

bool isOdd(double y) {
  return fabs(y) < 0x1p53 && isInteger(y) && static_cast<int64_t>(y) % 2 != 0;
}

}  // namespace

double exp(double x) {
  return isNaN(x) ? kNaN : expOf({x, 0});
}

double log(double x) {
  if (!(x >= 0)) return kNaN;
  if (x == 0) return -kInfinity;
  return isInfinite(x) ? x : logOf(x).high;
}

double pow(double x, double y) {
  if (y == 0 || x == 1) return 1;
  if (isNaN(x) || isNaN(y)) return kNaN;
  const double sign = std::signbit(x) && isOdd(y) ? -1 : 1;
  if (x == 0 || isInfinite(x)) return sign * ((x == 0) == (y < 0) ? kInfinity : 0);
  if (x < 0 && !isInteger(y)) return kNaN;
  // No logarithm but that of 1 is below 2^-54: greater exponents lead to the same infinity or zero.
  const double bounded = y > 0x1p64 ? 0x1p64 : y < -0x1p64 ? -0x1p64 : y;
  return sign * expOf(logOf(fabs(x)) * DoubleDouble{bounded, 0});
}

// Halley's method from a chord of the mantissa; then what is left of the mantissa after a cube of 106 bits.
double cbrt(double x) {
  if (isNaN(x)) return kNaN;
  if (x == 0 || isInfinite(x)) return x;
  const auto [mantissa, exponent] = partsOf(fabs(x));
  const int third = (exponent + 3000) / 3 - 1000;
  const double m = mantissa * powerOfTwo(exponent - 3 * third);
  double root = 0.85 + 0.15 * m;
  for (int i = 0; i < 3; ++i) {
    const double cube = root * root * root;
    root *= (cube + 2 * m) / (2 * cube + m);
  }
  const DoubleDouble cube = twoProduct(root, root) * DoubleDouble{root, 0};
  root += ((m - cube.high) - cube.low) / (3 * root * root);
  return std::copysign(scaled(root, third), x);
}

SinCos sinCos(double x) {
  const double size = fabs(x);
  if (!(size < kInfinity)) return {kNaN, kNaN};
  if (size < 0x1p-27) return {x, 1};
  const auto [rest, quadrant] = size < 0x1p20 ? reduceSmall(size) : reduceLarge(size);
  const auto [sine, cosine] = sinCosOf(rest);
  const double sign = x < 0 ? -1 : 1;
  switch (quadrant) {
    case 0:
      return {sign * sine, cosine};
    case 1:
      return {sign * cosine, -sine};
    case 2:
      return {sign * -sine, -cosine};
    default:
      return {sign * -cosine, sine};
  }
}

double sin(double x) {
  return sinCos(x).sine;
}

double cos(double x) {
  return sinCos(x).cosine;
}

double atan2(double y, double x) {
  if (isNaN(x) || isNaN(y)) return kNaN;
  if (isInfinite(x) || isInfinite(y)) {
    x = std::copysign(isInfinite(x) ? 1.0 : 0.0, x);
    y = std::copysign(isInfinite(y) ? 1.0 : 0.0, y);
  }
  const double right = fabs(x), up = fabs(y);
  const bool left = std::signbit(x);
  // An angle that is its own tangent; it may be subnormal.
  if (!left && up <= right * 0x1p-60) return up == 0 ? y : y / x;
  const DoubleDouble angle = up == 0 ? DoubleDouble{0, 0} : angleOf(up, right);
  return std::copysign(left ? (kPi - angle).high : angle.high, y);
}

}  // namespace dax::elementary
