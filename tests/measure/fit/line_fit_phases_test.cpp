// The line fit phase by phase: search, rounds, weights.
#include <gtest/gtest.h>

#include <optional>

#include "geometry/median_select.h"
#include "measure/fit/line_fit.h"
#include "measure/fit/line_fit_refine.h"
#include "measure/fit/line_fit_search.h"
#include "tests/measure/fit/line_fit_oracle.h"
#include "tests/measure/fit/line_scene.h"

namespace dax::test {
namespace {

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

// Of 500 points 4000000 / 500 pairs of the sequence, and not one more: only the pair with that number, and those that its
// two points form with one between them, have three points on their line.
TEST(LineFit, TriesAsManyPairsOfManyPoints) {
  constexpr size_t kCount = 500, kPairs = 8000;
  std::vector<std::pair<size_t, size_t>> pairs;
  std::vector<uint8_t> isDrawn(kCount * kCount);
  uint64_t state = 0;
  const auto next = [&] {
    state = state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<size_t>((state >> 32) * kCount >> 32);
  };
  const auto drawn = [&](size_t i, size_t j) -> uint8_t& { return isDrawn[std::min(i, j) * kCount + std::max(i, j)]; };
  for (size_t line = 0; line <= kPairs; ++line) {
    const size_t i = next(), j = next();
    if (line + 1 >= kPairs) {
      size_t between = 0;
      while (between == i || between == j || drawn(i, between) || drawn(between, j)) ++between;
      ASSERT_TRUE(i != j && !drawn(i, j) && between < kCount);
      std::vector<oracle::Point> points;
      for (int32_t k = 0; k < 500; ++k) points.push_back({1e3 * std::cos(0.0125 * k), 1e3 * std::sin(0.0125 * k)});
      points[between] = {0.4 * points[i].x + 0.6 * points[j].x, 0.4 * points[i].y + 0.6 * points[j].y};
      const auto found = search(points, config(DAXI_LINE_INIT_SOME_PAIRS, 1, 0, 1e-3f));
      ASSERT_TRUE(found);
      const double distance = found->a * points[between].x + found->b * points[between].y + found->c;
      EXPECT_EQ(std::fabs(distance) < 1e-6, line < kPairs) << line;
    }
    drawn(i, j) = 1;
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

// Two points so close together that some directions are not told any more; those that are have a unit normal.
TEST(LineFit, UnitNormalsOfTinyDistances) {
  const float weights[] = {1, 1};
  int32_t found = 0, all = 0;
  for (double distance = 1.2e-4; distance < 1.7e-4; distance += 1e-6) {
    for (int32_t degrees = 0; degrees < 180; ++degrees, ++all) {
      const double c = std::cos(degrees * 0.017453292519943295), s = std::sin(degrees * 0.017453292519943295);
      const double x[] = {distance * c, -distance * c}, y[] = {distance * s, -distance * s};
      const LinePoints points{x, y, 2};
      DaxiLine line;
      if (DAXI_LineFitRegre_get_fitline_coe(&points, weights, 0, 0, 2, &line) != 1) continue;
      ++found;
      ASSERT_NEAR(std::hypot(line.a, line.b), 1, 1e-6) << degrees << ", " << distance;
      ASSERT_NEAR(line.a * c + line.b * s, 0, 1e-6) << degrees << ", " << distance;
    }
  }
  EXPECT_GT(found, all / 2);
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

}  // namespace
}  // namespace dax::test
