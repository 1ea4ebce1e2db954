// Absolute values, squares and square roots.
#pragma once

#include "image/pixel/element_rows.h"

namespace dax {

struct AbsOp;
struct SqrtOp;

// Check and compute, on the pool where there is one; src may be dst.
template <class Op, class T>
DaxStatus magnitude(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size);

template <class T>
DaxStatus square(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t scaleFactor);

// One row.
template <class Op, class T>
void magnitudeRow(const T* src, T* dst, int32_t count, int32_t isa);

}  // namespace dax
