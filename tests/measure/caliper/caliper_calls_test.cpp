// The members of calipers: checks and their order, impossible regions, that all forms give the same, many regions at once.
#include <gtest/gtest.h>

#include <limits>

#include "daxi.h"
#include "measure/caliper/caliper_call.h"
#include "tests/measure/caliper/caliper_scene.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

constexpr float kInf = std::numeric_limits<float>::infinity(), kNan = std::numeric_limits<float>::quiet_NaN();

CaliperEdgePairCfg pairConfig(const CaliperEdgeCfg& from) {
  CaliperEdgePairCfg cfg = {};
  cfg.projection = from.projection, cfg.polarity = from.polarity, cfg.filterHalfWidth = from.filterHalfWidth;
  cfg.maxPairs = from.maxEdges, cfg.threshold = from.threshold, cfg.scoreFlags = 1, cfg.expectedWidth = 5;
  for (CaliperCriterion* c = &cfg.contrast; c <= &cfg.gray; ++c) *c = kAnything;
  return cfg;
}

// Criteria are looked at where their flags are set, and only there.
TEST(CaliperChecks, Criteria) {
  CaliperEdgeCfg good = edgeConfig();
  good.scoreFlags = 0x207;
  const CaliperCriterion wrong[] = {{2, -1, 0, 1, 0, 1},     {0, kInf, 0, 1, 0, 1},   {0, -1, kNan, 1, 0, 1},
                                    {0, -1, 0, -2e6f, 0, 1}, {0, -1, 0, 1, -0.1f, 1}, {0, -1, 0, 1, 2, 1},
                                    {0, -1, 0, 1, 0, 1.1f},  {0, -1, 0, 1, 0, 1e-7f}};
  CaliperCriterion CaliperEdgeCfg::*const members[] = {&CaliperEdgeCfg::contrast, &CaliperEdgeCfg::distance,
                                                       &CaliperEdgeCfg::offset, &CaliperEdgeCfg::gray};
  const uint32_t flags[] = {0x1, 0x2, 0x4, 0x200};
  for (size_t i = 0; i < std::size(flags); ++i) {
    for (const CaliperCriterion& each : wrong) {
      CaliperEdgeCfg cfg = good;
      cfg.*members[i] = each;
      EXPECT_EQ(DAXI_CalipEdgeDetect_cfg_check(&cfg), DAX_STS_BAD_PARAM) << i << ", " << &each - wrong;
      cfg.scoreFlags &= ~flags[i];
      EXPECT_EQ(DAXI_CalipEdgeDetect_cfg_check(&cfg), DAX_STS_OK) << i << ", " << &each - wrong;
    }
  }
  for (const uint32_t flag : {0x100u, 0x400u}) {  // of pairs, of nothing
    CaliperEdgeCfg cfg = good;
    cfg.scoreFlags |= flag;
    EXPECT_EQ(DAXI_CalipEdgeDetect_cfg_check(&cfg), DAX_STS_BAD_PARAM);
  }
}

TEST(CaliperChecks, PairConfiguration) {
  const CaliperEdgePairCfg good = [] {
    CaliperEdgePairCfg cfg = pairConfig(edgeConfig());
    cfg.scoreFlags = 1023;
    return cfg;
  }();
  ASSERT_EQ(DAXI_CalipEdgePairDetect_cfg_check(&good), DAX_STS_OK);
  using Spoil = void (*)(CaliperEdgePairCfg&);
  for (const Spoil spoil : std::initializer_list<Spoil>{
           [](auto& c) { c.maxPairs = 0; }, [](auto& c) { c.threshold = -1; }, [](auto& c) { c.filterHalfWidth = 0; },
           [](auto& c) { c.polarity = 4; }, [](auto& c) { c.projection = 2; }, [](auto& c) { c.scoreFlags = 0; },
           [](auto& c) { c.scoreFlags = 1024; }, [](auto& c) { c.expectedWidth = 0; },
           [](auto& c) { c.expectedWidth = kNan; }, [](auto& c) { c.minScore = kNan; }}) {
    CaliperEdgePairCfg bad = good;
    spoil(bad);
    EXPECT_EQ(DAXI_CalipEdgePairDetect_cfg_check(&bad), DAX_STS_BAD_PARAM);
  }
  // Every criterion is looked at where its flag is set, and only there.
  const uint32_t flags[] = {0x1, 0x2, 0x4, 0x8, 0x10, 0x20, 0x40, 0x80, 0x80, 0x100, 0x200};
  for (size_t i = 0; i < std::size(flags); ++i) {
    CaliperEdgePairCfg bad = good;
    (&bad.contrast)[i].mode = 2;
    EXPECT_EQ(DAXI_CalipEdgePairDetect_cfg_check(&bad), DAX_STS_BAD_PARAM) << i;
    bad.scoreFlags &= ~flags[i];
    EXPECT_EQ(DAXI_CalipEdgePairDetect_cfg_check(&bad), DAX_STS_OK) << i;
  }
  CaliperEdgePairCfg plain = good;
  plain.scoreFlags = 0x307, plain.expectedWidth = 0;
  EXPECT_EQ(DAXI_CalipEdgePairDetect_cfg_check(&plain), DAX_STS_OK);
}

