// Points of the plane as vectors.
#pragma once

#include <cmath>

#include "daxi/point.h"

namespace dax {

inline DaxiPoint32f operator-(DaxiPoint32f a, DaxiPoint32f b) {
  return {a.x - b.x, a.y - b.y};
}
inline DaxiPoint32f operator-(DaxiPoint32f a) {
  return {-a.x, -a.y};
}
inline DaxiPoint32f operator+(DaxiPoint32f a, DaxiPoint32f b) {
  return {a.x + b.x, a.y + b.y};
}
inline DaxiPoint32f operator*(float f, DaxiPoint32f a) {
  return {f * a.x, f * a.y};
}
inline float dot(DaxiPoint32f a, DaxiPoint32f b) {
  return a.x * b.x + a.y * b.y;
}
inline float cross(DaxiPoint32f a, DaxiPoint32f b) {
  return a.x * b.y - a.y * b.x;
}
inline float length(DaxiPoint32f a) {
  return std::sqrt(dot(a, a));
}

// Cosine of the angle between two lines, given by unit vectors.
inline float alike(DaxiPoint32f a, DaxiPoint32f b) {
  return std::fabs(dot(a, b));
}

// The unit vector of a direction; (1, 0) for none.
inline DaxiPoint32f unit(DaxiPoint32f a) {
  const float size = length(a);
  return size > 0 ? DaxiPoint32f{a.x / size, a.y / size} : DaxiPoint32f{1, 0};
}

}  // namespace dax
