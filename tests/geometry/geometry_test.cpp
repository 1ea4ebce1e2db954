// What is easier to check here than through the families above: medians, hulls and boxes of given values, sets of a
// union-find, vectors and eigenvalues.
#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "geometry/convex_hull.h"
#include "geometry/eigen3.h"
#include "geometry/enclose_box.h"
#include "geometry/median_select.h"
#include "geometry/union_find.h"
#include "geometry/vector2.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity();

TEST(Geometry, Medians) {
  float odd[] = {5, 1, 9}, even[] = {8, 1, 4, 2}, one[] = {7}, huge[] = {3e38f, 3.2e38f}, open[] = {kInf, 1, kInf};
  EXPECT_EQ(_DAXS_Median_32f(odd, 3), 5);
  EXPECT_EQ(_DAXS_Median_32f(even, 4), 3);
  EXPECT_EQ(_DAXS_Median_32f(one, 1), 7);
  EXPECT_NEAR(_DAXS_Median_32f(huge, 2), 3.1e38f, 1e33);
  EXPECT_EQ(_DAXS_Median_32f(open, 3), kInf);
  for (int32_t rank = 1; rank < 5; ++rank) {
    float values[] = {3, 9, 1, 7, 5};
    EXPECT_EQ(valueBelowLargest(values, 5, rank), 10 - 2 * rank);
  }
}

std::vector<DaxiPoint32s> hullOf(const std::vector<DaxiPoint32s>& sorted) {
  std::vector<DaxiPoint32s> hull(3 * sorted.size() + 1);
  const auto count = sortedPointsHull(sorted.data(), static_cast<int32_t>(sorted.size()), hull.data());
  hull.resize(static_cast<size_t>(count));
  return hull;
}

bool operator==(const std::vector<DaxiPoint32s>& a, const std::vector<DaxiPoint32s>& b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameBits<DaxiPoint32s>);
}

// Collinear points and points inside are left out; the order starts at the topmost, then leftmost.
TEST(Geometry, HullOfSortedPoints) {
  EXPECT_TRUE(hullOf({{2, 0}, {4, 0}, {1, 1}, {3, 1}, {5, 1}, {0, 2}, {3, 2}, {6, 2}}) ==
              (std::vector<DaxiPoint32s>{{2, 0}, {4, 0}, {6, 2}, {0, 2}}));
  // One point above and one below; points of one row; one column; one point; none.
  EXPECT_TRUE(hullOf({{3, 0}, {0, 2}, {6, 2}, {2, 5}}) == (std::vector<DaxiPoint32s>{{3, 0}, {6, 2}, {2, 5}, {0, 2}}));
  EXPECT_TRUE(hullOf({{1, 4}, {2, 4}, {9, 4}}) == (std::vector<DaxiPoint32s>{{1, 4}, {9, 4}}));
  EXPECT_TRUE(hullOf({{1, 4}, {1, 5}, {1, 9}}) == (std::vector<DaxiPoint32s>{{1, 4}, {1, 9}}));
  EXPECT_TRUE(hullOf({{1, 4}}) == (std::vector<DaxiPoint32s>{{1, 4}}));
  EXPECT_TRUE(hullOf({}).empty());
}

// Every point lies to one side of every edge, and the path turns at every corner, by more than 32 bits can hold.
TEST(Geometry, HullIsConvex) {
  Random random(2);
  for (int32_t round = 0; round < 50; ++round) {
    std::vector<DaxiPoint32s> points;
    for (int32_t y = 0; y < 40; ++y) {
      for (int32_t x = random.below(9); x < 40; x += 1 + random.below(20)) points.push_back({50000 * x, 50000 * y});
    }
    const std::vector<DaxiPoint32s> hull = hullOf(points);
    for (size_t i = 0; i < hull.size(); ++i) {
      const DaxiPoint32s a = hull[i], b = hull[(i + 1) % hull.size()], next = hull[(i + 2) % hull.size()];
      const auto side = [&](DaxiPoint32s p) {
        return (int64_t{b.x} - a.x) * (p.y - a.y) - (int64_t{b.y} - a.y) * (p.x - a.x);
      };
      ASSERT_GT(side(next), 0) << round;
      for (const DaxiPoint32s& p : points) ASSERT_GE(side(p), 0) << round;
    }
  }
}

