// Elementary shapes, read from the caller's numbers, with their nearest points.
#pragma once

#include <algorithm>

#include "dax3d/box.h"
#include "frame/check.h"
#include "geometry/finite.h"
#include "geometry/quaternion.h"

namespace dax {

// The sine of an angle that counts as none.
constexpr double kParallel = 1.1920929e-7;

struct Nearest {
  double distance;
  Vector3 foot;
};

// Of any length; false for none.
inline bool normalise(const Vector3& v, Vector3& direction) {
  const double size = safeLength(v);
  if (!(size > 0)) return false;
  direction = unit(Vector3{v.x / size, v.y / size, v.z / size});
  return true;
}

inline Vector3 anyIfNone(const Vector3& v, const Vector3& any) {
  Vector3 direction;
  return normalise(v, direction) ? direction : any;
}

struct Line {
  static constexpr int kNumbers = 6;
  Vector3 point, direction;

  DaxStatus read(const double* n) {
    point = load3(n);
    return normalise(load3(n + 3), direction) ? DAX_STS_OK : DAX_STS_DEGENERATE;
  }
  Vector3 at(double t) const { return point + t * direction; }
  double placeOf(const Vector3& p) const { return dot(p - point, direction); }
  Nearest nearest(const Vector3& p) const {
    const Vector3 foot = at(placeOf(p));
    return {length(p - foot), foot};
  }
};

struct Segment {
  static constexpr int kNumbers = 6;
  Vector3 start, along;

  DaxStatus read(const double* n) {
    start = load3(n);
    along = load3(n + 3) - start;
    return DAX_STS_OK;
  }
  Vector3 at(double t) const { return start + t * along; }
  Nearest nearest(const Vector3& p) const {
    const double square = dot(along, along);
    const Vector3 foot = at(square > 0 ? std::clamp(dot(p - start, along) / square, 0.0, 1.0) : 0);
    return {length(p - foot), foot};
  }
};

struct Plane3 {
  static constexpr int kNumbers = 4;
  Vector3 normal;
  double offset;  // normal . p + offset = 0

  DaxStatus read(const double* n) {
    const Vector3 given = load3(n);
    if (!normalise(given, normal)) return DAX_STS_DEGENERATE;
    offset = n[3] / safeLength(given);
    return DAX_STS_OK;
  }
  double height(const Vector3& p) const { return dot(normal, p) + offset; }
  Nearest nearest(const Vector3& p) const {
    const double h = height(p);
    return {h, p - h * normal};
  }
};

struct Sphere {
  static constexpr int kNumbers = 4;
  Vector3 centre;
  double radius;

  DaxStatus read(const double* n) {
    centre = load3(n), radius = n[3];
    return radius >= 0 ? DAX_STS_OK : DAX_STS_BAD_PARAM;
  }
  Nearest nearest(const Vector3& p) const {
    return {length(p - centre) - radius, centre + radius * anyIfNone(p - centre, {1, 0, 0})};
  }
};

struct Cylinder {
  static constexpr int kNumbers = 7;
  Line axis;
  double radius;

  DaxStatus read(const double* n) {
    radius = n[6];
    DAX_REQUIRE(radius >= 0, DAX_STS_BAD_PARAM);
    return axis.read(n);
  }
  Nearest nearest(const Vector3& p) const {
    const Nearest middle = axis.nearest(p);
    const Vector3 out = anyIfNone(p - middle.foot, anyNormalTo(axis.direction));
    return {middle.distance - radius, middle.foot + radius * out};
  }
};

struct Circle3 {
  static constexpr int kNumbers = 7;
  Vector3 centre, normal;
  double radius;

  DaxStatus read(const double* n) {
    centre = load3(n), radius = n[6];
    DAX_REQUIRE(radius >= 0, DAX_STS_BAD_PARAM);
    return normalise(load3(n + 3), normal) ? DAX_STS_OK : DAX_STS_DEGENERATE;
  }
  Nearest nearest(const Vector3& p) const {
    const Vector3 away = p - centre, inPlane = away - dot(away, normal) * normal;
    const Vector3 foot = centre + radius * anyIfNone(inPlane, anyNormalTo(normal));
    return {length(p - foot), foot};
  }
};

struct Triangle {
  static constexpr int kNumbers = 9;
  Vector3 a, b, c;

  DaxStatus read(const double* n) {
    a = load3(n), b = load3(n + 3), c = load3(n + 6);
    const double area = length(cross(b - a, c - a));
    return area > 1e-14 * length(b - a) * length(c - a) && length(c - b) > 0 ? DAX_STS_OK : DAX_STS_DEGENERATE;
  }
  Nearest nearest(const Vector3& p) const;
};

struct Box3 {
  static constexpr int kNumbers = 19;
  Matrix33 axes;  // rows
  Vector3 centre, half;

  DaxStatus read(const double* n);
  // In the axes of the box, from its centre.
  Vector3 inside(const Vector3& p) const { return axes * (p - centre); }
  Vector3 outside(const Vector3& q) const { return centre + transposedTimes(axes, q); }
  Nearest nearest(const Vector3& p) const;
};

// Magnitudes of which products of four are finite.
inline bool areModerate(const double* values, int count) {
  return std::all_of(values, values + count, [](double v) { return std::fabs(v) <= 1e70; });
}

// Reads two shapes.
template <class A, class B>
DaxStatus readShapes(const double* first, A& a, const double* second, B& b) {
  DAX_REQUIRE(areModerate(first, A::kNumbers) && areModerate(second, B::kNumbers), DAX_STS_DATA_RANGE);
  DAX_REQUIRE_OK(a.read(first));
  return b.read(second);
}

}  // namespace dax
