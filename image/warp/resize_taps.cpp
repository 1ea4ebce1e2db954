#include "image/warp/resize_taps.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include "image/warp/kernel_weights.h"

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

// --- Kernels, of half widths 1, 2 and 3 ---

double radiusOf(int32_t interpolation) {
  return interpolation == DAXI_INTERPOLATION_CUBIC ? 2 : interpolation == DAXI_INTERPOLATION_LANCZOS3 ? 3 : 1;
}

double kernelAt(const ResizeAxis& axis, double distance) {
  const double x = std::fabs(distance);
  if (axis.interpolation == DAXI_INTERPOLATION_CUBIC) return cubicKernel(x, axis.cubicA);
  return axis.interpolation == DAXI_INTERPOLATION_LANCZOS3 ? lanczos3Kernel(x) : std::max(0.0, 1 - x);
}

// --- Taps ---

Taps nearestTap(const ResizeAxis& axis, int64_t i) {
  if (axis.factor == 0) return {static_cast<int32_t>((2 * i + 1) * axis.src / (2 * int64_t{axis.dst})), 1};
  return {static_cast<int32_t>(std::floor((static_cast<double>(i) + 0.5) / axis.factor)), 1};
}

Taps areaTaps(const ResizeAxis& axis, int32_t i, double* weights) {
  if (axis.factor == 0) {
    const AreaAxis area(axis.src, axis.dst);
    const Taps taps{area.first(i), area.end(i) - area.first(i)};
    for (int32_t k = 0; k < taps.count; ++k) {
      weights[k] = static_cast<double>(area.overlap(i, taps.first + k)) / static_cast<double>(area.src);
    }
    return taps;
  }
  const double low = i / axis.factor, high = (i + 1) / axis.factor;
  const auto first = static_cast<int32_t>(std::floor(low));
  const Taps taps{first, std::max(1, static_cast<int32_t>(std::ceil(high)) - first)};
  for (int32_t k = 0; k < taps.count; ++k) {
    weights[k] = (std::min(high, first + k + 1.0) - std::max<double>(low, first + k)) / (high - low);
  }
  return taps;
}

// The distances k at which pixel whole + k, |k - fraction| from the position, is nearer than the kernel reaches.
Taps distancesWithin(const ResizeAxis& axis, double fraction) {
  const auto start = static_cast<int32_t>(std::floor(fraction - axis.reach())) + 1;
  return {start, std::max(1, static_cast<int32_t>(std::ceil(fraction + axis.reach())) - start)};
}

Taps kernelTaps(const ResizeAxis& axis, int32_t i, double* weights) {
  const Position at = positionOf(axis, i);
  const double width = axis.width();
  const Taps distances = distancesWithin(axis, at.fraction);
  const int32_t start = distances.first, count = distances.count;
  Taps taps{static_cast<int32_t>(at.whole + start), 0};
  double sum = 0;
  int32_t significant = 0;  // taps up to the last whose weight is not 0
  for (int32_t k = start; k < start + count; ++k) {
    const double weight = kernelAt(axis, (k - at.fraction) / width);
    if (weight == 0 && taps.count == 0 && k + 1 < start + count) {
      ++taps.first;
      continue;
    }
    weights[taps.count++] = weight;
    if (weight != 0) significant = taps.count;
    sum += weight;
  }
  taps.count = std::max(1, significant);
  for (int32_t k = 0; k < taps.count; ++k) weights[k] /= sum;
  return taps;
}

}  // namespace

double ResizeAxis::width() const {
  return widens ? std::max(1.0, shrinks()) : 1.0;
}

double ResizeAxis::reach() const {
  return radiusOf(interpolation) * width();
}

int32_t ResizeAxis::maxTaps() const {
  if (interpolation == DAXI_INTERPOLATION_NEAREST) return 1;
  if (interpolation == DAXI_INTERPOLATION_AREA) return static_cast<int32_t>(shrinks()) + 2;
  return static_cast<int32_t>(std::ceil(2 * reach())) + (width() > 1);
}

Taps resizeTaps(const ResizeAxis& axis, int32_t i, double* weights) {
  weights[0] = 1;
  if (axis.interpolation == DAXI_INTERPOLATION_NEAREST) return nearestTap(axis, i);
  return axis.interpolation == DAXI_INTERPOLATION_AREA ? areaTaps(axis, i, weights) : kernelTaps(axis, i, weights);
}

Taps tapsWithin(const ResizeAxis& axis, int32_t i, double* weights) {
  const Taps taps = resizeTaps(axis, i, weights);
  if (axis.interpolation == DAXI_INTERPOLATION_NEAREST || axis.interpolation == DAXI_INTERPOLATION_AREA) return taps;
  const Position at = positionOf(axis, i);
  const Taps distances = distancesWithin(axis, at.fraction);
  return {static_cast<int32_t>(at.whole + distances.first), distances.count};
}

AreaAxis::AreaAxis(int32_t srcSide, int32_t dstSide)
    : src(srcSide / std::gcd(srcSide, dstSide)), dst(dstSide / std::gcd(srcSide, dstSide)) {}

int64_t AreaAxis::overlap(int32_t i, int32_t pixel) const {
  return std::min((i + 1) * src, (pixel + 1) * dst) - std::max(i * src, pixel * dst);
}

void fixedWeights(const Taps& taps, const double* weights, uint16_t (&fixed)[2]) {
  constexpr int32_t kOne = 1 << kWeightBits;
  const int32_t second = taps.count == 2 ? static_cast<int32_t>(weights[1] * kOne + 0.5) : 0;
  fixed[0] = static_cast<uint16_t>(kOne - second);
  fixed[1] = static_cast<uint16_t>(second);
}

void wideWeights(const Taps& taps, const double* weights, int32_t* wide) {
  constexpr int32_t kOne = 1 << kWideWeightBits;
  int32_t rest = kOne, greatest = 0;
  for (int32_t k = 0; k < taps.count; ++k) {
    wide[k] = static_cast<int32_t>(std::floor(weights[k] * kOne + 0.5));
    rest -= wide[k];
    if (wide[k] > wide[greatest]) greatest = k;
  }
  wide[greatest] += rest;
}

}  // namespace dax
