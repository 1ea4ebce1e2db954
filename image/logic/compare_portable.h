// Rows of comparisons, any instruction set.
#pragma once

#include <cmath>

#include "image/logic/compare.h"
#include "image/pixel/element_rows_portable.h"

namespace dax {

// Of two numbers, or of two vectors of the compiler's, whose results are masks.
#define DAX_COMPARISON(NAME, OPERATOR) \
  struct NAME {                        \
    template <class V>                 \
    static auto of(V a, V b) {         \
      return a OPERATOR b;             \
    }                                  \
  };
DAX_COMPARISON(LessOp, <)
DAX_COMPARISON(LessEqualOp, <=)
DAX_COMPARISON(EqualOp, ==)
DAX_COMPARISON(NotEqualOp, !=)
DAX_COMPARISON(GreaterEqualOp, >=)
DAX_COMPARISON(GreaterOp, >)
#undef DAX_COMPARISON

namespace portable {

inline uint8_t maskOf(bool holds) {
  return holds ? 255 : 0;
}

template <class Op, Operand kOperand, class T>
void compareRow(const T* a, const T* b, uint8_t* dst, int32_t count) {
  forEachBlock<kOperand>(a, b, dst, count, [](T first, T second) { return maskOf(Op::of(first, second)); });
}

template <Operand kOperand>
void compareEpsRow(const float* a, const float* b, uint8_t* dst, int32_t count, double eps) {
  forEachBlock<kOperand>(a, b, dst, count, [=](float first, float second) {
    return maskOf(std::fabs(double{first} - double{second}) <= eps);
  });
}

}  // namespace portable
}  // namespace dax
