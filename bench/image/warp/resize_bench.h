// Sizes to resize to.
#pragma once

#include <cmath>

#include "bench/support/image.h"

namespace bench {

inline DaxiSize scaledSize(double factor) {
  return {static_cast<int32_t>(std::lround(kSize.width * factor)),
          static_cast<int32_t>(std::lround(kSize.height * factor))};
}

}  // namespace bench
