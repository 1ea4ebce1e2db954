// Singular values of 3 x 3 matrices, by rotations alone.
#pragma once

#include "geometry/matrix33.h"

namespace dax {

// A = sum values[i] u[i] v[i]^T, where u and v are right-handed orthonormal triples: the last value has the sign of
// det(A), the others descend and are at least its magnitude.
struct ProperSvd3 {
  Vector3 u[3], v[3];
  double values[3];
};

// Of finite elements, the largest magnitude between 1e-100 and 1e100. Values are right to rounding of the largest.
ProperSvd3 properSvd(const Matrix33& a);

}  // namespace dax
