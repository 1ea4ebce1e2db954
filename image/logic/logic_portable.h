// Rows of operations on bits, any instruction set.
#pragma once

#include "image/logic/logic.h"
#include "image/pixel/element_rows_portable.h"

namespace dax {

// Of two integers, or of two vectors of the compiler's.
struct AndOp {
  template <class V>
  static V of(V a, V b) {
    return static_cast<V>(a & b);
  }
};
struct OrOp {
  template <class V>
  static V of(V a, V b) {
    return static_cast<V>(a | b);
  }
};
struct XorOp {
  template <class V>
  static V of(V a, V b) {
    return static_cast<V>(a ^ b);
  }
};
// Of an integer or a vector by a number of places.
struct LeftShiftOp {
  template <class V, class T>
  static V of(V value, T count) {
    return static_cast<V>(value << count);
  }
};
struct RightShiftOp {
  template <class V, class T>
  static V of(V value, T count) {
    return static_cast<V>(value >> count);
  }
};

namespace portable {

template <class Op, Operand kOperand, class T>
void bitsRow(const T* a, const T* b, T* dst, int32_t count) {
  forEachBlock<kOperand>(a, b, dst, count, [](T first, T second) { return Op::of(first, second); });
}

template <class Op, class T>
void shiftRow(const T* src, T* dst, int32_t width, T count) {
  for (int32_t x = 0; x < width; ++x) dst[x] = Op::of(src[x], count);
}

}  // namespace portable
}  // namespace dax
