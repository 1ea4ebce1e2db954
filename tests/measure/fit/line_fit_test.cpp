#include "measure/fit/line_fit_refine.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

#include "measure/fit/line_fit.h"
#include "tests/measure/fit/line_fit_oracle.h"
#include "tests/measure/fit/line_scene.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr float kInf = std::numeric_limits<float>::infinity(), kNan = std::numeric_limits<float>::quiet_NaN();

struct Fit {
  DaxStatus status;
  DaxiLine line;
  std::vector<uint8_t> inliers;
  std::vector<float> weights;
  float rms;
};

template <class Point>
auto memberFor() {
  if constexpr (std::is_same_v<Point, DaxiPoint16s>) {
    return DAXI_LineFitRegre_16s32f;
  } else if constexpr (std::is_same_v<Point, DaxiPoint32s>) {
    return DAXI_LineFitRegre_32s32f;
  } else {
    return DAXI_LineFitRegre_32f;
  }
}

// Everything in memory of exactly the needed size; a failed call must have left the outputs alone.
template <class Point>
Fit fit(const std::vector<Point>& points, const LineFitCfg& cfg) {
  const auto n = static_cast<int32_t>(points.size());
  GuardedBuffer<Point> input(points.size());
  std::copy(points.begin(), points.end(), input.begin());
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_LineFitRegreBufferSize_32f(n, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes), inliers(points.size());
  GuardedBuffer<float> weights(points.size()), rms(1);
  GuardedBuffer<DaxiLine> line(1);
  const Fit before{0, line[0], {inliers.begin(), inliers.end()}, {weights.begin(), weights.end()}, rms[0]};
  const DaxStatus status =
      memberFor<Point>()(input.data(), n, &cfg, line.data(), inliers.data(), weights.data(), rms.data(), buffer.data());
  Fit result{status, line[0], {inliers.begin(), inliers.end()}, {weights.begin(), weights.end()}, rms[0]};
  if (status != DAX_STS_OK) {
    EXPECT_TRUE(sameBits(result.line, before.line) && sameBits(result.rms, before.rms));
    EXPECT_EQ(result.inliers, before.inliers);
    EXPECT_TRUE(std::equal(weights.begin(), weights.end(), before.weights.begin(), sameBits<float>));
  }
  return result;
}

// Differences of lines, whatever their sign.
double lineError(const DaxiLine& got, const oracle::Line& expected) {
  const double sign = got.a * expected.a + got.b * expected.b < 0 ? -1 : 1;
  return std::max({std::fabs(sign * got.a - expected.a), std::fabs(sign * got.b - expected.b),
                   std::fabs(sign * got.c - expected.c) / std::max(1.0, std::fabs(expected.c))});
}

template <class Point>
void compareWithOracle(const std::vector<Point>& points, const LineFitCfg& cfg) {
  std::vector<oracle::Point> exact;
  for (const Point& p : points) exact.push_back({static_cast<double>(p.x), static_cast<double>(p.y)});
  const auto expected = oracle::fitLine(exact, cfg);
  const Fit got = fit(points, cfg);
  ASSERT_EQ(got.status, expected ? DAX_STS_OK : DAX_STS_LEAST_SQUARES);
  if (!expected) return;
  ASSERT_LT(lineError(got.line, expected->line), 2e-5);
  ASSERT_NEAR(got.rms, expected->rms, 1e-4 * (1 + expected->rms));
  for (size_t k = 0; k < points.size(); ++k) {
    ASSERT_EQ(got.inliers[k], expected->inliers[k]) << "point " << k;
    // Of a line through all its points, residuals and median are rounding errors.
    ASSERT_NEAR(got.weights[k], expected->weights[k], got.rms > 1e-3f ? 2e-3 : 1) << "point " << k;
  }
}

