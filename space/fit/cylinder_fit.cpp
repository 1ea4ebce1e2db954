#include <numbers>

#include "dax3d/fit.h"
#include "frame/numeric/elementary.h"
#include "space/fit/refine_fit.h"

namespace dax {
namespace {

// Numbers: of the axis' point along e and f, of its direction towards e and f, of the radius.
struct CylinderShape {
  static constexpr int kNumbers = 5;
  CylinderShape() = default;
  // The axis' point is moved to where the mean is nearest.
  CylinderShape(const Vector3& point, const Vector3& along, double r)
      : centre(point - dot(point, along) * along), axis(along), e(anyNormalTo(along)), f(cross(along, e)), radius(r) {}
  Vector3 centre{}, axis{}, e{}, f{};
  double radius = 0;

  void add(const Vector3& p, double (&sums)[NormalSums<5>::kCount]) const {
    const Vector3 away = p - centre;
    const double height = dot(away, axis), x = dot(away, e), y = dot(away, f);
    const double distance = std::sqrt(x * x + y * y);
    const double c = distance > 0 ? x / distance : 0, s = distance > 0 ? y / distance : 0;
    NormalSums<5>::add(sums, {-c, -s, -height * c, -height * s, -1}, distance - radius);
  }
  CylinderShape moved(const double (&step)[5]) const {
    return {centre + step[0] * e + step[1] * f, unit(axis + step[2] * e + step[3] * f), radius + step[4]};
  }
};

// Means of x^a y^b z^c, a + b + c <= 4.
class Moments {
 public:
  template <class T>
  explicit Moments(const CentredPoints<T>& points) {
    sumInBlocks(points.count, means_, [&](int32_t i, double(&sum)[kCount]) {
      const Vector3 p = points[i];
      double x = 1;
      for (int a = 0, at = 0; a <= 4; ++a, x *= p.x) {
        double xy = x;
        for (int b = 0; a + b <= 4; ++b, xy *= p.y) {
          double xyz = xy;
          for (int c = 0; a + b + c <= 4; ++c, xyz *= p.z) sum[at++] += xyz;
        }
      }
    });
    for (int a = 0, at = 0; a <= 4; ++a) {
      for (int b = 0; a + b <= 4; ++b) {
        for (int c = 0; a + b + c <= 4; ++c) place_[a][b][c] = at++;
      }
    }
    for (double& mean : means_) mean /= points.count;
  }
  // The mean of the product of these coordinates: 0 for x, 1 for y, 2 for z, 3 for none.
  double of(int i, int j, int k = 3, int l = 3) const {
    int powers[4] = {};
    ++powers[i], ++powers[j], ++powers[k], ++powers[l];
    return means_[place_[powers[0]][powers[1]][powers[2]]];
  }

 private:
  static constexpr int kCount = 35;
  double means_[kCount] = {};
  int place_[5][5][5] = {};
};

// The algebraic circle of the points seen along an axis, and about the mean squared distance from it: with x, y in the
// plane of sight and z = x^2 + y^2, z = 2 a x + 2 b y + const in the sense of least squares, from moments alone (D.
// Eberly, Least Squares Fitting of Data by Linear or Quadratic Structures, 2015).
double seenAlong(const Moments& moments, const Vector3& axis, CylinderShape& shape) {
  const double w[3] = {axis.x, axis.y, axis.z};
  const auto projector = [&](int i, int j) { return (i == j ? 1.0 : 0.0) - w[i] * w[j]; };
  double mean = 0, square = 0, third[3] = {};
  double second[3][3];
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 3; ++j) {
      second[i][j] = moments.of(i, j);
      mean += projector(i, j) * second[i][j];
      for (int k = 0; k < 3; ++k) third[k] += projector(i, j) * moments.of(i, j, k);
      for (int k = 0; k < 3; ++k) {
        for (int l = 0; l < 3; ++l) square += projector(i, j) * projector(k, l) * moments.of(i, j, k, l);
      }
    }
  }
  const Vector3 e = anyNormalTo(axis), f = cross(axis, e);
  const auto form = [&](const Vector3& a, const Vector3& b) {
    return dot(a, {dot(load3(second[0]), b), dot(load3(second[1]), b), dot(load3(second[2]), b)});
  };
  const double xx = form(e, e), xy = form(e, f), yy = form(f, f), determinant = xx * yy - xy * xy;
  const double zx = dot(load3(third), e), zy = dot(load3(third), f);
  if (!(determinant > 1e-14 * (xx + yy) * (xx + yy))) return INFINITY;
  const double a = (zx * yy - zy * xy) / determinant / 2, b = (zy * xx - zx * xy) / determinant / 2;
  const double radiusSquare = mean + a * a + b * b;
  shape = {a * e + b * f, axis, std::sqrt(radiusSquare)};
  return (square - mean * mean - 2 * (a * zx + b * zy)) / (4 * radiusSquare);
}

