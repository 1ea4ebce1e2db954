// What is transformed: 1024 x 1024 numbers, and as many in one row.
#pragma once

#include <memory>
#include <vector>

#include "bench/support/image.h"

namespace bench {

inline const DaxiSize kSquare = scaled({1024, 1024});
inline const DaxiSize kRow = {kSquare.width * kSquare.height, 1};

// Pairs of real and imaginary parts, whole numbers.
template <class T>
std::shared_ptr<std::vector<T>> complexNoise() {
  const Image<uint8_t> levels = noise<uint8_t>({2 * kSquare.width, kSquare.height});
  return std::make_shared<std::vector<T>>(levels.pixels->begin(), levels.pixels->end());
}

}  // namespace bench
