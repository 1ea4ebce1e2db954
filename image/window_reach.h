// Extent of a window around its centre.
#pragma once

#include <cstdint>

namespace dax {

// One dimension of a window of n: so many pixels before and after the centre. Even ones reach further before it.
struct WindowReach {
  int32_t before, after;
  explicit WindowReach(int32_t n) : before(n / 2), after(n - 1 - n / 2) {}
};

}  // namespace dax
