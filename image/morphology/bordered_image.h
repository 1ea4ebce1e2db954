// What erosions and dilations look at: the order of pixels, how far a window reaches, and an image with its border.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "dax/types.h"
#include "daxi/border.h"
#include "frame/rows.h"
#include "image/border/border_index.h"
#include "image/border/border_pixel.h"

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

// A source with what lies outside it. A window that reaches by two images covers all that its border repeats, so
// further pixels add nothing; in memory they differ.
template <class T>
struct BorderedImage {
  const T* src;
  int32_t step;
  DaxiSize size;
  int32_t border;
  T value;

  bool isInMemory() const { return border == DAXI_BORDER_IN_MEMORY; }

  Reach limited(const Reach& reach) const {
    if (isInMemory()) return reach;
    const auto within = [](int32_t side, int32_t length) {
      return static_cast<int32_t>(std::min<int64_t>(side, 2 * int64_t{length}));
    };
    return {within(reach.left, size.width), within(reach.right, size.width), within(reach.up, size.height),
            within(reach.down, size.height)};
  }

  // Null where outside pixels have no row of their own.
  const T* row(int64_t y) const {
    if (isInMemory() || (y >= 0 && y < size.height)) return src + y * step;
    return hasBorderIndex(border) ? src + borderIndex(y, size.height, border) * step : nullptr;
  }
};

}  // namespace dax
