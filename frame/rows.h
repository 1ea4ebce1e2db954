// Addressing rows: steps count elements and their product with a row index needs 64 bits.
#pragma once

#include <cstddef>
#include <cstdint>

namespace dax {

template <class T>
T* rowAt(T* base, int32_t step, int32_t y) {
  return base + ptrdiff_t{y} * step;
}

}  // namespace dax
