#include <gtest/gtest.h>

#include "daxi/caliper_pair.h"
#include "measure/caliper/caliper_pairs.h"
#include "tests/measure/caliper/caliper_oracle.h"
#include "tests/measure/caliper/caliper_scene.h"
#include "tests/support/edge_scene.h"

namespace dax::test {
namespace {

CaliperEdgePairCfg pairConfig(uint32_t polarity, uint32_t halfWidth = 1) {
  CaliperEdgePairCfg cfg = {};
  cfg.projection = 1, cfg.polarity = polarity, cfg.filterHalfWidth = halfWidth;
  cfg.maxPairs = 200, cfg.threshold = 5, cfg.scoreFlags = DAXI_CALIPER_PAIR_BY_CONTRAST, cfg.expectedWidth = 10;
  for (CaliperCriterion* c = &cfg.contrast; c <= &cfg.gray; ++c) *c = kAnything;
  return cfg;
}

std::vector<CaliperEdgePair> findPairs(const Gray& image, const CaliperBox& box, const CaliperEdgePairCfg& cfg,
                                       std::vector<DaxiPoint32f>* ends = nullptr) {
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_CalipEdgePairDetectBufferSize_8u(&box, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  GuardedBuffer<CaliperEdgePair> pairs(static_cast<size_t>(cfg.maxPairs));
  GuardedBuffer<DaxiPoint32f> points(2 * pairs.size());
  CaliperEdgePairResult result{pairs.data(), points.data(), 0};
  EXPECT_EQ(
      DAXI_CalipEdgePairDetect_8u_C1R_IS(image.data(), image.step(), image.size(), &box, &cfg, &result, buffer.data()),
      DAX_STS_OK);
  if (ends) ends->assign(points.begin(), points.begin() + 2 * result.count);
  return {pairs.begin(), pairs.begin() + result.count};
}

// Dark and light bars of 6, 4, 9, 3, ... columns.
Gray bars() {
  Gray image({70, 9});
  image.fill([](int32_t x, int32_t) {
    int32_t level = 40 + x / 10;
    for (const int32_t end : {9, 15, 19, 28, 31, 43, 50, 60}) level = x >= end ? 220 - level : level;
    return level;
  });
  return image;
}

// All pairs of the single edges, scored by the definition.
struct Expected {
  int32_t first, second;
  double score;
};

std::vector<Expected> allPairs(const std::vector<CaliperEdge>& edges, const CaliperEdgePairCfg& cfg) {
  std::vector<Expected> all;
  for (size_t i = 0; i < edges.size(); ++i) {
    for (size_t j = i + 1; j < edges.size(); ++j) {
      const CaliperEdge &a = edges[i], &b = edges[j];
      if (cfg.polarity != 3 && (a.polarity != cfg.polarity || b.polarity == cfg.polarity)) continue;
      const float width = b.position - a.position, middle = (a.position + b.position) / 2;
      const float expected = cfg.expectedWidth, difference = (width - expected) / expected;
      const std::tuple<uint32_t, CaliperCriterion, float> criteria[] = {
          {0x1, cfg.contrast, std::fabs(a.peak) + std::fabs(b.peak)},
          {0x200, cfg.gray, a.gray + b.gray},
          {0x2, cfg.position, std::fabs(middle)},
          {0x8, cfg.positionNorm, std::fabs(middle / expected)},
          {0x4, cfg.positionNeg, middle},
          {0x10, cfg.positionNormNeg, middle / expected},
          {0x20, cfg.sizeNorm, width / expected},
          {0x40, cfg.sizeDiffNorm, std::fabs(difference)},
          {0x80, difference < 0 ? cfg.sizeDiffBelow : cfg.sizeDiffAbove, difference},
          {0x100, cfg.straddle, a.position <= 0 && b.position >= 0 ? 1.0f : 0.0f}};
      double product = 1, active = 0;
      for (const auto& [flag, criterion, value] : criteria) {
        if (cfg.scoreFlags & flag) product *= oracle::factor(criterion, value), ++active;
      }
      all.push_back({a.index, b.index, std::pow(product, 1 / active)});
    }
  }
  return all;
}

TEST(CaliperPairs, EveryCriterionAlone) {
  const Gray image = bars();
  const CaliperBox box{35, 4, 64, 7, 0};
  const std::vector<CaliperEdge> edges = measure(image, box,
                                                 [] {
                                                   CaliperEdgeCfg cfg = edgeConfig(1, 3, 1, 5);
                                                   cfg.contrast = kAnything;
                                                   return cfg;
                                                 }())
                                             .edges;
  ASSERT_EQ(edges.size(), 8u);
  CaliperEdgePairCfg cfg = pairConfig(3);
  cfg.contrast = {0, 100, 200, 400, 0.1f, 1};
  cfg.gray = {1, 150, 300, 400, 0.2f, 0.9f};
  cfg.position = {1, 0, 25, 30, 0.1f, 1};
  cfg.positionNeg = {0, -30, -20, 20, 0.1f, 1};
  cfg.positionNorm = {1, 0.5f, 2, 3, 0, 1};
  cfg.positionNormNeg = {0, -2, -1, 2, 0.3f, 1};
  cfg.sizeNorm = {0, 0.5f, 0.8f, 4, 0.2f, 1};
  cfg.sizeDiffNorm = {1, 0, 2, 4, 0.05f, 1};
  cfg.sizeDiffBelow = {0, -1, -0.8f, 0, 0.1f, 1};
  cfg.sizeDiffAbove = {1, 0, 1, 5, 0.3f, 1};
  cfg.straddle = {0, 0.5f, 0.5f, 0.5f, 0, 1};
  std::vector<uint32_t> flagSets = {0x3FF, 0x281, 0x1FF, 0x122};
  for (uint32_t bit = 0; bit < 10; ++bit) flagSets.push_back(1u << bit);
  for (const uint32_t flags : flagSets) {
    for (const uint32_t polarity : {1u, 2u, 3u}) {
      cfg.scoreFlags = flags, cfg.polarity = polarity;
      std::vector<Expected> expected = allPairs(edges, cfg);
      const auto got = findPairs(image, box, cfg);
      ASSERT_EQ(got.size(), expected.size());
      for (size_t i = 0; i < got.size(); ++i) {
        const auto same = std::find_if(expected.begin(), expected.end(), [&](const Expected& e) {
          return e.first == got[i].first.index && e.second == got[i].second.index;
        });
        ASSERT_NE(same, expected.end());
        EXPECT_NEAR(got[i].score, same->score, 1e-6) << flags;
        if (i == 0) continue;
        // Highest first, ties in the order of the profile.
        EXPECT_LE(got[i].score, got[i - 1].score);
        if (got[i].score == got[i - 1].score) {
          EXPECT_LT(std::pair(got[i - 1].first.index, got[i - 1].second.index),
                    std::pair(got[i].first.index, got[i].second.index));
        }
      }
      // The best few are the first of all.
      for (const int32_t max : {1, 2, 5}) {
        CaliperEdgePairCfg few = cfg;
        few.maxPairs = max;
        const auto best = findPairs(image, box, few);
        ASSERT_EQ(best.size(), std::min(got.size(), static_cast<size_t>(max)));
        for (size_t i = 0; i < best.size(); ++i) EXPECT_TRUE(sameBits(best[i], got[i]));
      }
      // A least score cuts the list.
      if (got.empty()) continue;
      CaliperEdgePairCfg good = cfg;
      good.minScore = got[got.size() / 2].score;
      for (const CaliperEdgePair& pair : findPairs(image, box, good)) EXPECT_GE(pair.score, good.minScore);
    }
  }
}

// An edge at the centre counts as either side of it; a width as expected is none too small.
TEST(CaliperPairs, CriteriaAtZero) {
  CaliperEdgePairCfg cfg = pairConfig(3);
  const auto score = [&](float first, float second) {
    CaliperEdgePair pair{};
    pair.first.position = first, pair.second.position = second, pair.width = std::fabs(second - first), pair.score = 1;
    DAXI_CalipEdgePairDetect_comprehensive_assess0(&pair, &cfg);
    return pair.score;
  };
  cfg.scoreFlags = DAXI_CALIPER_PAIR_BY_STRADDLE, cfg.straddle = {0, 0.5f, 0.5f, 0.5f, 0, 1};
  for (const auto& [a, b, straddles] : {std::tuple{0.0f, 5.0f, 1},
                                        {-5.0f, 0.0f, 1},
                                        {5.0f, 0.0f, 1},
                                        {0.0f, -5.0f, 1},
                                        {5.0f, -5.0f, 1},
                                        {1.0f, 5.0f, 0},
                                        {-5.0f, -1.0f, 0}}) {
    EXPECT_EQ(score(a, b), straddles) << a << ", " << b;
  }
  cfg.scoreFlags = DAXI_CALIPER_PAIR_BY_SIZE_DIFF_ASYM;
  cfg.sizeDiffBelow = {0, -9, -8, -8, 0.25f, 0.25f}, cfg.sizeDiffAbove = {0, -9, -8, -8, 0.75f, 0.75f};
  EXPECT_EQ(score(0, 10), 0.75f);
  EXPECT_EQ(score(0, 9.9f), 0.25f);
}

TEST(CaliperPairs, ChoiceFollowsTheProfile) {
  const Gray image = bars();
  const CaliperBox box{35, 4, 64, 7, 0};
  CaliperEdgePairCfg cfg = pairConfig(1);
  // Dark to light at 9, 19, 31, 50; light to dark at 15, 28, 43, 60.
  const std::pair<int32_t, std::pair<double, double>> cases[] = {
      {1, {8.5, 14.5}}, {2, {8.5, 27.5}}, {4, {8.5, 59.5}}, {5, {18.5, 27.5}}, {10, {49.5, 59.5}}, {11, {49.5, 59.5}}};
  for (const auto& [choice, columns] : cases) {
    cfg.pairChoice = choice;
    std::vector<DaxiPoint32f> ends;
    const auto pairs = findPairs(image, box, cfg, &ends);
    ASSERT_EQ(pairs.size(), 1u);
    EXPECT_NEAR(ends[0].x, columns.first, 0.05) << choice;
    EXPECT_NEAR(ends[1].x, columns.second, 0.05) << choice;
    EXPECT_FLOAT_EQ(pairs[0].width, ends[1].x - ends[0].x);
    EXPECT_NEAR(pairs[0].position + 35, (columns.first + columns.second) / 2, 0.05);
    EXPECT_EQ(pairs[0].score, 1);
  }
  cfg.threshold = 1000;
  EXPECT_TRUE(findPairs(image, box, cfg).empty());
}

// Rendered stripes, wider than the kernel.
TEST(CaliperPairs, StripeWidths) {
  for (const double degrees : {0.0, 20.0, 45.0}) {
    const double angle = degrees * 3.14159265358979 / 180;
    for (double width = 6; width < 12; width += 0.375) {
      const StraightEdge from{30, 31, angle, -width / 2}, to{30, 31, angle, width / 2};
      Gray image({60, 60});
      image.fill(
          [&](int32_t x, int32_t y) { return std::floor(30 + 190 * (from.coverage(x, y) - to.coverage(x, y)) + 0.5); });
      for (uint32_t half = 1; 2 * half + 1 < width; ++half) {
        CaliperEdgePairCfg cfg = pairConfig(1, half);
        cfg.threshold = 30;
        const auto pairs = findPairs(image, {30, 31, 30, 11, static_cast<float>(angle)}, cfg);
        ASSERT_EQ(pairs.size(), 1u);
        EXPECT_NEAR(pairs[0].width, width, degrees == 0 ? 0.01 : half == 1 ? 0.1 : 0.08) << degrees << ", " << half;
        EXPECT_NEAR(pairs[0].position, 0, 0.02);
      }
    }
  }
}

}  // namespace
}  // namespace dax::test
