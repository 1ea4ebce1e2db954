// A pixel of a resize by its definition: the weights of all pixels of both axes, in double precision.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "daxi/border.h"
#include "daxi/interpolation.h"

namespace dax::oracle {

// By walking: one step at a time back towards the image.
inline int32_t borderPixel(int32_t i, int32_t n, int32_t border) {
  if (border == DAXI_BORDER_REPLICATE) return std::clamp(i, 0, n - 1);
  for (;;) {
    if (i >= 0 && i < n) return i;
    if (n == 1 && border == DAXI_BORDER_MIRROR) return 0;
    if (border == DAXI_BORDER_CIRCULAR) {
      i += i < 0 ? n : -n;
    } else {
      const int32_t edge = border == DAXI_BORDER_MIRROR ? 0 : 1;
      i = i < 0 ? -i - edge : 2 * (n - 1) - i + edge;
    }
  }
}

struct Axis {
  int32_t src, dst;
  double factor;
  bool widens;
  int32_t interpolation;
  double a;

  double scale() const { return factor == 0 ? static_cast<double>(src) / dst : 1 / static_cast<double>(factor); }
  double width() const { return widens ? std::max(1.0, scale()) : 1.0; }
  double position(int32_t i) const { return (i + 0.5) * scale() - 0.5; }

  static double sinc(double x) { return x == 0 ? 1 : std::sin(M_PI * x) / (M_PI * x); }

  double kernel(double d) const {
    if (interpolation == DAXI_INTERPOLATION_LINEAR) return std::max(0.0, 1 - d);
    if (interpolation == DAXI_INTERPOLATION_LANCZOS3) return d < 3 ? sinc(d) * sinc(d / 3) : 0;
    if (d <= 1) return (a + 2) * d * d * d - (a + 3) * d * d + 1;
    return d < 2 ? a * d * d * d - 5 * a * d * d + 8 * a * d - 4 * a : 0;
  }

  // Of source pixel `tap` for output i.
  double weight(int32_t i, int32_t tap) const {
    if (interpolation == DAXI_INTERPOLATION_NEAREST) {
      const int64_t at = factor == 0 ? (2 * int64_t{i} + 1) * src / (2 * int64_t{dst})
                                     : static_cast<int64_t>(std::floor((i + 0.5) / factor));
      return tap == at;
    }
    if (interpolation == DAXI_INTERPOLATION_AREA) {
      return std::max(0.0, std::min((i + 1) * scale(), tap + 1.0) - std::max(i * scale(), static_cast<double>(tap)));
    }
    return kernel(std::fabs(tap - position(i)) / width());
  }

  double reach() const { return 3 * std::max(1.0, scale()); }
};

// What counts for an output: pixels of the source, or none for the constant, and their weights, which add up to 1.
struct Tap {
  int32_t at;
  double weight;
};
inline std::vector<Tap> tapsOf(const Axis& axis, int32_t border, int32_t i) {
  std::vector<Tap> taps;
  double sum = 0;
  const auto end = static_cast<int32_t>(std::ceil(axis.position(i) + axis.reach()));
  for (auto k = static_cast<int32_t>(std::floor(axis.position(i) - axis.reach())); k <= end; ++k) {
    const double weight = axis.weight(i, k);
    if (weight == 0) continue;
    const bool isConstant = border == DAXI_BORDER_CONSTANT && (k < 0 || k >= axis.src);
    taps.push_back({isConstant ? -1 : borderPixel(k, axis.src, border), weight});
    sum += weight;
  }
  for (Tap& tap : taps) tap.weight /= sum;
  return taps;
}

// pixel(x, y) of positions inside; `value` where a constant border is meant.
template <class Pixel>
double resized(const Pixel& pixel, const std::vector<Tap>& columns, const std::vector<Tap>& rows, double value) {
  double sum = 0;
  for (const Tap& row : rows) {
    double along = 0;
    for (const Tap& column : columns) {
      along += column.weight * (column.at < 0 || row.at < 0 ? value : pixel(column.at, row.at));
    }
    sum += row.weight * along;
  }
  return sum;
}

// The exact mean of a cell, halves to even: each pixel is cut into dst x dst parts, of which a cell has src x src.
template <class Pixel>
int64_t areaMean(const Pixel& pixel, DaxiSize src, DaxiSize dst, int32_t x, int32_t y) {
  int64_t sum = 0;
  for (int32_t v = y * src.height; v < (y + 1) * src.height; ++v) {
    for (int32_t u = x * src.width; u < (x + 1) * src.width; ++u) sum += pixel(u / dst.width, v / dst.height);
  }
  const int64_t parts = int64_t{src.width} * src.height;
  const int64_t whole = sum / parts - (sum % parts < 0), rest = 2 * (sum - whole * parts);
  return whole + (rest > parts || (rest == parts && whole % 2 != 0));
}

}  // namespace dax::oracle
