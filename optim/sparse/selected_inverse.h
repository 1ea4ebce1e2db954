// Elements of the inverse of a factored matrix, without the others (Takahashi, Fagan and Chin 1973; by panels).
#pragma once

#include "optim/sparse/cholesky.h"

namespace dax {

// Doubles of scratch for panels of at most so many columns and rows below them.
constexpr int64_t selectedScratch(int64_t columns, int64_t below) {
  return below * below + 2 * below * columns + columns * columns;
}

// Replaces the values of a factor by the elements of the inverse at the same places, on and below the diagonal.
void invertSelected(const PrmCholesky& factor, double* scratch);

}  // namespace dax
