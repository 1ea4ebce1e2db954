// Extent of a window around its centre, and the pixels beyond the edge of an image that it reaches.
#pragma once

#include <cstdint>

namespace dax {

// One dimension of a window of n: so many pixels before and after the centre. Even ones reach further before it.
struct WindowReach {
  int32_t before, after;
  explicit WindowReach(int32_t n) : before(n / 2), after(n - 1 - n / 2) {}
};

// Index of the pixel i of a row or column that goes on symmetrically: -1 is 0, n is n - 1.
inline int64_t mirrored(int64_t i, int64_t n) {
  return i < 0 ? -1 - i : i < n ? i : 2 * n - 1 - i;
}

}  // namespace dax
