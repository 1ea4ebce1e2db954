// Sums over windows that slide along an image: running sums of every column over the rows of the window, and from them
// running sums along the rows.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/rows.h"
#include "image/window_reach.h"
#include "image/window_sums_portable.h"

namespace dax {

// Index of the pixel i of a row or column that goes on symmetrically: -1 is 0, n is n - 1.
inline int64_t mirrored(int64_t i, int64_t n) {
  return i < 0 ? -1 - i : i < n ? i : 2 * n - 1 - i;
}

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

// Calls row(y) for the rows first..end - 1 in turn, each time with the sums in `columns` over the window rows of y.
// move(columns, enter, leave, n) adds a row and subtracts another one.
template <class Rows, class Column, class Move, class Row>
void forEachWindowRow(const Rows& rows, WindowReach reach, int32_t first, int32_t end, Column* columns, int32_t width,
                      Move move, Row row) {
  std::fill_n(columns, width, Column{});
  for (int64_t y = int64_t{first} - reach.before; y <= int64_t{first} + reach.after; ++y) {
    if (const auto* const enter = rows(y)) portable::addRow(columns, enter, width);
  }
  for (int32_t y = first; y < end; ++y) {
    row(y);
    if (y + 1 == end) return;
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
}

}  // namespace dax
