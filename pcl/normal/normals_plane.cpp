#include "pcl/normal/normals_plane.h"

#include <algorithm>
#include <numbers>

#include "frame/math.h"

namespace dax {
namespace {

Vector3 cross(const Vector3& a, const Vector3& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double dot(const Vector3& a, const Vector3& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

Vector3 unit(const Vector3& v) {
  const double length = std::sqrt(dot(v, v));
  return {v.x / length, v.y / length, v.z / length};
}

double determinant(const Symmetric3<double>& a) {
  return a.xx * (a.yy * a.zz - a.yz * a.yz) - a.xy * (a.xy * a.zz - a.yz * a.xz) + a.xz * (a.xy * a.yz - a.yy * a.xz);
}

// Rows of A - value I lie in a plane, to which the eigenvector is normal: the longest of their products. It vanishes
// with the gap to the next eigenvalue; false where its direction is no more than rounding noise.
bool eigenvector(const Symmetric3<double>& a, double value, double largest, Vector3& vector) {
  const Vector3 rows[3] = {{a.xx - value, a.xy, a.xz}, {a.xy, a.yy - value, a.yz}, {a.xz, a.yz, a.zz - value}};
  const Vector3 products[3] = {cross(rows[0], rows[1]), cross(rows[0], rows[2]), cross(rows[1], rows[2])};
  const Vector3* longest = products;
  for (const Vector3& each : products) {
    if (dot(each, each) > dot(*longest, *longest)) longest = &each;
  }
  constexpr double kNoise = 1e-10;
  const double least = kNoise * largest * largest;
  if (!(dot(*longest, *longest) > least * least)) return false;
  vector = unit(*longest);
  return true;
}

// At right angles to v and to the axis that is the most so already.
Vector3 anyNormalTo(const Vector3& v) {
  const double x = std::fabs(v.x), y = std::fabs(v.y), z = std::fabs(v.z);
  if (x <= y && x <= z) return unit(cross(v, {1, 0, 0}));
  return unit(cross(v, y <= z ? Vector3{0, 1, 0} : Vector3{0, 0, 1}));
}

}  // namespace

Eigenvalues3 eigenvalues(const Symmetric3<double>& a) {
  const double mean = (a.xx + a.yy + a.zz) / 3;
  const Symmetric3<double> b{a.xx - mean, a.xy, a.xz, a.yy - mean, a.yz, a.zz - mean};
  const double off = b.xy * b.xy + b.xz * b.xz + b.yz * b.yz;
  const double p = std::sqrt((b.xx * b.xx + b.yy * b.yy + b.zz * b.zz + 2 * off) / 6);
  if (!(p > 0)) return {mean, mean, mean};
  // Rounding may carry the cosine beyond 1.
  const double cosine = std::clamp(determinant(b) / (p * p * p) / 2, -1.0, 1.0);
  const SinCos third = sinCosExact(atan2Exact(std::sqrt((1 - cosine) * (1 + cosine)), cosine) / 3);
  const double across = std::numbers::sqrt3 * third.sine;
  return {mean - p * (third.cosine + across), mean - p * (third.cosine - across), mean + 2 * p * third.cosine};
}

Vector3 smallestAxis(const Symmetric3<double>& a, const Eigenvalues3& values) {
  Vector3 axis{0, 0, 1};
  if (eigenvector(a, values.smallest, values.largest, axis)) return axis;
  return eigenvector(a, values.largest, values.largest, axis) ? anyNormalTo(axis) : axis;
}

Symmetric3<float> covariance(const float* points, int32_t count) {
  const auto n = static_cast<float>(count);
  const float* const end = points + ptrdiff_t{3} * count;
  float x = 0, y = 0, z = 0;
  for (const float* p = points; p < end; p += 3) x += p[0], y += p[1], z += p[2];
  x /= n, y /= n, z /= n;
  Symmetric3<float> sum{0, 0, 0, 0, 0, 0};
  for (const float* p = points; p < end; p += 3) {
    const float dx = p[0] - x, dy = p[1] - y, dz = p[2] - z;
    sum.xx += dx * dx, sum.xy += dx * dy, sum.xz += dx * dz;
    sum.yy += dy * dy, sum.yz += dy * dz, sum.zz += dz * dz;
  }
  return {sum.xx / n, sum.xy / n, sum.xz / n, sum.yy / n, sum.yz / n, sum.zz / n};
}

bool fitNormal(const Symmetric3<float>& c, DAX3DPCL_NORMAL& normal) {
  const Symmetric3<double> wide{c.xx, c.xy, c.xz, c.yy, c.yz, c.zz};
  const Eigenvalues3 values = eigenvalues(wide);
  if (!(values.largest <= FLT_MAX)) return false;
  const auto smallest = static_cast<float>(values.smallest), largest = static_cast<float>(values.largest);
  const float noise = std::max(FLT_MIN, 4 * FLT_EPSILON * largest);
  if (!(static_cast<float>(values.middle) >= noise)) return false;
  const Vector3 axis = smallestAxis(wide, values);
  normal = {static_cast<float>(axis.x), static_cast<float>(axis.y), static_cast<float>(axis.z), 0};
  if (smallest >= noise) normal.curvature = std::fabs(smallest / (c.xx + c.yy + c.zz));
  return true;
}

}  // namespace dax
