// Extent of a window around its centre, and the pixels beyond the edge of an image that it reaches.
#pragma once

#include <cstdint>

#include "frame/check.h"

namespace dax {

// One dimension of a window of n pixels: the number of pixels before and after its centre; if n is even, one more
// before.
struct WindowReach {
  int32_t before, after;
  explicit WindowReach(int32_t n) : before(n / 2), after(n - 1 - n / 2) {}
};

// Index of pixel i in a row or column of n pixels that is extended symmetrically: -1 is 0, n is n - 1.
inline int64_t mirrored(int64_t i, int64_t n) {
  return i < 0 ? -1 - i : i < n ? i : 2 * n - 1 - i;
}

inline bool maskFits(DaxiSize mask, DaxiSize size) {
  return atLeast(mask, 1) && mask.width <= size.width && mask.height <= size.height;
}

}  // namespace dax
