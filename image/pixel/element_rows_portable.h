// Loops over the elements of a row and of a second operand, any instruction set. They have a fixed length, which compilers
// turn into vectors.
#pragma once

#include "image/pixel/element_rows.h"

namespace dax::portable {

// dst = f(a, b), block by block.
template <Operand kOperand, class T, class D, class F>
void forEachBlock(const T* a, const T* b, D* dst, int32_t count, F f) {
  int32_t x = 0;
  const auto second = [&] { return kOperand == Operand::row ? b + x : b; };
  for (; x <= count - kPatternLength; x += kPatternLength) {
    const T* const values = second();
    for (int32_t i = 0; i < kPatternLength; ++i) dst[x + i] = f(a[x + i], values[i]);
  }
  const T* const values = second();
  for (int32_t i = 0; x + i < count; ++i) dst[x + i] = f(a[x + i], values[i]);
}

}  // namespace dax::portable
