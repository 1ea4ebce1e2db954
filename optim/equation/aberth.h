// All roots of a polynomial at once.
#pragma once

#include "optim/equation/wide.h"

namespace dax {

constexpr int32_t kMaxDegree = 512;

// (re + i im) 2^exponent, the larger part's magnitude in [1, 2), or all 0.
struct WideComplex {
  double re, im;
  int32_t exponent;
};

// In work memory.
struct AberthRoots {
  WideComplex* at;
  Wide* radius;
};

// Doubles of `work` for a degree.
constexpr int64_t kAberthDoubles = 10;

// The roots of a polynomial whose first and last coefficients are not 0; false where more than 100 rounds would be needed.
// `work` of kAberthDoubles (degree + 1).
bool findRoots(const double* coefficients, int32_t degree, double* work, AberthRoots& roots);

}  // namespace dax
