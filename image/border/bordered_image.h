// An image and what lies outside it, for filters whose windows reach over its edges.
#pragma once

#include <cstdint>

#include "dax/types.h"
#include "image/border/border_index.h"
#include "image/border/border_pixel.h"

namespace dax {

template <class T>
struct BorderedImage {
  const T* src;
  int32_t step;
  DaxiSize size;
  int32_t border;
  T value;  // of a constant border

  bool isInMemory() const { return border == DAXI_BORDER_IN_MEMORY; }

  // `missing` where pixels outside have no row of their own: they are constant, or do not count.
  const T* row(int64_t y, const T* missing = nullptr) const {
    if (isInMemory() || (y >= 0 && y < size.height)) return src + y * step;
    return hasBorderIndex(border) ? src + borderIndex(y, size.height, border) * step : missing;
  }
};

// Fills in what lies `left` elements before and `right` elements behind a row of `width` elements, unless it is there.
// `missing` stands where there is no pixel.
template <class T>
void extendRow(T* row, int64_t width, int32_t left, int32_t right, int32_t border, T missing) {
  if (border == DAXI_BORDER_IN_MEMORY) return;
  const auto outside = [&](int64_t x) { return hasBorderIndex(border) ? row[borderIndex(x, width, border)] : missing; };
  for (int64_t x = 1; x <= left; ++x) row[-x] = outside(-x);
  for (int64_t x = width; x < width + right; ++x) row[x] = outside(x);
}

}  // namespace dax
