// Rows of minima and maxima, any instruction set.
#pragma once

#include <algorithm>
#include <bit>

#include "image/pixel/element_rows_portable.h"
#include "image/pixel/min_max.h"

namespace dax {

// Floats: a number wins against NaN, and -0 is below +0, which are equal: a minimum has the sign if one of them has, a
// maximum if both have.
struct MinOp {
  template <class T>
  static T of(T a, T b) {
    return std::min(a, b);
  }
  static float of(float a, float b) {
    if (a == b) return std::bit_cast<float>(std::bit_cast<uint32_t>(a) | std::bit_cast<uint32_t>(b));
    return a < b || b != b ? a : b;
  }
};
struct MaxOp {
  template <class T>
  static T of(T a, T b) {
    return std::max(a, b);
  }
  static float of(float a, float b) {
    if (a == b) return std::bit_cast<float>(std::bit_cast<uint32_t>(a) & std::bit_cast<uint32_t>(b));
    return a > b || b != b ? a : b;
  }
};

namespace portable {

template <class Op, Operand kOperand, class T>
void extremeRow(const T* a, const T* b, T* dst, int32_t count) {
  forEachBlock<kOperand>(a, b, dst, count, [](T first, T second) { return Op::of(first, second); });
}

}  // namespace portable
}  // namespace dax
