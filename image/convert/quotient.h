// Quotients of whole numbers.
#pragma once

#include <cstdint>

namespace dax {

// n / d to the nearest integer, halves to the even one; d > 0.
inline uint64_t roundedQuotient(uint64_t n, uint64_t d) {
  const uint64_t down = n / d, rest = n % d, above = d - rest;
  return down + static_cast<uint64_t>(rest > above || (rest == above && down % 2 != 0));
}

}  // namespace dax
