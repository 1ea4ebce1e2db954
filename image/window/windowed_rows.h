// Rows of an image and what lies outside it, for windows that reach over its edges.
#pragma once

#include <algorithm>
#include <cstdint>

#include "image/border/bordered_image.h"
#include "image/window/window_reach.h"

namespace dax {

// A region, a window and a border.
struct WindowedRegion {
  DaxiSize size;
  WindowReach x, y;
  int32_t border;

  WindowedRegion(DaxiSize region, DaxiSize window, int32_t borderRule)
      : size(region), x(window.width), y(window.height), border(borderRule) {}

  bool isInMemory() const { return border == DAXI_BORDER_IN_MEMORY; }
  bool isClipped() const { return border == DAXI_BORDER_CLIP; }
  int32_t columns() const { return x.before + 1 + x.after; }
  int32_t rows() const { return y.before + 1 + y.after; }

  // Columns that windows reach, and those of them that rows hold: all in memory, else the region's.
  int32_t extendedWidth() const { return size.width + columns() - 1; }
  int32_t heldWidth() const { return isInMemory() ? extendedWidth() : size.width; }
  int32_t firstHeld() const { return isInMemory() ? 0 : x.before; }

  // Fills in what windows reach beyond the columns that are held, where that stands for pixels of the region.
  template <class Column>
  void extend(Column* extended) const {
    if (!hasBorderIndex(border)) return;
    Column* const inside = extended + x.before;
    const int32_t width = size.width, direct = width - 1;  // so far the border goes on in steps of one index
    const auto from = [&](int64_t i) { return static_cast<int32_t>(borderIndex(i, width, border)); };
    const int32_t left = from(-1), leftStep = width > 1 ? from(-2) - left : 0;
    const int32_t right = from(width), rightStep = width > 1 ? from(int64_t{width} + 1) - right : 0;
    for (int32_t i = 1; i <= x.before; ++i) inside[-i] = inside[i <= direct ? left + (i - 1) * leftStep : from(-i)];
    for (int32_t i = 0; i < x.after; ++i) {
      inside[width + i] = inside[i < direct ? right + i * rightStep : from(int64_t{width} + i)];
    }
  }

  // How many of the window's pixels count, along a line of n pixels, at place i of it.
  int32_t counted(int32_t i, int32_t n, WindowReach reach) const {
    if (!isClipped()) return reach.before + 1 + reach.after;
    return std::min(reach.before, i) + 1 + std::min(reach.after, n - 1 - i);
  }
  int32_t rowsAt(int32_t line) const { return counted(line, size.height, y); }
  int32_t columnsAt(int32_t place) const { return counted(place, size.width, x); }
};

// The pixels that a row holds, from its first one on.
template <class T>
struct WindowedRows {
  const T* src;
  int32_t step;
  const WindowedRegion& region;
  const T* constant;  // a row of the border's value

  // Null where nothing counts.
  const T* operator()(int64_t line) const {
    const BorderedImage<T> image = {src, step, region.size, region.border, {}};
    const T* const row = image.row(line, region.isClipped() ? nullptr : constant);
    return region.isInMemory() ? row - region.x.before : row;
  }
};

}  // namespace dax
