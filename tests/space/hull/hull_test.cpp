#include "dax3d/hull.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <set>

#include "space/hull/orientation.h"
#include "tests/space/space_scene.h"
#include "tests/support/guarded_buffer.h"

namespace dax::test {
namespace {

using Triangles = std::vector<std::array<int32_t, 3>>;

template <class T>
DaxStatus hullOf(const std::vector<T>& points, Triangles& triangles) {
  const auto n = static_cast<int32_t>(points.size() / 3);
  uint64_t bytes = 0;
  EXPECT_EQ(DAX3D_HULL_BufferSize(n, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  GuardedBuffer<int32_t> indices(static_cast<size_t>(6 * n - 12));
  int32_t count = -1;
  DaxStatus status;
  if constexpr (sizeof(T) == 4) {
    status = DAX3D_HULL_f32(points.data(), n, indices.data(), &count, buffer.data());
  } else {
    status = DAX3D_HULL_f64(points.data(), n, indices.data(), &count, buffer.data());
  }
  triangles.clear();
  for (int32_t i = 0; i < count; ++i) {
    triangles.push_back({indices[size_t(3 * i)], indices[size_t(3 * i + 1)], indices[size_t(3 * i + 2)]});
  }
  return status;
}

// The volume of (b - a, c - a, d - a) in whole numbers.
__int128 volumeOf(const std::vector<double>& p, int32_t a, int32_t b, int32_t c, int32_t d) {
  const auto at = [&](int32_t i, int k) { return static_cast<__int128>(p[size_t(3 * i + k)] - p[size_t(3 * a + k)]); };
  return (at(b, 1) * at(c, 2) - at(b, 2) * at(c, 1)) * at(d, 0) +
         (at(b, 2) * at(c, 0) - at(b, 0) * at(c, 2)) * at(d, 1) +
         (at(b, 0) * at(c, 1) - at(b, 1) * at(c, 0)) * at(d, 2);
}

// Closed, no point outside, corners are exactly those points that are extreme: whole numbers only.
void checkHull(const std::vector<double>& points) {
  const auto n = static_cast<int32_t>(points.size() / 3);
  Triangles triangles;
  ASSERT_EQ(hullOf(points, triangles), DAX_STS_OK);
  std::map<std::pair<int32_t, int32_t>, int> edges;
  std::map<int32_t, std::set<std::array<double, 4>>> planesAt;
  for (const auto& [a, b, c] : triangles) {
    for (int32_t i = 0; i < n; ++i) ASSERT_LE(volumeOf(points, a, b, c, i), 0);
    ++edges[{a, b}], ++edges[{b, c}], ++edges[{c, a}];
  }
  std::set<int32_t> corners;
  for (const auto& [edge, count] : edges) {
    EXPECT_EQ(count, 1);
    EXPECT_EQ(edges.count({edge.second, edge.first}), 1u);
    corners.insert(edge.first);
  }
  EXPECT_EQ(triangles.size(), 2 * corners.size() - 4);
  // A corner lies in no other corners' convex hull: taking it away makes it a point outside. Here: it has three faces.
  for (const int32_t corner : corners) {
    std::set<std::vector<int32_t>> faces;
    for (const auto& [a, b, c] : triangles) {
      if (a != corner && b != corner && c != corner) continue;
      std::vector<int32_t> inPlane;
      for (const int32_t i : corners) {
        if (volumeOf(points, a, b, c, i) == 0) inPlane.push_back(i);
      }
      faces.insert(inPlane);
    }
    EXPECT_GE(faces.size(), 3u);
    for (int32_t i = 0; i < corner; ++i) {  // the lowest of equal points
      EXPECT_FALSE(std::equal(&points[size_t(3 * i)], &points[size_t(3 * i + 3)], &points[size_t(3 * corner)]));
    }
  }
  // A face is a fan from its lowest index: triangles in one plane share it.
  for (const auto& [a, b, c] : triangles) {
    EXPECT_LT(a, std::min(b, c));
    for (const auto& [d, e, f] : triangles) {
      const bool isSame =
          volumeOf(points, a, b, c, d) == 0 && volumeOf(points, a, b, c, e) == 0 && volumeOf(points, a, b, c, f) == 0;
      EXPECT_TRUE(!isSame || a == d);
    }
  }
}

TEST(Hull, RandomAndCrowdedWholeNumbers) {
  Random random(31);
  for (const int32_t reach : {2, 3, 5, 20, 1000, 1000000}) {  // small ones are full of planes, lines and equal points
    for (const int32_t n : {4, 5, 8, 30, 150}) {
      std::vector<double> points;
      for (int32_t i = 0; i < 3 * n; ++i) points.push_back(random.below(reach));
      Triangles triangles;
      if (hullOf(points, triangles) == DAX_STS_DEGENERATE) {
        for (int32_t i = 3; i < n; ++i) EXPECT_LE(n, 8) << reach;
        continue;
      }
      checkHull(points);
    }
  }
}

TEST(Hull, GridsHaveEightCorners) {
  std::vector<double> points;
  for (int i = 0; i < 1000; ++i) append(points, {double(i % 10), double(i / 10 % 10), double(i / 100)});
  checkHull(points);
  Triangles triangles;
  for (const double scale : {1.0, 1e-60, 1e89, 0.1}) {  // 0.1: coordinates are rounded, faces stay planes
    std::vector<double> scaled = points;
    for (double& value : scaled) value *= scale;
    ASSERT_EQ(hullOf(scaled, triangles), DAX_STS_OK);
    EXPECT_EQ(triangles.size(), 12u) << scale;
  }
  const std::vector<float> narrow(points.begin(), points.end());
  Triangles same;
  ASSERT_EQ(hullOf(narrow, same), DAX_STS_OK);
  EXPECT_EQ(same, triangles);
}

// Many corners: of a sphere every point is one.
TEST(Hull, SpheresKeepEveryPoint) {
  Random random(32);
  std::vector<double> points;
  for (int i = 0; i < 5000; ++i) {
    const Real3 p = anyVector(random);
    const double size = norm(p);
    append(points, {p[0] / size, p[1] / size, p[2] / size});
  }
  Triangles triangles;
  ASSERT_EQ(hullOf(points, triangles), DAX_STS_OK);
  EXPECT_EQ(triangles.size(), 2u * 5000 - 4);
}

// Points near a plane through others, by a unit of the last place, at sizes where products round.
TEST(Hull, OrientationIsExact) {
  Random random(33);
  int exact = 0;
  for (int round = 0; round < 2000; ++round) {
    std::vector<double> p;
    for (int i = 0; i < 9; ++i) p.push_back(random.below(1 << 30) - (1 << 29));
    // In the plane through the three: d = a + k (b - a) + m (c - a); and beside it.
    const int k = random.below(9) - 4, m = random.below(9) - 4;
    for (size_t i = 0; i < 3; ++i) p.push_back(p[i] + k * (p[3 + i] - p[i]) + m * (p[6 + i] - p[i]));
    p[9] += round % 3 - 1;
    const __int128 truth = volumeOf(p, 0, 1, 2, 3);
    const double scale = round % 2 ? 1 : 0x1p-180;
    const auto vector = [&](size_t i) { return Vector3{scale * p[3 * i], scale * p[3 * i + 1], scale * p[3 * i + 2]}; };
    EXPECT_EQ(orientation(vector(0), vector(1), vector(2), vector(3)), truth > 0 ? 1 : truth < 0 ? -1 : 0);
    exact += truth == 0;
  }
  EXPECT_GT(exact, 500);
  // 0.1 + 0.2 is not 0.3: the plane x + y + z = 0.6 misses the point by less than a product's rounding.
  const Vector3 a{0.1, 0.2, 0.3}, b{0.2, 0.3, 0.1}, c{0.3, 0.1, 0.2}, d{0.2, 0.2, 0.2};
  const int sign = orientation(a, b, c, d);
  EXPECT_EQ(orientation(b, a, c, d), -sign);
  EXPECT_EQ(orientation(b, c, a, d), sign);
}

TEST(Hull, PointsWithoutAHull) {
  Triangles triangles;
  std::vector<double> place, line, flat;
  for (int i = 0; i < 20; ++i) {
    append(place, {1, 2, 3});
    append(line, {double(i), double(2 * i), double(-i)});
    append(flat, {double(i % 4), double(i / 4), double(i % 4 + i / 4)});
  }
  for (const auto& each : {place, line, flat}) EXPECT_EQ(hullOf(each, triangles), DAX_STS_DEGENERATE);
  for (const double bad : {double{NAN}, double{INFINITY}, 1e91, 1e-61}) {
    std::vector<double> broken = flat;
    broken[17] = bad;
    EXPECT_EQ(hullOf(broken, triangles), DAX_STS_DATA_RANGE) << bad;
  }
}

}  // namespace
}  // namespace dax::test
