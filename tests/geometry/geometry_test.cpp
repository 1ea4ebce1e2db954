// What is easier to check here than through the families above: medians and hulls of given values, sets of a union-find.
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "geometry/convex_hull.h"
#include "geometry/median_select.h"
#include "geometry/union_find.h"

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
}

TEST(Geometry, ValuesBelowTheLargest) {
  for (int32_t rank = 1; rank < 5; ++rank) {
    float values[] = {3, 9, 1, 7, 5};
    EXPECT_EQ(valueBelowLargest(values, 5, rank), 10 - 2 * rank);
  }
}

// Collinear points and points inside are left out; the order starts at the topmost, then leftmost.
TEST(Geometry, HullOfSortedPoints) {
  const std::vector<DaxiPoint32s> sorted = {{2, 0}, {4, 0}, {1, 1}, {3, 1}, {5, 1}, {0, 2}, {3, 2}, {6, 2}};
  std::vector<DaxiPoint32s> hull(3 * sorted.size() + 1);
  const int32_t count = sortedPointsHull(sorted.data(), static_cast<int32_t>(sorted.size()), hull.data());
  const std::vector<DaxiPoint32s> expected = {{2, 0}, {4, 0}, {6, 2}, {0, 2}};
  ASSERT_EQ(count, 4);
  for (size_t i = 0; i < expected.size(); ++i) {
    EXPECT_EQ(hull[i].x, expected[i].x) << i;
    EXPECT_EQ(hull[i].y, expected[i].y) << i;
  }
}

TEST(Geometry, SetsAreNumberedByTheirLowestElements) {
  uint32_t parents[6];
  UnionFind sets(parents);
  for (int i = 0; i < 6; ++i) sets.add();
  sets.unite(sets.root(5), sets.root(3));
  sets.unite(sets.root(4), sets.root(1));
  sets.unite(sets.root(5), sets.root(4));
  ASSERT_EQ(sets.number(), 3u);
  const uint32_t expected[] = {0, 1, 2, 1, 1, 1};
  for (uint32_t i = 0; i < 6; ++i) EXPECT_EQ(sets.numberOf(i), expected[i]) << i;
}

}  // namespace
}  // namespace dax::test
