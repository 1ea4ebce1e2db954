#include <cstring>

#include "dax3d/shape.h"
#include "space/shape/shapes.h"

namespace dax {
namespace {

template <class Shape>
DaxStatus distanceTo(const double* point, const double* numbers, double* distance, double* foot) {
  DAX_REQUIRE(point && numbers && distance, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areModerate(point, 3) && areModerate(numbers, Shape::kNumbers), DAX_STS_DATA_RANGE);
  Shape shape;
  DAX_REQUIRE_OK(shape.read(numbers));
  const Nearest found = shape.nearest(load3(point));
  *distance = found.distance;
  if (foot) store3(found.foot, foot);
  return DAX_STS_OK;
}

DaxStatus storeFeet(const Vector3& onA, const Vector3& onB, double* distance, double* feet) {
  *distance = length(onA - onB);
  if (feet) store3(onA, feet), store3(onB, feet + 3);
  return DAX_STS_OK;
}

// The parameter of b at which it is nearest to the point of a at s.
double across(const Segment& a, const Segment& b, double s) {
  const double square = dot(b.along, b.along);
  return square > 0 ? std::clamp(dot(a.at(s) - b.start, b.along) / square, 0.0, 1.0) : 0;
}

// Of two segments the distance is least at the unbounded solution held to both, or at an end of one: all four ends are
// tried, since the unbounded solution of nearly parallel ones has no digits.
void nearestOfSegments(const Segment& a, const Segment& b, double& s, double& t) {
  const Vector3 between = a.start - b.start;
  const double bb = dot(b.along, b.along), ab = dot(a.along, b.along);
  const Vector3 normal = cross(a.along, b.along);
  const double area = dot(normal, normal);
  double best = INFINITY;
  const auto offer = [&](double atA, double atB) {
    const Vector3 apart = a.at(atA) - b.at(atB);
    if (!(dot(apart, apart) < best)) return;
    best = dot(apart, apart), s = atA, t = atB;
  };
  if (area > 0) {
    const double free = (ab * dot(b.along, between) - bb * dot(a.along, between)) / area;
    const double atB = across(a, b, std::clamp(free, 0.0, 1.0));
    offer(across(b, a, atB), atB);
  }
  for (const double end : {0.0, 1.0}) offer(end, across(a, b, end)), offer(across(b, a, end), end);
}

DaxStatus storeAngle(double sine, double cosine, double* angle) {
  *angle = elementary::atan2(sine, cosine);
  return DAX_STS_OK;
}

template <class Shape>
DaxStatus angleOf(const double* a, const double* b, double* angle, Vector3 Shape::*direction) {
  DAX_REQUIRE(a && b && angle, DAX_STS_NULL_POINTER);
  Shape first, second;
  DAX_REQUIRE_OK(readShapes(a, first, b, second));
  return storeAngle(safeLength(cross(first.*direction, second.*direction)),
                    std::fabs(dot(first.*direction, second.*direction)), angle);
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_DIST_PointLine_f64(const double point[3], const double line[6], double* distance, double foot[3]) {
  return distanceTo<Line>(point, line, distance, foot);
}
DaxStatus DAX3D_DIST_PointSegment_f64(const double point[3], const double segment[6], double* distance,
                                      double foot[3]) {
  return distanceTo<Segment>(point, segment, distance, foot);
}
DaxStatus DAX3D_DIST_PointPlane_f64(const double point[3], const double plane[4], double* distance, double foot[3]) {
  return distanceTo<Plane3>(point, plane, distance, foot);
}
DaxStatus DAX3D_DIST_PointSphere_f64(const double point[3], const double sphere[4], double* distance, double foot[3]) {
  return distanceTo<Sphere>(point, sphere, distance, foot);
}
DaxStatus DAX3D_DIST_PointCylinder_f64(const double point[3], const double cylinder[7], double* distance,
                                       double foot[3]) {
  return distanceTo<Cylinder>(point, cylinder, distance, foot);
}
DaxStatus DAX3D_DIST_PointCircle_f64(const double point[3], const double circle[7], double* distance, double foot[3]) {
  return distanceTo<Circle3>(point, circle, distance, foot);
}
DaxStatus DAX3D_DIST_PointTriangle_f64(const double point[3], const double triangle[9], double* distance,
                                       double foot[3]) {
  return distanceTo<Triangle>(point, triangle, distance, foot);
}
DaxStatus DAX3D_DIST_PointBox_f64(const double point[3], const Dax3dBox* box, double* distance, double foot[3]) {
  double numbers[Box3::kNumbers];
  if (box) std::memcpy(numbers, box, sizeof numbers);
  return distanceTo<Box3>(point, box ? numbers : nullptr, distance, foot);
}

DaxStatus DAX3D_DIST_LineLine_f64(const double a[6], const double b[6], double* distance, double feet[6]) {
  DAX_REQUIRE(a && b && distance, DAX_STS_NULL_POINTER);
  Line first, second;
  DAX_REQUIRE_OK(readShapes(a, first, b, second));
  const Vector3 normal = cross(first.direction, second.direction);
  const double area = dot(normal, normal);
  // Lines that are parallel to rounding: from the first one's point.
  const double s = area > 1e-30 ? dot(cross(second.point - first.point, second.direction), normal) / area : 0;
  const Vector3 onFirst = first.at(s);
  return storeFeet(onFirst, second.nearest(onFirst).foot, distance, feet);
}

DaxStatus DAX3D_DIST_SegmentSegment_f64(const double a[6], const double b[6], double* distance, double feet[6]) {
  DAX_REQUIRE(a && b && distance, DAX_STS_NULL_POINTER);
  Segment first, second;
  DAX_REQUIRE_OK(readShapes(a, first, b, second));
  double s = 0, t = 0;
  nearestOfSegments(first, second, s, t);
  return storeFeet(first.at(s), second.at(t), distance, feet);
}

DaxStatus DAX3D_ANGLE_Vectors_f64(const double a[3], const double b[3], double* angle) {
  DAX_REQUIRE(a && b && angle, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(areModerate(a, 3) && areModerate(b, 3), DAX_STS_DATA_RANGE);
  Vector3 first, second;
  DAX_REQUIRE(normalise(load3(a), first) && normalise(load3(b), second), DAX_STS_DEGENERATE);
  return storeAngle(safeLength(cross(first, second)), dot(first, second), angle);
}
DaxStatus DAX3D_ANGLE_Lines_f64(const double a[6], const double b[6], double* angle) {
  return angleOf(a, b, angle, &Line::direction);
}
DaxStatus DAX3D_ANGLE_Planes_f64(const double a[4], const double b[4], double* angle) {
  return angleOf(a, b, angle, &Plane3::normal);
}
DaxStatus DAX3D_ANGLE_LinePlane_f64(const double line[6], const double plane[4], double* angle) {
  DAX_REQUIRE(line && plane && angle, DAX_STS_NULL_POINTER);
  Line first;
  Plane3 second;
  DAX_REQUIRE_OK(readShapes(line, first, plane, second));
  const double sine = std::fabs(dot(first.direction, second.normal));
  return storeAngle(sine, safeLength(cross(first.direction, second.normal)), angle);
}
