// Rows of the 3 x 3 median, any type, any instruction set.
//
// Sort the three pixels of every column. The median of the nine is then the median of the largest minimum, the median
// of the medians and the smallest maximum of three neighbouring columns (J. L. Smith, Implementing median filters in
// XC4000E FPGAs, Xcell 23, 1996). A column is sorted once for the three outputs that it belongs to.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>

namespace dax::portable {

// Pixels as integers of the same order; floats as by totalOrder: the bits of negative ones count backwards.
template <class T>
struct MedianKey {
  using Key = T;
  static Key of(T pixel) { return pixel; }
  static T pixel(Key key) { return key; }
};

template <class T, class Integer>
struct FloatMedianKey {
  using Key = Integer;
  static Key flip(Key bits) {
    return static_cast<Key>(bits ^ ((bits >> (8 * sizeof(Key) - 1)) & std::numeric_limits<Key>::max()));
  }
  static Key of(T pixel) { return flip(std::bit_cast<Key>(pixel)); }
  static T pixel(Key key) { return std::bit_cast<T>(flip(key)); }
};
template <>
struct MedianKey<float> : FloatMedianKey<float, int32_t> {};
template <>
struct MedianKey<double> : FloatMedianKey<double, int64_t> {};

// By value, unlike std::min and std::max, whose choice between references keeps compilers from vector minima.
template <class Key>
Key least(Key a, Key b) {
  return a < b ? a : b;
}

template <class Key>
Key greatest(Key a, Key b) {
  return a > b ? a : b;
}

template <class Key>
Key median(Key a, Key b, Key c) {
  return greatest(least(a, b), least(greatest(a, b), c));
}

// Sorted columns of a piece of a row and of one column on either side. The loops over them are such that compilers
// vectorise them; the pieces begin at a cache line, the column before them lies in the one before.
template <class T>
class SortedColumns {
 public:
  static constexpr int32_t kPixels = 256;

  SortedColumns(const T* const (&rows)[3], int32_t first, int32_t count, int32_t width) {
    const T *const above = rows[0], *const centre = rows[1], *const below = rows[2];
    const auto sort = [&](int32_t x, int32_t i) {
      const Key a = MedianKey<T>::of(above[x]), b = MedianKey<T>::of(centre[x]), c = MedianKey<T>::of(below[x]);
      const Key low = least(a, b), high = greatest(a, b);
      low_[kStart + i] = least(low, c);
      mid_[kStart + i] = least(high, greatest(low, c));
      high_[kStart + i] = greatest(high, c);
    };
    for (int32_t i = 0; i < count; ++i) sort(first + i, i);
    sort(std::max(first - 1, 0), -1);
    sort(std::min(first + count, width - 1), count);
  }

  void storeMedians(T* dst, int32_t count) const {
    for (int32_t i = kStart; i < kStart + count; ++i) {
      const Key a = greatest(greatest(low_[i - 1], low_[i]), low_[i + 1]);
      const Key b = median(mid_[i - 1], mid_[i], mid_[i + 1]);
      const Key c = least(least(high_[i - 1], high_[i]), high_[i + 1]);
      dst[i - kStart] = MedianKey<T>::pixel(median(a, b, c));
    }
  }

 private:
  using Key = typename MedianKey<T>::Key;
  static constexpr int32_t kStart = 64 / sizeof(Key);
  static constexpr int32_t kRoom = kStart + kPixels + kStart;

  alignas(64) Key low_[kRoom];
  alignas(64) Key mid_[kRoom];
  alignas(64) Key high_[kRoom];
};

// Pixels first..width - 1 of one row of the result, from the three source rows around it.
template <class T>
void medianRow(const T* const (&rows)[3], T* dst, int32_t first, int32_t width) {
  for (int32_t x = first; x < width; x += SortedColumns<T>::kPixels) {
    const int32_t count = std::min(SortedColumns<T>::kPixels, width - x);
    SortedColumns<T>(rows, x, count, width).storeMedians(dst + x, count);
  }
}

}  // namespace dax::portable
