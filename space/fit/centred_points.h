// The caller's points, shifted to their mean and scaled, and sums over them.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "frame/check.h"
#include "geometry/finite.h"
#include "geometry/jacobi_eigen.h"

namespace dax {

// total[k] += the sum of what add(i, sums) adds to sums[k]: in blocks, so that long sums lose few digits.
template <int kSums, class Add>
void sumInBlocks(int32_t count, double (&total)[kSums], const Add& add) {
  constexpr int64_t kBlock = 1024;
  for (int64_t first = 0; first < count; first += kBlock) {
    double sums[kSums] = {};
    const int64_t end = std::min<int64_t>(first + kBlock, count);
    for (int64_t i = first; i < end; ++i) add(static_cast<int32_t>(i), sums);
    for (int k = 0; k < kSums; ++k) total[k] += sums[k];
  }
}

// Moved so that the mean is the origin, and scaled by a power of two so that the largest distance from it is in [1/4,
// 1).
template <class T>
struct CentredPoints {
  const T* points;
  int32_t count;
  Vector3 mean{0, 0, 0};
  double factor = 1;

  Vector3 given(int32_t i) const {
    const T* const p = points + ptrdiff_t{3} * i;
    return {double{p[0]}, double{p[1]}, double{p[2]}};
  }
  Vector3 operator[](int32_t i) const { return factor * (given(i) - mean); }
  Vector3 restored(const Vector3& p) const { return mean + Vector3{p.x / factor, p.y / factor, p.z / factor}; }

  // Fails for coordinates out of range, and where all points are one.
  DaxStatus centre();
};

template <class T>
DaxStatus CentredPoints<T>::centre() {
  const int64_t numbers = int64_t{3} * count;
  DAX_REQUIRE(areFinite(points, numbers) && largestMagnitude(points, numbers) <= 1e150, DAX_STS_DATA_RANGE);
  const Vector3 first = given(0);
  double sums[3] = {};
  sumInBlocks(count, sums, [&](int32_t i, double(&sum)[3]) {
    const Vector3 p = given(i) - first;
    sum[0] += p.x, sum[1] += p.y, sum[2] += p.z;
  });
  mean = first + Vector3{sums[0] / count, sums[1] / count, sums[2] / count};
  double extent = 0;
  for (int32_t i = 0; i < count; ++i) {
    const Vector3 p = given(i) - mean;
    extent = std::max({extent, std::fabs(p.x), std::fabs(p.y), std::fabs(p.z)});
  }
  // What rounding leaves of the mean of equal points is no extent.
  const double noise = 0x1p-50 * std::max({std::fabs(first.x), std::fabs(first.y), std::fabs(first.z)});
  DAX_REQUIRE(extent > noise, DAX_STS_DEGENERATE);
  int exponent = 0;
  std::frexp(extent, &exponent);
  factor = std::ldexp(1.0, std::min(-exponent - 1, 1000));
  return DAX_STS_OK;
}

// Variances, ascending, and their axes, of centred points.
template <class T>
EigenSystem<3> principalAxes(const CentredPoints<T>& points) {
  double sums[6] = {};
  sumInBlocks(points.count, sums, [&](int32_t i, double(&sum)[6]) {
    const Vector3 p = points[i];
    sum[0] += p.x * p.x, sum[1] += p.x * p.y, sum[2] += p.x * p.z;
    sum[3] += p.y * p.y, sum[4] += p.y * p.z, sum[5] += p.z * p.z;
  });
  double covariance[3][3] = {{sums[0], sums[1], sums[2]}, {sums[1], sums[3], sums[4]}, {sums[2], sums[4], sums[5]}};
  for (auto& row : covariance) {
    for (double& element : row) element /= points.count;
  }
  return jacobiEigen(covariance);
}

// The same direction, the component of largest magnitude, the first of equal ones, positive.
inline Vector3 signedByLargest(const Vector3& v) {
  const double x = std::fabs(v.x), y = std::fabs(v.y), z = std::fabs(v.z);
  const double largest = x >= y && x >= z ? v.x : y >= z ? v.y : v.z;
  return largest < 0 ? -v : v;
}

// Root mean square of distance(p) over centred points, in the caller's units.
template <class T, class Distance>
double rmsOf(const CentredPoints<T>& points, const Distance& distance) {
  double sum[1] = {};
  sumInBlocks(points.count, sum, [&](int32_t i, double(&part)[1]) {
    const double d = distance(points[i]);
    part[0] += d * d;
  });
  return std::sqrt(sum[0] / points.count) / points.factor;
}

}  // namespace dax
