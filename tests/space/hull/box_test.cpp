#include "dax3d/box.h"

#include <gtest/gtest.h>

#include "dax3d/shape.h"
#include "tests/space/space_scene.h"

namespace dax::test {
namespace {

double volumeOf(const Dax3dBox& box) {
  return box.size[0] * box.size[1] * box.size[2];
}

Dax3dBox leastBox(const std::vector<double>& points) {
  const auto n = static_cast<int32_t>(points.size() / 3);
  uint64_t bytes = 0;
  Dax3dBox box{};
  EXPECT_EQ(DAX3D_BOX_MinVolume_BufferSize(n, &bytes), DAX_STS_OK);
  std::vector<uint64_t> buffer(bytes / 8);
  EXPECT_EQ(DAX3D_BOX_MinVolume_f64(points.data(), n, &box, buffer.data()), DAX_STS_OK);
  return box;
}

void expectAround(const Dax3dBox& box, const std::vector<double>& points, double tolerance) {
  double nearest = -INFINITY;
  for (size_t i = 0; i < points.size(); i += 3) {
    double distance;
    ASSERT_EQ(DAX3D_DIST_PointBox_f64(&points[i], &box, &distance, nullptr), DAX_STS_OK);
    nearest = std::max(nearest, distance);
  }
  EXPECT_LT(nearest, tolerance);
  EXPECT_GT(nearest, -tolerance);
}

// The volume of the box around points in a frame.
double volumeIn(const Turn& turn, const std::vector<double>& points) {
  double volume = 1;
  for (size_t k = 0; k < 3; ++k) {
    double low = INFINITY, high = -INFINITY;
    for (size_t i = 0; i < points.size(); i += 3) {
      const double x = turn[3 * k] * points[i] + turn[3 * k + 1] * points[i + 1] + turn[3 * k + 2] * points[i + 2];
      low = std::min(low, x), high = std::max(high, x);
    }
    volume *= high - low;
  }
  return volume;
}

TEST(Box, OfKnownBodies) {
  Random random(41);
  for (int round = 0; round < 5; ++round) {
    const PoseMatrix pose = anyPose(random);
    std::vector<double> tetrahedron, block;
    const double s = std::sqrt(0.125);  // of edge length 1
    for (const Real3& p : {Real3{s, s, s}, Real3{s, -s, -s}, Real3{-s, s, -s}, Real3{-s, -s, s}})
      append(tetrahedron, moved(pose, p));
    for (int i = 0; i < 8; ++i) append(block, moved(pose, {i & 1 ? 1.0 : -1, i & 2 ? 2.5 : -2.5, i & 4 ? 0.5 : -0.5}));
    EXPECT_NEAR(volumeOf(leastBox(tetrahedron)), std::sqrt(0.125), 1e-8);
    const Dax3dBox box = leastBox(block);
    EXPECT_NEAR(box.size[0], 5, 1e-7);
    EXPECT_NEAR(box.size[1], 2, 1e-7);
    EXPECT_NEAR(box.size[2], 1, 1e-7);
    for (size_t k = 0; k < 3; ++k) EXPECT_NEAR(box.pose[4 * k + 3], pose[4 * k + 3], 1e-7);
    expectAround(box, block, 1e-7);
  }
}

// Turns from the box and from many random frames downhill find none that is smaller.
TEST(Box, NoSearchFindsASmallerOne) {
  Random random(42);
  for (const int n : {5, 8, 20, 60}) {
    std::vector<double> points;
    for (int i = 0; i < n; ++i) {
      const Real3 p = anyVector(random);
      append(points, {3 * p[0], p[1], 0.7 * p[2] + 0.3 * p[0]});
    }
    const Dax3dBox box = leastBox(points);
    expectAround(box, points, 1e-12);
    double least = INFINITY;
    for (int start = 0; start < 60; ++start) {
      Turn turn = anyTurn(random);
      double volume = volumeIn(turn, points);
      for (double angle = 0.5; angle > 1e-6;) {
        const Turn other = turnOf(anyVector(random), uniform(random, -angle, angle)) * turn;
        const double its = volumeIn(other, points);
        if (its < volume)
          volume = its, turn = other;
        else
          angle *= 0.95;
      }
      least = std::min(least, volume);
    }
    EXPECT_LT(volumeOf(box), least * (1 + 1e-6)) << n;
    EXPECT_GT(volumeOf(box), least * 0.99) << n;
  }
}

// More corners than are searched: the box still holds all, and is not much larger than the least.
TEST(Box, OfManyCorners) {
  Random random(43);
  std::vector<double> ball, drop;
  for (int i = 0; i < 3000; ++i) {
    const Real3 p = anyVector(random);
    const double size = norm(p);
    append(ball, {p[0] / size, p[1] / size, p[2] / size});
    append(drop, {2 * p[0] / size + 1000, p[1] / size, 0.5 * p[2] / size});
  }
  const Dax3dBox round = leastBox(ball), oval = leastBox(drop);
  expectAround(round, ball, 1e-12);
  expectAround(oval, drop, 1e-9);
  EXPECT_LT(volumeOf(round), 8);
  EXPECT_LT(volumeOf(oval), 8);
}

TEST(Box, UprightAndPrincipal) {
  Random random(44);
  const PoseMatrix pose = anyPose(random);
  std::vector<double> points;
  for (int i = 0; i < 4000; ++i) {
    const Real3 p = anyVector(random);
    append(points, moved(pose, {3 * p[0], 2 * p[1], p[2]}));
  }
  double lower[3], upper[3];
  ASSERT_EQ(DAX3D_BOX_Upright_f64(points.data(), 4000, lower, upper), DAX_STS_OK);
  for (size_t k = 0; k < 3; ++k) {
    double low = INFINITY, high = -INFINITY;
    for (size_t i = k; i < points.size(); i += 3) low = std::min(low, points[i]), high = std::max(high, points[i]);
    EXPECT_EQ(lower[k], low);
    EXPECT_EQ(upper[k], high);
  }
  Dax3dBox box, narrow;
  ASSERT_EQ(DAX3D_BOX_Pca_f64(points.data(), 4000, &box), DAX_STS_OK);
  expectAround(box, points, 1e-12);
  for (int k = 0; k < 3; ++k) EXPECT_NEAR(box.size[k], 6 - 2 * k, 0.5);
  const std::vector<float> floats(points.begin(), points.end());
  ASSERT_EQ(DAX3D_BOX_Pca_f32(floats.data(), 4000, &narrow), DAX_STS_OK);
  for (int i = 0; i < 16; ++i) EXPECT_NEAR(narrow.pose[i], box.pose[i], 1e-5);
  // One point, and a broken one.
  ASSERT_EQ(DAX3D_BOX_Pca_f64(points.data(), 1, &box), DAX_STS_OK);
  EXPECT_EQ(volumeOf(box), 0);
  EXPECT_EQ(box.pose[3], points[0]);
  points[5] = NAN;
  EXPECT_EQ(DAX3D_BOX_Pca_f64(points.data(), 4000, &box), DAX_STS_DATA_RANGE);
  EXPECT_EQ(DAX3D_BOX_Upright_f64(points.data(), 4000, lower, upper), DAX_STS_DATA_RANGE);
}

}  // namespace
}  // namespace dax::test
