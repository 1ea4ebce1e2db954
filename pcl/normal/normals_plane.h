// The plane through a set of points: mean, covariance, and its smallest principal axis.
#pragma once

#include <cfloat>
#include <cmath>
#include <cstdint>

#include "dax3dpcl/normals.h"

namespace dax {

// The distinct entries of a symmetric matrix.
template <class T>
struct Symmetric3 {
  T xx, xy, xz, yy, yz, zz;
};

struct Vector3 {
  double x, y, z;
};

struct Eigenvalues3 {
  double smallest, middle, largest;
};

// In closed form: with the mean m of the diagonal, B = A - m I and p^2 = tr(B^2) / 6, the eigenvalues are
// m + 2 p cos(t + 2 pi i / 3), where cos(3 t) = det(B / p) / 2.
Eigenvalues3 eigenvalues(const Symmetric3<double>& a);

// A unit vector to the smallest eigenvalue: {0, 0, 1} where all three agree.
Vector3 smallestAxis(const Symmetric3<double>& a, const Eigenvalues3& values);

// The covariance of `count` points {x, y, z}.
Symmetric3<float> covariance(const float* points, int32_t count);

// Normal and curvature of points with this covariance; false, and nothing is written, where they lie on a line, in one
// place, or beyond the range of floats.
bool fitNormal(const Symmetric3<float>& covariance, DAX3DPCL_NORMAL& normal);

}  // namespace dax
