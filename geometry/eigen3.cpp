#include "geometry/eigen3.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "frame/math.h"

namespace dax {
namespace {

double determinant(const Symmetric3<double>& a) {
  return a.xx * (a.yy * a.zz - a.yz * a.yz) - a.xy * (a.xy * a.zz - a.yz * a.xz) + a.xz * (a.xy * a.yz - a.yy * a.xz);
}

// An eigenvector is orthogonal to the rows of A - value I: the longest cross product of two rows. Its length is the
// product of the gaps to the other eigenvalues, its rounding error about DBL_EPSILON largest^2. False where fewer than
// about six digits are left.
bool eigenvector(const Symmetric3<double>& a, double value, double largest, Vector3& vector) {
  const Vector3 rows[3] = {{a.xx - value, a.xy, a.xz}, {a.xy, a.yy - value, a.yz}, {a.xz, a.yz, a.zz - value}};
  const Vector3 products[3] = {cross(rows[0], rows[1]), cross(rows[0], rows[2]), cross(rows[1], rows[2])};
  const Vector3* longest = products;
  for (const Vector3& each : products) {
    if (dot(each, each) > dot(*longest, *longest)) longest = &each;
  }
  constexpr double kNoise = 1e-10;
  const double minLength = kNoise * largest * largest;
  if (!(dot(*longest, *longest) > minLength * minLength)) return false;
  vector = unit(*longest);
  return true;
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

}  // namespace dax
