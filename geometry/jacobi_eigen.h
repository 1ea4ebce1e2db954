// Small symmetric eigenproblems by Jacobi's rotations: exact to rounding for close eigenvalues too, which formulas with
// cosines are not.
#pragma once

#include <cmath>
#include <utility>

namespace dax {

// Ascending; row i of `vectors` is the unit eigenvector of values[i].
template <int n>
struct EigenSystem {
  double values[n];
  double vectors[n][n];
};

// The rotation (c s; -s c) that makes the off-diagonal element of (app apq; apq aqq) vanish; t = s / c.
struct JacobiRotation {
  JacobiRotation(double app, double apq, double aqq) {
    const double theta = (aqq - app) / (2 * apq);
    tangent = (theta < 0 ? -1 : 1) / (std::fabs(theta) + std::sqrt(1 + theta * theta));
    cosine = 1 / std::sqrt(1 + tangent * tangent);
    sine = tangent * cosine;
  }
  double tangent, cosine, sine;
};

// Of a symmetric matrix of finite elements, which is overwritten (H. Rutishauser, Numerische Mathematik 9, 1966).
template <int n>
EigenSystem<n> jacobiEigen(double (&a)[n][n]) {
  EigenSystem<n> found{};
  auto& v = found.vectors;
  for (int i = 0; i < n; ++i) v[i][i] = 1;
  bool isDone = false;
  for (int sweep = 0; sweep < 30 && !isDone; ++sweep) {
    isDone = true;
    for (int p = 0; p < n; ++p) {
      for (int q = p + 1; q < n; ++q) {
        if (std::fabs(a[p][q]) <= 0x1p-60 * (std::fabs(a[p][p]) + std::fabs(a[q][q]))) continue;
        isDone = false;
        const JacobiRotation r(a[p][p], a[p][q], a[q][q]);
        a[p][p] -= r.tangent * a[p][q];
        a[q][q] += r.tangent * a[p][q];
        a[p][q] = a[q][p] = 0;
        for (int k = 0; k < n; ++k) {
          if (k != p && k != q) {
            const double x = a[p][k], y = a[q][k];
            a[p][k] = a[k][p] = r.cosine * x - r.sine * y;
            a[q][k] = a[k][q] = r.sine * x + r.cosine * y;
          }
          const double x = v[p][k], y = v[q][k];
          v[p][k] = r.cosine * x - r.sine * y;
          v[q][k] = r.sine * x + r.cosine * y;
        }
      }
    }
  }
  for (int i = 0; i < n; ++i) {
    int least = i;
    for (int j = i + 1; j < n; ++j) least = a[j][j] < a[least][least] ? j : least;
    std::swap(a[i][i], a[least][least]);
    std::swap(v[i], v[least]);
    found.values[i] = a[i][i];
  }
  return found;
}

}  // namespace dax
