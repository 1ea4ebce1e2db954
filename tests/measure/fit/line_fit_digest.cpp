#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, LineFit) {
  Random random(8);
  std::vector<DaxiPoint32f> points;
  for (int i = 0; i < 400; ++i) {
    const auto x = static_cast<float>(random.below(60000)) / 100, noise = static_cast<float>(random.below(200)) / 100;
    points.push_back({x, i % 4 ? 300 - 0.4f * x + noise : static_cast<float>(random.below(400))});
  }
  std::vector<double> buffer(4000);
  std::vector<uint8_t> inliers(400);
  std::vector<float> weights(400);
  Digest digest;
  for (int32_t i = 0; i < 18; ++i) {
    const LineFitCfg cfg = {1 + i % 3, 1 + i / 3 % 3, 30, 100, 4, static_cast<uint32_t>(i / 9), -0.4f, 0.3f};
    DaxiLine line;
    float rms;
    ASSERT_EQ(
        DAXI_LineFitRegre_32f(points.data(), 400, &cfg, &line, inliers.data(), weights.data(), &rms, buffer.data()),
        DAX_STS_OK);
    digest.add(&line, sizeof line).add(&rms, sizeof rms).add(inliers.data(), 400).add(weights.data(), 1600);
  }
  EXPECT_EQ(digest.value(), 0x8FC811A2D494C715u);
}

}  // namespace
}  // namespace dax::test
