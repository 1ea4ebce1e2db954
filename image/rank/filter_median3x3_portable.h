// Rows of the 3 x 3 median, any type, any instruction set.
//
// Sort the three pixels of every column. The median of the nine is then the median of the largest minimum, the median
// of the medians and the smallest maximum of three neighbouring columns (J. L. Smith, Implementing median filters in
// XC4000E FPGAs, Xcell 23, 1996). A column is sorted once for the three outputs that it belongs to.
#pragma once

#include <algorithm>
#include <cstdint>

#include "dax/types.h"
#include "frame/numeric/total_order.h"
#include "frame/rows.h"

namespace dax {

// Source and destination of a median; rows outside the image repeat its first or last row.
template <class T>
struct MedianImages {
  const T* src;
  int32_t srcStep;
  T* dst;
  int32_t dstStep;
  DaxiSize size;

  const T* srcRow(int32_t y) const { return rowAt(src, srcStep, std::clamp(y, 0, size.height - 1)); }
  T* dstRow(int32_t y) const { return rowAt(dst, dstStep, y); }
};

}  // namespace dax

namespace dax::portable {

// By value, unlike std::min and std::max, whose references keep compilers from using vector minima.
template <class Key>
Key minOf(Key a, Key b) {
  return a < b ? a : b;
}

template <class Key>
Key maxOf(Key a, Key b) {
  return a > b ? a : b;
}

template <class Key>
Key median(Key a, Key b, Key c) {
  return maxOf(minOf(a, b), minOf(maxOf(a, b), c));
}

// Sorted columns of a piece of a row and of one column on either side. Compilers vectorise the loops over them. A piece
// starts at a cache line; the column before it lies in the previous line.
template <class T>
class SortedColumns {
 public:
  static constexpr int32_t kPixels = 256;

  SortedColumns(const T* const (&rows)[3], int32_t first, int32_t count, int32_t width) {
    const T *const above = rows[0], *const centre = rows[1], *const below = rows[2];
    const auto sort = [&](int32_t x, int32_t i) {
      const Key a = OrderKey<T>::of(above[x]), b = OrderKey<T>::of(centre[x]), c = OrderKey<T>::of(below[x]);
      const Key low = minOf(a, b), high = maxOf(a, b);
      low_[kStart + i] = minOf(low, c);
      mid_[kStart + i] = minOf(high, maxOf(low, c));
      high_[kStart + i] = maxOf(high, c);
    };
    for (int32_t i = 0; i < count; ++i) sort(first + i, i);
    sort(std::max(first - 1, 0), -1);
    sort(std::min(first + count, width - 1), count);
  }

  void storeMedians(T* dst, int32_t count) const {
    for (int32_t i = kStart; i < kStart + count; ++i) {
      const Key a = maxOf(maxOf(low_[i - 1], low_[i]), low_[i + 1]);
      const Key b = median(mid_[i - 1], mid_[i], mid_[i + 1]);
      const Key c = minOf(minOf(high_[i - 1], high_[i]), high_[i + 1]);
      dst[i - kStart] = OrderKey<T>::pixel(median(a, b, c));
    }
  }

 private:
  using Key = typename OrderKey<T>::Key;
  static constexpr int32_t kStart = 64 / sizeof(Key);
  static constexpr int32_t kRoom = kStart + kPixels + kStart;

  alignas(64) Key low_[kRoom];
  alignas(64) Key mid_[kRoom];
  alignas(64) Key high_[kRoom];
};

// Pixels first..width - 1 of one row of the result, from the three source rows around it.
template <class T>
void medianRow(const T* const (&rows)[3], T* dst, int32_t first, int32_t width) {
  for (int32_t x = first, count; x < width; x += count) {
    count = std::min(SortedColumns<T>::kPixels, width - x);
    SortedColumns<T>(rows, x, count, width).storeMedians(dst + x, count);
  }
}

template <class T>
void medianRow(const MedianImages<T>& images, int32_t y) {
  medianRow<T>({images.srcRow(y - 1), images.srcRow(y), images.srcRow(y + 1)}, images.dstRow(y), 0, images.size.width);
}

// Rows first..end - 1 of the result.
template <class T>
void medianRows(const MedianImages<T>& images, int32_t first, int32_t end) {
  for (int32_t y = first; y < end; ++y) medianRow(images, y);
}

}  // namespace dax::portable
