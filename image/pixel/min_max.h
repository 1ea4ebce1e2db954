// The smaller or the greater one of two values.
#pragma once

#include "image/pixel/element_rows.h"

namespace dax {

struct MinOp;
struct MaxOp;

template <class Op, class T>
DaxStatus extremeOfImages(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep,
                          DaxiSize size);

template <class Op, class T>
DaxStatus extremeOfConstant(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T value);

// One row.
template <class Op, Operand kOperand, class T>
void extremeRow(const T* a, const T* b, T* dst, int32_t count, int32_t isa);

}  // namespace dax
