// Local maxima of a response, and a map of the corners found there.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "daxi/chessboard_hessian.h"
#include "frame/rows.h"

namespace dax {

// Divides the image, except for a border of 2 r, into blocks of (r + 1) x (r + 1), and calls visit(x, y) for the
// maximum of each block, the first of equals, where it is above the threshold and no value at offsets -r..r - 1 is
// greater. r >= 1. (A. Neubeck, L. Van Gool, Efficient non-maximum suppression, ICPR 2006.)
template <class T, class Visit>
void forEachMaximum(const T* response, DaxiSize size, int32_t r, T threshold, Visit visit) {
  const auto isMaximum = [&](int32_t x, int32_t y, T value) {
    for (int32_t v = y - r; v < y + r; ++v) {
      const T* const row = rowAt(response, size.width, v);
      if (std::any_of(row + x - r, row + x + r, [value](T other) { return other > value; })) return false;
    }
    return true;
  };
  for (int32_t top = 2 * r; top < size.height - 2 * r; top += r + 1) {
    for (int32_t left = 2 * r; left < size.width - 2 * r; left += r + 1) {
      T max = threshold;
      int32_t x = -1, y = -1;
      for (int32_t v = top; v <= top + r; ++v) {
        const T* const row = rowAt(response, size.width, v);
        for (int32_t u = left; u <= left + r; ++u) {
          if (row[u] > max) max = row[u], x = u, y = v;
        }
      }
      if (x >= 0 && isMaximum(x, y, max)) visit(x, y);
    }
  }
}

// Tells whether there is already a corner within 3 pixels.
class NearMap {
 public:
  static uint64_t blocks(DaxiSize size) {
    return static_cast<uint64_t>(size.width / kBlock + 1) * static_cast<uint64_t>(size.height / kBlock + 1);
  }

  NearMap(int32_t* blocks, DaxiSize size, const CheckerboardCorner* corners)
      : blocks_(blocks), columns_(size.width / kBlock + 1), rows_(size.height / kBlock + 1), corners_(corners) {
    std::fill_n(blocks, ptrdiff_t{columns_} * rows_, -1);
  }

  bool holds(DaxiPoint32f p) const {
    const int32_t column = columnOf(p), row = rowOf(p);
    for (int32_t r = std::max(row - 1, 0); r <= std::min(row + 1, rows_ - 1); ++r) {
      for (int32_t c = std::max(column - 1, 0); c <= std::min(column + 1, columns_ - 1); ++c) {
        const int32_t i = blocks_[ptrdiff_t{r} * columns_ + c];
        if (i >= 0 && std::fabs(corners_[i].point.x - p.x) <= kSamePlace &&
            std::fabs(corners_[i].point.y - p.y) <= kSamePlace)
          return true;
      }
    }
    return false;
  }

  void add(int32_t i) { blocks_[ptrdiff_t{rowOf(corners_[i].point)} * columns_ + columnOf(corners_[i].point)] = i; }

 private:
  static constexpr int32_t kBlock = 4;
  static constexpr float kSamePlace = 3;

  int32_t columnOf(DaxiPoint32f p) const { return std::clamp(static_cast<int32_t>(p.x) / kBlock, 0, columns_ - 1); }
  int32_t rowOf(DaxiPoint32f p) const { return std::clamp(static_cast<int32_t>(p.y) / kBlock, 0, rows_ - 1); }

  int32_t* blocks_;  // index of the last corner in each block of 4 x 4 pixels; -1: none
  int32_t columns_, rows_;
  const CheckerboardCorner* corners_;
};

}  // namespace dax
