// What the library and the peer have in common.
#pragma once

#include "support/image.h"

namespace bench {

constexpr int32_t kBorder = 16;
constexpr int kBorderValue = 77;
constexpr DaxiSize kBorderedSize{kSize.width + 2 * kBorder, kSize.height + 2 * kBorder};

}  // namespace bench
