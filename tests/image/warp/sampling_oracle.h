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

// The pixels of an axis around a position, those that the constant stands for as none, and their weights.
struct AxisTaps {
  AxisTaps(double position, int32_t side, int32_t border, const Sampling& how) {
    const auto add = [&](int64_t i, double weight) {
      if (weight == 0) return;
      at[count] = static_cast<int32_t>(test::walkInside(i, side, border).value_or(-1));
      weights[count++] = weight;
      sum += weight;
    };
    if (how.interpolation == DAXI_INTERPOLATION_NEAREST) {
      add(static_cast<int64_t>(std::floor(position + 0.5)), 1);
      return;
    }
    const double unit = std::ldexp(1.0, how.fractionBits), place = std::floor(position * unit) / unit;
    const auto first = static_cast<int64_t>(std::floor(place)) - 2;
    for (int64_t i = first; i < first + 6; ++i) add(i, kernelAt(static_cast<double>(i) - place, how));
  }

  int32_t at[6];
  double weights[6];
  int count = 0;
  double sum = 0;
};

// What counts at a place in an image.
class Surroundings {
 public:
  Surroundings(int32_t width, int32_t height, const Sampling& how, double px, double py)
      : value_(how.value), isSomewhere_(std::fabs(px) <= 0x1p30 && std::fabs(py) <= 0x1p30) {
    const bool isCovered = isSomewhere_ && px >= -0.5 && px < width - 0.5 && py >= -0.5 && py < height - 0.5;
    isLeft_ = how.border == DAXI_BORDER_LEAVE && !isCovered;
    if (isLeft_ || !isSomewhere_) return;
    const int32_t down = how.border == DAXI_BORDER_LEAVE ? DAXI_BORDER_REPLICATE : how.border;
    columns_.emplace(px, width, how.wraps ? DAXI_BORDER_CIRCULAR : down, how);
    rows_.emplace(py, height, down, how);
  }

  // pixel(x, y) of positions inside. Nothing where the destination is left as it is.
  template <class Pixel>
  std::optional<double> sampled(const Pixel& pixel) const {
    if (isLeft_) return {};
    if (!isSomewhere_) return value_;
    double sum = 0;
    for (int j = 0; j < rows_->count; ++j) {
      for (int i = 0; i < columns_->count; ++i) {
        const bool isInside = columns_->at[i] >= 0 && rows_->at[j] >= 0;
        sum += columns_->weights[i] * rows_->weights[j] * (isInside ? pixel(columns_->at[i], rows_->at[j]) : value_);
      }
    }
    return sum / (columns_->sum * rows_->sum);
  }

 private:
  double value_;
  bool isSomewhere_, isLeft_ = false;
  std::optional<AxisTaps> columns_, rows_;
};

}  // namespace dax::oracle
