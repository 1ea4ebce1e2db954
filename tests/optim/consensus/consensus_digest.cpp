#include <gtest/gtest.h>

#include "prmt.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, SampleConsensus) {
  constexpr int32_t kN = 1500;
  Random random(3);
  std::vector<float> points(3 * kN);
  for (int32_t i = 0; i < kN; ++i) {
    float* const p = &points[static_cast<size_t>(3 * i)];
    for (int32_t d = 0; d < 3; ++d) p[d] = static_cast<float>(random.below(1 << 20)) * 0x1p-14f;
    if (i % 3 == 0) p[1] = 0.5f * p[0] + 3 + static_cast<float>(random.below(64)) * 0x1p-9f;
    if (i % 3 == 0) p[2] = p[0] - 0.25f * p[1];
  }
  const std::vector<double> wide(points.begin(), points.end());
  Digest digest;
  std::vector<uint8_t> mask(kN);
  for (const int32_t method : {PRMT_SAC_RANSAC, PRMT_SAC_MSAC, PRMT_SAC_LMEDS, PRMT_SAC_PROSAC}) {
    PrmtSacCfg cfg;
    PRMT_SAC_DefaultCfg(&cfg);
    cfg.method = method, cfg.threshold = 0.25, cfg.maxIterations = 500;
    uint64_t bytes = 0;
    ASSERT_EQ(PRMT_SAC_ShapeBufferSize(kN, &cfg, 1, &bytes), 0);
    std::vector<uint8_t> buffer(bytes);
    PrmtSacResult result;
    const auto take = [&](int32_t status) {
      ASSERT_EQ(status, 0);
      digest.add(&result, sizeof result).add(mask.data(), mask.size());
    };
    take(PRMT_SAC_Line2_f32(points.data(), 3, kN, &cfg, &result, mask.data(), buffer.data()));
    take(PRMT_SAC_Circle_f64(wide.data(), 3, kN, &cfg, &result, mask.data(), buffer.data()));
    take(PRMT_SAC_Plane_f32(points.data(), 3, kN, &cfg, &result, mask.data(), buffer.data()));
    take(PRMT_SAC_Plane_f64(wide.data(), 3, kN, &cfg, &result, mask.data(), buffer.data()));
    take(PRMT_SAC_Sphere_f32(points.data(), 3, kN, &cfg, &result, mask.data(), buffer.data()));
  }
  EXPECT_EQ(digest.value(), 0x3F9DCE8B2CFDCD78u);
}

}  // namespace
}  // namespace dax::test