TEST(LineFit, FollowsTheDefinition) {
  for (const int n : {3, 4, 5, 9, 20, 61, 120}) {
    for (int i = 0; i < 27; ++i) {
      const int32_t method = 1 + i % 3, weights = 1 + i / 3 % 3, rejected = i / 9 * (n - 2) / 4;
      const Points points = pointsOnLine(n, i * 0.37, 0.4, 5, static_cast<uint64_t>(i * 1000 + n));
      SCOPED_TRACE(testing::Message() << n << " points, case " << i);
      compareWithOracle(points, config(method, weights, rejected));
      std::vector<DaxiPoint16s> shorts;
      std::vector<DaxiPoint32s> longs;
      for (const auto [x, y] : points) {
        shorts.push_back({static_cast<int16_t>(x * 50), static_cast<int16_t>(y * 50)});
        longs.push_back({static_cast<int32_t>(x * 5000), static_cast<int32_t>(y * 5000)});
      }
      compareWithOracle(shorts, config(method, weights, rejected, 150));
      compareWithOracle(longs, config(method, weights, rejected, 15000));
    }
  }
}

// Scattered points, of which another few pairs have another best line.
TEST(LineFit, FollowsTheFixedSequence) {
  for (const int n : {201, 300, 4500}) {
    for (uint64_t seed = 0; seed < 4; ++seed) {
      Noise noise(seed);
      Points points;
      for (int i = 0; i < n; ++i) {
        points.push_back({static_cast<float>(noise.uniform(0, 900)), static_cast<float>(noise.uniform(0, 900))});
      }
      LineFitCfg cfg = config(3, 1, 0, 20);
      cfg.maxIterations = 1;
      SCOPED_TRACE(testing::Message() << n << " points, seed " << seed);
      compareWithOracle(points, cfg);
    }
  }
}

TEST(LineFit, ExactLinesAtAllAngles) {
  for (const double far : {0.0, 1e5}) {
    for (int degrees = 0; degrees < 360; ++degrees) {
      const double angle = degrees * kPi / 180, c = std::cos(angle), s = std::sin(angle);
      Points points;
      for (int i = 0; i < 40; ++i) {
        points.push_back({static_cast<float>(far + i * 5 * c), static_cast<float>(far / 2 + i * 5 * s)});
      }
      for (const int32_t method : {1, 2}) {
        // Not Huber's function, whose rms holds weights instead of rounding errors.
        const Fit got = fit(points, config(method, degrees % 2 ? DAXI_LINE_TUKEY : DAXI_LINE_LEAST_SQUARES, 0));
        ASSERT_EQ(got.status, DAX_STS_OK) << degrees;
        EXPECT_NEAR(std::hypot(got.line.a, got.line.b), 1, 1e-7);
        // Single precision: 1/128 pixel at 1e5.
        EXPECT_NEAR(std::fabs(got.line.a * c + got.line.b * s), 0, far > 0 ? 3e-4 : 1e-6) << degrees;
        EXPECT_LT(got.rms, far > 0 ? 0.02 : 1e-4) << degrees;
      }
    }
  }
}

TEST(LineFit, FindsPlantedOutliers) {
  for (const int n : {90, 500, 3000}) {
    for (int i = 0; i < 12; ++i) {
      const int32_t method = n > 500 ? 3 : 2 + i / 3 % 2, weights = 1 + i % 3, rejected = (n + 2) / 3;
      const double angle = i * 0.61;
      const Points points = pointsOnLine(n, angle, 0.1, 3, static_cast<uint64_t>(n + i));
      const Fit got = fit(points, config(method, weights, rejected, 3));
      ASSERT_EQ(got.status, DAX_STS_OK);
      for (size_t k = 0; k < points.size(); ++k) ASSERT_EQ(got.inliers[k], k % 3 != 0) << n << ", " << i << ", " << k;
      const double turn = std::remainder(std::atan2(-got.line.a, got.line.b) - angle, kPi);
      EXPECT_LT(std::fabs(turn), n == 90 ? 6e-4 : 1.8e-4) << n << ", " << i;
    }
  }
}

