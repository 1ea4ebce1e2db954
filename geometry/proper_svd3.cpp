#include "geometry/proper_svd3.h"

#include <utility>

#include "geometry/jacobi_eigen.h"

namespace dax {
namespace {

void turnPair(Vector3& p, Vector3& q, const JacobiRotation& r) {
  const Vector3 x = p, y = q;
  p = r.cosine * x - r.sine * y;
  q = r.sine * x + r.cosine * y;
}

// M. R. Hestenes, J. SIAM 6(1), 1958: columns are turned in pairs until all are orthogonal.
void orthogonalise(Vector3 (&columns)[3], Vector3 (&v)[3]) {
  bool isDone = false;
  for (int sweep = 0; sweep < 30 && !isDone; ++sweep) {
    isDone = true;
    for (int p = 0; p < 2; ++p) {
      for (int q = p + 1; q < 3; ++q) {
        const double pp = dot(columns[p], columns[p]), qq = dot(columns[q], columns[q]);
        const double pq = dot(columns[p], columns[q]);
        if (!(std::fabs(pq) > 0x1p-54 * std::sqrt(pp) * std::sqrt(qq))) continue;
        isDone = false;
        const JacobiRotation r(pp, pq, qq);
        turnPair(columns[p], columns[q], r);
        turnPair(v[p], v[q], r);
      }
    }
  }
}

}  // namespace

ProperSvd3 properSvd(const Matrix33& a) {
  const Matrix33 t = transposed(a);
  Vector3 columns[3] = {t.rows[0], t.rows[1], t.rows[2]};
  Vector3 v[3] = {kIdentity33.rows[0], kIdentity33.rows[1], kIdentity33.rows[2]};
  orthogonalise(columns, v);
  for (int i = 0; i < 2; ++i) {
    int longest = i;
    for (int j = i + 1; j < 3; ++j) {
      if (dot(columns[j], columns[j]) > dot(columns[longest], columns[longest])) longest = j;
    }
    std::swap(columns[i], columns[longest]);
    std::swap(v[i], v[longest]);
  }
  ProperSvd3 found{{}, {v[0], v[1], cross(v[0], v[1])}, {length(columns[0]), length(columns[1]), 0}};
  found.u[0] = found.values[0] > 0 ? unit(columns[0]) : Vector3{1, 0, 0};
  const Vector3 rest = columns[1] - dot(columns[1], found.u[0]) * found.u[0];
  found.u[1] = dot(rest, rest) > 0 ? unit(rest) : anyNormalTo(found.u[0]);
  found.u[2] = cross(found.u[0], found.u[1]);
  found.values[2] = dot(found.u[2], a * found.v[2]);
  return found;
}

}  // namespace dax
