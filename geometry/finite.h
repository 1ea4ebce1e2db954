// Whether numbers are finite.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>

#include "geometry/vector3.h"

namespace dax {

inline bool isFinite(const Vector3& v) {
  return std::isfinite(v.x) && std::isfinite(v.y) && std::isfinite(v.z);
}

// Infinities and NaN times 0 are NaN, which no sum loses.
template <class T>
bool areFinite(const T* values, int64_t count) {
  T sums[8] = {};
  int64_t i = 0;
  for (; i + 8 <= count; i += 8) {
    for (int k = 0; k < 8; ++k) sums[k] += values[i + k] * 0;
  }
  for (; i < count; ++i) sums[0] += values[i] * 0;
  return std::all_of(sums, sums + 8, [](T sum) { return sum == 0; });
}

// The largest of finite numbers' magnitudes.
template <class T>
double largestMagnitude(const T* values, int64_t count) {
  T largest = 0;
  for (int64_t i = 0; i < count; ++i) largest = std::max(largest, std::fabs(values[i]));
  return double{largest};
}

}  // namespace dax
