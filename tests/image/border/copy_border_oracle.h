// Border rules as closed-form index functions, one pixel at a time.
#pragma once

#include <cstdint>

namespace dax::oracle {

enum class Border { constant, replicate, mirror, symmetric, circular };

// The source index for position x relative to a source of n, or -1 for the constant value.
inline int32_t borderIndex(Border rule, int32_t x, int32_t n) {
  if (x >= 0 && x < n) return x;
  switch (rule) {
    case Border::constant:
      return -1;
    case Border::replicate:
      return x < 0 ? 0 : n - 1;
    case Border::circular:
      return ((x % n) + n) % n;
    case Border::symmetric: {
      const int32_t folded = ((x % (2 * n)) + 2 * n) % (2 * n);
      return folded < n ? folded : 2 * n - 1 - folded;
    }
    case Border::mirror: {
      const int32_t i = x < 0 ? -x - 1 : x - n;
      const int32_t o = i % (n - 1);
      const bool reversed = i / (n - 1) % 2 == 0;
      if (x < 0) return reversed ? 1 + o : n - 1 - o;
      return reversed ? n - 2 - o : o;
    }
  }
  return -1;
}

}  // namespace dax::oracle
