// Rows of quotients in vectors.
#pragma once

#include <type_traits>

#include "image/pixel/divide_portable.h"
#include "image/pixel/element_rows_neon.h"
#include "image/pixel/float_lanes_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Factors from which on single precision rounds as the exact quotient does: the quotient times 2^-24 stays below its
// distance from a half. Quotients fit 32 bits, too.
template <class T>
constexpr int32_t kFloatDivides = sizeof(T) == 1 ? -15 : -6;

template <class T, class Vector>
Vector quotients(Vector a, Vector b, float scale) {
  Quarters<T> quotient = toFloats(a);
  const Quarters<T> divisor = toFloats(b);
  for (size_t k = 0; k < quotient.size(); ++k) quotient[k] = vdivq_f32(vmulq_n_f32(quotient[k], scale), divisor[k]);
  return fromFloats<T>(quotient);
}

template <Operand kOperand, class T>
void divideRow(const T* a, const T* b, T* dst, int32_t count, int32_t scaleFactor) {
  int32_t x = 0;
  if constexpr (std::is_floating_point_v<T>) {
    x = forEachBlock<kOperand>(a, b, dst, count, [](auto first, auto second) { return vdivq_f32(first, second); });
  } else if (scaleFactor == 0) {
    x = forEachBlock<kOperand>(a, b, dst, count, [](auto first, auto second) {
      Quarters<T> quotient = toFloats(first);
      const Quarters<T> divisor = toFloats(second);
      for (size_t k = 0; k < quotient.size(); ++k) quotient[k] = vdivq_f32(quotient[k], divisor[k]);
      return fromFloats<T>(quotient);
    });
  } else if (scaleFactor >= kFloatDivides<T>) {
    const float scale = std::ldexp(1.0f, -scaleFactor);
    x = forEachBlock<kOperand>(a, b, dst, count,
                               [=](auto first, auto second) { return quotients<T>(first, second, scale); });
  }
  portable::divideRow<kOperand>(a + x, operandAt<kOperand>(b, x), dst + x, count - x, scaleFactor);
}

// The smallest unsigned number is 0 only where one is.
template <class T>
bool hasZero(const T* row, int32_t count) {
  if constexpr (std::is_floating_point_v<T>) {
    return portable::hasZero(row, count);
  } else {
    using U = std::make_unsigned_t<T>;
    using L = Lanes<U>;
    constexpr int32_t kBlock = 4 * L::kCount;
    const U* const elements = reinterpret_cast<const U*>(row);
    auto least = L::all(static_cast<U>(-1));
    int32_t x = 0;
    for (; x <= count - kBlock; x += kBlock) {
      const auto four = L::loadFour(elements + x);
      least = L::min(least, L::min(L::min(four.val[0], four.val[1]), L::min(four.val[2], four.val[3])));
    }
    U leasts[L::kCount];
    L::store(leasts, least);
    return portable::hasZero(leasts, L::kCount) || portable::hasZero(row + x, count - x);
  }
}

}  // namespace dax::neon
#endif