// Arrays of a profile as long as the region, or one shorter.
TEST(CaliperChecks, CapacityOfProfiles) {
  Gray image({40, 30});
  image.randomize(1);
  std::vector<CaliperEdge> edges(100);
  std::vector<float> profile(20, 7), response(20, 7);
  std::vector<double> buffer(8000);
  const CaliperBox box{20, 15, 20, 10, 0.3f};
  const CaliperEdgeCfg cfg = edgeConfig();
  for (const int32_t capacity : {19, 20}) {
    CaliperEdgeResult result{edges.data(), nullptr, -7};
    CaliperProfile plot{profile.data(), response.data(), capacity, -7, -7};
    EXPECT_EQ(DAXI_CalipEdgeDetectV1_8u_C1R(image.data(), 40, image.size(), &box, &cfg, &result, &plot, buffer.data()),
              capacity < 20 ? DAX_STS_BAD_PARAM : DAX_STS_OK);
    EXPECT_EQ(plot.length, capacity < 20 ? -7 : 20);
  }
}

// What no image can have, by the operation and by its size query.
TEST(CaliperChecks, ImpossibleRegions) {
  const Gray image({50, 50});
  const auto refused = [&](const auto& region) {
    uint64_t bytes = 0;
    return bufferSize(region, &bytes) == DAX_STS_BAD_ROTATED_RECT;
  };
  EXPECT_FALSE(refused(CaliperRhomboid{20, 20, 10, 10, 0.5f, 2}));
  for (const CaliperRhomboid& bad : {CaliperRhomboid{20, 20, 0, 10, 0, 1.5f},
                                     {20, 20, 10, kNan, 0, 1.5f},
                                     {20, 20, 10, 10, 4, 1.5f},
                                     {20, 20, 10, 10, 0, kNan},
                                     {20, 20, 10, 10, 1, 1},
                                     {20, 20, 10, 10, 1.5f, -1.6415927f},
                                     {20, 20, 10, 10, 0, 0.005f}}) {
    EXPECT_TRUE(refused(bad));
  }
  EXPECT_FALSE(refused(CaliperAnnulus{20, 20, 0, 10, 0, 6.2831855f}));
  for (const CaliperAnnulus& bad : {CaliperAnnulus{20, 20, -1, 10, 0, 1},
                                    {20, 20, 10, 10.5f, 0, 1},
                                    {20, 20, 10, 5, 0, 1},
                                    {20, 20, 5, kInf, 0, 1},
                                    {20, 20, kNan, 10, 0, 1},
                                    {20, 20, 5, 10, 4, 1},
                                    {20, 20, 5, 10, 0, 0},
                                    {20, 20, 5, 10, 0, -1},
                                    {20, 20, 5, 10, 0, 6.3f},
                                    {20, 20, 5, 10, 0, kNan},
                                    {20, 20, 5, 10, 0, 0.01f},
                                    {20, 20, 1e20f, 3e38f, 0, 1}}) {
    EXPECT_TRUE(refused(bad));
  }
  EXPECT_EQ(measure(image, CaliperAnnulus{50, 20, 5, 10, 0, 1}, edgeConfig()).status, DAX_STS_BAD_ROTATED_RECT);
  EXPECT_EQ(measure(image, CaliperRhomboid{20, -1, 9, 9, 0, 1}, edgeConfig()).status, DAX_STS_BAD_ROTATED_RECT);
  uint64_t bytes = 0;
  const CaliperBox boxes[2] = {{1, 1, 10, 10, 0}, {1, 1, 0, 10, 0}};
  EXPECT_EQ(DAXI_CalipEdgeDetectV2BufferSize_8u(boxes, 2, 1, &bytes), DAX_STS_BAD_ROTATED_RECT);
  EXPECT_EQ(DAXI_CalipEdgeDetectV2BufferSize_8u(boxes, 1, 0, &bytes), DAX_STS_OK);
  uint64_t four = 0;
  EXPECT_EQ(DAXI_CalipEdgePairDetectV2BufferSize_8u(boxes, 1, 4, &four), DAX_STS_OK);
  EXPECT_EQ(four, 4 * bytes);
}