TEST(LineFit, DoesNotDependOnPlaceTurnOrOrder) {
  const Points points = pointsOnLine(200, 0.3, 0.2, 4, 7);
  const LineFitCfg cfg = config(2, 3, 50);
  const Fit first = fit(points, cfg);
  ASSERT_EQ(first.status, DAX_STS_OK);
  Points moved, turned, reversed(points.rbegin(), points.rend());
  for (const auto [x, y] : points) {
    moved.push_back({x + 64, y - 32});
    turned.push_back({-y, x});
  }
  const auto [a, b, c] = first.line;
  EXPECT_LT(lineError(fit(moved, cfg).line, {a, b, c - 64.0 * a + 32.0 * b}), 2e-5);
  EXPECT_LT(lineError(fit(turned, cfg).line, {-b, a, c}), 2e-5);
  EXPECT_LT(lineError(fit(reversed, cfg).line, {a, b, c}), 2e-5);
}

// A row of points, those listed at a height above it.
Points rowWith(int count, std::initializer_list<float> heights) {
  Points points;
  for (int i = 0; i < count; ++i) points.push_back({static_cast<float>(10 * i), 0});
  for (const float h : heights) points.push_back({static_cast<float>(10 * points.size()), h});
  return points;
}

TEST(LineFit, CutsAtTheWorst) {
  // One round from the row itself: the threshold lies between the worst ones.
  LineFitCfg cfg = config(2, 1, 1, 100);
  cfg.maxIterations = 1;
  EXPECT_EQ(fit(rowWith(30, {0.25f, 1}), cfg).inliers[30], 1);
  EXPECT_EQ(fit(rowWith(30, {0.25f, 1}), cfg).inliers[31], 0);
  // Tied at the cut: both stay below 2, where the slack still counts; both go above.
  const Fit small = fit(rowWith(30, {1, -1}), cfg), large = fit(rowWith(30, {5, -5}), cfg);
  EXPECT_EQ(small.inliers[30] + small.inliers[31], 2);
  EXPECT_EQ(large.inliers[30] + large.inliers[31], 0);
  // As few points, and as many rejected, as there may be.
  EXPECT_LT(fit(Points{{1, 1}, {4, 5}}, config(2, 3, 0)).rms, 1e-6);
  EXPECT_EQ(fit(Points{{0, 0}, {10, 0}, {5, 2}}, config(2, 1, 1)).status, DAX_STS_OK);
  EXPECT_EQ(fit(Points{{0, 0}, {10, 0}, {5, 2}}, config(2, 1, 2)).status, DAX_STS_BAD_PARAM);
  EXPECT_EQ(fit(Points{{5, 5}, {5, 5}, {5, 5}}, config(2, 1, 1)).status, DAX_STS_BAD_PARAM);
  const Fit pair = fit(rowWith(2, {40, 90, 170}), config(2, 1, 3, 1));
  ASSERT_EQ(pair.status, DAX_STS_OK);
  EXPECT_EQ(std::count(pair.inliers.begin(), pair.inliers.end(), 1), 2);
}

TEST(LineFit, KeepsTheAngle) {
  // Thirty points across, twenty along: the constraint finds the smaller line.
  Points points;
  for (int i = 0; i < 30; ++i) points.push_back({static_cast<float>(50), static_cast<float>(i * 3)});
  for (int i = 0; i < 20; ++i) points.push_back({static_cast<float>(i * 5), static_cast<float>(20 + i % 2 * 0.1)});
  LineFitCfg cfg = config(2, 1, 0, 1);
  EXPECT_NEAR(std::fabs(fit(points, cfg).line.a), 1, 1e-4);
  cfg.angleConstraint = 1;
  cfg.angleTolerance = 0.05f;
  for (const float expected : {0.0f, 3.1415927f, -3.1415927f}) {
    cfg.expectedAngle = expected;
    for (const int32_t method : {2, 3}) {
      cfg.initMethod = method;
      EXPECT_NEAR(std::fabs(fit(points, cfg).line.b), 1, 1e-4) << expected;
    }
  }
  // Least squares over all cannot restrict its search, but its result must keep the angle.
  cfg.initMethod = 1;
  cfg.distanceThreshold = 1000;
  EXPECT_EQ(fit(points, cfg).status, DAX_STS_LEAST_SQUARES);
  cfg.angleTolerance = 3.1415927f;
  EXPECT_EQ(fit(points, cfg).status, DAX_STS_OK);
  // A slanted line, and its mirror image.
  const Points slanted = pointsOnLine(40, 0.5, 0.1, 0, 1);
  for (const float expected : {0.5f, -0.5f}) {
    cfg.expectedAngle = expected, cfg.angleTolerance = 0.1f;
    EXPECT_EQ(fit(slanted, cfg).status, expected > 0 ? DAX_STS_OK : DAX_STS_LEAST_SQUARES);
  }
  // No tolerance at all, along the axes.
  cfg.angleTolerance = 0;
  for (const float expected : {0.0f, 1.5707964f}) {
    cfg.expectedAngle = expected;
    const bool upright = expected > 0;
    const Points axis = {{1, 1}, {upright ? 1.0f : 7.0f, upright ? 7.0f : 1.0f}};
    for (const int32_t method : {1, 2}) {
      cfg.initMethod = method;
      EXPECT_EQ(fit(axis, cfg).status, DAX_STS_OK) << expected;
    }
  }
}

