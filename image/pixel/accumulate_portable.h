// Rows of sums and running averages, any instruction set.
#pragma once

#include "image/pixel/accumulate.h"

namespace dax::portable {

template <class T>
void accumulateRow(const T* src, float* sums, int32_t count, const float* alpha) {
  if (!alpha) {
    for (int32_t x = 0; x < count; ++x) sums[x] += static_cast<float>(src[x]);
    return;
  }
  const float share = *alpha;
  for (int32_t x = 0; x < count; ++x) sums[x] += share * (static_cast<float>(src[x]) - sums[x]);
}

}  // namespace dax::portable
