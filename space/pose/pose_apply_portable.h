// The rows of a pose on points.
#pragma once

#include <cstdint>

namespace dax {

// Rotation and translation, row by row, in the precision of the points.
template <class T>
struct Motion {
  T rotation[9];
  T translation[3];
};

namespace portable {

template <class T>
void movePoints(const Motion<T>& given, const T* points, int64_t count, T* result) {
  const Motion<T> motion = given;  // which no result can overlap
  const T* const r = motion.rotation;
  const T* const t = motion.translation;
  for (int64_t i = 0; i < count; ++i) {
    const T x = points[3 * i], y = points[3 * i + 1], z = points[3 * i + 2];
    for (int k = 0; k < 3; ++k) result[3 * i + k] = r[3 * k] * x + r[3 * k + 1] * y + r[3 * k + 2] * z + t[k];
  }
}

}  // namespace portable
}  // namespace dax
