// Filters of neighbourhoods: images with surroundings, and the pixels that borders put there.
#pragma once

#include <optional>

#include "daxi/border.h"
#include "tests/support/test_image.h"

namespace dax::test {

// The index that stands for i by walking towards the line 0..n - 1, or none.
inline std::optional<int64_t> walkInside(int64_t i, int64_t n, int32_t border) {
  while (i < 0 || i >= n) {
    switch (border) {
      case DAXI_BORDER_REPLICATE:
        i = i < 0 ? 0 : n - 1;
        break;
      case DAXI_BORDER_MIRROR:
        i = n == 1 ? 0 : i < 0 ? -i : 2 * (n - 1) - i;
        break;
      case DAXI_BORDER_SYMMETRIC:
        i = i < 0 ? -1 - i : 2 * n - 1 - i;
        break;
      case DAXI_BORDER_CIRCULAR:
        i += i < 0 ? n : -n;
        break;
      default:
        return std::nullopt;
    }
  }
  return i;
}

// A region of a larger image, all pixels of which are there for borders in memory. Floats are multiples of 1/8.
template <class T>
struct FilterScene {
  FilterScene(DaxiSize region, int32_t around, uint64_t seed)
      : size(region), margin(around), image({region.width + 2 * around, region.height + 2 * around}, 3) {
    image.randomize(seed);
    if constexpr (std::is_floating_point_v<T>) {
      Random random(seed);
      image.fill([&](int32_t, int32_t) { return static_cast<T>(random.below(2000) - 1000) / 8; });
    }
  }
  const T* data() const { return &image.at(margin, margin); }
  T* data() { return &image.at(margin, margin); }

  // The pixel at any place, or what the border has there.
  T pixel(int64_t x, int64_t y, int32_t border, double value) const {
    if (border == DAXI_BORDER_IN_MEMORY) return at(x, y);
    const auto column = walkInside(x, size.width, border), row = walkInside(y, size.height, border);
    return column && row ? at(*column, *row) : static_cast<T>(value);
  }

  DaxiSize size;
  int32_t margin;
  TestImage<T> image;

 private:
  T at(int64_t x, int64_t y) const {
    return image.at(static_cast<int32_t>(x) + margin, static_cast<int32_t>(y) + margin);
  }
};

}  // namespace dax::test
