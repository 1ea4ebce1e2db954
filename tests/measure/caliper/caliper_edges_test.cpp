// From profile to edges: kernels, extrema, scores, order; and how exact positions are.
#include <gtest/gtest.h>

#include <numbers>

#include "measure/caliper/caliper_criterion.h"
#include "measure/caliper/caliper_edges.h"
#include "measure/caliper/caliper_filter.h"
#include "tests/measure/caliper/caliper_oracle.h"
#include "tests/measure/caliper/caliper_scene.h"
#include "tests/support/edge_scene.h"

namespace dax::test {
namespace {

TEST(CaliperFilter, Kernels) {
  float kernel[kMaxKernel];
  for (int32_t half = 1; half <= 50; ++half) {
    ASSERT_EQ(DAXI_CalipEdgeDetect_init_dog_kernel_32f(static_cast<uint32_t>(half), 1000, kernel), 2 * half + 1);
    const std::vector<double> gaussian = oracle::gaussianKernel(2 * half + 1);
    double sum = 0, gaussianSum = 0;
    for (int32_t i = 0; i < half; ++i) {
      sum += kernel[i];
      gaussianSum += gaussian[static_cast<size_t>(i)];
      EXPECT_EQ(kernel[2 * half - i], -kernel[i]);
    }
    EXPECT_EQ(kernel[half], 0);
    EXPECT_NEAR(sum, half <= 5 ? 1 : gaussianSum, 2e-7) << half;
    for (int32_t i = 0; i <= 2 * half; ++i) {
      const double expected = gaussian[static_cast<size_t>(i)] / (half <= 5 ? gaussianSum : 1);
      EXPECT_NEAR(kernel[i], expected, half <= 5 ? 5e-5 : 1e-8) << half;
    }
  }
  // The tables to the last digit; the two middle values of the fourth differ.
  const std::vector<float> tables[] = {{1},
                                       {0.24073642f, 0.7592636f},
                                       {0.07841022f, 0.37582335f, 0.5457664f},
                                       {0.03946792f, 0.18096478f, 0.38978368f, 0.38978362f},
                                       {0.02483425f, 0.10302499f, 0.2375097f, 0.35154617f, 0.2830849f}};
  for (const std::vector<float>& table : tables) {
    DAXI_CalipEdgeDetect_init_dog_kernel_32f(static_cast<uint32_t>(table.size()), 1000, kernel);
    EXPECT_EQ(std::vector<float>(kernel, kernel + table.size()), table);
  }
  // Shorter profiles.
  for (int32_t n = 1; n < 30; ++n) {
    EXPECT_EQ(DAXI_CalipEdgeDetect_init_dog_kernel_32f(10, n, kernel), oracle::kernelLength(10, n)) << n;
  }
}

TEST(CaliperFilter, FollowsTheDefinition) {
  Random random(2);
  for (const int32_t n : {1, 2, 3, 7, 8, 9, 16, 31, 200}) {
    for (const uint32_t half : {1u, 3u, 5u, 6u, 50u}) {
      std::vector<float> profile, constant(static_cast<size_t>(n), 177.3f);
      for (int32_t i = 0; i < n; ++i) profile.push_back(static_cast<float>(random.below(65536)) / 256);
      float kernel[kMaxKernel];
      GuardedBuffer<float> extended(static_cast<size_t>(n + kMaxKernel)), out(static_cast<size_t>(n));
      GuardedBuffer<float> twin(out.size());
      const int32_t length =
          _DAXI_Caliper_dog_filter_32f(profile.data(), n, half, kernel, extended.data(), out.data(), DAX_ISA_PORTABLE);
      _DAXI_Caliper_filter_32f(profile.data(), n, kernel, length, extended.data(), twin.data(), DAX_ISA_NEON);
      EXPECT_EQ(std::memcmp(out.data(), twin.data(), out.size() * 4), 0);
      const auto expected = oracle::respond(profile, {kernel, kernel + length});
      for (size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(out[i], expected[i], 2e-4);
      _DAXI_Caliper_filter_32f(constant.data(), n, kernel, length, extended.data(), out.data(), DAX_ISA_NEON);
      for (size_t i = 0; i < out.size(); ++i) EXPECT_NEAR(out[i], 0, 5e-5);
    }
  }
}

// Small whole numbers, so that plateaus and shoulders are everywhere.
TEST(CaliperEdges, ExtremaByTheirDefinition) {
  Random random(3);
  for (int round = 0; round < 4000; ++round) {
    const int32_t n = 1 + random.below(12);
    std::vector<float> r, profile(static_cast<size_t>(n), 5);
    for (int32_t i = 0; i < n; ++i) r.push_back(static_cast<float>(random.below(7) - 3));
    const auto polarity = static_cast<uint32_t>(1 + random.below(3));
    const float threshold = static_cast<float>(random.below(3));
    std::vector<CaliperEdge> edges(static_cast<size_t>(n));
    const CaliperSignal signal{profile.data(), r.data(), nullptr, n, 3};
    const int32_t count = findEdges(signal, polarity, threshold, edges.data());
    int32_t k = 0;
    for (int32_t i = 1; i < n - 1; ++i) {
      const auto at = [&](int32_t j) { return r[static_cast<size_t>(j)]; };
      // Of a plateau of maxima the first, of minima the last; and the beginning or end of a shoulder.
      const bool high = at(i) >= threshold && at(i) > at(i - 1) && at(i) >= at(i + 1);
      const bool low = at(i) <= -threshold && at(i) <= at(i - 1) && at(i) < at(i + 1);
      const uint32_t expected = polarity != 1 && high ? 2 : polarity != 2 && low ? 1 : 0;
      if (!expected) continue;
      ASSERT_LT(k, count);
      const CaliperEdge& edge = edges[static_cast<size_t>(k++)];
      EXPECT_EQ(edge.polarity, expected);
      EXPECT_EQ(edge.index, i);
      EXPECT_EQ(edge.score, 1);
      EXPECT_EQ(edge.response, at(i));
      EXPECT_EQ(edge.gray, 5);
      // The parabola's vertex.
      const float bend = 2 * at(i) - at(i - 1) - at(i + 1), slope = (at(i + 1) - at(i - 1)) / 2;
      EXPECT_FLOAT_EQ(edge.position, static_cast<float>(i) - static_cast<float>(n) / 2 + slope / bend);
      EXPECT_FLOAT_EQ(edge.peak, at(i) + slope * slope / bend / 2);
    }
    ASSERT_EQ(k, count);
  }
}

CaliperCriterion ramp(uint32_t mode, float x0, float x1, float x2, float y0, float y1) {
  return {mode, x0, x1, x2, y0, y1};
}

TEST(CaliperScore, Ramps) {
  const CaliperCriterion ramps[] = {ramp(0, 1, 3, 7, 0.2f, 0.9f), ramp(1, 1, 3, 7, 0.2f, 0.9f),
                                    ramp(0, 2, 2, 2, 0, 1),       ramp(1, 2, 2, 2, 0, 1),
                                    ramp(0, -5, 2, 2, 0.5f, 1),   ramp(1, -4, -4, 2, 0.3f, 0.3f)};
  for (const CaliperCriterion& c : ramps) {
    for (int i = -6000; i <= 9000; ++i) {
      const float v = static_cast<float>(i) / 1000;
      ASSERT_NEAR(criterionFactor(c, v), oracle::factor(c, v), 1e-6) << v;
    }
    // Values just below the corners count as at them.
    for (const float corner : {c.x0, c.x1, c.x2}) {
      ASSERT_NEAR(criterionFactor(c, corner - 1e-7f), oracle::factor(c, corner - 1e-7f), 1e-6) << corner;
    }
  }
}

TEST(CaliperScore, GeometricMeanOfEverySubset) {
  CaliperEdgeCfg cfg = edgeConfig();
  cfg.contrast = ramp(0, 0, 10, 100, 0.1f, 0.9f);
  cfg.gray = ramp(1, 50, 250, 300, 0, 1);
  cfg.distance = ramp(1, 0, 20, 40, 0.25f, 1);
  cfg.offset = ramp(0, -50, -30, 30, 0.05f, 0.8f);
  const CaliperEdge edge = {1, 1, -7.5f, -60, 130, -58, 9, 0};
  const std::pair<uint32_t, double> factors[] = {{0x1, oracle::factor(cfg.contrast, 60)},
                                                 {0x200, oracle::factor(cfg.gray, 130)},
                                                 {0x2, oracle::factor(cfg.distance, 7.5f)},
                                                 {0x4, oracle::factor(cfg.offset, -7.5f)}};
  for (uint32_t subset = 1; subset < 16; ++subset) {
    double product = 1, active = 0;
    cfg.scoreFlags = 0;
    for (uint32_t i = 0; i < 4; ++i) {
      if (!(subset >> i & 1)) continue;
      cfg.scoreFlags |= factors[i].first, product *= factors[i].second, ++active;
    }
    CaliperEdge scored = edge;
    DAXI_CalipEdgeDetect_comprehensive_assess(&scored, 1, &cfg);
    EXPECT_NEAR(scored.score, std::pow(product, 1 / active), 2e-7) << subset;
  }
}

TEST(CaliperScore, RanksByScoreThenIndex) {
  Random random(4);
  for (int round = 0; round < 300; ++round) {
    std::vector<CaliperEdge> edges(static_cast<size_t>(1 + random.below(40))), scratch(edges.size());
    for (size_t i = 0; i < edges.size(); ++i) {
      edges[i] = {};
      edges[i].index = static_cast<int32_t>(i);
      // Steps far apart, each with a difference that counts as none.
      edges[i].score = static_cast<float>(random.below(5)) * 0.1f + static_cast<float>(random.below(2)) * 6e-8f;
    }
    auto expected = edges;
    std::stable_sort(expected.begin(), expected.end(), [](const CaliperEdge& a, const CaliperEdge& b) {
      return std::lround(a.score * 10) > std::lround(b.score * 10);
    });
    DAXI_CalipEdgeDetect_rank_criterion(edges.data(), scratch.data(), static_cast<int32_t>(edges.size()));
    for (size_t i = 0; i < edges.size(); ++i) ASSERT_EQ(edges[i].index, expected[i].index);
  }
  // Scores each nearly equal to the next: no order at all, but all edges are still there.
  std::vector<CaliperEdge> chain(1000), scratch(1000);
  for (int32_t i = 0; i < 1000; ++i)
    chain[static_cast<size_t>(i)] = {1, 0.5f + 6e-8f * static_cast<float>(i), 0, 0, 0, 0, i, 0};
  DAXI_CalipEdgeDetect_rank_criterion(chain.data(), scratch.data(), 1000);
  int64_t sum = 0;
  for (const CaliperEdge& edge : chain) sum += edge.index;
  EXPECT_EQ(sum, 499500);
}

Gray renderEdge(DaxiSize size, const StraightEdge& edge, double dark, double light) {
  Gray image(size);
  image.fill([&](int32_t x, int32_t y) { return std::floor(dark + (light - dark) * edge.coverage(x, y) + 0.5); });
  return image;
}

// Upright, with its centre on a pixel centre, a box samples the pixels themselves, and the parabola through the response to
// a step is exact but for the rounding of grey values. In other directions it has an error that wider kernels reduce.
TEST(CaliperAccuracy, StraightEdges) {
  const double max[] = {0.055, 0.045, 0.036, 0.03, 0.026, 0.023, 0.021, 0.02};
  for (const double degrees : {0.0, 7.0, 20.0, 30.0, 45.0, 90.0, 166.0}) {
    const double angle = degrees * std::numbers::pi / 180;
    for (int step = -20; step < 20; ++step) {
      const StraightEdge edge{40, 41, angle, step / 40.0};
      const Gray image = renderEdge({80, 80}, edge, 30, 220);
      for (uint32_t half = 1; half <= 8; ++half) {
        const CaliperBox box{40, 41, 40, 15, static_cast<float>(angle)};
        const Measured got = measure(image, box, edgeConfig(1, 1, half, half > 5 ? 4 : 20));
        ASSERT_EQ(got.edges.size(), 1u);
        const bool upright = degrees == 0 || degrees == 90;
        EXPECT_NEAR(got.edges[0].position, step / 40.0, upright ? 0.003 : max[half - 1]) << degrees << ", " << half;
        const double distance = (got.points[0].x - 40) * std::cos(angle) + (got.points[0].y - 41) * std::sin(angle);
        EXPECT_NEAR(distance, got.edges[0].position, 1e-5);
        EXPECT_NEAR(got.edges[0].peak, half <= 5 ? -190 : -24, half <= 5 ? 50 : 14) << half;
      }
    }
  }
}

TEST(CaliperEdges, ChoiceCountAndLeastScore) {
  // Stripes of growing contrast: edges at 9.5, 19.5, ... with steps of 20, 40, ...
  Gray image({80, 12});
  const double levels[] = {100, 120, 80, 140, 60, 160, 40, 180};
  image.fill([&](int32_t x, int32_t) { return levels[x / 10]; });
  const CaliperBox box{40, 6, 80, 10, 0};
  CaliperEdgeCfg cfg = edgeConfig(1, 3, 1, 10);
  cfg.contrast = ramp(0, 0, 0, 140, 0, 1);
  const auto positions = [&] {
    std::vector<float> all;
    for (const CaliperEdge& edge : measure(image, box, cfg).edges) all.push_back(edge.position + 40);
    return all;
  };
  EXPECT_EQ(positions(), (std::vector<float>{69.5f, 59.5f, 49.5f, 39.5f, 29.5f, 19.5f, 9.5f}));
  cfg.maxEdges = 2;
  EXPECT_EQ(positions(), (std::vector<float>{69.5f, 59.5f}));
  cfg.maxEdges = 100, cfg.minScore = 0.7f;
  EXPECT_EQ(positions(), (std::vector<float>{69.5f, 59.5f, 49.5f}));
  cfg.polarity = DAXI_CALIPER_LIGHT_TO_DARK;
  EXPECT_EQ(positions(), (std::vector<float>{59.5f}));
  cfg.polarity = 3;
  for (const auto& [choice, expected] : {std::pair{1, 9.5f}, {2, 19.5f}, {7, 69.5f}, {8, 69.5f}, {INT32_MAX, 69.5f}}) {
    cfg.edgeChoice = choice;
    EXPECT_EQ(positions(), std::vector<float>{expected}) << choice;
    EXPECT_EQ(measure(image, box, cfg).edges[0].score, 1);
  }
  cfg.threshold = 200;
  EXPECT_TRUE(positions().empty());
  // With light to dark seen first, polarity tells the direction.
  cfg.edgeChoice = 0, cfg.threshold = 100, cfg.minScore = 0;
  const Measured strong = measure(image, box, cfg);
  ASSERT_EQ(strong.edges.size(), 3u);
  EXPECT_EQ(strong.edges[0].polarity, static_cast<uint32_t>(DAXI_CALIPER_DARK_TO_LIGHT));
  EXPECT_LT(strong.edges[0].peak, 0);
  EXPECT_EQ(strong.edges[1].polarity, static_cast<uint32_t>(DAXI_CALIPER_LIGHT_TO_DARK));
}

}  // namespace
}  // namespace dax::test
