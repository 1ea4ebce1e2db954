#include "dax3d/shape.h"

#include <gtest/gtest.h>

#include <functional>
#include <numbers>

#include "tests/space/space_scene.h"

namespace dax::test {
namespace {

Real3 at(const Real3& from, double t, const Real3& along) {
  return {from[0] + t * along[0], from[1] + t * along[1], from[2] + t * along[2]};
}
Real3 unitOf(const Real3& v) {
  return at({0, 0, 0}, 1 / norm(v), v);
}
Real3 crossed(const Real3& a, const Real3& b) {
  return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
Real3 sideOf(const Real3& v) {
  return unitOf(crossed(v, std::fabs(v[0]) < 0.5 * norm(v) ? Real3{1, 0, 0} : Real3{0, 1, 0}));
}

// A shape as the function of two parameters in 0..1 that runs through its points.
struct Sampled {
  const char* name;
  DaxStatus (*distance)(const double*, const double*, double*, double*);
  std::vector<double> numbers;
  std::function<Real3(double, double)> point;
  // What the sign of the distance is of a point, 0: none.
  std::function<double(const Real3&)> side = {};
};

DaxStatus distanceOfBox(const double* point, const double* numbers, double* distance, double* foot) {
  Dax3dBox box;
  std::copy_n(numbers, 16, box.pose);
  std::copy_n(numbers + 16, 3, box.size);
  return DAX3D_DIST_PointBox_f64(point, &box, distance, foot);
}

std::vector<double> joined(std::initializer_list<Real3> parts, std::initializer_list<double> rest = {}) {
  std::vector<double> all;
  for (const Real3& part : parts) append(all, part);
  all.insert(all.end(), rest);
  return all;
}

std::vector<Sampled> shapes(Random& random) {
  const Real3 p = anyVector(random), q = anyVector(random), r = anyVector(random), u = unitOf(q), e = sideOf(u);
  const Real3 f = crossed(u, e);
  const double radius = uniform(random, 0.1, 1);
  const PoseMatrix pose = anyPose(random);
  const Real3 half{uniform(random, 0.1, 1), uniform(random, 0.1, 1), uniform(random, 0.1, 1)};
  const auto ring = [=](double s) {
    const double angle = 2 * std::numbers::pi * s;
    return at(at({0, 0, 0}, radius * std::cos(angle), e), radius * std::sin(angle), f);
  };
  const auto plane = joined({q}, {-inner(q, p)});
  std::vector<double> box(pose.begin(), pose.end());
  for (const double each : half) box.push_back(2 * each);
  return {
      {"line", DAX3D_DIST_PointLine_f64, joined({p, q}), [=](double s, double) { return at(p, 20 * s - 10, q); }},
      {"segment", DAX3D_DIST_PointSegment_f64, joined({p, q}), [=](double s, double) { return at(p, s, q - p); }},
      {"plane", DAX3D_DIST_PointPlane_f64, plane,
       [=](double s, double t) { return at(at(p, 20 * s - 10, e), 20 * t - 10, f); },
       [=](const Real3& x) { return inner(x - p, q); }},
      {"sphere", DAX3D_DIST_PointSphere_f64, joined({p}, {radius}),
       [=](double s, double t) {
         const double z = 2 * t - 1, flat = std::sqrt(1 - z * z);
         return at(at(p, flat, ring(s)), radius * z, u);
       },
       [=](const Real3& x) { return norm(x - p) - radius; }},
      {"cylinder", DAX3D_DIST_PointCylinder_f64, joined({p, q}, {radius}),
       [=](double s, double t) { return at(at(p, 1, ring(s)), 20 * t - 10, u); },
       [=](const Real3& x) { return norm(crossed(x - p, u)) - radius; }},
      {"circle", DAX3D_DIST_PointCircle_f64, joined({p, q}, {radius}),
       [=](double s, double) { return at(p, 1, ring(s)); }},
      {"triangle", DAX3D_DIST_PointTriangle_f64, joined({p, q, r}),
       [=](double s, double t) { return at(at(p, s, q - p), (1 - s) * t, r - p); }},
      {"box", distanceOfBox, box,
       [=](double s, double t) {  // its six faces side by side
         const int face = std::min(static_cast<int>(6 * s), 5);
         const double a = 2 * (6 * s - face) - 1, b = 2 * t - 1, c = face % 2 ? 1 : -1;
         const Real3 cube = face < 2 ? Real3{a, b, c} : face < 4 ? Real3{a, c, b} : Real3{c, a, b};
         return moved(pose, {cube[0] * half[0], cube[1] * half[1], cube[2] * half[2]});
       },
       [=](const Real3& x) {
         const Real3 away = x - Real3{pose[3], pose[7], pose[11]};
         double out = -1;
         for (size_t k = 0; k < 3; ++k) {
           const double along = pose[k] * away[0] + pose[4 + k] * away[1] + pose[8 + k] * away[2];
           out = std::max(out, std::fabs(along) - half[k]);
         }
         return out;
       }},
  };
}

// The foot lies on the shape as far away as said, and no sampled point is nearer.
TEST(Shape, NoSampledPointIsNearer) {
  Random random(12);
  constexpr int kSteps = 300;
  for (int round = 0; round < 12; ++round) {
    for (const Sampled& shape : shapes(random)) {
      const Real3 p = anyVector(random);
      Real3 foot, again;
      double distance, none;
      ASSERT_EQ(shape.distance(p.data(), shape.numbers.data(), &distance, foot.data()), DAX_STS_OK) << shape.name;
      EXPECT_NEAR(std::fabs(distance), norm(foot - p), 1e-15) << shape.name;
      if (shape.side) {
        EXPECT_EQ(distance < 0, shape.side(p) < 0) << shape.name;
      }
      ASSERT_EQ(shape.distance(foot.data(), shape.numbers.data(), &none, again.data()), DAX_STS_OK);
      EXPECT_NEAR(none, 0, 2e-15) << shape.name;
      double least = INFINITY;
      for (int i = 0; i <= kSteps; ++i) {
        for (int k = 0; k <= kSteps; ++k)
          least = std::min(least, norm(shape.point(double(i) / kSteps, double(k) / kSteps) - p));
      }
      EXPECT_GT(least, std::fabs(distance) - 1e-14) << shape.name;
      EXPECT_LT(least, std::fabs(distance) + 0.1) << shape.name;
      ASSERT_EQ(shape.distance(p.data(), shape.numbers.data(), &none, nullptr), DAX_STS_OK);
      EXPECT_EQ(none, distance);
    }
  }
}

// Crossing, parallel, of no length; lines, where the parameters are free.
TEST(Shape, LinesAndSegments) {
  Random random(13);
  for (int round = 0; round < 300; ++round) {
    const Real3 a = anyVector(random), b = anyVector(random), c = anyVector(random);
    Real3 d = anyVector(random);
    if (round % 5 == 0) d = at(c, uniform(random, -2, 2), b - a);
    if (round % 7 == 0) d = c;
    double distance, feet[6], least = INFINITY;
    ASSERT_EQ(DAX3D_DIST_SegmentSegment_f64(joined({a, b}).data(), joined({c, d}).data(), &distance, feet), DAX_STS_OK);
    for (int i = 0; i <= 60; ++i) {
      for (int k = 0; k <= 60; ++k) least = std::min(least, norm(at(a, i / 60.0, b - a) - at(c, k / 60.0, d - c)));
    }
    EXPECT_GT(least, distance - 1e-14);
    EXPECT_LT(least, distance + 0.05);
    EXPECT_NEAR(norm(Real3{feet[0], feet[1], feet[2]} - Real3{feet[3], feet[4], feet[5]}), distance, 1e-15);
    if (round % 7 == 0) continue;
    double whole;
    ASSERT_EQ(DAX3D_DIST_LineLine_f64(joined({a, b - a}).data(), joined({c, d - c}).data(), &whole, feet), DAX_STS_OK);
    EXPECT_LE(whole, distance + 1e-14);
    const Real3 between = Real3{feet[0], feet[1], feet[2]} - Real3{feet[3], feet[4], feet[5]};
    EXPECT_NEAR(inner(between, unitOf(b - a)), 0, 1e-12);
    EXPECT_NEAR(inner(between, unitOf(d - c)), 0, 1e-12);
  }
}

TEST(Shape, WhatMeetsLiesOnBoth) {
  Random random(14);
  int met = 0, apart = 0;
  const auto onBoth = [&](DaxStatus status, const Sampled& one, const Sampled& other, const double* points, int count) {
    if (status != DAX_STS_OK) {
      ++apart;
      EXPECT_EQ(status, DAX3D_STS_APART) << one.name << other.name;
      return;
    }
    ++met;
    for (int i = 0; i < count; ++i) {
      for (const Sampled* const shape : {&one, &other}) {
        double distance;
        shape->distance(points + 3 * i, shape->numbers.data(), &distance, nullptr);
        EXPECT_NEAR(distance, 0, 1e-13) << one.name << " " << other.name;
      }
    }
  };
  for (int round = 0; round < 50; ++round) {
    const std::vector<Sampled> a = shapes(random), b = shapes(random);
    const auto line = a[0], segment = a[1], plane = b[2], sphere = b[3], cylinder = b[4], triangle = b[6], box = b[7];
    double points[6], circle[7], meeting[6];
    Dax3dBox record;
    std::copy_n(box.numbers.data(), 16, record.pose);
    std::copy_n(box.numbers.data() + 16, 3, record.size);
    onBoth(DAX3D_INTERSECT_LinePlane_f64(line.numbers.data(), plane.numbers.data(), points), line, plane, points, 1);
    onBoth(DAX3D_INTERSECT_SegmentPlane_f64(segment.numbers.data(), plane.numbers.data(), points), segment, plane,
           points, 1);
    onBoth(DAX3D_INTERSECT_LineSphere_f64(line.numbers.data(), sphere.numbers.data(), points), line, sphere, points, 2);
    onBoth(DAX3D_INTERSECT_LineCylinder_f64(line.numbers.data(), cylinder.numbers.data(), points), line, cylinder,
           points, 2);
    onBoth(DAX3D_INTERSECT_LineBox_f64(line.numbers.data(), &record, points), line, box, points, 2);
    onBoth(DAX3D_INTERSECT_LineTriangle_f64(line.numbers.data(), triangle.numbers.data(), points), line, triangle,
           points, 1);
    ASSERT_EQ(DAX3D_INTERSECT_PlanePlane_f64(a[2].numbers.data(), plane.numbers.data(), meeting), DAX_STS_OK);
    for (int k = 0; k < 3; ++k) points[k] = meeting[k], points[3 + k] = meeting[k] + meeting[3 + k];
    onBoth(DAX_STS_OK, a[2], plane, points, 2);
    EXPECT_NEAR(points[0] * meeting[3] + points[1] * meeting[4] + points[2] * meeting[5], 0, 1e-12);
    std::vector<double> planes = a[2].numbers;
    planes.insert(planes.end(), plane.numbers.begin(), plane.numbers.end());
    planes.insert(planes.end(), {1, 2, 3, 4});
    ASSERT_EQ(DAX3D_INTERSECT_ThreePlanes_f64(planes.data(), points), DAX_STS_OK);
    onBoth(DAX_STS_OK, a[2], plane, points, 1);
    EXPECT_NEAR(points[0] + 2 * points[1] + 3 * points[2], -4, 1e-11);
    // Of circles four points.
    for (const Sampled& other : {plane, a[3]}) {
      const DaxStatus status =
          other.name == plane.name
              ? DAX3D_INTERSECT_PlaneSphere_f64(other.numbers.data(), sphere.numbers.data(), circle)
              : DAX3D_INTERSECT_SphereSphere_f64(other.numbers.data(), sphere.numbers.data(), circle);
      double four[12];
      const Real3 normal{circle[3], circle[4], circle[5]};
      for (int k = 0; k < 4 && status == DAX_STS_OK; ++k) {
        const Real3 e = sideOf(normal), side = k < 2 ? e : crossed(normal, e);
        const Real3 p = at({circle[0], circle[1], circle[2]}, k % 2 ? circle[6] : -circle[6], side);
        std::copy_n(p.data(), 3, four + 3 * k);
      }
      onBoth(status, other, sphere, four, 4);
    }
  }
  EXPECT_GT(met, 200);
  EXPECT_GT(apart, 40);
}

// Where a box's corners or edges reach into the other one, or none does.
TEST(Shape, BoxesMeetWhereTheirDistanceIsNone) {
  Random random(15);
  int met = 0;
  for (int round = 0; round < 60; ++round) {
    Dax3dBox a, b;
    PoseMatrix first = anyPose(random), second = anyPose(random);
    if (round % 3 == 0) second = first, second[3] += 0.6;
    std::copy_n(first.data(), 16, a.pose), std::copy_n(second.data(), 16, b.pose);
    for (int k = 0; k < 3; ++k) a.size[k] = uniform(random, 0.2, 1), b.size[k] = uniform(random, 0.2, 1);
    // Alternating projections find the distance of two convex sets.
    const auto project = [](const Dax3dBox& box, Real3& p) {
      double distance;
      Real3 foot;
      DAX3D_DIST_PointBox_f64(p.data(), &box, &distance, foot.data());
      if (distance > 0) p = foot;
    };
    Real3 p{a.pose[3], a.pose[7], a.pose[11]}, q = p;
    for (int k = 0; k < 3000; ++k) project(b, q = p), project(a, p = q);
    const double gap = norm(p - q);
    if (gap > 1e-9 && gap < 1e-2) continue;
    met += gap <= 1e-9;
    EXPECT_EQ(DAX3D_INTERSECT_BoxBox_f64(&a, &b), gap > 1e-9 ? DaxStatus{DAX3D_STS_APART} : DaxStatus{DAX_STS_OK})
        << round;
  }
  EXPECT_GT(met, 5);
  EXPECT_LT(met, 50);
}

// Angles that cosines cannot tell from 0 and pi.
TEST(Shape, SmallAngles) {
  double angle;
  for (const double small : {1e-300, 1e-12, 1e-9, 1e-4}) {
    const double along[6] = {5, 6, 7, 2, 0, 0}, other[6] = {0, 0, 0, 3, 3 * small, 0};
    const double against[3] = {-1, small, 0}, plane[4] = {small, 1, 0, 4};
    EXPECT_EQ(DAX3D_ANGLE_Lines_f64(along, other, &angle), DAX_STS_OK);
    EXPECT_NEAR(angle / small, 1, 1e-7);
    EXPECT_EQ(DAX3D_ANGLE_Vectors_f64(along + 3, against, &angle), DAX_STS_OK);
    EXPECT_NEAR(angle, std::numbers::pi - std::atan(small), 1e-15);
    EXPECT_EQ(DAX3D_ANGLE_LinePlane_f64(along, plane, &angle), DAX_STS_OK);
    EXPECT_NEAR(angle / small, 1, 1e-7);
    const double turned[4] = {0, -7, 0, 1};
    EXPECT_EQ(DAX3D_ANGLE_Planes_f64(plane, turned, &angle), DAX_STS_OK);
    EXPECT_NEAR(angle / small, 1, 1e-7);
  }
}

TEST(Shape, WhatCannotBeToldIsRefused) {
  double out[7], distance;
  const double p[3] = {1, 2, 3}, noLine[6] = {1, 2, 3, 0, 0, 0}, line[6] = {0, 0, 1, 1, 0, 0}, plane[4] = {0, 0, 2, 0};
  const double noPlane[4] = {0, 0, 0, 1}, sphere[4] = {0, 0, 0, 0.5}, negative[4] = {0, 0, 0, -1},
               far[3] = {1e71, 0, 0};
  const double flat[9] = {0, 0, 0, 1, 1, 1, 2, 2, 2}, along[7] = {0, 0, 0, 3, 0, 0, 1};
  EXPECT_EQ(DAX3D_DIST_PointLine_f64(p, noLine, &distance, out), DAX_STS_DEGENERATE);
  EXPECT_EQ(DAX3D_DIST_PointPlane_f64(p, noPlane, &distance, out), DAX_STS_DEGENERATE);
  EXPECT_EQ(DAX3D_DIST_PointTriangle_f64(p, flat, &distance, out), DAX_STS_DEGENERATE);
  EXPECT_EQ(DAX3D_DIST_PointSphere_f64(p, negative, &distance, out), DAX_STS_BAD_PARAM);
  EXPECT_EQ(DAX3D_DIST_PointSphere_f64(far, sphere, &distance, out), DAX_STS_DATA_RANGE);
  EXPECT_EQ(DAX3D_INTERSECT_LinePlane_f64(line, plane, out), DAX3D_STS_PARALLEL);
  EXPECT_EQ(DAX3D_INTERSECT_LineCylinder_f64(line, along, out), DAX3D_STS_PARALLEL);
  EXPECT_EQ(DAX3D_INTERSECT_LineSphere_f64(line, sphere, out), DAX3D_STS_APART);
  EXPECT_EQ(DAX3D_INTERSECT_PlanePlane_f64(plane, plane, out), DAX_STS_DEGENERATE);
  EXPECT_EQ(DAX3D_INTERSECT_SphereSphere_f64(sphere, sphere, out), DAX_STS_DEGENERATE);
  Dax3dBox box{{1, 0, 0, 0, 0, 1, 0, 0, 0, 0, -1, 0, 0, 0, 0, 1}, {1, 1, 1}};
  EXPECT_EQ(DAX3D_DIST_PointBox_f64(p, &box, &distance, out), DAX3D_STS_NO_ROTATION);
  box.size[1] = -1;
  EXPECT_EQ(DAX3D_INTERSECT_BoxBox_f64(&box, &box), DAX_STS_BAD_PARAM);
  box.size[1] = NAN;
  EXPECT_EQ(DAX3D_INTERSECT_LineBox_f64(line, &box, out), DAX_STS_DATA_RANGE);
}

}  // namespace
}  // namespace dax::test
