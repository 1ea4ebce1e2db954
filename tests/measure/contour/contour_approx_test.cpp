// Polygons through chains of points.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <vector>

#include "daxi.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

struct Polygon {
  DaxStatus status;
  std::vector<int32_t> indices;
  uint32_t flags;
};

template <class Point>
Polygon approximate(const std::vector<Point>& points, bool closed, double tolerance) {
  const auto n = static_cast<int32_t>(points.size());
  uint64_t bytes = 0;
  EXPECT_EQ(DAX_ContourApproxBufferSize(n, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  Polygon found{0, std::vector<int32_t>(points.size(), -1), 7};
  int32_t kept = 0;
  if constexpr (std::is_same_v<Point, DaxiPoint32s>) {
    found.status = DAXI_ContourApprox_32s(points.data(), n, closed, tolerance, found.indices.data(), &kept,
                                          &found.flags, buffer.data());
  } else {
    found.status = DAXI_ContourApprox_32f(points.data(), n, closed, tolerance, found.indices.data(), &kept,
                                          &found.flags, buffer.data());
  }
  for (size_t i = static_cast<size_t>(kept); i < points.size(); ++i) EXPECT_EQ(found.indices[i], -1);
  found.indices.resize(static_cast<size_t>(kept));
  return found;
}

template <class Point>
double toSegment(const Point& p, const Point& a, const Point& b) {
  const double dx = double(b.x) - a.x, dy = double(b.y) - a.y, length2 = dx * dx + dy * dy;
  const double t =
      length2 > 0 ? std::clamp(((double(p.x) - a.x) * dx + (double(p.y) - a.y) * dy) / length2, 0.0, 1.0) : 0;
  return std::hypot(double(p.x) - (a.x + t * dx), double(p.y) - (a.y + t * dy));
}

// The definition, by recursion.
template <class Point>
void divide(const std::vector<Point>& points, size_t first, size_t last, double tolerance, std::vector<int32_t>* kept) {
  size_t far = first;
  double most = tolerance;
  for (size_t i = first + 1; i < last; ++i) {
    const double d = toSegment(points[i], points[first], points[last]);
    if (d > most * (1 + 1e-12)) far = i, most = d;
  }
  if (far == first) return;
  divide(points, first, far, tolerance, kept);
  kept->push_back(static_cast<int32_t>(far));
  divide(points, far, last, tolerance, kept);
}

template <class Point>
std::vector<Point> walk(int32_t n, uint64_t seed) {
  Random random(seed);
  std::vector<Point> points;
  int32_t x = 0, y = 0;
  for (int32_t i = 0; i < n; ++i) {
    x += random.below(9) - 3, y += random.below(13) - 6;
    points.push_back({static_cast<decltype(Point::x)>(x), static_cast<decltype(Point::y)>(y)});
  }
  return points;
}

template <class Point>
void compareWithDefinition() {
  for (const int32_t n : {1, 2, 3, 10, 200}) {
    for (const double tolerance : {0.0, 1.5, 7.3, 50.0}) {
      std::vector<Point> points = walk<Point>(n, static_cast<uint64_t>(n));
      std::vector<int32_t> expected{0};
      divide(points, 0, points.size() - 1, tolerance, &expected);
      if (n > 1) expected.push_back(n - 1);
      EXPECT_EQ(approximate(points, false, tolerance).indices, expected) << n << " " << tolerance;

      // Closed: the same of two open chains that meet at the first and at the farthest point.
      const auto away = [&](const Point& p) {
        return std::hypot(double(p.x) - points[0].x, double(p.y) - points[0].y);
      };
      const auto far = std::max_element(points.begin(), points.end(),
                                        [&](const Point& a, const Point& b) { return away(a) < away(b); });
      const auto at = static_cast<size_t>(far - points.begin());
      expected = {0};
      if (away(*far) > tolerance) {
        std::vector<Point> ring = points;
        ring.push_back(points[0]);
        divide(ring, 0, at, tolerance, &expected);
        expected.push_back(static_cast<int32_t>(at));
        divide(ring, at, points.size(), tolerance, &expected);
      }
      EXPECT_EQ(approximate(points, true, tolerance).indices, expected) << n << " " << tolerance;
    }
  }
}

TEST(ContourApprox, AsTheDefinition) {
  compareWithDefinition<DaxiPoint32s>();
  compareWithDefinition<DaxiPoint32f>();
  // Beyond the end of a segment the end counts, not the line: the tip of a spike stays.
  const std::vector<DaxiPoint32s> spike = {{0, 0}, {4, 0}, {30, 0}, {10, 0}};
  EXPECT_EQ(approximate(spike, false, 5).indices, (std::vector<int32_t>{0, 2, 3}));
  // Of equally far points the first.
  const std::vector<DaxiPoint32s> roof = {{0, 0}, {1, 5}, {2, 5}, {3, 5}, {4, 0}};
  EXPECT_EQ(approximate(roof, false, 4.9).indices, (std::vector<int32_t>{0, 1, 4}));
}

TEST(ContourApprox, ShrinkingZigzagEnds) {
  std::vector<DaxiPoint32f> points;
  constexpr int32_t kN = 20000;
  for (int32_t i = 0; i < kN; ++i) {
    const auto size = static_cast<float>(kN - i);
    points.push_back({static_cast<float>(i) * 1e-3f, i % 2 == 0 ? size : -size});
  }
  const Polygon found = approximate(points, false, 0.25);
  EXPECT_EQ(found.flags, uint32_t{DAXI_CONTOUR_LIMIT});
  for (size_t k = 0; k + 1 < found.indices.size(); ++k) {
    for (int32_t i = found.indices[k]; i < found.indices[k + 1]; ++i) {
      const auto end = [&](size_t at) { return points[static_cast<size_t>(found.indices[at])]; };
      ASSERT_LE(toSegment(points[static_cast<size_t>(i)], end(k), end(k + 1)), 0.25 + 1e-9);
    }
  }
}

TEST(ContourApprox, RefusesWhatIsNoChain) {
  std::vector<DaxiPoint32f> points = {{0, 0}, {1, NAN}, {2, 0}};
  EXPECT_EQ(approximate(points, false, 1).status, DAX_STS_DATA_RANGE);
  points[1].y = 3;
  EXPECT_EQ(approximate(points, false, NAN).status, DAX_STS_BAD_PARAM);
  EXPECT_EQ(approximate(points, false, -1).status, DAX_STS_BAD_PARAM);
}

}  // namespace
}  // namespace dax::test
