// Bits of valid and similar pixels, any instruction set.
#pragma once

#include <cstdint>
#include <cstdlib>

#include "pcl/filter/speckle_regions.h"

namespace dax {

// Values that differ by at most maxDifference are similar.
template <class T>
struct Likeness {
  uint16_t maxDifference;
  T invalid;
};

namespace portable {

template <class T>
uint64_t alike(T a, T b, const Likeness<T>& likeness) {
  return std::abs(int32_t{a} - int32_t{b}) <= likeness.maxDifference;
}

// The likeLeft bit of the first pixel of a row and the likeAbove bits of the first row (above null) are 0.
template <class T>
PixelBits pixelBits(const T* row, const T* above, bool hasLeft, int32_t n, const Likeness<T>& likeness) {
  PixelBits bits = {};
  for (int32_t i = 0; i < n; ++i) {
    bits.valid |= uint64_t{row[i] != likeness.invalid} << i;
    if (i > 0 || hasLeft) bits.likeLeft |= alike(row[i], row[i - 1], likeness) << i;
    if (above) bits.likeAbove |= alike(row[i], above[i], likeness) << i;
  }
  return bits;
}

}  // namespace portable
}  // namespace dax