// Around a rectangle of 3 x 4 lengths whatever its turn; a thin triangle has a smaller area along its long side and a
// smaller perimeter along another one.
TEST(Geometry, BoxesAroundPolygons) {
  for (const auto& [cx, cy] : {std::pair{1, 0}, {4, 3}, {0, 1}, {-3, 4}, {5, 12}, {24, -7}}) {
    const int32_t length = static_cast<int32_t>(std::hypot(cx, cy));
    std::vector<DaxiPoint32s> points;
    for (const auto& [u, v] : {std::pair{0, 0}, {4, 0}, {4, 3}, {0, 3}}) {
      points.push_back({100 + 10 * (u * cx - v * cy), 200 + 10 * (u * cy + v * cx)});
    }
    for (const int32_t mode : {DAXI_BOX_MIN_AREA, DAXI_BOX_MIN_PERIMETER}) {
      const DaxiRotatedBox box = encloseBox(points.data(), 4, mode);
      EXPECT_FLOAT_EQ(box.width, static_cast<float>(40 * length));
      EXPECT_FLOAT_EQ(box.height, static_cast<float>(30 * length));
      EXPECT_FLOAT_EQ(box.x, static_cast<float>(100 + 20 * cx - 15 * cy));
      EXPECT_FLOAT_EQ(box.y, static_cast<float>(200 + 20 * cy + 15 * cx));
      EXPECT_NEAR(std::remainder(box.angle - std::atan2(cy, cx), std::numbers::pi), 0, 1e-6);
      EXPECT_TRUE(box.angle > -std::numbers::pi / 2 && box.angle <= 1.5707964f);
      EXPECT_FLOAT_EQ(rectangularity(static_cast<float>(600 * length * length), box), 0.5f);
    }
  }
  const DaxiPoint32s square[] = {{0, 0}, {3, 4}, {-1, 7}, {-4, 3}}, point[] = {{3, 4}};
  EXPECT_FLOAT_EQ(encloseBox(square, 4, DAXI_BOX_MIN_AREA).angle, static_cast<float>(std::atan2(-3, 4)));
  EXPECT_EQ(encloseBox(point, 1, DAXI_BOX_MIN_AREA).x, 3);
  EXPECT_EQ(encloseBox(point, 0, DAXI_BOX_MIN_AREA).x, 0);
  EXPECT_EQ(rectangularity(1, {0, 0, 5, 5, 0}), 1);
  EXPECT_EQ(rectangularity(26, {0, 0, 5, 5, 0}), 1);
}

// The best of all rectangles with a side along an edge.
TEST(Geometry, BoxesAreTheSmallest) {
  Random random(7);
  for (int32_t round = 0; round < 200; ++round) {
    std::vector<DaxiPoint32s> points;
    for (int32_t y = 0; y < 9; ++y) points.push_back({random.below(30), 3 * y});
    const std::vector<DaxiPoint32s> hull = hullOf(points);
    double area = 1e9, perimeter = 1e9;
    for (size_t i = 0; i < hull.size(); ++i) {
      const DaxiPoint32s a = hull[i], b = hull[(i + 1) % hull.size()];
      const double ux = b.x - a.x, uy = b.y - a.y, length = std::hypot(ux, uy);
      double low = 1e9, high = -1e9, depth = 0;
      for (const DaxiPoint32s& p : hull) {
        const double along = ((p.x - a.x) * ux + (p.y - a.y) * uy) / length;
        low = std::min(low, along), high = std::max(high, along);
        depth = std::max(depth, ((p.y - a.y) * ux - (p.x - a.x) * uy) / length);
      }
      area = std::min(area, (high - low) * depth), perimeter = std::min(perimeter, high - low + depth);
    }
    const auto count = static_cast<int32_t>(hull.size());
    const DaxiRotatedBox box = encloseBox(hull.data(), count, DAXI_BOX_MIN_AREA);
    const DaxiRotatedBox shortest = encloseBox(hull.data(), count, DAXI_BOX_MIN_PERIMETER);
    ASSERT_NEAR(box.width * box.height, area, 1e-3) << round;
    ASSERT_NEAR(shortest.width + shortest.height, perimeter, 1e-4) << round;
  }
}