TEST(LineFit, PointsThatAreNone) {
  Points points = pointsOnLine(60, 1.1, 0.1, 0, 3);
  const DaxiLine clean = fit(points, config(2, 2, 0)).line;
  for (const DaxiPoint32f bad : {DaxiPoint32f{kNan, 0}, {0, kInf}, {-kInf, kInf}, {1e30f, 5}, {3e38f, -3e38f}}) {
    Points spoiled = points;
    spoiled.insert(spoiled.begin() + 7, bad);
    for (const int32_t method : {2, 3}) {
      for (const int32_t weights : {1, 2, 3}) {
        const Fit got = fit(spoiled, config(method, weights, weights - 1));
        ASSERT_EQ(got.status, DAX_STS_OK);
        EXPECT_EQ(got.inliers[7], 0);
        EXPECT_LT(lineError(got.line, {clean.a, clean.b, clean.c}), 2e-3);
      }
    }
    const Fit all = fit(spoiled, config(1, 2, 0, 1e9f));
    EXPECT_TRUE(all.status == DAX_STS_OK || std::isfinite(bad.x + bad.y));
  }
  EXPECT_EQ(fit(Points{{kNan, 0}, {0, kNan}, {1, 1}}, config(1, 1, 0)).status, DAX_STS_LEAST_SQUARES);
  EXPECT_EQ(fit(Points{{kNan, 0}, {0, kNan}, {1, 1}}, config(2, 1, 0)).status, DAX_STS_LEAST_SQUARES);
  // Too close for any pair, but not all equal; no direction better than another.
  EXPECT_EQ(fit(Points{{1, 1}, {1.0002f, 1}, {1, 1.0002f}}, config(2, 1, 0)).status, DAX_STS_LEAST_SQUARES);
  EXPECT_EQ(fit(Points{{0, 0}, {0, 8}, {8, 0}, {8, 8}}, config(1, 1, 0)).status, DAX_STS_LEAST_SQUARES);
}

TEST(LineFit, WholeNumbersOfAnySize) {
  std::vector<DaxiPoint32s> points;
  for (int64_t t = 0; t < int64_t{1} << 32; t += 536870911) {
    points.push_back({static_cast<int32_t>(INT32_MIN + t), static_cast<int32_t>(INT32_MAX - t)});
  }
  const Fit got = fit(points, config(2, 1, 0, 1000));
  ASSERT_EQ(got.status, DAX_STS_OK);
  EXPECT_NEAR(got.line.a / got.line.b, 1, 1e-6);
  EXPECT_EQ(fit(std::vector<DaxiPoint16s>{{-32768, 32767}, {32767, -32768}}, config(1, 1, 0)).status, DAX_STS_OK);
}

// Without the constraint its angles may be anything.
TEST(LineFit, AnglesWithoutConstraint) {
  LineFitCfg cfg = config(2, 1, 1);
  cfg.expectedAngle = kNan, cfg.angleTolerance = -1;
  EXPECT_EQ(DAXI_LineFitRegre_check_cfg(&cfg), DAX_STS_OK);
  cfg.angleConstraint = 1;
  EXPECT_EQ(DAXI_LineFitRegre_check_cfg(&cfg), DAX_STS_BAD_PARAM);
}

}  // namespace
}  // namespace dax::test
