// 3 x 3 matrices.
#pragma once

#include "geometry/vector3.h"

namespace dax {

struct Matrix33 {
  Vector3 rows[3];
};

constexpr Matrix33 kIdentity33{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

// Rows of three elements that lie `step` apart: 3 of a matrix, 4 of a pose.
inline Matrix33 loadMatrix33(const double* m, int step = 3) {
  return {{load3(m), load3(m + step), load3(m + 2 * step)}};
}
inline void storeMatrix33(const Matrix33& m, double* to, int step = 3) {
  for (int i = 0; i < 3; ++i) store3(m.rows[i], to + i * step);
}

inline Vector3 operator*(const Matrix33& m, const Vector3& v) {
  return {dot(m.rows[0], v), dot(m.rows[1], v), dot(m.rows[2], v)};
}
// m^T v.
inline Vector3 transposedTimes(const Matrix33& m, const Vector3& v) {
  return v.x * m.rows[0] + v.y * m.rows[1] + v.z * m.rows[2];
}
inline Matrix33 transposed(const Matrix33& m) {
  return {{{m.rows[0].x, m.rows[1].x, m.rows[2].x},
           {m.rows[0].y, m.rows[1].y, m.rows[2].y},
           {m.rows[0].z, m.rows[1].z, m.rows[2].z}}};
}
inline Matrix33 operator*(const Matrix33& a, const Matrix33& b) {
  return {{transposedTimes(b, a.rows[0]), transposedTimes(b, a.rows[1]), transposedTimes(b, a.rows[2])}};
}

// Products of every two columns, and each squared norm less 1, within [-0.001, 0.001]; not a reflection. False for NaN.
inline bool isRotation(const Matrix33& m) {
  const Matrix33 columns = transposed(m);
  const Vector3 &a = columns.rows[0], &b = columns.rows[1], &c = columns.rows[2];
  constexpr double kTolerance = 0.001;
  const auto isSmall = [](double x) { return std::fabs(x) <= kTolerance; };
  return isSmall(dot(a, b)) && isSmall(dot(a, c)) && isSmall(dot(b, c)) && isSmall(dot(a, a) - 1) &&
         isSmall(dot(b, b) - 1) && isSmall(dot(c, c) - 1) && dot(cross(a, b), c) > 0;
}

}  // namespace dax
