// Sums over the columns of the blocks of a row, any instruction set.
#pragma once

#include <cstddef>
#include <cstdint>

namespace dax {

// So many pixels side by side are a block.
constexpr int32_t kMomentLanes = 16;

// The last of the sums is at most the greatest pixel times (blocks + 3)! / (4! (blocks - 1)!), which is below 2^32.
template <class T>
constexpr int32_t kMaxMomentBlocks = sizeof(T) == 1 ? 128 : 32;

// Sums over blocks, from the last one to the first; sums of these sums, of those, and of those again.
struct ColumnSums {
  uint32_t s[4][kMomentLanes] = {};
};

namespace portable {

template <class T>
ColumnSums columnSums(const T* part, int32_t blocks) {
  ColumnSums sums;
  for (int32_t b = blocks - 1; b >= 0; --b) {
    const T* const block = part + ptrdiff_t{b} * kMomentLanes;
    for (int32_t i = 0; i < kMomentLanes; ++i) sums.s[0][i] += block[i];
    for (int p = 1; p < 4; ++p) {
      for (int32_t i = 0; i < kMomentLanes; ++i) sums.s[p][i] += sums.s[p - 1][i];
    }
  }
  return sums;
}

}  // namespace portable
}  // namespace dax
