// Real roots of polynomials up to the fourth degree.
#pragma once

#include "optim/equation/wide.h"

namespace dax {

constexpr int32_t kMaxRealDegree = 4;

struct WidePolynomial {
  int32_t degree;
  Wide a[kMaxRealDegree + 1];
};

struct WideRoots {
  int32_t count;
  struct {
    Wide x;
    int32_t multiplicity;
  } at[kMaxRealDegree];
};

// Ascending; the leading coefficient is not 0.
WideRoots findRealRoots(const WidePolynomial& p);

}  // namespace dax
