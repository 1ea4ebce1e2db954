// How much data the operations get, as a multiple of the usual amount: what plots of cost against size vary.
#pragma once

#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "dax/types.h"

namespace bench {

// 1, or what the environment says.
inline double amount() {
  const char* text = std::getenv("DAX_BENCH_AMOUNT");
  const double value = text ? std::atof(text) : 1;
  return value >= 1.0 / 64 && value <= 64 ? value : 1;
}

inline DaxiSize scaled(DaxiSize size) {
  const double factor = std::sqrt(amount());
  return {static_cast<int32_t>(std::lround(size.width * factor)),
          static_cast<int32_t>(std::lround(size.height * factor))};
}

inline int32_t scaled(int32_t count) {
  return static_cast<int32_t>(std::lround(count * amount()));
}

}  // namespace bench
