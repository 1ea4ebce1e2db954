// Elementary functions whose results must not depend on the C library's version or machine.
#pragma once

#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>

namespace dax {

// Arc tangent of t in 0..1 to about 1e-16: the nearest multiple of 1/8 from a table, the rest, at most 1/16, by the
// series r - r^3/3 + r^5/5 - ...
inline double atanUnit(double t) {
  constexpr double kEighths[9] = {0.0,
                                  0.12435499454676144,
                                  0.24497866312686414,
                                  0.35877067027057225,
                                  0.46364760900080609,
                                  0.55859931534356244,
                                  0.64350110879328437,
                                  0.71882999962162453,
                                  0.78539816339744828};
  const int k = static_cast<int>(t * 8 + 0.5);
  const double c = k * 0.125;
  const double r = (t - c) / (1 + c * t);
  const double s = r * r;
  const double series =
      1 + s * (-1.0 / 3 + s * (1.0 / 5 + s * (-1.0 / 7 + s * (1.0 / 9 + s * (-1.0 / 11 + s * (1.0 / 13))))));
  return kEighths[k] + r * series;
}

// Angle of (x, y) in (-pi, pi], 0 for (0, 0). Finite arguments only; a zero counts as positive.
inline double atan2Exact(double y, double x) {
  const double ax = std::fabs(x), ay = std::fabs(y);
  const double longer = ax > ay ? ax : ay;
  if (longer == 0) return 0;
  double angle = atanUnit((ax > ay ? ay : ax) / longer);
  if (ay > ax) angle = std::numbers::pi / 2 - angle;
  if (x < 0) angle = std::numbers::pi - angle;
  return y < 0 ? -angle : angle;
}

struct SinCos {
  double sine;
  double cosine;
};

// Sine and cosine of |angle| <= 1e6 to about 1e-16: the angle minus a multiple of pi/2, subtracted in two parts, the
// first with few enough bits that its product is exact; then the series.
constexpr SinCos sinCosExact(double angle) {
  constexpr double kHalfPiHigh = 0x1.921FB544p+0, kHalfPiLow = 0x1.0B4611A626331p-34;
  const double nearest = angle / (std::numbers::pi / 2) + 0.5;
  // Rounded down; std::floor is not constexpr.
  const auto whole = static_cast<int>(nearest);
  const double turns = whole > nearest ? whole - 1 : whole;
  const double r = (angle - turns * kHalfPiHigh) - turns * kHalfPiLow;
  const double s = r * r;
  // clang-format off
  const double sine = r * (1 + s * (-1.0 / 6 + s * (1.0 / 120 + s * (-1.0 / 5040 + s * (1.0 / 362880
      + s * (-1.0 / 39916800 + s * (1.0 / 6227020800 + s * (-1.0 / 1307674368000))))))));
  const double cosine = 1 + s * (-1.0 / 2 + s * (1.0 / 24 + s * (-1.0 / 720 + s * (1.0 / 40320
      + s * (-1.0 / 3628800 + s * (1.0 / 479001600 + s * (-1.0 / 87178291200 + s * (1.0 / 20922789888000))))))));
  // clang-format on
  switch (static_cast<int>(turns) & 3) {
    case 0:
      return {sine, cosine};
    case 1:
      return {cosine, -sine};
    case 2:
      return {-sine, -cosine};
    default:
      return {-cosine, sine};
  }
}

// The same for any angle. Beyond 1e6 it is first reduced modulo the double nearest to 2 pi, which adds an error of the
// order of the angle's own rounding. Infinities and NaN give NaN.
inline SinCos sinCosAny(double angle) {
  if (!(std::fabs(angle) <= 1e6)) angle = std::fmod(angle, 2 * std::numbers::pi);
  if (!(std::fabs(angle) <= 1e6)) return {angle - angle, angle - angle};
  return sinCosExact(angle);
}

// e^x for |x| <= 700 to about 1e-16: x minus a multiple of ln 2, then the series.
inline double expExact(double x) {
  constexpr double kLn2High = 0x1.62E42FEEp-1, kLn2Low = 0x1.A39EF35793C76p-33;
  const double powers = std::floor(x / std::numbers::ln2 + 0.5);
  const double r = (x - powers * kLn2High) - powers * kLn2Low;
  double sum = 1;
  for (int n = 14; n >= 1; --n) sum = 1 + r * sum / n;
  return std::ldexp(sum, static_cast<int>(powers));
}

// e^x for x in -40..0 to about 1e-14, for tables that the compiler makes: the power series of x / 64, squared six
// times.
constexpr double expOfTable(double x) {
  const double part = x / 64;
  double e = 1;
  for (int k = 16; k >= 1; --k) e = 1 + e * part / k;
  for (int k = 0; k < 6; ++k) e *= e;
  return e;
}

// The cube root of a positive normal number, to about 2e-7 of itself, without branches: a third of the exponent (and of the
// mantissa, which is its logarithm within 0.09) is right to 4 %, and a step of Halley's method cubes the error.
inline float cubeRoot(float x) {
  const auto bits = static_cast<float>(std::bit_cast<int32_t>(x));
  const float guess = std::bit_cast<float>(static_cast<int32_t>(bits * (1.0f / 3)) + 0x2A512CE3);
  const auto step = [x](float y) {
    const float cube = y * y * y;
    return y * ((cube + 2 * x) / (2 * cube + x));
  };
  return step(step(guess));
}

// The fifth root, in the same way; here the step leaves 2 e^3 of an error e.
inline float fifthRoot(float x) {
  const auto bits = static_cast<float>(std::bit_cast<int32_t>(x));
  const float guess = std::bit_cast<float>(static_cast<int32_t>(bits * 0.2f) + 0x32C9AF22);
  const auto step = [x](float y) {
    const float square = y * y, power = square * square * y;
    return y * ((2 * power + 3 * x) / (3 * power + 2 * x));
  };
  return step(step(guess));
}

// The n-th root (n >= 1) of a finite value >= 0, to a few units of the last place: Newton's method, which decreases
// towards the root from a power of two above it.
inline double rootExact(double value, int n) {
  if (!(value > 0) || n == 1) return value;
  int exponent;
  std::frexp(value, &exponent);
  double root = std::ldexp(1.0, exponent > 0 ? (exponent + n - 1) / n : exponent / n);
  for (;;) {
    double power = 1;
    for (int i = 1; i < n; ++i) power *= root;
    const double next = ((n - 1) * root + value / power) / n;
    if (!(next < root)) return root;
    root = next;
  }
}

}  // namespace dax
