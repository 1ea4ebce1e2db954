// What erosions and dilations look at: the order of pixels, and how far a window reaches.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "image/border/bordered_image.h"

namespace dax {

struct Smaller {
  template <class Key>
  static Key of(Key a, Key b) {
    return a < b ? a : b;
  }
  template <class Key>
  static constexpr Key kNeutral = std::numeric_limits<Key>::max();
};

struct Larger {
  template <class Key>
  static Key of(Key a, Key b) {
    return a > b ? a : b;
  }
  template <class Key>
  static constexpr Key kNeutral = std::numeric_limits<Key>::lowest();
};

// Pixels around the one that is computed.
struct Reach {
  int32_t left, right, up, down;
  int32_t columns() const { return left + 1 + right; }
  int32_t rows() const { return up + 1 + down; }
  Reach turned() const { return {right, left, down, up}; }
};

// A window that reaches by two images covers all that the border repeats, so further pixels add nothing; in memory they
// differ.
template <class T>
Reach limitedReach(const Reach& reach, const BorderedImage<T>& image) {
  if (image.isInMemory()) return reach;
  const auto within = [](int32_t side, int32_t length) {
    return static_cast<int32_t>(std::min<int64_t>(side, 2 * int64_t{length}));
  };
  const DaxiSize size = image.size;
  return {within(reach.left, size.width), within(reach.right, size.width), within(reach.up, size.height),
          within(reach.down, size.height)};
}

}  // namespace dax
