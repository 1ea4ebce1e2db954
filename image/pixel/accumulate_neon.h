// Rows of sums and running averages in vectors.
#pragma once

#include "image/convert/blocks_neon.h"
#include "image/pixel/accumulate_portable.h"
#include "image/pixel/float_lanes_neon.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// sum = f(value, sum) by sixteen elements; returns how many elements these were.
template <class T, class F>
int32_t forEachSum(const T* src, float* sums, int32_t count, F f) {
  using L = Lanes<T>;
  using Sums = Lanes<float>;
  return forBlocks(count, [&](int32_t x) {
    float32x4x4_t four = Sums::loadFour(sums + x);
    for (int32_t at = 0, k = 0; at < 16; at += L::kCount) {
      for (const float32x4_t value : toFloats(L::load(src + x + at))) four.val[k] = f(value, four.val[k]), ++k;
    }
    Sums::storeFour(sums + x, four);
  });
}

template <class T>
void accumulateRow(const T* src, float* sums, int32_t count, const float* alpha) {
  const int32_t x = alpha ? forEachSum(src, sums, count,
                                       [share = *alpha](float32x4_t value, float32x4_t before) {
                                         return vaddq_f32(before, vmulq_n_f32(vsubq_f32(value, before), share));
                                       })
                          : forEachSum(src, sums, count,
                                       [](float32x4_t value, float32x4_t before) { return vaddq_f32(before, value); });
  portable::accumulateRow(src + x, sums + x, count - x, alpha);
}

}  // namespace dax::neon
#endif
