// Rows of operations on bits in vectors.
#pragma once

#include "image/logic/logic_portable.h"
#include "image/pixel/element_rows_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

template <class Op, Operand kOperand, class T>
void bitsRow(const T* a, const T* b, T* dst, int32_t count) {
  const int32_t x =
      forEachBlock<kOperand>(a, b, dst, count, [](auto first, auto second) { return Op::of(first, second); });
  portable::bitsRow<Op, kOperand>(a + x, operandAt<kOperand>(b, x), dst + x, count - x);
}

template <class Op, class T>
void shiftRow(const T* src, T* dst, int32_t width, T count) {
  const int32_t x =
      forEachBlock<Operand::row>(src, src, dst, width, [=](auto value, auto) { return Op::of(value, count); });
  portable::shiftRow<Op>(src + x, dst + x, width - x, count);
}

}  // namespace dax::neon
#endif
