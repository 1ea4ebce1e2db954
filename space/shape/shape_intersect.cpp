#include <cstring>

#include "dax3d/shape.h"
#include "space/shape/shapes.h"

namespace dax {
namespace {

// The numbers of a box as those of the other shapes.
struct BoxNumbers {
  explicit BoxNumbers(const Dax3dBox* box) {
    if (box) std::memcpy(values, box, sizeof values);
  }
  double values[Box3::kNumbers] = {};
};

DaxStatus storeEnds(const Line& line, double enter, double leave, double* points) {
  store3(line.at(enter), points);
  store3(line.at(leave), points + 3);
  return DAX_STS_OK;
}

void storeCircle(const Vector3& centre, const Vector3& normal, double radius, double* circle) {
  store3(centre, circle);
  store3(normal, circle + 3);
  circle[6] = radius;
}

// Half a chord of a circle at this distance from its centre.
double halfChord(double radius, double distance) {
  return std::sqrt(std::fmax((radius - distance) * (radius + distance), 0));
}

// Narrows [enter, leave] to where |from + t along| <= half; false where nothing is left.
bool clipToSlab(double from, double along, double half, double& enter, double& leave) {
  if (along == 0) return std::fabs(from) <= half;
  const double one = (-half - from) / along, other = (half - from) / along;
  enter = std::fmax(enter, std::fmin(one, other));
  leave = std::fmin(leave, std::fmax(one, other));
  return enter <= leave;
}

// The reach of a box from its centre along an axis, whichever its length.
double reachOf(const Box3& box, const Vector3& axis) {
  const Vector3 q = box.axes * axis;
  return std::fabs(q.x) * box.half.x + std::fabs(q.y) * box.half.y + std::fabs(q.z) * box.half.z;
}

bool areSeparated(const Box3& a, const Box3& b, const Vector3& axis) {
  return std::fabs(dot(b.centre - a.centre, axis)) > reachOf(a, axis) + reachOf(b, axis);
}

bool boxesMeet(const Box3& a, const Box3& b) {
  for (int i = 0; i < 3; ++i) {
    if (areSeparated(a, b, a.axes.rows[i]) || areSeparated(a, b, b.axes.rows[i])) return false;
  }
  for (const Vector3& ofA : a.axes.rows) {
    for (const Vector3& ofB : b.axes.rows) {
      const Vector3 axis = cross(ofA, ofB);
      // Of parallel edges the product is rounding noise, and the faces have told already.
      if (length(axis) > kParallel && areSeparated(a, b, axis)) return false;
    }
  }
  return true;
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_INTERSECT_LinePlane_f64(const double line[6], const double plane[4], double point[3]) {
  DAX_REQUIRE(line && plane && point, DAX_STS_NULL_POINTER);
  Line l;
  Plane3 p;
  DAX_REQUIRE_OK(readShapes(line, l, plane, p));
  const double sine = dot(l.direction, p.normal);
  DAX_REQUIRE(std::fabs(sine) > kParallel, DAX3D_STS_PARALLEL);
  store3(l.at(-p.height(l.point) / sine), point);
  return DAX_STS_OK;
}

DaxStatus DAX3D_INTERSECT_SegmentPlane_f64(const double segment[6], const double plane[4], double point[3]) {
  DAX_REQUIRE(segment && plane && point, DAX_STS_NULL_POINTER);
  Segment s;
  Plane3 p;
  DAX_REQUIRE_OK(readShapes(segment, s, plane, p));
  const double from = p.height(s.start), to = p.height(s.at(1));
  DAX_REQUIRE((from <= 0 && to >= 0) || (from >= 0 && to <= 0), DAX3D_STS_APART);
  store3(s.at(from == to ? 0 : from / (from - to)), point);
  return DAX_STS_OK;
}

DaxStatus DAX3D_INTERSECT_PlanePlane_f64(const double a[4], const double b[4], double line[6]) {
  DAX_REQUIRE(a && b && line, DAX_STS_NULL_POINTER);
  Plane3 first, second;
  DAX_REQUIRE_OK(readShapes(a, first, b, second));
  const Vector3 along = cross(first.normal, second.normal);
  DAX_REQUIRE(length(along) > kParallel, DAX_STS_DEGENERATE);
  const Vector3 lever = second.offset * first.normal - first.offset * second.normal;
  store3((1 / dot(along, along)) * cross(lever, along), line);
  store3(unit(along), line + 3);
  return DAX_STS_OK;
}

DaxStatus DAX3D_INTERSECT_ThreePlanes_f64(const double planes[12], double point[3]) {
  DAX_REQUIRE(planes && point, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areModerate(planes, 12), DAX_STS_DATA_RANGE);
  Plane3 a, b, c;
  DAX_REQUIRE_OK(a.read(planes));
  DAX_REQUIRE_OK(b.read(planes + 4));
  DAX_REQUIRE_OK(c.read(planes + 8));
  const Vector3 bc = cross(b.normal, c.normal), ca = cross(c.normal, a.normal), ab = cross(a.normal, b.normal);
  const double volume = dot(a.normal, bc);
  DAX_REQUIRE(std::fabs(volume) > kParallel, DAX_STS_DEGENERATE);
  store3((-1 / volume) * (a.offset * bc + b.offset * ca + c.offset * ab), point);
  return DAX_STS_OK;
}

DaxStatus DAX3D_INTERSECT_LineSphere_f64(const double line[6], const double sphere[4], double points[6]) {
  DAX_REQUIRE(line && sphere && points, DAX_STS_NULL_POINTER);
  Line l;
  Sphere s;
  DAX_REQUIRE_OK(readShapes(line, l, sphere, s));
  const Nearest middle = l.nearest(s.centre);
  DAX_REQUIRE(middle.distance <= s.radius, DAX3D_STS_APART);
  const double half = halfChord(s.radius, middle.distance);
  return storeEnds({middle.foot, l.direction}, -half, half, points);
}

DaxStatus DAX3D_INTERSECT_LineCylinder_f64(const double line[6], const double cylinder[7], double points[6]) {
  DAX_REQUIRE(line && cylinder && points, DAX_STS_NULL_POINTER);
  Line l;
  Cylinder c;
  DAX_REQUIRE_OK(readShapes(line, l, cylinder, c));
  // Seen along the axis.
  const auto seen = [&](const Vector3& v) { return v - dot(v, c.axis.direction) * c.axis.direction; };
  const Vector3 from = seen(l.point - c.axis.point), along = seen(l.direction);
  const double sine = length(along);
  DAX_REQUIRE(sine > kParallel, DAX3D_STS_PARALLEL);
  const double middle = -dot(from, along) / (sine * sine);
  const double distance = length(from + middle * along);
  DAX_REQUIRE(distance <= c.radius, DAX3D_STS_APART);
  const double half = halfChord(c.radius, distance) / sine;
  return storeEnds(l, middle - half, middle + half, points);
}

DaxStatus DAX3D_INTERSECT_LineBox_f64(const double line[6], const Dax3dBox* box, double points[6]) {
  DAX_REQUIRE(line && box && points, DAX_STS_NULL_POINTER);
  Line l;
  Box3 b;
  DAX_REQUIRE_OK(readShapes(line, l, BoxNumbers(box).values, b));
  const Vector3 from = b.inside(l.point), along = b.axes * l.direction;
  double enter = -INFINITY, leave = INFINITY;
  const bool meets = clipToSlab(from.x, along.x, b.half.x, enter, leave) &&
                     clipToSlab(from.y, along.y, b.half.y, enter, leave) &&
                     clipToSlab(from.z, along.z, b.half.z, enter, leave);
  DAX_REQUIRE(meets, DAX3D_STS_APART);
  return storeEnds(l, enter, leave, points);
}

DaxStatus DAX3D_INTERSECT_LineTriangle_f64(const double line[6], const double triangle[9], double point[3]) {
  DAX_REQUIRE(line && triangle && point, DAX_STS_NULL_POINTER);
  Line l;
  Triangle t;
  DAX_REQUIRE_OK(readShapes(line, l, triangle, t));
  const Vector3 ab = t.b - t.a, ac = t.c - t.a, normal = cross(ab, ac), from = l.point - t.a;
  const double volume = -dot(l.direction, normal);
  DAX_REQUIRE(std::fabs(volume) > kParallel * length(normal), DAX3D_STS_PARALLEL);
  const Vector3 lever = cross(from, l.direction);
  const double u = dot(ac, lever) / volume, v = -dot(ab, lever) / volume;
  DAX_REQUIRE(u >= 0 && v >= 0 && u + v <= 1, DAX3D_STS_APART);
  store3(t.a + u * ab + v * ac, point);
  return DAX_STS_OK;
}

DaxStatus DAX3D_INTERSECT_PlaneSphere_f64(const double plane[4], const double sphere[4], double circle[7]) {
  DAX_REQUIRE(plane && sphere && circle, DAX_STS_NULL_POINTER);
  Plane3 p;
  Sphere s;
  DAX_REQUIRE_OK(readShapes(plane, p, sphere, s));
  const Nearest middle = p.nearest(s.centre);
  DAX_REQUIRE(std::fabs(middle.distance) <= s.radius, DAX3D_STS_APART);
  storeCircle(middle.foot, p.normal, halfChord(s.radius, middle.distance), circle);
  return DAX_STS_OK;
}

DaxStatus DAX3D_INTERSECT_SphereSphere_f64(const double a[4], const double b[4], double circle[7]) {
  DAX_REQUIRE(a && b && circle, DAX_STS_NULL_POINTER);
  Sphere first, second;
  DAX_REQUIRE_OK(readShapes(a, first, b, second));
  const Vector3 between = second.centre - first.centre;
  const double apart = length(between), outer = first.radius + second.radius;
  const double inner = std::fabs(first.radius - second.radius);
  DAX_REQUIRE(apart <= outer && apart >= inner, DAX3D_STS_APART);
  DAX_REQUIRE(apart > 0, DAX_STS_DEGENERATE);
  const double place = (apart + (first.radius - second.radius) / apart * outer) / 2;
  const Vector3 normal = (1 / apart) * between;
  storeCircle(first.centre + place * normal, normal, halfChord(first.radius, place), circle);
  return DAX_STS_OK;
}

DaxStatus DAX3D_INTERSECT_BoxBox_f64(const Dax3dBox* a, const Dax3dBox* b) {
  DAX_REQUIRE(a && b, DAX_STS_NULL_POINTER);
  Box3 first, second;
  DAX_REQUIRE_OK(readShapes(BoxNumbers(a).values, first, BoxNumbers(b).values, second));
  DAX_REQUIRE(boxesMeet(first, second), DAX3D_STS_APART);
  return DAX_STS_OK;
}
