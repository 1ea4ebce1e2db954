// Filters of 3 x 3 or 5 x 5 pixels without a work buffer, in strips of a row: first along the columns of a strip, then along
// its rows, in plain loops that compilers vectorise.
#pragma once

#include <algorithm>
#include <cstdint>

#include "image/border/bordered_image.h"

namespace dax {

// Op::column<Sum, plane>(at) makes of the pixels at(-kRadius)..at(kRadius) of a column one of Op::kPlanes results, which
// are extended at the ends of the row.
template <class Op, class T, class Sum>
class GradientStrips {
 public:
  static constexpr int32_t kRadius = Op::kRadius, kPlanes = Op::kPlanes, kStrip = 512;

  GradientStrips(const BorderedImage<T>& image, int32_t y) : image_(image) {
    for (int32_t k = 0; k < kRows; ++k) rows_[k] = image.row(int64_t{y} + k - kRadius);
    if (image.border == DAXI_BORDER_CONSTANT) std::fill_n(constants_, kRoom, image.value);
  }

  // Calls write(x, count, planes) for the strips of the row; planes[p][i] belongs to column x + i, for i from -kRadius to
  // count - 1 + kRadius.
  template <class Write>
  void run(Write write) {
    const int64_t width = image_.size.width;
    for (int64_t x = 0; x < width; x += kStrip) {
      const auto count = static_cast<int32_t>(std::min<int64_t>(kStrip, width - x));
      planes(x, count, std::make_integer_sequence<int, kPlanes>());
      const Sum* results[kPlanes];
      for (int p = 0; p < kPlanes; ++p) results[p] = between_[p] + kRadius;
      write(x, count, results);
    }
  }

 private:
  static constexpr int32_t kRows = 2 * kRadius + 1, kRoom = kStrip + 2 * kRadius;

  template <int... kPlane>
  void planes(int64_t x, int32_t count, std::integer_sequence<int, kPlane...>) {
    (plane<kPlane>(x, count), ...);
  }

  template <int kPlane>
  void plane(int64_t x, int32_t count) {
    const T* strip[kRows];
    for (int32_t k = 0; k < kRows; ++k) strip[k] = rows_[k] ? rows_[k] + x : constants_ + kRadius;
    Sum* const to = between_[kPlane] + kRadius;
    int32_t begin = -kRadius, end = count + kRadius;
    if (!image_.isInMemory()) {
      begin = static_cast<int32_t>(std::max<int64_t>(begin, -x));
      end = static_cast<int32_t>(std::min<int64_t>(end, image_.size.width - x));
    }
    for (int32_t i = begin; i < end; ++i) {
      to[i] = Op::template column<Sum, kPlane>([&](int32_t dy) { return strip[kRadius + dy][i]; });
    }
    for (int32_t i = -kRadius; i < begin; ++i) to[i] = outside<kPlane>(x + i);
    for (int32_t i = end; i < count + kRadius; ++i) to[i] = outside<kPlane>(x + i);
  }

  // Of a column that is not in the image.
  template <int kPlane>
  Sum outside(int64_t x) const {
    const bool isConstant = image_.border == DAXI_BORDER_CONSTANT;
    const int64_t column = isConstant ? 0 : borderIndex(x, image_.size.width, image_.border);
    return Op::template column<Sum, kPlane>(
        [&](int32_t dy) { return isConstant ? image_.value : rows_[kRadius + dy][column]; });
  }

  const BorderedImage<T>& image_;
  const T* rows_[kRows];
  T constants_[kRoom];
  Sum between_[kPlanes][kRoom];
};

}  // namespace dax
