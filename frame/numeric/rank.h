// The rank that a share of so many values means.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace dax {

// ceil(share * n) for a share of 0..1, at least 1. The product is lowered by what its rounding may have added: 0.07 *
// 100 is above 7.
inline uint64_t rankOf(double share, uint64_t n) {
  const double place = share * static_cast<double>(n);
  const auto rank = static_cast<uint64_t>(std::ceil(place - place * 0x1p-50));
  return std::min(std::max<uint64_t>(rank, 1), n);
}

}  // namespace dax
