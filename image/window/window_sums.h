// Sums over windows that slide along an image: running sums of every column over the rows of the window, and from them
// running sums along the rows.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/rows.h"
#include "image/window/window_reach.h"
#include "image/window/window_sums_portable.h"

namespace dax {

// Rows of an image by index, from outside it as well.
template <class T>
struct MirroredRows {
  const T* src;
  int32_t step, height;
  const T* operator()(int64_t y) const { return rowAt(src, step, static_cast<int32_t>(mirrored(y, height))); }
};

template <class T>
struct ClippedRows {
  const T* src;
  int32_t step, height;
  // Null outside the image.
  const T* operator()(int64_t y) const {
    return y >= 0 && y < height ? rowAt(src, step, static_cast<int32_t>(y)) : nullptr;
  }
};

// Sums of the columns over the window rows of row y, added from top to bottom.
template <class Rows, class Column>
void startColumns(const Rows& rows, WindowReach reach, int32_t y, Column* columns, int32_t width) {
  std::fill_n(columns, width, Column{});
  for (int64_t i = int64_t{y} - reach.before; i <= int64_t{y} + reach.after; ++i) {
    if (const auto* const enter = rows(i)) portable::addRow(columns, enter, width);
  }
}

// From the sums of row y to those of row y + 1. move(columns, enter, leave, n) adds a row and subtracts another one.
template <class Rows, class Column, class Move>
void advanceColumns(const Rows& rows, WindowReach reach, int32_t y, Column* columns, int32_t width, Move move) {
  const auto* const enter = rows(int64_t{y} + 1 + reach.after);
  const auto* const leave = rows(int64_t{y} - reach.before);
  if (enter && leave) {
    move(columns, enter, leave, width);
  } else if (enter) {
    portable::addRow(columns, enter, width);
  } else if (leave) {
    portable::subtractRow(columns, leave, width);
  }
}

// Calls row(y) for the rows first..end - 1 in turn, each time with its sums in `columns`.
template <class Rows, class Column, class Move, class Row>
void forEachWindowRow(const Rows& rows, WindowReach reach, int32_t first, int32_t end, Column* columns, int32_t width,
                      Move move, Row row) {
  startColumns(rows, reach, first, columns, width);
  for (int32_t y = first; y < end; ++y) {
    if (y > first) advanceColumns(rows, reach, y - 1, columns, width, move);
    row(y);
  }
}

}  // namespace dax