// Turns the axis while that is better, by ever smaller angles.
double improveAxis(const Moments& moments, CylinderShape& shape, double error) {
  for (double angle = 0.1; angle > 1e-4;) {
    bool isBetter = false;
    for (const Vector3& side : {shape.e, -shape.e, shape.f, -shape.f}) {
      CylinderShape other;
      const double its = seenAlong(moments, unit(shape.axis + angle * side), other);
      if (!(its < error)) continue;
      error = its, shape = other, isBetter = true;
      break;
    }
    if (!isBetter) angle /= 2;
  }
  return error;
}

struct Candidate {
  CylinderShape shape;
  double error = INFINITY;
};

constexpr int kBest = 3;

// Keeps the best, each at least 0.3 radians from the others.
void offerAxis(Candidate (&best)[kBest], const CylinderShape& shape, double error) {
  for (Candidate& each : best) {
    const bool isNear = each.error < INFINITY && length(cross(each.shape.axis, shape.axis)) < 0.3;
    if (isNear && each.error <= error) return;
    if (isNear) each.error = INFINITY;
  }
  Candidate* const worst =
      std::max_element(best, best + kBest, [](const Candidate& a, const Candidate& b) { return a.error < b.error; });
  if (error < worst->error) *worst = {shape, error};
}

// Half the sphere of directions by the golden angle, and the principal axes.
void searchAxes(const Moments& moments, const EigenSystem<3>& axes, Candidate (&best)[kBest]) {
  constexpr int kDirections = 400;
  const double golden = std::numbers::pi * (3 - std::sqrt(5.0));
  for (int i = 0; i < kDirections + 3; ++i) {
    Vector3 axis;
    if (i < kDirections) {
      const double z = (i + 0.5) / kDirections, r = std::sqrt((1 - z) * (1 + z));
      const SinCos turn = elementary::sinCos(golden * i);
      axis = unit(Vector3{r * turn.cosine, r * turn.sine, z});
    } else {
      axis = load3(axes.vectors[i - kDirections]);
    }
    CylinderShape shape;
    const double error = seenAlong(moments, axis, shape);
    if (error < INFINITY) offerAxis(best, shape, error);
  }
}

template <class T>
DaxStatus fitCylinder(const T* given, int32_t n, double* cylinder, double* rms) {
  DAX_REQUIRE(given && cylinder && rms, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 6, DAX_STS_BAD_PARAM);
  CentredPoints<T> points{given, n};
  DAX_REQUIRE_OK(points.centre());
  const EigenSystem<3> axes = principalAxes(points);
  DAX_REQUIRE(axes.values[0] > 1e-14 * axes.values[2], DAX_STS_DEGENERATE);
  const Moments moments(points);
  Candidate starts[kBest];
  searchAxes(moments, axes, starts);
  CylinderShape best;
  double least = INFINITY;
  double leastError = INFINITY;
  for (Candidate& start : starts) {
    if (start.error < INFINITY) start.error = improveAxis(moments, start.shape, start.error);
    leastError = std::min(leastError, start.error);
  }
  for (Candidate& start : starts) {
    if (!(start.error < INFINITY && start.error <= 10 * leastError + 1e-12)) continue;  // of no prospect
    double energy = INFINITY;
    if (refineShape(points, start.shape, energy) == DAX_STS_OK && energy < least) least = energy, best = start.shape;
  }
  DAX_REQUIRE(least < INFINITY, DAX_STS_DEGENERATE);
  store3(points.restored(best.centre), cylinder);
  store3(signedByLargest(best.axis), cylinder + 3);
  cylinder[6] = best.radius / points.factor;
  *rms = std::sqrt(least / n) / points.factor;
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_FIT_Cylinder_f64(const double* points, int32_t n, double cylinder[7], double* rms) {
  return fitCylinder(points, n, cylinder, rms);
}
DaxStatus DAX3D_FIT_Cylinder_f32(const float* points, int32_t n, double cylinder[7], double* rms) {
  return fitCylinder(points, n, cylinder, rms);
}