TEST(Geometry, SetsAreNumberedByTheirLowestElements) {
  uint32_t parents[6], moved[6];
  UnionFind sets(parents);
  for (int i = 0; i < 6; ++i) sets.add();
  sets.unite(sets.root(5), sets.root(3));
  EXPECT_EQ(sets.unite(sets.root(4), sets.root(1)), 1u);
  std::copy_n(parents, 6, moved);
  sets.moveTo(moved);
  sets.unite(sets.root(5), sets.root(4));
  EXPECT_EQ(sets.count(), 6u);
  ASSERT_EQ(sets.number(), 3u);
  const uint32_t expected[] = {0, 1, 2, 1, 1, 1};
  for (uint32_t i = 0; i < 6; ++i) EXPECT_EQ(sets.numberOf(i), expected[i]) << i;
}

TEST(Geometry, VectorsOfThePlane) {
  const DaxiPoint32f a{3, 4}, b{-2, 5}, sum = a + b, difference = a - b, scaled = 2 * -a,
                                        none = unit(DaxiPoint32f{0, 0});
  EXPECT_TRUE(sum.x == 1 && sum.y == 9 && difference.x == 5 && difference.y == -1 && scaled.x == -6 && scaled.y == -8);
  EXPECT_EQ(dot(a, b), 14);
  EXPECT_EQ(cross(a, b), 23);
  EXPECT_EQ(length(a), 5);
  EXPECT_FLOAT_EQ(unit(a).y, 0.8f);
  EXPECT_TRUE(none.x == 1 && none.y == 0);
  EXPECT_FLOAT_EQ(alike(unit(a), -unit(a)), 1);
}

// Matrices with given eigenvalues along given axes, from all equal to far apart.
TEST(Geometry, EigenvaluesAndSmallestAxis) {
  const Vector3 x = unit(Vector3{1, 2, -2}), y = anyNormalTo(x), z = cross(x, y);
  EXPECT_NEAR(dot(x, y), 0, 1e-15);
  EXPECT_NEAR(length(z), 1, 1e-15);
  for (const Vector3& v :
       {Vector3{1, 5, 9}, {1, 1, 9}, {1, 9, 9}, {1e-3, 2e-3, 1e3}, {4, 4, 4}, {0, 0, 0}, {-3, 0, 2}}) {
    Symmetric3<double> a{};
    for (const auto& [value, e] : {std::pair{v.x, x}, {v.y, y}, {v.z, z}}) {
      a.xx += value * e.x * e.x, a.xy += value * e.x * e.y, a.xz += value * e.x * e.z;
      a.yy += value * e.y * e.y, a.yz += value * e.y * e.z, a.zz += value * e.z * e.z;
    }
    const Eigenvalues3 got = eigenvalues(a);
    const double slack = 1e-7 * std::fabs(v.z);
    EXPECT_NEAR(got.smallest, v.x, slack);
    EXPECT_NEAR(got.middle, v.y, slack);
    EXPECT_NEAR(got.largest, v.z, slack);
    const Vector3 axis = smallestAxis(a, got);
    EXPECT_NEAR(length(axis), 1, 1e-12);
    const double along = std::fabs(dot(axis, x)), beside = std::fabs(dot(axis, z));
    if (v.x == v.z) {
      EXPECT_EQ(axis.z, 1);
    } else if (v.x == v.y) {
      EXPECT_NEAR(beside, 0, 1e-6);
    } else {
      EXPECT_NEAR(along, 1, 1e-6) << v.x << ' ' << v.y << ' ' << v.z;
    }
  }
  // The normal of an axis is that of the axis closest to a right angle with it.
  EXPECT_NEAR(std::fabs(anyNormalTo({1, 0.5, 0.1}).z), 0, 1e-15);
  EXPECT_NEAR(anyNormalTo({0.1, 0.5, 1}).x, 0, 1e-15);
  EXPECT_NEAR(anyNormalTo({0.5, 0.1, 1}).y, 0, 1e-15);
  EXPECT_EQ(anyNormalTo({0.5, 0.5, 0.5}).x, 0);
}

}  // namespace
}  // namespace dax::test
