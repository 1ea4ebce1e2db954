// Boxes along given axes.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>

#include "dax3d/box.h"
#include "geometry/vector3.h"
#include "space/fit/centred_points.h"
#include "space/pose/pose.h"

namespace dax {

template <class T>
bool areBoxable(const T* points, int64_t numbers) {
  return std::all_of(points, points + numbers, [](T value) {
    const double size = std::fabs(double{value});
    return size <= 1e90 && (size >= 1e-60 || size == 0);
  });
}

struct Span {
  double low = INFINITY, high = -INFINITY;
  void add(double x) { low = std::min(low, x), high = std::max(high, x); }
  double size() const { return high - low; }
  double middle() const { return low + size() / 2; }
};

// The box around points along two axes at a right angle, and a third one that makes them right-handed. Of the first two
// axes the component of largest magnitude becomes positive.
template <class T>
Dax3dBox boxAlong(const T* points, int32_t n, const Vector3& first, const Vector3& second) {
  const Vector3 x = signedByLargest(first), y = signedByLargest(second), z = cross(x, y);
  const Vector3 origin{double{points[0]}, double{points[1]}, double{points[2]}};
  Span along[3];
  for (ptrdiff_t i = 0; i < n; ++i) {
    const Vector3 p = Vector3{double{points[3 * i]}, double{points[3 * i + 1]}, double{points[3 * i + 2]}} - origin;
    along[0].add(dot(p, x)), along[1].add(dot(p, y)), along[2].add(dot(p, z));
  }
  const Vector3 centre = origin + along[0].middle() * x + along[1].middle() * y + along[2].middle() * z;
  Dax3dBox box{{}, {along[0].size(), along[1].size(), along[2].size()}};
  storePose({transposed(Matrix33{{x, y, z}}), centre}, box.pose);
  return box;
}

}  // namespace dax
