// What connects pixels, as bits, any instruction set.
#pragma once

#include <cstdint>
#include <cstdlib>

namespace dax {

// Bit i tells of pixel i of up to 64 in a row.
struct PixelBits {
  uint64_t valid;      // not the invalid value
  uint64_t likeLeft;   // differs little from its left neighbour
  uint64_t likeAbove;  // differs little from the pixel above
};

// Values that differ by at most maxDifference are alike.
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

// The first pixel of the row has no left neighbour, the first row (above null) no row above: those bits are 0.
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
