#include "dax3d/fit.h"
#include "space/fit/refine_fit.h"

namespace dax {
namespace {

// The direction from a middle outwards, where there is one.
struct Outwards {
  explicit Outwards(const Vector3& v) : distance(length(v)), direction(distance > 0 ? (1 / distance) * v : Vector3{}) {}
  double distance;
  Vector3 direction;
};

struct SphereShape {
  static constexpr int kNumbers = 4;
  Vector3 centre;
  double radius;

  void add(const Vector3& p, double (&sums)[NormalSums<4>::kCount]) const {
    const Outwards out(p - centre);
    NormalSums<4>::add(sums, {-out.direction.x, -out.direction.y, -out.direction.z, -1}, out.distance - radius);
  }
  SphereShape moved(const double (&step)[4]) const { return {centre + load3(step), radius + step[3]}; }
};

// Numbers: of the centre along e, f and the normal, of the normal towards e and f, of the radius.
struct CircleShape {
  static constexpr int kNumbers = 6;
  CircleShape(const Vector3& middle, const Vector3& axis, double r)
      : centre(middle), normal(axis), e(anyNormalTo(axis)), f(cross(axis, e)), radius(r) {}
  Vector3 centre, normal, e, f;
  double radius;

  void add(const Vector3& p, double (&sums)[NormalSums<6>::kCount]) const {
    const Vector3 away = p - centre;
    const double height = dot(away, normal), x = dot(away, e), y = dot(away, f);
    NormalSums<6>::add(sums, {0, 0, -1, x, y, 0}, height);
    const double distance = std::sqrt(x * x + y * y);
    const double c = distance > 0 ? x / distance : 0, s = distance > 0 ? y / distance : 0;
    NormalSums<6>::add(sums, {-c, -s, 0, -height * c, -height * s, -1}, distance - radius);
  }
  CircleShape moved(const double (&step)[6]) const {
    return {centre + step[0] * e + step[1] * f + step[2] * normal, unit(normal + step[3] * e + step[4] * f),
            radius + step[5]};
  }
};

template <class T>
DaxStatus fitSphere(const T* given, int32_t n, double* sphere, double* rms) {
  DAX_REQUIRE(given && sphere && rms, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 4, DAX_STS_BAD_PARAM);
  CentredPoints<T> points{given, n};
  DAX_REQUIRE_OK(points.centre());
  // |p|^2 = 2 c . p + r^2 - |c|^2 in the sense of least squares: 2 C c = mean |p|^2 p with the covariance C.
  const EigenSystem<3> axes = principalAxes(points);
  DAX_REQUIRE(axes.values[0] > 1e-14 * axes.values[2], DAX_STS_DEGENERATE);
  double sums[4] = {};
  sumInBlocks(n, sums, [&](int32_t i, double(&sum)[4]) {
    const Vector3 p = points[i];
    const double square = dot(p, p);
    sum[0] += square * p.x, sum[1] += square * p.y, sum[2] += square * p.z, sum[3] += square;
  });
  const Vector3 right = (0.5 / n) * load3(sums);
  SphereShape shape{{0, 0, 0}, 0};
  for (int k = 0; k < 3; ++k) {
    const Vector3 axis = load3(axes.vectors[k]);
    shape.centre = shape.centre + (dot(axis, right) / axes.values[k]) * axis;
  }
  shape.radius = std::sqrt(sums[3] / n + dot(shape.centre, shape.centre));
  double energy = 0;
  DAX_REQUIRE_OK(refineShape(points, shape, energy));
  store3(points.restored(shape.centre), sphere);
  sphere[3] = shape.radius / points.factor;
  *rms = std::sqrt(energy / n) / points.factor;
  return DAX_STS_OK;
}

template <class T>
DaxStatus fitCircle(const T* given, int32_t n, double* circle, double* rms) {
  DAX_REQUIRE(given && circle && rms, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 3, DAX_STS_BAD_PARAM);
  CentredPoints<T> points{given, n};
  DAX_REQUIRE_OK(points.centre());
  const EigenSystem<3> axes = principalAxes(points);
  DAX_REQUIRE(axes.values[1] > 1e-14 * axes.values[2], DAX_STS_DEGENERATE);
  // The same in the plane of the two larger axes.
  double sums[3] = {};
  const Vector3 e = load3(axes.vectors[2]), f = load3(axes.vectors[1]);
  sumInBlocks(n, sums, [&](int32_t i, double(&sum)[3]) {
    const Vector3 p = points[i];
    const double x = dot(p, e), y = dot(p, f), square = x * x + y * y;
    sum[0] += square * x, sum[1] += square * y, sum[2] += square;
  });
  const double x = sums[0] / n / 2 / axes.values[2], y = sums[1] / n / 2 / axes.values[1];
  CircleShape shape(x * e + y * f, load3(axes.vectors[0]), std::sqrt(sums[2] / n + x * x + y * y));
  double energy = 0;
  DAX_REQUIRE_OK(refineShape(points, shape, energy));
  store3(points.restored(shape.centre), circle);
  store3(signedByLargest(shape.normal), circle + 3);
  circle[6] = shape.radius / points.factor;
  *rms = std::sqrt(energy / n) / points.factor;
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_FIT_Sphere_f64(const double* points, int32_t n, double sphere[4], double* rms) {
  return fitSphere(points, n, sphere, rms);
}
DaxStatus DAX3D_FIT_Sphere_f32(const float* points, int32_t n, double sphere[4], double* rms) {
  return fitSphere(points, n, sphere, rms);
}
DaxStatus DAX3D_FIT_Circle_f64(const double* points, int32_t n, double circle[7], double* rms) {
  return fitCircle(points, n, circle, rms);
}
DaxStatus DAX3D_FIT_Circle_f32(const float* points, int32_t n, double circle[7], double* rms) {
  return fitCircle(points, n, circle, rms);
}
