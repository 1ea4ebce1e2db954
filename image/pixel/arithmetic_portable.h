// Rows of arithmetic, any instruction set.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <type_traits>

#include "image/pixel/arithmetic.h"
#include "image/pixel/element_rows_portable.h"

namespace dax {

struct AddOp {
  template <class W>
  static W of(W a, W b) {
    return a + b;
  }
};
struct SubOp {
  template <class W>
  static W of(W a, W b) {
    return a - b;
  }
};
struct MulOp {
  template <class W>
  static W of(W a, W b) {
    return a * b;
  }
};
struct AbsDiffOp {
  template <class W>
  static W of(W a, W b) {
    if constexpr (std::is_floating_point_v<W>) return std::fabs(a - b);
    return a > b ? a - b : b - a;
  }
};

namespace portable {

// Holds the exact result of an operation; only the product of two uint16_t needs the sign bit.
template <class Op, class T>
using Exact =
    std::conditional_t<std::is_floating_point_v<T>, T,
                       std::conditional_t<std::is_same_v<Op, MulOp> && std::is_same_v<T, uint16_t>, uint32_t, int32_t>>;

template <class T, class W>
T saturated(W value) {
  constexpr W kMin = std::numeric_limits<T>::min(), kMax = std::numeric_limits<T>::max();
  return static_cast<T>(std::min(std::max(value, kMin), kMax));
}

// value / 2^shift, rounded half to even; 1 <= shift <= 31.
template <class W>
W halvedToEven(W value, int32_t shift) {
  const W quotient = value >> shift;  // rounds down
  const auto rest = static_cast<uint32_t>(value) & ((uint32_t{1} << shift) - 1), half = uint32_t{1} << (shift - 1);
  return quotient + static_cast<W>(rest > half || (rest == half && (quotient & 1)));
}

// Without a scale factor.
template <class Op, Operand kOperand, class T>
void exactRow(const T* a, const T* b, T* dst, int32_t count) {
  using W = Exact<Op, T>;
  forEachBlock<kOperand>(a, b, dst, count, [](T first, T second) -> T {
    if constexpr (std::is_floating_point_v<T>) return Op::of(first, second);
    return saturated<T>(Op::of(W{first}, W{second}));
  });
}

template <class Op, Operand kOperand, class T>
void scaledRow(const T* a, const T* b, T* dst, int32_t count, int32_t scaleFactor) {
  using W = Exact<Op, T>;
  if (scaleFactor > 0) {
    forEachBlock<kOperand>(a, b, dst, count, [=](T first, T second) {
      return saturated<T>(halvedToEven(Op::of(W{first}, W{second}), scaleFactor));
    });
  } else {  // below 2^32 * 2^31
    forEachBlock<kOperand>(a, b, dst, count, [=](T first, T second) {
      return saturated<T>(int64_t{Op::of(W{first}, W{second})} * (int64_t{1} << -scaleFactor));
    });
  }
}

}  // namespace portable
}  // namespace dax
