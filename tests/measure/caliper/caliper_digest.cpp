#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Calipers) {
  const Image image = hills({301, 203}, 7);
  CaliperEdgePairCfg pairs = {};
  pairs.polarity = 3, pairs.maxPairs = 100, pairs.threshold = 1, pairs.scoreFlags = 0x3FF, pairs.expectedWidth = 9;
  for (CaliperCriterion* c = &pairs.contrast; c <= &pairs.gray; ++c) *c = {0, -5, 3, 40, 0.3f, 0.9f};
  CaliperEdgeCfg edges = {};
  edges.polarity = 3, edges.maxEdges = 100, edges.threshold = 1, edges.scoreFlags = 0x207;
  for (CaliperCriterion* c = &edges.contrast; c <= &edges.gray; ++c) *c = {1, 3, 60, 250, 0.3f, 0.9f};
  std::vector<double> buffer(1 << 16);
  std::vector<CaliperEdge> foundEdges(100);
  std::vector<CaliperEdgePair> foundPairs(100);
  std::vector<DaxiPoint32f> points(200);
  CaliperEdgeResult edgeResult = {foundEdges.data(), points.data(), 0};
  CaliperEdgePairResult pairResult = {foundPairs.data(), points.data(), 0};
  int32_t found = 0;
  Digest digest;
  const auto measure = [&](auto* detect, auto* detectPairs, const auto& region) {
    for (uint32_t i = 0; i < 6; ++i) {
      edges.projection = pairs.projection = i % 2;
      edges.filterHalfWidth = pairs.filterHalfWidth = 1 + 4 * i;
      ASSERT_EQ(detect(image.data(), image.step(), image.size(), &region, &edges, &edgeResult, buffer.data()),
                DAX_STS_OK);
      found += edgeResult.count + pairResult.count;
      digest.add(edgeResult.edges, static_cast<size_t>(edgeResult.count) * sizeof(CaliperEdge));
      digest.add(edgeResult.points, static_cast<size_t>(edgeResult.count) * sizeof(DaxiPoint32f));
      ASSERT_EQ(detectPairs(image.data(), image.step(), image.size(), &region, &pairs, &pairResult, buffer.data()),
                DAX_STS_OK);
      digest.add(pairResult.pairs, static_cast<size_t>(pairResult.count) * sizeof(CaliperEdgePair));
    }
  };
  for (int i = 0; i < 20; ++i) {
    const float angle = -3.1f + 0.31f * static_cast<float>(i), x = 20.3f + 13.0f * static_cast<float>(i);
    measure(DAXI_CalipEdgeDetect_8u_C1R, DAXI_CalipEdgePairDetect_8u_C1R, CaliperBox{x, 99.7f, 150, 120.4f, angle});
    measure(DAXI_CalipEdgeDetectRhomboid_8u_C1R, DAXI_CalipEdgePairDetectRhomboid_8u_C1R,
            CaliperRhomboid{x, 99.7f, 150, 120.4f, angle, angle > 2 ? 0.1f : angle + 1});
    measure(DAXI_CalipEdgeDetectAnnulus_8u_C1R, DAXI_CalipEdgePairDetectAnnulus_8u_C1R,
            CaliperAnnulus{x, 99.7f, 12.3f, 140, angle, 1.5f});
  }
  EXPECT_GT(found, 5000);
  EXPECT_EQ(digest.value(), 0x4EB71ABBFA4E90CEu);
}

// Single edges and pairs of many boxes at a time.

TEST(Digests, CalipersOnPool) {
  const Image image = hills({301, 203}, 7);
  constexpr int32_t kCount = 40, kMax = 20;
  CaliperEdgePairCfg cfg = {};
  cfg.projection = 1, cfg.polarity = 3, cfg.filterHalfWidth = 3, cfg.maxPairs = kMax, cfg.threshold = 1;
  cfg.scoreFlags = 0x1, cfg.contrast = {0, 1, 30, 100, 0, 1};
  std::vector<CaliperBox> boxes;
  for (int32_t i = 0; i < kCount; ++i) {
    boxes.push_back({7.3f * static_cast<float>(i), 101.2f, 60, 12, 0.15f * static_cast<float>(i - 20)});
  }
  for (uint32_t threads = 1; threads <= 16; ++threads) {
    AnyPool pool(threads);
    std::vector<CaliperEdgePair> pairs(kCount * kMax);
    std::vector<CaliperEdgePairResult> results(kCount);
    for (size_t i = 0; i < kCount; ++i) results[i] = {&pairs[i * kMax], nullptr, 0};
    uint64_t bytes = 0;
    ASSERT_EQ(DAXI_CalipEdgePairDetectV2BufferSize_8u(boxes.data(), kCount, threads, &bytes), DAX_STS_OK);
    std::vector<double> buffer(bytes / sizeof(double) + 1);
    ASSERT_EQ(DAXI_CalipEdgePairDetectV2_8u_C1R(image.data(), image.step(), image.size(), boxes.data(), kCount, &cfg,
                                                results.data(), buffer.data(), threads, pool.get()),
              DAX_STS_OK);
    Digest digest;
    int32_t found = 0;
    for (const CaliperEdgePairResult& result : results) {
      digest.add(result.pairs, static_cast<size_t>(result.count) * sizeof(CaliperEdgePair));
      found += result.count;
    }
    EXPECT_GT(found, 100);
    EXPECT_EQ(digest.value(), 0xD98950840CAF0F64u) << threads << " threads";
  }
}

}  // namespace
}  // namespace dax::test
