#include "measure/fit/line_fit.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>
#include <optional>

#include "tests/measure/fit/line_fit_oracle.h"
#include "tests/support/check_order.h"
#include "tests/support/guarded_buffer.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr float kInf = std::numeric_limits<float>::infinity(), kNan = std::numeric_limits<float>::quiet_NaN();

using Points = std::vector<DaxiPoint32f>;

LineFitCfg config(int32_t method, int32_t weights, int32_t rejected, float threshold = 3) {
  return {method, weights, 50, rejected, threshold, 0, 0, 0};
}

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

class Noise {
 public:
  explicit Noise(uint64_t seed) : random_(seed) {}
  double uniform(double low, double high) { return low + (high - low) * (random_.below(1 << 24) + 0.5) / (1 << 24); }
  double normal() {
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += uniform(0, 1);
    return sum;
  }

 private:
  Random random_;
};

// Points along a line at an angle, with noise across it; every `spoil`-th one is moved away by 8 to 60.
Points pointsOnLine(int count, double angle, double sigma, int spoil, uint64_t seed) {
  Noise noise(seed);
  const double c = std::cos(angle), s = std::sin(angle);
  Points points;
  for (int i = 0; i < count; ++i) {
    const double t = noise.uniform(-200, 200);
    double d = sigma * noise.normal();
    if (spoil && i % spoil == 0) d += noise.uniform(8, 60) * (i % 2 ? 1 : -1);
    points.push_back({static_cast<float>(300 + t * c - d * s), static_cast<float>(250 + t * s + d * c)});
  }
  return points;
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

std::optional<ExactLine> search(const std::vector<oracle::Point>& points, const LineFitCfg& cfg) {
  std::vector<double> x, y;
  for (const oracle::Point& p : points) x.push_back(p.x), y.push_back(p.y);
  std::vector<uint8_t> covered(points.size());
  ExactLine line{};
  if (!searchLine({x.data(), y.data(), static_cast<int32_t>(x.size())}, cfg, covered.data(), line)) return std::nullopt;
  return line;
}

// Up to 200 points the sequence of pairs is that of all; beyond, it may miss the best one.
TEST(LineFit, TriesAllPairsOfFewPoints) {
  for (const int32_t n : {200, 201}) {
    int32_t same = 0;
    for (uint64_t seed = 0; seed < 8; ++seed) {
      Noise noise(seed);
      std::vector<oracle::Point> points;
      for (int32_t i = 0; i < n; ++i) points.push_back({noise.uniform(0, 100), noise.uniform(0, 100)});
      const auto all = search(points, config(DAXI_LINE_INIT_ALL_PAIRS, 1, 180));
      const auto some = search(points, config(DAXI_LINE_INIT_SOME_PAIRS, 1, 180));
      ASSERT_TRUE(all && some);
      same += sameBits(*all, *some);
    }
    EXPECT_EQ(same == 8, n == 200) << same;
  }
}

TEST(LineFit, SearchCountsPointsAtTheLimits) {
  // The best line goes through the first and the third point, but the third lies half a pixel from the first pair's.
  const auto covered = search({{0, 0}, {10, 0}, {40, 0.5}, {20, 0.33}, {21, 0.1825}}, config(2, 1, 0, 0.1f));
  ASSERT_TRUE(covered);
  EXPECT_GT(std::fabs(covered->c), 0.01);
  // Points at the threshold support a line: five here, four exactly on the other one.
  const auto full = search({{0, 0}, {100, 0}, {20, 3}, {50, -3}, {80, 3}, {0, 1e3}, {100, 1e3}, {30, 1e3}, {60, 1e3}},
                           config(2, 1, 3));
  ASSERT_TRUE(full);
  EXPECT_EQ(full->c, 0);
}

// Rounds end where the rms changes by less than its 1e-5th part, or falls below 1e-5 itself: single rounds tell where.
TEST(LineFit, StopsWhereItSettles) {
  int32_t early = 0, late = 0, small = 0;
  for (uint64_t seed = 0; seed < 400; ++seed) {
    const double scale = seed % 4 == 0 ? 2e-5 : 1;
    std::vector<double> x, y;
    for (const DaxiPoint32f& p : pointsOnLine(60, 0, 0.6, 4, seed)) x.push_back(p.x), y.push_back((p.y - 250) * scale);
    std::vector<float> residuals(60), scratch(60), weights(60);
    std::vector<uint8_t> inliers(60);
    const LineRound round{{x.data(), y.data(), 60}, residuals.data(), 0,
                          scratch.data(),           inliers.data(),   weights.data()};
    LineFitCfg cfg = config(2, 1 + static_cast<int32_t>(seed % 3), 0);
    const DaxiLine start{0, 1, static_cast<float>(scale)};
    DaxiLine whole = start, stepped = start;
    double wholeRms = 0, rms = 0, before = 1e30;
    ASSERT_TRUE(refineLine(round, cfg, residuals.data(), whole, wholeRms));
    cfg.maxIterations = 1;
    for (int32_t i = 0; i < 50; ++i, before = rms) {
      ASSERT_TRUE(refineLine(round, cfg, residuals.data(), stepped, rms));
      const double change = std::fabs(before - rms) / before;
      early += change > 1e-5 && change < 2e-5;
      late += change < 1e-5 && change > 5e-6;
      small += rms < 1e-5 && change > 1e-5;
      if (rms < 1e-5 || change < 1e-5) break;
    }
    EXPECT_TRUE(sameBits(whole, stepped)) << seed;
    EXPECT_EQ(wholeRms, rms) << seed;
  }
  EXPECT_GT(std::min({early, late, small}), 2);
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
  const Fit pair = fit(rowWith(2, {40, 90, 170}), config(2, 1, 3, 1));
  ASSERT_EQ(pair.status, DAX_STS_OK);
  EXPECT_EQ(std::count(pair.inliers.begin(), pair.inliers.end(), 1), 2);
}

TEST(LineFit, WeighsByItsFunctions) {
  const double x[] = {0, 10, 20, 30, 40}, y[] = {0.1, -0.1, 0.1, -0.1, 3};
  const float residuals[] = {0.1f, 0.1f, 0.1f, 0.1f, 3};
  float scratch[5], weights[5];
  uint8_t inliers[5];
  LineRound round{{x, y, 5}, residuals, 100, scratch, inliers, weights};
  DaxiLine line;
  double rms;
  ASSERT_EQ(DAXI_LineFitRegre_least_square(&round, &line, &rms), 1);
  EXPECT_NEAR(rms, 1.3446, 1e-4);
  // The weight's square stands for the residual's.
  ASSERT_EQ(DAXI_LineFitRegre_huber(&round, &line, &rms), 1);
  EXPECT_NEAR(rms, 0.0998, 1e-4);
  EXPECT_NEAR(weights[4], 0.296516 / 3, 1e-6);
  ASSERT_EQ(DAXI_LineFitRegre_tukey(&round, &line, &rms), 1);
  EXPECT_NEAR(rms, 0.1, 1e-6);
  EXPECT_EQ(inliers[4], 1);
  EXPECT_EQ(weights[4], 0);
  EXPECT_NEAR(weights[0], std::pow(1 - std::pow(0.1 / 0.296516, 2), 2), 1e-5);
  // Too few take part.
  round.threshold = 0.1f;
  EXPECT_EQ(DAXI_LineFitRegre_huber(&round, &line, &rms), 0);
}

TEST(LineFit, Median) {
  float odd[] = {5, 1, 9}, even[] = {8, 1, 4, 2}, one[] = {7}, huge[] = {3e38f, 3.2e38f}, open[] = {kInf, 1, kInf};
  EXPECT_EQ(_DAXS_Median_32f(odd, 3), 5);
  EXPECT_EQ(_DAXS_Median_32f(even, 4), 3);
  EXPECT_EQ(_DAXS_Median_32f(one, 1), 7);
  EXPECT_NEAR(_DAXS_Median_32f(huge, 2), 3.1e38f, 1e33);
  EXPECT_EQ(_DAXS_Median_32f(open, 3), kInf);
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

struct Arguments {
  const DaxiPoint32f* points;
  int32_t count;
  LineFitCfg cfg;
  const LineFitCfg* cfgPointer;
  DaxiLine* line;
  uint8_t* inliers;
  float *weights, *rms;
  void* buffer;
};

TEST(LineFitChecks, OrderAndCodes) {
  static const DaxiPoint32f points[] = {{0, 0}, {1, 1}, {2, 2.1f}}, same[] = {{5, 5}, {5, 5}, {5, 5}};
  DaxiLine line = {};
  uint8_t inliers[3] = {7, 7, 7};
  float weights[3] = {7, 7, 7}, rms = 7;
  std::vector<double> buffer(200);
  using A = Arguments;
  const std::vector<CheckClause<A>> clauses = {
      {"points", DAX_STS_NULL_POINTER, [](A& a) { a.points = nullptr; }},
      {"cfg", DAX_STS_NULL_POINTER, [](A& a) { a.cfgPointer = nullptr; }},
      {"line", DAX_STS_NULL_POINTER, [](A& a) { a.line = nullptr; }},
      {"inliers", DAX_STS_NULL_POINTER, [](A& a) { a.inliers = nullptr; }},
      {"weights", DAX_STS_NULL_POINTER, [](A& a) { a.weights = nullptr; }},
      {"rms", DAX_STS_NULL_POINTER, [](A& a) { a.rms = nullptr; }},
      {"buffer", DAX_STS_NULL_POINTER, [](A& a) { a.buffer = nullptr; }},
      {"method", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.initMethod = 4; }},
      {"no method", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.initMethod = 0; }},
      {"weight function", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.weightFunction = 0; }},
      {"iterations", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.maxIterations = 0; }},
      {"rejected", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.maxRejected = -1; }},
      {"threshold", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.distanceThreshold = 1e-7f; }},
      {"threshold NaN", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.distanceThreshold = kNan; }},
      {"constraint", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.angleConstraint = 2; }},
      {"angle", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.expectedAngle = 3.15f; }},
      {"angle NaN", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.expectedAngle = kNan; }},
      {"tolerance", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.angleTolerance = -0.1f; }},
      {"count", DAX_STS_BAD_PARAM, [](A& a) { a.count = 1; }},
      {"all rejected", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.maxRejected = 2; }},
      {"greatest rejected", DAX_STS_BAD_PARAM, [](A& a) { a.cfg.maxRejected = INT32_MAX; }},
      {"one point only", DAX_STS_BAD_PARAM, [](A& a) { a.points = same; }},
  };
  LineFitCfg cfg = config(2, 1, 1);
  cfg.angleConstraint = 1, cfg.expectedAngle = 0.7f, cfg.angleTolerance = 1;
  expectCheckOrder<A>(
      {points, 3, cfg, &cfg, &line, inliers, weights, &rms, buffer.data()}, clauses,
      [](const A& a) {
        return DAXI_LineFitRegre_32f(a.points, a.count, a.cfgPointer ? &a.cfg : nullptr, a.line, a.inliers, a.weights,
                                     a.rms, a.buffer);
      },
      [&] { return line.a == 0 && inliers[0] == 7 && weights[2] == 7 && rms == 7; });
  // Without the constraint its angles may be anything.
  cfg.angleConstraint = 0, cfg.expectedAngle = kNan, cfg.angleTolerance = -1;
  EXPECT_EQ(DAXI_LineFitRegre_check_cfg(&cfg), DAX_STS_OK);
  uint64_t bytes = 5;
  for (auto* const query :
       {DAXI_LineFitRegreBufferSize_32f, DAXI_LineFitRegreBufferSize_16s, DAXI_LineFitRegreBufferSize_32s}) {
    EXPECT_EQ(query(1, nullptr), DAX_STS_NULL_POINTER);
    EXPECT_EQ(query(1, &bytes), DAX_STS_BAD_PARAM);
    EXPECT_EQ(query(INT32_MAX, &bytes), DAX_STS_OK);
    EXPECT_GT(bytes, uint64_t{29} * INT32_MAX - 1);
  }
}

}  // namespace
}  // namespace dax::test
