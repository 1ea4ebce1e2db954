// Weighted sums of two images.
#pragma once

#include "daxi/add_weighted.h"
#include "image/pixel/element_rows.h"

namespace dax {

// Checks and computes, on the pool where there is one; a source may be dst.
template <class T>
DaxStatus addWeighted(PoolThreads on, const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst,
                      int32_t dstStep, DaxiSize size, const DaxiAddWeightedCfg* cfg);

// One row.
template <class T>
void addWeightedRow(const T* a, const T* b, T* dst, int32_t count, const DaxiAddWeightedCfg& cfg, int32_t isa);

}  // namespace dax
