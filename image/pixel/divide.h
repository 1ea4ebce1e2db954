// Quotients of an image and a constant, or another image.
#pragma once

#include "image/pixel/element_rows.h"

namespace dax {

// Check and compute, on the pool where there is one. `value` holds a constant for each channel; a source may be dst.
template <class T, int kChannels>
DaxStatus divideByConstant(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                           const T* value, int32_t scaleFactor);

template <class T, int kChannels>
DaxStatus divideByImage(PoolThreads on, const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst,
                        int32_t dstStep, DaxiSize size, int32_t scaleFactor);

// One row; no divisor of an integer is 0.
template <Operand kOperand, class T>
void divideRow(const T* a, const T* b, T* dst, int32_t count, int32_t scaleFactor, int32_t isa);

// Whether a row has a zero.
template <class T>
bool hasZero(const T* row, int32_t count, int32_t isa);

}  // namespace dax
