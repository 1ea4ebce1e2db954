// Kernels of interpolation: what a tap at a distance counts.
#pragma once

#include <cmath>
#include <cstdint>
#include <numbers>

#include "frame/math.h"
#include "frame/numeric/elementary.h"

namespace dax {

// Keys, Cubic convolution interpolation for digital image processing, 1981; a = -0.5 keeps polynomials of degree 2.
constexpr double cubicKernel(double x, double a) {
  const double d = x < 0 ? -x : x;
  if (d < 1) return ((a + 2) * d - (a + 3)) * d * d + 1;
  if (d < 2) return ((a * d - 5 * a) * d + 8 * a) * d - 4 * a;
  return 0;
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

// The weights of the pixels 1 - kTaps / 2 .. kTaps / 2 for a position at t, 0 <= t < 1, right of pixel 0; they add up to 1.
inline void linearWeights(double t, double (&weights)[2]) {
  weights[0] = 1 - t;
  weights[1] = t;
}

inline void cubicWeights(double t, double a, double (&weights)[4]) {
  for (int k = 0; k < 4; ++k) weights[k] = cubicKernel(t - (k - 1), a);
}

// What all taps have in common, 3 sin(pi t) / pi^2, cancels when they are divided by their sum. What is left of the
// kernel at d = t - k is (-1)^k sin(pi d / 3) / d^2, and sin(pi d / 3) follows from the angle pi t / 3.
inline void lanczos3Weights(double t, double (&weights)[6]) {
  if (t == 0) {
    for (int k = 0; k < 6; ++k) weights[k] = k == 2;
    return;
  }
  const auto [sine, cosine] = sinCosExact(std::numbers::pi / 3 * t);
  const double root = std::numbers::sqrt3 / 2 * cosine;
  const double waves[3] = {root - sine / 2, -sine / 2 - root, sine};  // taps three apart have the same
  double sum = 0;
  for (int k = 0; k < 6; ++k) {
    const double d = t - (k - 2);
    weights[k] = waves[k % 3] / (d * d);
    sum += weights[k];
  }
  for (double& weight : weights) weight /= sum;
}

}  // namespace dax
