// Kernels of interpolation: what a tap at a distance counts.
#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>

#include "frame/math.h"
#include "frame/numeric/elementary.h"

namespace dax {

// Keys, Cubic convolution interpolation for digital image processing, 1981; a = -0.5 keeps polynomials of degree 2. The parts
// of the kernel for distances below 1 and from 1 to 2.
constexpr double cubicInner(double d, double a) {
  return ((a + 2) * d - (a + 3)) * d * d + 1;
}
constexpr double cubicOuter(double d, double a) {
  return ((a * d - 5 * a) * d + 8 * a) * d - 4 * a;
}
constexpr double cubicKernel(double x, double a) {
  const double d = x < 0 ? -x : x;
  return d < 1 ? cubicInner(d, a) : d < 2 ? cubicOuter(d, a) : 0;
}

// sinc(x) sinc(x / 3) for |x| < 3, exactly 0 at whole numbers but 0. Weights of taps one apart do not add up to 1: they are to be
// divided by their sum.
inline double lanczos3Kernel(double x) {
  constexpr double kPi = std::numbers::pi;
  const double d = x < 0 ? -x : x;
  if (d == 0) return 1;
  if (!(d < 3) || d == std::floor(d)) return 0;
  return 3 * elementary::sin(kPi * d) * elementary::sin(kPi * d / 3) / (kPi * kPi * d * d);
}

// The weights of the pixels 1 - kTaps / 2 .. kTaps / 2 for a position at t, 0 <= t < 1, right of pixel 0; they add up to 1. Without
// branches, so that loops over positions become vectors.
inline void kernelWeights(double t, double, double (&weights)[2]) {
  weights[0] = 1 - t;
  weights[1] = t;
}

inline void kernelWeights(double t, double a, double (&weights)[4]) {
  const double inner = cubicInner(1 - t, a), outer = cubicOuter(2 - t, a), atOne = cubicOuter(1, a);
  weights[0] = cubicOuter(1 + t, a);
  weights[1] = cubicInner(t, a);
  weights[2] = t > 0 ? inner : atOne;
  weights[3] = t > 0 ? outer : 0;
}

// sinCosExact of pi t / 3.
inline SinCos sinCosOfThird(double t) {
  constexpr double kHalfPiHigh = 0x1.921FB544p+0, kHalfPiLow = 0x1.0B4611A626331p-34;
  const double angle = std::numbers::pi / 3 * t;
  const bool isAbove = angle / (std::numbers::pi / 2) + 0.5 >= 1;  // pi / 4
  const double below = (angle - kHalfPiHigh) - kHalfPiLow, r = isAbove ? below : angle, s = r * r;
  // clang-format off
  const double sine = r * (1 + s * (-1.0 / 6 + s * (1.0 / 120 + s * (-1.0 / 5040 + s * (1.0 / 362880
      + s * (-1.0 / 39916800 + s * (1.0 / 6227020800 + s * (-1.0 / 1307674368000))))))));
  const double cosine = 1 + s * (-1.0 / 2 + s * (1.0 / 24 + s * (-1.0 / 720 + s * (1.0 / 40320
      + s * (-1.0 / 3628800 + s * (1.0 / 479001600 + s * (-1.0 / 87178291200 + s * (1.0 / 20922789888000))))))));
  // clang-format on
  return {isAbove ? cosine : sine, isAbove ? -sine : cosine};
}

// What all taps have in common, 3 sin(pi t) / pi^2, cancels when they are divided by their sum. What is left of the
// kernel at d = t - k is (-1)^k sin(pi d / 3) / d^2, and sin(pi d / 3) follows from the angle pi t / 3.
inline void kernelWeights(double t, double, double (&weights)[6]) {
  const auto [sine, cosine] = sinCosOfThird(t);
  const double root = std::numbers::sqrt3 / 2 * cosine;
  const double waves[3] = {root - sine / 2, -sine / 2 - root, sine};  // taps three apart have the same
  double sum = 0;
#pragma GCC unroll 6
  for (int k = 0; k < 6; ++k) {
    const double d = t - (k - 2);
    weights[k] = waves[k % 3] / (d * d);
    sum += weights[k];
  }
#pragma GCC unroll 6
  for (int k = 0; k < 6; ++k) {
    const double weight = weights[k] / sum;
    weights[k] = t > 0 ? weight : (k == 2);
  }
}

}  // namespace dax
