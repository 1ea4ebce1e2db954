// A value between pixels by its definition: weights of both axes at once, in double precision.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <optional>

#include "daxi/border.h"
#include "daxi/interpolation.h"
#include "tests/support/filter_scene.h"

namespace dax::oracle {

struct Sampling {
  int32_t interpolation;
  int32_t border;
  double value;
  double cubicA;
  int fractionBits;
  bool wraps = false;  // along x, whatever the border
};

inline double kernelAt(double d, const Sampling& how) {
  constexpr double kPi = 3.141592653589793;
  d = std::fabs(d);
  if (how.interpolation == DAXI_INTERPOLATION_LINEAR) return std::max(0.0, 1 - d);
  if (how.interpolation == DAXI_INTERPOLATION_LANCZOS3) {
    if (d >= 3) return 0;
    return d == 0 ? 1 : 3 * std::sin(kPi * d) * std::sin(kPi * d / 3) / (kPi * kPi * d * d);
  }
  const double a = how.cubicA;
  if (d >= 2) return 0;
  return d <= 1 ? (a + 2) * d * d * d - (a + 3) * d * d + 1 : a * d * d * d - 5 * a * d * d + 8 * a * d - 4 * a;
}

// pixel(x, y) of positions inside. Nothing where the destination is left as it is.
template <class Pixel>
std::optional<double> sampled(const Pixel& pixel, int32_t width, int32_t height, const Sampling& how, double px,
                              double py) {
  const bool isSomewhere = std::fabs(px) <= 0x1p30 && std::fabs(py) <= 0x1p30;
  const bool isCovered = isSomewhere && px >= -0.5 && px < width - 0.5 && py >= -0.5 && py < height - 0.5;
  if (how.border == DAXI_BORDER_LEAVE && !isCovered) return {};
  if (!isSomewhere) return how.value;
  const int32_t down = how.border == DAXI_BORDER_LEAVE ? DAXI_BORDER_REPLICATE : how.border;
  const int32_t across = how.wraps ? DAXI_BORDER_CIRCULAR : down;
  const auto at = [&](int32_t x, int32_t y) -> double {
    const auto column = test::walkInside(x, width, across), row = test::walkInside(y, height, down);
    return column && row ? pixel(static_cast<int32_t>(*column), static_cast<int32_t>(*row)) : how.value;
  };
  if (how.interpolation == DAXI_INTERPOLATION_NEAREST) {
    return at(static_cast<int32_t>(std::floor(px + 0.5)), static_cast<int32_t>(std::floor(py + 0.5)));
  }
  const double unit = std::ldexp(1.0, how.fractionBits);
  px = std::floor(px * unit) / unit, py = std::floor(py * unit) / unit;
  const auto left = static_cast<int32_t>(std::floor(px)) - 2, top = static_cast<int32_t>(std::floor(py)) - 2;
  double columns[6], rows[6];
  for (int32_t k = 0; k < 6; ++k) columns[k] = kernelAt(left + k - px, how), rows[k] = kernelAt(top + k - py, how);
  double sum = 0, weights = 0;
  for (int32_t j = 0; j < 6; ++j) {
    for (int32_t i = 0; i < 6; ++i) {
      const double weight = columns[i] * rows[j];
      if (weight != 0) sum += weight * at(left + i, top + j);
      weights += weight;
    }
  }
  return sum / weights;
}

}  // namespace dax::oracle
