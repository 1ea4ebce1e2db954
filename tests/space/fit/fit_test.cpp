#include "dax3d/fit.h"

#include <gtest/gtest.h>

#include <functional>

#include "dax3d/shape.h"
#include "tests/space/space_scene.h"

namespace dax::test {
namespace {

using Fit = DaxStatus (*)(const double*, int32_t, double*, double*);
using Distance = DaxStatus (*)(const double*, const double*, double*, double*);

struct Case {
  const char* name;
  Fit fit;
  DaxStatus (*narrow)(const float*, int32_t, double*, double*);
  Distance distance;
  size_t numbers;
  int32_t fewest;
  std::function<Real3(Random&)> point;  // of a shape in its own frame
};

// Parts of shapes: none is whole.
const std::vector<Case>& cases() {
  static const std::vector<Case> all = {
      {"plane", DAX3D_FIT_Plane_f64, DAX3D_FIT_Plane_f32, DAX3D_DIST_PointPlane_f64, 4, 3,
       [](Random& r) {
         return Real3{uniform(r, -1, 1), uniform(r, -0.5, 0.5), 0};
       }},
      {"line", DAX3D_FIT_Line_f64, DAX3D_FIT_Line_f32, DAX3D_DIST_PointLine_f64, 6, 2,
       [](Random& r) {
         return Real3{uniform(r, -1, 1), 0, 0};
       }},
      {"sphere", DAX3D_FIT_Sphere_f64, DAX3D_FIT_Sphere_f32, DAX3D_DIST_PointSphere_f64, 4, 4,
       [](Random& r) {
         const double z = uniform(r, 0.2, 1), angle = uniform(r, 0, 4), flat = std::sqrt(1 - z * z);
         return Real3{flat * std::cos(angle), flat * std::sin(angle), z};
       }},
      {"circle", DAX3D_FIT_Circle_f64, DAX3D_FIT_Circle_f32, DAX3D_DIST_PointCircle_f64, 7, 3,
       [](Random& r) {
         const double angle = uniform(r, 0, 2);
         return Real3{std::cos(angle), std::sin(angle), 0};
       }},
      {"cylinder", DAX3D_FIT_Cylinder_f64, DAX3D_FIT_Cylinder_f32, DAX3D_DIST_PointCylinder_f64, 7, 6,
       [](Random& r) {
         const double angle = uniform(r, 0, 2.5), z = uniform(r, -1, 1);
         return Real3{0.7 * std::cos(angle), 0.7 * std::sin(angle), z};
       }},
  };
  return all;
}

std::vector<double> sample(const Case& shape, int32_t n, const PoseMatrix& pose, double scale, double noise) {
  Random random(21);
  std::vector<double> points;
  for (int32_t i = 0; i < n; ++i) {
    const Real3 p = moved(pose, shape.point(random)), away = anyVector(random);
    append(points,
           {scale * (p[0] + noise * away[0]), scale * (p[1] + noise * away[1]), scale * (p[2] + noise * away[2])});
  }
  return points;
}

double squaresOf(const Case& shape, const std::vector<double>& points, const double* numbers) {
  double sum = 0;
  for (size_t i = 0; i < points.size(); i += 3) {
    double distance;
    EXPECT_EQ(shape.distance(&points[i], numbers, &distance, nullptr), DAX_STS_OK);
    sum += distance * distance;
  }
  return sum;
}

// Whatever the unit and wherever the shape lies.
TEST(Fit, FindsExactShapes) {
  Random random(22);
  for (const Case& shape : cases()) {
    for (const int32_t n : {shape.fewest, 20, 3000}) {
      for (const double scale : {1.0, 1e-60, 1e60}) {
        for (const double offset : {0.0, 1e6}) {
          const int32_t count = shape.name == std::string("cylinder") && n < 20 ? 12 : n;
          const Turn turn = anyTurn(random);
          const std::vector<double> points = sample(shape, count, poseOf(turn, {offset, -offset, offset}), scale, 0);
          double numbers[7], rms;
          ASSERT_EQ(shape.fit(points.data(), count, numbers, &rms), DAX_STS_OK) << shape.name << n;
          const double tolerance = scale * (1e-12 + 4e-9 * (offset > 0));
          EXPECT_LT(rms, tolerance) << shape.name << " " << n << " " << offset;
          EXPECT_LT(std::sqrt(squaresOf(shape, points, numbers) / count), tolerance) << shape.name;
        }
      }
    }
  }
}

// Of noisy points no small change of one number is better, and rms is what is left.
TEST(Fit, NothingNearIsBetter) {
  Random random(23);
  for (const Case& shape : cases()) {
    const PoseMatrix pose = anyPose(random);
    const std::vector<double> points = sample(shape, 400, pose, 1, 0.02);
    double numbers[7], rms, again[7], narrow;
    ASSERT_EQ(shape.fit(points.data(), 400, numbers, &rms), DAX_STS_OK) << shape.name;
    const double least = squaresOf(shape, points, numbers);
    EXPECT_NEAR(rms, std::sqrt(least / 400), 1e-13) << shape.name;
    for (size_t k = 0; k < shape.numbers; ++k) {
      for (const double step : {-1e-4, 1e-4}) {
        double other[7];
        std::copy_n(numbers, shape.numbers, other);
        other[k] += step;
        EXPECT_GT(squaresOf(shape, points, other), least * (1 - 1e-9)) << shape.name << k;
      }
    }
    const std::vector<float> floats(points.begin(), points.end());
    ASSERT_EQ(shape.narrow(floats.data(), 400, again, &narrow), DAX_STS_OK);
    EXPECT_LT(difference(numbers, again, shape.numbers), 1e-5) << shape.name;
  }
}

TEST(Fit, RobustPlaneIgnoresWhatLiesElsewhere) {
  Random random(24);
  for (const int32_t n : {50, 2000}) {
    std::vector<double> points, good;
    for (int32_t i = 0; i < n; ++i) {
      const double x = uniform(random, -1, 1), y = uniform(random, -1, 1), noise = uniform(random, -0.01, 0.01);
      const Real3 on{x, y, 0.3 * x - 0.2 * y + 1 + noise}, off{x, y, uniform(random, 2, 5) + x};
      const bool isOn = i % 20 < 11;  // 45 % lie elsewhere
      append(points, isOn ? on : off);
      if (isOn) append(good, on);
    }
    double plane[4], plain[4], best[4], rms, other;
    int32_t inliers;
    uint64_t bytes = 0;
    ASSERT_EQ(DAX3D_FIT_PlaneRobust_BufferSize(n, &bytes), DAX_STS_OK);
    std::vector<uint64_t> buffer(bytes / 8);
    ASSERT_EQ(DAX3D_FIT_PlaneRobust_f64(points.data(), n, plane, &rms, &inliers, buffer.data()), DAX_STS_OK);
    ASSERT_EQ(DAX3D_FIT_Plane_f64(points.data(), n, plain, &other), DAX_STS_OK);
    const auto goodCount = static_cast<int32_t>(good.size() / 3);
    ASSERT_EQ(DAX3D_FIT_Plane_f64(good.data(), goodCount, best, &other), DAX_STS_OK);
    EXPECT_LT(difference(plane, best, 4), n < 100 ? 0.004 : 0.001);
    EXPECT_GT(difference(plain, best, 4), 0.2);
    EXPECT_NEAR(rms, other, 0.3 * other);
    EXPECT_EQ(inliers, goodCount);
    // More than half are exact.
    for (size_t i = 0; i < points.size(); i += 3) {
      if (i / 3 % 20 < 11) points[i + 2] = 0.25;
    }
    ASSERT_EQ(DAX3D_FIT_PlaneRobust_f64(points.data(), n, plane, &rms, &inliers, buffer.data()), DAX_STS_OK);
    EXPECT_NEAR(plane[3], -0.25, 1e-13);
    EXPECT_EQ(inliers, goodCount);
  }
}

TEST(Fit, PointsWithoutAShape) {
  double numbers[7] = {}, rms;
  std::vector<double> place, line, flat, cap;
  for (int i = 0; i < 30; ++i) {
    append(place, {1.1, 2.2, 3.3});
    append(line, {0.1 * i, 0.3 * i, 1 - 0.2 * i});
    append(flat, {i % 7 * 0.3, i % 5 * 0.7, 0.1});
  }
  for (const Case& shape : cases()) {
    EXPECT_EQ(shape.fit(place.data(), 30, numbers, &rms), DAX_STS_DEGENERATE) << shape.name;
    EXPECT_EQ(shape.fit(line.data(), 30, numbers, &rms),
              shape.name == std::string("line") ? DAX_STS_OK : DAX_STS_DEGENERATE)
        << shape.name;
    EXPECT_EQ(shape.fit(line.data(), shape.fewest - 1, numbers, &rms), DAX_STS_BAD_PARAM);
    std::vector<double> broken = flat;
    broken[50] = NAN;
    EXPECT_EQ(shape.fit(broken.data(), 30, numbers, &rms), DAX_STS_DATA_RANGE);
    broken[50] = 1e200;
    EXPECT_EQ(shape.fit(broken.data(), 30, numbers, &rms), DAX_STS_DATA_RANGE);
  }
  for (const Fit fit : {DAX3D_FIT_Sphere_f64, DAX3D_FIT_Cylinder_f64}) {
    EXPECT_EQ(fit(flat.data(), 30, numbers, &rms), DAX_STS_DEGENERATE);
  }
  // A cube's corners have no longest axis.
  std::vector<double> cube;
  for (int i = 0; i < 8; ++i) append(cube, {double(i & 1), double(i >> 1 & 1), double(i >> 2)});
  EXPECT_EQ(DAX3D_FIT_Line_f64(cube.data(), 8, numbers, &rms), DAX_STS_DEGENERATE);
  EXPECT_EQ(DAX3D_FIT_Plane_f64(cube.data(), 8, numbers, &rms), DAX_STS_DEGENERATE);
  EXPECT_EQ(DAX3D_FIT_Sphere_f64(cube.data(), 8, numbers, &rms), DAX_STS_OK);
}

}  // namespace
}  // namespace dax::test
