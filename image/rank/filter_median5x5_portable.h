// Rows of the 5 x 5 median, any type, any instruction set.
#pragma once

#include <algorithm>
#include <cstdint>

#include "image/rank/filter_median3x3_portable.h"
#include "image/rank/median25.h"

namespace dax::portable {

// Sorted columns of a piece of a row and of two columns on either side, in loops that compilers vectorise.
template <class T>
class SortedColumns5 {
 public:
  static constexpr int32_t kPixels = 256;

  SortedColumns5(const T* const (&rows)[5], int32_t first, int32_t count, int32_t width) {
    for (int32_t i = 0; i < count; ++i) sort(rows, first + i, i);
    for (int32_t i = 1; i <= kReach; ++i) {
      sort(rows, std::max(first - i, 0), -i);
      sort(rows, std::min(first + count - 1, width - 1 - i) + i, count - 1 + i);
    }
  }

  void storeMedians(T* dst, int32_t count) const {
    for (int32_t i = 0; i < count; ++i) dst[i] = OrderKey<T>::pixel(median(i + kStart));
  }

 private:
  using Key = typename OrderKey<T>::Key;
  struct Order {
    static Key min(Key a, Key b) { return a < b ? a : b; }
    static Key max(Key a, Key b) { return a > b ? a : b; }
  };
  using Network = Median25<Order, Key>;
  static constexpr int32_t kReach = 2;
  static constexpr int32_t kStart = 64 / sizeof(Key);
  static constexpr int32_t kRoom = kStart + kPixels + kStart;

  void sort(const T* const (&rows)[5], int32_t x, int32_t i) {
    const auto key = [&](int k) { return OrderKey<T>::of(rows[k][x]); };
    Key column[5];
    Network::insert(Network::sorted(key(0), key(1), key(2), key(3)), key(4), column);
    for (int k = 0; k < 5; ++k) columns_[k][kStart + i] = column[k];
  }

  template <int k>
  void addRow(int32_t i, typename Network::Window& window) const {
    const Key* const c = columns_[k];
    Network::template addRow<k>(Network::sorted(c[i - 2], c[i - 1], c[i], c[i + 1]), c[i + 2], window);
  }

  Key median(int32_t i) const {
    typename Network::Window window;
    addRow<0>(i, window), addRow<1>(i, window), addRow<2>(i, window), addRow<3>(i, window), addRow<4>(i, window);
    return window.median();
  }

  alignas(64) Key columns_[5][kRoom];
};

// Pixels first..end - 1 of one row of the result, from the five source rows around it.
template <class T>
void medianRow5(const T* const (&rows)[5], T* dst, int32_t first, int32_t end, int32_t width) {
  for (int32_t x = first, count; x < end; x += count) {
    count = std::min(SortedColumns5<T>::kPixels, end - x);
    SortedColumns5<T>(rows, x, count, width).storeMedians(dst + x, count);
  }
}

// Columns first..end - 1 of two rows of the result, from the six source rows around them.
template <class T>
void medianRowPair5(const T* const (&rows)[6], T* upper, T* lower, int32_t first, int32_t end, int32_t width) {
  medianRow5<T>({rows[0], rows[1], rows[2], rows[3], rows[4]}, upper, first, end, width);
  medianRow5<T>({rows[1], rows[2], rows[3], rows[4], rows[5]}, lower, first, end, width);
}

template <class T>
void medianRowPair5(const T* const (&rows)[6], T* upper, T* lower, int32_t width) {
  medianRowPair5(rows, upper, lower, 0, width, width);
}

}  // namespace dax::portable
