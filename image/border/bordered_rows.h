// Rows of an image and of what lies around it, for filters that go along columns first and along rows then.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/border/border_index.h"
#include "image/border/border_pixel.h"

namespace dax {

// Work buffers have room for as many tiles of the forms on a pool.
inline constexpr uint32_t kMaxTiles = 64;

inline uint32_t tilesOf(DaxiSize size) {
  return static_cast<uint32_t>(std::min<int64_t>(size.height, kMaxTiles));
}

// Runs body(first, end, tile) over the rows of an image, in at most tilesOf(size) tiles.
template <class Body>
DaxStatus runRowTiles(PoolThreads on, DaxiSize size, Body&& body) {
  if (!hasPool(on.pool, on.threads)) {
    body(0, size.height, 0u);
    return 0;
  }
  const auto tile = [&](int32_t first, int32_t end, uint32_t slice) -> DaxStatus {
    body(first, end, slice);
    return 0;
  };
  return runTiles(on.pool, std::min(on.threads, tilesOf(size)), size.height, 1, tile);
}

template <class T>
struct BorderedRows {
  const T* src;
  int32_t step;
  DaxiSize size;
  int32_t border;
  const T* constantRow;  // `size.width` pixels of a constant border

  bool isInMemory() const { return border == DAXI_BORDER_IN_MEMORY; }

  const T* at(int64_t y) const {
    if (isInMemory() || (y >= 0 && y < size.height)) return src + y * step;
    if (border == DAXI_BORDER_CONSTANT) return constantRow;
    return rowAt(src, step, static_cast<int32_t>(borderIndex(y, size.height, border)));
  }
};

// Fills in what lies `left` elements before and `right` elements behind a row of `width` elements, unless it is there.
template <class T>
void extendRow(T* row, int64_t width, int32_t left, int32_t right, int32_t border, T constant) {
  if (border == DAXI_BORDER_IN_MEMORY || width < 1) return;
  const auto outside = [&](int64_t x) {
    return border == DAXI_BORDER_CONSTANT ? constant : row[borderIndex(x, width, border)];
  };
  for (int64_t x = -left; x < 0; ++x) row[x] = outside(x);
  for (int64_t x = width; x < width + right; ++x) row[x] = outside(x);
}

}  // namespace dax
