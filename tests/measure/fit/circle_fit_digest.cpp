#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, CircleFit) {
  constexpr int32_t kN = 90;
  Random random(8);
  std::vector<DaxiPoint32f> points;
  std::vector<DaxiPoint16s> whole;
  for (int32_t i = 0; i < kN; ++i) {
    const double t = 0.05 * i - 1, scale = i % 6 == 0 ? 25 : 40;  // rational points of a circle
    const double x = scale * (1 - t * t) / (1 + t * t) + random.below(100) * 1e-3, y = scale * 2 * t / (1 + t * t);
    points.push_back({static_cast<float>(x), static_cast<float>(y)});
    whole.push_back({static_cast<int16_t>(x * 8), static_cast<int16_t>(y * 8)});
  }
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_CircleFitBufferSize(kN, &bytes), DAX_STS_OK);
  std::vector<uint8_t> buffer(bytes), inliers(kN);
  std::vector<float> weights(kN);
  Digest digest;
  for (const int32_t function : {1, 2, 3}) {
    CircleFitCfg cfg;
    DAXI_CircleFitDefaultCfg(&cfg);
    cfg.weightFunction = function, cfg.inlierDistance = 1.5, cfg.maxRejected = function - 1;
    DaxiCircleFit circle;
    const auto take = [&](DaxStatus status) {
      ASSERT_EQ(status, DAX_STS_OK);
      digest.add(&circle, sizeof circle).add(inliers.data(), kN).add(weights.data(), kN * sizeof(float));
    };
    cfg.distanceThreshold = 20;
    take(DAXI_CircleFitRegre_32f(points.data(), kN, &cfg, &circle, inliers.data(), weights.data(), buffer.data()));
    take(
        DAXI_CircleFitLeastSquare_32f(points.data(), kN, &cfg, &circle, inliers.data(), weights.data(), buffer.data()));
    take(DAXI_CircleFitRansac_16s32f(whole.data(), kN, &cfg, &circle, inliers.data(), weights.data(), buffer.data()));
  }
  EXPECT_EQ(digest.value(), 0x5112BF5E400B1FF3u);
}

}  // namespace
}  // namespace dax::test
