// A pixel of a linear resize by its definition: both triangles at once, in extended precision.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "daxi/border.h"

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
  long double position(int32_t i) const {
    const long double scale = factor == 0 ? static_cast<long double>(src) / dst : 1 / static_cast<long double>(factor);
    return (i + 0.5L) * scale - 0.5L;
  }
  long double reach() const {
    const long double scale = factor == 0 ? static_cast<long double>(src) / dst : 1 / static_cast<long double>(factor);
    return widens ? std::max(1.0L, scale) : 1.0L;
  }
};

// pixel(x, y) of positions inside.
template <class Pixel>
long double resized(const Pixel& pixel, const Axis& ax, const Axis& ay, int32_t border, int32_t x, int32_t y) {
  const long double px = ax.position(x), py = ay.position(y), rx = ax.reach(), ry = ay.reach();
  long double sum = 0, weights = 0;
  for (auto j = static_cast<int32_t>(std::floor(py - ry)); j <= py + ry; ++j) {
    for (auto i = static_cast<int32_t>(std::floor(px - rx)); i <= px + rx; ++i) {
      const long double w = std::max(0.0L, 1 - std::fabs(i - px) / rx) * std::max(0.0L, 1 - std::fabs(j - py) / ry);
      sum += w * pixel(borderPixel(i, ax.src, border), borderPixel(j, ay.src, border));
      weights += w;
    }
  }
  return sum / weights;
}

}  // namespace dax::oracle
