// What a rank filter computes, and which pixels its windows hold: shared by its engines.
#pragma once

#include <algorithm>
#include <cstdint>

#include "dax/types.h"
#include "frame/numeric/total_order.h"
#include "frame/rows.h"
#include "image/border/bordered_image.h"

namespace dax {

// Columns or rows first..end - 1.
struct IndexRange {
  int32_t first, end;
  int32_t count() const { return end - first; }
};

// Turns a window over `from` into one over `to`, both of them not empty, by what leaves and what enters.
template <class Leave, class Enter>
void slideWindow(IndexRange from, IndexRange to, Leave leave, Enter enter) {
  for (int32_t i = from.first; i < std::min(from.end, to.first); ++i) leave(i);
  for (int32_t i = std::max(from.first, to.end); i < from.end; ++i) leave(i);
  for (int32_t i = to.first; i < std::min(to.end, from.first); ++i) enter(i);
  for (int32_t i = std::max(to.first, from.end); i < to.end; ++i) enter(i);
}

template <class T>
struct RankFilter {
  using Key = typename OrderKey<T>::Key;

  const T* src;
  int32_t srcStep;
  T* dst;
  int32_t dstStep;
  DaxiSize size, window;
  int32_t rank;  // 0: the smallest pixel
  int32_t border;
  T value;  // of a constant border

  bool clips() const { return border == DAXI_BORDER_CLIP; }
  int32_t windowPixels() const { return window.width * window.height; }

  // Columns, or rows, of the window around x, or y, that count.
  IndexRange across(int32_t x) const { return counted(x, window.width, size.width); }
  IndexRange down(int32_t y) const { return counted(y, window.height, size.height); }

  // The rank in a window of which only `pixels` count.
  int32_t rankOf(int32_t pixels) const {
    const int32_t all = windowPixels();
    if (rank == all - 1) return pixels - 1;
    return static_cast<int32_t>(int64_t{rank} * pixels / all);
  }

  // Keys of pixels x..x + count - 1 of row y, inside the image or not.
  void readRow(int64_t y, int64_t x, int32_t count, Key* __restrict keys) const {
    const BorderedImage<T> image = {src, srcStep, size, border, value};
    const T* const row = image.row(y);
    if (!row) {
      std::fill_n(keys, count, OrderKey<T>::of(value));
      return;
    }
    const bool isInMemory = image.isInMemory(), hasIndex = hasBorderIndex(border);
    const int64_t first = isInMemory ? x : std::clamp<int64_t>(0, x, x + count);
    const int64_t end = isInMemory ? x + count : std::clamp<int64_t>(size.width, first, x + count);
    std::transform(row + first, row + end, keys + (first - x), OrderKey<T>::of);
    // By value: compilers take what is captured by reference for memory that bytes may overwrite.
    const auto outside = [=, width = size.width, kind = border, missing = value](int64_t i) {
      return OrderKey<T>::of(hasIndex ? row[borderIndex(i, width, kind)] : missing);
    };
    for (int64_t i = x; i < first; ++i) keys[i - x] = outside(i);
    for (int64_t i = end; i < x + count; ++i) keys[i - x] = outside(i);
  }

 private:
  IndexRange counted(int32_t i, int32_t side, int32_t length) const {
    const int32_t first = i - side / 2, end = first + side;
    if (!clips()) return {first, end};
    return {std::max(first, 0), std::min(end, length)};
  }
};

}  // namespace dax
