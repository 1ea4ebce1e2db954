// A pixel of a resize by its definition: the kernels of both axes at once, in extended precision.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

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
  long double a;

  long double scale() const {
    return factor == 0 ? static_cast<long double>(src) / dst : 1 / static_cast<long double>(factor);
  }
  long double width() const { return widens ? std::max(1.0L, scale()) : 1.0L; }
  long double position(int32_t i) const { return (i + 0.5L) * scale() - 0.5L; }

  static long double sinc(long double x) { return x == 0 ? 1 : std::sin(M_PIl * x) / (M_PIl * x); }

  long double kernel(long double d) const {
    if (interpolation == DAXI_INTERPOLATION_LINEAR) return std::max(0.0L, 1 - d);
    if (interpolation == DAXI_INTERPOLATION_LANCZOS3) return d < 3 ? sinc(d) * sinc(d / 3) : 0;
    if (d <= 1) return (a + 2) * d * d * d - (a + 3) * d * d + 1;
    return d < 2 ? a * d * d * d - 5 * a * d * d + 8 * a * d - 4 * a : 0;
  }

  // Of source pixel `tap` for output i.
  long double weight(int32_t i, int32_t tap) const {
    if (interpolation == DAXI_INTERPOLATION_NEAREST) {
      const int64_t at = factor == 0 ? (2 * int64_t{i} + 1) * src / (2 * int64_t{dst})
                                     : static_cast<int64_t>(std::floor((i + 0.5) / factor));
      return tap == at;
    }
    if (interpolation == DAXI_INTERPOLATION_AREA) {
      return std::max(0.0L,
                      std::min((i + 1) * scale(), tap + 1.0L) - std::max(i * scale(), static_cast<long double>(tap)));
    }
    return kernel(std::fabs(tap - position(i)) / width());
  }

  int32_t first(int32_t i) const { return static_cast<int32_t>(std::floor(position(i) - reach())); }
  int32_t last(int32_t i) const { return static_cast<int32_t>(std::ceil(position(i) + reach())); }
  long double reach() const { return 3 * std::max(1.0L, scale()); }
};

// pixel(x, y) of positions inside; `value` where a constant border is meant.
template <class Pixel>
long double resized(const Pixel& pixel, const Axis& ax, const Axis& ay, int32_t border, double value, int32_t x,
                    int32_t y) {
  const auto at = [&](int32_t i, int32_t j) -> long double {
    const bool isInside = i >= 0 && i < ax.src && j >= 0 && j < ay.src;
    if (border == DAXI_BORDER_CONSTANT && !isInside) return value;
    return pixel(borderPixel(i, ax.src, border), borderPixel(j, ay.src, border));
  };
  long double sum = 0, weights = 0;
  for (int32_t j = ay.first(y); j <= ay.last(y); ++j) {
    const long double wy = ay.weight(y, j);
    for (int32_t i = ax.first(x); wy != 0 && i <= ax.last(x); ++i) {
      const long double w = wy * ax.weight(x, i);
      if (w != 0) sum += w * at(i, j);
      weights += w;
    }
  }
  return sum / weights;
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
