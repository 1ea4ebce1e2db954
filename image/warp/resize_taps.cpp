#include "image/warp/resize_taps.h"

#include <algorithm>
#include <cmath>

namespace dax {
namespace {

// A position: whole pixels and a fraction in 0..1.
struct Position {
  int64_t whole;
  double fraction;
};

// ((2i + 1) src - dst) / (2 dst), exact but for the last rounding of the fraction.
Position byRatio(int64_t i, int64_t src, int64_t dst) {
  const int64_t numerator = (2 * i + 1) * src - dst, denominator = 2 * dst;
  int64_t whole = numerator / denominator;
  if (whole * denominator > numerator) --whole;
  return {whole, static_cast<double>(numerator - whole * denominator) / static_cast<double>(denominator)};
}

Position byFactor(int64_t i, double factor) {
  const double position = (static_cast<double>(i) + 0.5) / factor - 0.5, whole = std::floor(position);
  return {static_cast<int64_t>(whole), position - whole};
}

Position positionOf(const ResizeAxis& axis, int32_t i) {
  return axis.factor == 0 ? byRatio(i, axis.src, axis.dst) : byFactor(i, axis.factor);
}

}  // namespace

double ResizeAxis::reach() const {
  const double shrinks = factor == 0 ? static_cast<double>(src) / dst : 1 / factor;
  return widens ? std::max(1.0, shrinks) : 1.0;
}

int32_t ResizeAxis::maxTaps() const {
  return static_cast<int32_t>(std::ceil(2 * reach())) + (reach() > 1);
}

Taps linearTaps(const ResizeAxis& axis, int32_t i, double* weights) {
  const Position at = positionOf(axis, i);
  const double reach = axis.reach();
  // Pixel whole + k is at the distance |k - fraction|; those nearer than `reach` count.
  auto k = static_cast<int32_t>(std::floor(at.fraction - reach)) + 1;
  const Taps taps{static_cast<int32_t>(at.whole + k),
                  std::max(1, static_cast<int32_t>(std::ceil(at.fraction + reach)) - k)};
  double sum = 0;
  for (int32_t tap = 0; tap < taps.count; ++tap, ++k) {
    weights[tap] = std::max(0.0, 1 - std::fabs(k - at.fraction) / reach);
    sum += weights[tap];
  }
  for (int32_t tap = 0; tap < taps.count; ++tap) weights[tap] /= sum;
  return taps;
}

void fixedWeights(const Taps& taps, const double* weights, uint16_t (&fixed)[2]) {
  constexpr int32_t kOne = 1 << kWeightBits;
  const int32_t second = taps.count == 2 ? static_cast<int32_t>(weights[1] * kOne + 0.5) : 0;
  fixed[0] = static_cast<uint16_t>(kOne - second);
  fixed[1] = static_cast<uint16_t>(second);
}

}  // namespace dax
