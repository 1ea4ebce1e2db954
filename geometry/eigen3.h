// Eigenvalues and axes of symmetric 3 x 3 matrices.
#pragma once

#include "geometry/vector3.h"

namespace dax {

// The distinct elements of a symmetric matrix.
template <class T>
struct Symmetric3 {
  T xx, xy, xz, yy, yz, zz;
};

struct Eigenvalues3 {
  double smallest, middle, largest;
};

// In closed form (Smith 1961): with m = tr(A) / 3, B = A - m I and p^2 = tr(B^2) / 6, the eigenvalues are
// m + 2 p cos(t + 2 pi i / 3), where cos(3 t) = det(B / p) / 2.
Eigenvalues3 eigenvalues(const Symmetric3<double>& a);

// A unit eigenvector of the smallest eigenvalue: any of them if the two smaller ones are equal, {0, 0, 1} if all three
// are.
Vector3 smallestAxis(const Symmetric3<double>& a, const Eigenvalues3& values);

}  // namespace dax
