// What the library and the peer have in common.
#pragma once

#include "bench/support/image.h"

namespace bench {

constexpr int32_t kBorder = 16;
constexpr int kBorderValue = 77;
constexpr DaxiSize bordered(DaxiSize size) {
  return {size.width + 2 * kBorder, size.height + 2 * kBorder};
}
inline const DaxiSize kBorderedSize = bordered(kSize);

}  // namespace bench
