// Rows in blocks.
#pragma once

#include <cstdint>

#include "frame/dispatch.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// block(first index) for as many blocks of kBlock elements as there are, four in a turn of the loop; returns how many elements they
// have.
template <int32_t kBlock = 16, class Block>
int32_t forBlocks(int32_t count, Block block) {
  int32_t x = 0;
  for (; x <= count - 4 * kBlock; x += 4 * kBlock) {
    for (int32_t k = 0; k < 4; ++k) block(x + k * kBlock);
  }
  for (; x <= count - kBlock; x += kBlock) block(x);
  return x;
}

}  // namespace dax::neon
#endif
