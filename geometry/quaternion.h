// Rotations as quaternions w + v, with Hamilton's product.
#pragma once

#include "frame/numeric/elementary.h"
#include "geometry/matrix33.h"

namespace dax {

struct Quaternion {
  double w;
  Vector3 v;
};

inline Quaternion operator*(const Quaternion& a, const Quaternion& b) {
  return {a.w * b.w - dot(a.v, b.v), a.w * b.v + b.w * a.v + cross(a.v, b.v)};
}
inline Quaternion operator+(const Quaternion& a, const Quaternion& b) {
  return {a.w + b.w, a.v + b.v};
}
inline Quaternion operator-(const Quaternion& a, const Quaternion& b) {
  return {a.w - b.w, a.v - b.v};
}
inline Quaternion operator*(double f, const Quaternion& q) {
  return {f * q.w, f * q.v};
}
inline Quaternion conjugate(const Quaternion& q) {
  return {q.w, -q.v};
}
inline double dot(const Quaternion& a, const Quaternion& b) {
  return a.w * b.w + dot(a.v, b.v);
}
inline double length(const Quaternion& q) {
  return std::sqrt(dot(q, q));
}
// Of a length that its square can be told of.
inline Quaternion unit(const Quaternion& q) {
  const double size = length(q);
  return {q.w / size, {q.v.x / size, q.v.y / size, q.v.z / size}};
}

// Of q and -q, which are one rotation, that with w > 0; at w = 0 with the first other element that is not 0 positive.
inline Quaternion canonical(const Quaternion& q) {
  const double first = q.w != 0 ? q.w : q.v.x != 0 ? q.v.x : q.v.y != 0 ? q.v.y : q.v.z;
  if (first < 0) return -1.0 * q;
  return {std::fabs(q.w), q.v};
}

// Of a unit quaternion.
inline Matrix33 matrixOf(const Quaternion& q) {
  const auto [x, y, z] = q.v;
  const double xx = 2 * x * x, yy = 2 * y * y, zz = 2 * z * z, xy = 2 * x * y, xz = 2 * x * z, yz = 2 * y * z;
  const double wx = 2 * q.w * x, wy = 2 * q.w * y, wz = 2 * q.w * z;
  return {{{1 - (yy + zz), xy - wz, xz + wy}, {xy + wz, 1 - (xx + zz), yz - wx}, {xz - wy, yz + wx, 1 - (xx + yy)}}};
}

// The canonical unit quaternion of a rotation: the largest of its four elements is at least 1/2, and the others follow
// from it without cancellation (S. W. Shepperd, J. Guidance and Control 1(3), 1978).
inline Quaternion quaternionOf(const Matrix33& m) {
  const auto& [a, b, c] = m.rows;
  const double trace = a.x + b.y + c.z;
  Quaternion q;
  if (trace >= a.x && trace >= b.y && trace >= c.z) {
    q = {1 + trace, {c.y - b.z, a.z - c.x, b.x - a.y}};
  } else if (a.x >= b.y && a.x >= c.z) {
    q = {c.y - b.z, {1 + a.x - b.y - c.z, a.y + b.x, a.z + c.x}};
  } else if (b.y >= c.z) {
    q = {a.z - c.x, {a.y + b.x, 1 + b.y - a.x - c.z, b.z + c.y}};
  } else {
    q = {b.x - a.y, {a.z + c.x, b.z + c.y, 1 + c.z - a.x - b.y}};
  }
  return canonical(unit(q));
}

// Of finite vectors of any length: scaled by a power of two first where squares would overflow or vanish.
inline double safeLength(const Vector3& v) {
  const double largest = std::fmax(std::fabs(v.x), std::fmax(std::fabs(v.y), std::fabs(v.z)));
  if (largest > 0x1p-400 && largest < 0x1p400) return length(v);
  const double scale = largest >= 1 ? 0x1p-600 : 0x1p600;
  return length(scale * v) / scale;
}

inline Quaternion exponentialOf(const Vector3& rotVec) {
  const double angle = safeLength(rotVec);
  if (!(angle > 0)) return {1, {0, 0, 0}};
  const SinCos half = elementary::sinCos(angle / 2);
  // Below 2^-500 the sine is the half angle, which may have lost digits.
  return {half.cosine, (angle > 0x1p-500 ? half.sine / angle : 0.5) * rotVec};
}

// Of a canonical unit quaternion; at most pi long.
inline Vector3 logarithmOf(const Quaternion& q) {
  const double sine = safeLength(q.v);
  return (sine > 0x1p-500 ? 2 * elementary::atan2(sine, q.w) / sine : 2) * q.v;
}

// The angle by which a rotation must turn further to become another one, of unit quaternions; 0..pi.
inline double angleBetween(const Quaternion& a, const Quaternion& b) {
  const double apart = length(a - b), together = length(a + b);
  return 4 * elementary::atan2(std::fmin(apart, together), std::fmax(apart, together));
}

}  // namespace dax
