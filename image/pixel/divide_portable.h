// Rows of quotients, any instruction set.
#pragma once

#include <cmath>
#include <type_traits>

#include "frame/numeric/round.h"
#include "image/pixel/divide.h"
#include "image/pixel/element_rows_portable.h"

namespace dax::portable {

// a / b 2^-scaleFactor. What is not a half differs from the nearest one by 1 / (2 b 2^scaleFactor) at least, which within the
// range of T is far more than a double's rounding.
template <Operand kOperand, class T>
void divideRow(const T* a, const T* b, T* dst, int32_t count, int32_t scaleFactor) {
  if constexpr (std::is_floating_point_v<T>) {
    forEachBlock<kOperand>(a, b, dst, count, [](T first, T second) { return first / second; });
  } else {
    const double scale = std::ldexp(1.0, -scaleFactor);
    forEachBlock<kOperand>(a, b, dst, count, [=](T first, T second) { return roundTo<T>(first * scale / second); });
  }
}

template <class T>
bool hasZero(const T* row, int32_t count) {
  bool found = false;
  for (int32_t x = 0; x < count; ++x) found |= row[x] == 0;
  return found;
}

}  // namespace dax::portable
