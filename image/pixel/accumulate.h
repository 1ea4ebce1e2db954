// Sums and running averages of images.
#pragma once

#include "image/pixel/element_rows.h"

namespace dax {

// Check and compute. The sums are given twice.
template <class T>
DaxStatus accumulate(const float* before, int32_t beforeStep, const T* src, int32_t srcStep, float* sums,
                     int32_t sumsStep, DaxiSize size);

template <class T>
DaxStatus accumulateWeighted(const float* before, int32_t beforeStep, const T* src, int32_t srcStep, float* means,
                             int32_t meansStep, DaxiSize size, float alpha);

// One row; the sum, where alpha is null.
template <class T>
void accumulateRow(const T* src, float* sums, int32_t count, const float* alpha, int32_t isa);

}  // namespace dax
