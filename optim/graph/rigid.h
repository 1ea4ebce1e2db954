// Poses of the plane and of space as the graph needs them: unit quaternions (w, x, y, z), rotation vectors, matrices.
#pragma once

#include <cmath>
#include <numbers>

#include "frame/math.h"
#include "geometry/vector3.h"
#include "prmt/lie.h"

namespace dax {

// theta modulo 2 pi, in (-pi, pi]; exact but for the rounding of 2 pi.
inline double wrapped(double theta) {
  const double rest = std::remainder(theta, 2 * std::numbers::pi);
  return rest <= -std::numbers::pi ? std::numbers::pi : rest;
}

// q of the rotation by |w| about w.
inline void quaternionOf(const double* w, double* q) {
  const Vector3 axis = load3(w);
  const double angle = length(axis);
  const SinCos half = sinCosAny(angle / 2);
  q[0] = half.cosine;
  store3((angle > 0 ? half.sine / angle : 0.5) * axis, q + 1);
}

// Changes the sign of q where that makes w positive, at w = 0 the first other number that is not 0.
inline void chooseSign(double* q) {
  int k = 0;
  while (k < 3 && q[k] == 0) ++k;
  if (q[k] >= 0) return;
  for (int i = 0; i < 4; ++i) q[i] = -q[i];
}

// w of length <= pi, of a unit quaternion.
inline void rotationVectorOf(double* q, double* w) {
  chooseSign(q);
  const Vector3 imaginary = load3(q + 1);
  const double size = length(imaginary);
  const bool finite = std::isfinite(size) && std::isfinite(q[0]);
  const double angle = finite ? 2 * atan2Exact(size, q[0]) : size - size + q[0];
  store3((size > 0 ? angle / size : 2) * imaginary, w);
}

inline void multiplyQuaternions(const double* a, const double* b, double* ab) {
  const Vector3 u = load3(a + 1), v = load3(b + 1);
  const double real = a[0] * b[0] - dot(u, v);
  store3(a[0] * v + b[0] * u + cross(u, v), ab + 1);
  ab[0] = real;
}

inline void conjugate(const double* q, double* conjugated) {
  conjugated[0] = q[0];
  for (int i = 1; i < 4; ++i) conjugated[i] = -q[i];
}

inline void normaliseQuaternion(double* q) {
  const double size = std::sqrt(q[0] * q[0] + q[1] * q[1] + q[2] * q[2] + q[3] * q[3]);
  for (int i = 0; i < 4; ++i) q[i] /= size;
}

// 3 x 3, row by row.
inline void matrixOf(const double* q, double* r) {
  const double w = q[0], x = q[1], y = q[2], z = q[3];
  r[0] = 1 - 2 * (y * y + z * z), r[1] = 2 * (x * y - w * z), r[2] = 2 * (x * z + w * y);
  r[3] = 2 * (x * y + w * z), r[4] = 1 - 2 * (x * x + z * z), r[5] = 2 * (y * z - w * x);
  r[6] = 2 * (x * z - w * y), r[7] = 2 * (y * z + w * x), r[8] = 1 - 2 * (x * x + y * y);
}

inline Vector3 turned(const double* r, const Vector3& v) {
  return {dot(load3(r), v), dot(load3(r + 3), v), dot(load3(r + 6), v)};
}
inline Vector3 turnedBack(const double* r, const Vector3& v) {
  return v.x * load3(r) + v.y * load3(r + 3) + v.z * load3(r + 6);
}

// (x, y, theta) <- that Exp(d): the way along an arc of angle d[2].
inline void movePlanar(double* x, const double* d) {
  const double angle = d[2];
  const SinCos whole = sinCosAny(angle), half = sinCosAny(angle / 2), heading = sinCosAny(x[2]);
  const double along = angle != 0 ? whole.sine / angle : 1, across = angle != 0 ? 2 * half.sine * half.sine / angle : 0;
  const double u = along * d[0] - across * d[1], v = across * d[0] + along * d[1];
  x[0] += heading.cosine * u - heading.sine * v;
  x[1] += heading.sine * u + heading.cosine * v;
  x[2] = wrapped(x[2] + angle);
}

// (t, w) <- that Exp(d), d = (v, w).
inline void moveSpatial(double* x, const double* d) {
  double motion[16], q[4], turn[4], r[9];
  PRMT_SE3_Exp_f64(d, motion);
  quaternionOf(x + 3, q);
  matrixOf(q, r);
  store3(load3(x) + turned(r, {motion[3], motion[7], motion[11]}), x);
  quaternionOf(d + 3, turn);
  multiplyQuaternions(q, turn, q);
  normaliseQuaternion(q);
  rotationVectorOf(q, x + 3);
}

}  // namespace dax
