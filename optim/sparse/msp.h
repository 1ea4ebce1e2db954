// Sparse matrices inside the library.
#pragma once

#include "frame/check.h"
#include "frame/memory/arena.h"
#include "prmt/msp.h"

// Passes on a platform status other than 0.
#define PRMT_REQUIRE_OK(call)                                                         \
  do {                                                                                \
    if (const int32_t requiredStatus = (call); requiredStatus) return requiredStatus; \
  } while (false)

namespace dax {

// Stores the bytes that a measuring arena has counted.
inline int32_t storeNeed(const Arena& arena, uint64_t* bytes) {
  DAX_REQUIRE(!arena.overflows(), PRMT_STS_BUFFER_OVERFLOW);
  *bytes = arena.needed();
  return PRMT_STS_OK;
}

// Whether the matrix and all its arrays are not null.
inline bool isSet(const PrmtMsp* matrix) {
  return matrix && matrix->start && matrix->row && matrix->value;
}

inline int64_t elementsOf(const PrmtMsp& matrix) {
  return matrix.start[matrix.cols];
}

// A matrix with its arrays in an arena; arrays that do not fit are null.
inline PrmtMsp takeMatrix(Arena& arena, int32_t rows, int32_t cols, int64_t capacity) {
  const auto room = unsignedOf(capacity);
  PrmtMsp matrix{rows, cols, capacity, 0, nullptr, nullptr, nullptr};
  matrix.start = arena.take<int64_t>(unsignedOf(cols) + 1);
  matrix.row = arena.take<int32_t>(room);
  matrix.value = arena.take<double>(room);
  return matrix;
}

// Removes all elements.
void clearPattern(PrmtMsp& matrix);

// Position of the first element of column `col` in row `row` or a later one.
int64_t findElement(const PrmtMsp& matrix, int32_t row, int32_t col);

}  // namespace dax