TEST(CaliperMembers, ManyRegionsOnAPool) {
  Gray image({120, 100});
  image.randomize(13);
  Random random(1);
  std::vector<CaliperBox> boxes;
  for (int i = 0; i < 37; ++i) {
    boxes.push_back({static_cast<float>(random.below(120)), static_cast<float>(random.below(100)),
                     static_cast<float>(4 + random.below(60)), static_cast<float>(1 + random.below(30)),
                     static_cast<float>(random.below(600) - 300) / 100});
  }
  const CaliperEdgeCfg cfg = edgeConfig();
  const auto n = static_cast<int32_t>(boxes.size());
  const auto run = [&](uint32_t threads, void* pool) {
    uint64_t bytes = 0;
    EXPECT_EQ(DAXI_CalipEdgeDetectV2BufferSize_8u(boxes.data(), n, threads, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes);
    std::vector<CaliperEdge> edges(boxes.size() * 100);
    std::vector<CaliperEdgeResult> results;
    for (size_t i = 0; i < boxes.size(); ++i) results.push_back({edges.data() + 100 * i, nullptr, 0});
    EXPECT_EQ(DAXI_CalipEdgeDetectV2_8u_C1R(image.data(), image.step(), image.size(), boxes.data(), n, &cfg,
                                            results.data(), buffer.data(), threads, pool),
              DAX_STS_OK);
    std::vector<std::vector<CaliperEdge>> all;
    for (const CaliperEdgeResult& r : results) all.emplace_back(r.edges, r.edges + r.count);
    return all;
  };
  const auto single = run(1, nullptr);
  for (size_t i = 0; i < boxes.size(); ++i) {
    const auto alone = measure(image, boxes[i], cfg).edges;
    ASSERT_EQ(alone.size(), single[i].size());
    EXPECT_TRUE(std::equal(alone.begin(), alone.end(), single[i].begin(), sameBits<CaliperEdge>));
  }
  for (const bool concurrent : {false, true}) {
    MockPool pool;
    pool.threads = 6, pool.concurrent = concurrent;  // more than announced
    const auto pooled = run(4, &pool);
    EXPECT_GT(pool.tiles, 1);
    for (size_t i = 0; i < boxes.size(); ++i) {
      ASSERT_EQ(pooled[i].size(), single[i].size());
      EXPECT_TRUE(std::equal(pooled[i].begin(), pooled[i].end(), single[i].begin(), sameBits<CaliperEdge>));
    }
  }
  MockPool failing;
  failing.failingTile = 1;
  std::vector<CaliperEdge> edges(300);
  std::vector<CaliperEdgeResult> results = {{edges.data(), nullptr, 0}, {edges.data() + 100, nullptr, 0}};
  std::vector<double> buffer(100000);
  EXPECT_EQ(DAXI_CalipEdgeDetectV2_8u_C1R(image.data(), image.step(), image.size(), boxes.data(), 2, &cfg,
                                          results.data(), buffer.data(), 2, &failing),
            failing.failure);
}

}  // namespace
}  // namespace dax::test
