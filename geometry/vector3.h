// Vectors in space.
#pragma once

#include <cmath>

namespace dax {

struct Vector3 {
  double x, y, z;
};

inline Vector3 load3(const double* v) {
  return {v[0], v[1], v[2]};
}
inline void store3(const Vector3& v, double* to) {
  to[0] = v.x, to[1] = v.y, to[2] = v.z;
}

inline Vector3 operator+(const Vector3& a, const Vector3& b) {
  return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Vector3 operator-(const Vector3& a, const Vector3& b) {
  return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Vector3 operator-(const Vector3& a) {
  return {-a.x, -a.y, -a.z};
}
inline Vector3 operator*(double f, const Vector3& a) {
  return {f * a.x, f * a.y, f * a.z};
}
inline double dot(const Vector3& a, const Vector3& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Vector3 cross(const Vector3& a, const Vector3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(const Vector3& a) {
  return std::sqrt(dot(a, a));
}

// The unit vector of a direction; a has a length.
inline Vector3 unit(const Vector3& a) {
  const double size = length(a);
  return {a.x / size, a.y / size, a.z / size};
}

// The unit vector along the cross product of v and the axis closest to a right angle with it.
inline Vector3 anyNormalTo(const Vector3& v) {
  const double x = std::fabs(v.x), y = std::fabs(v.y), z = std::fabs(v.z);
  if (x <= y && x <= z) return unit(cross(v, {1, 0, 0}));
  return unit(cross(v, y <= z ? Vector3{0, 1, 0} : Vector3{0, 0, 1}));
}

}  // namespace dax
