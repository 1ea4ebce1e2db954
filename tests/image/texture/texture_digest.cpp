#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Lbp) {
  TestImage<float> src({601, 41});
  Random random(2);
  src.fill([&](int32_t, int32_t) { return random.below(1000) / 7.0; });
  Digest digest;
  for (const DaxiLbpCfg& cfg : {DaxiLbpCfg{DAXI_LBP_PLAIN, 8, 0, DAXI_BORDER_MIRROR, 0, 0},
                                DaxiLbpCfg{DAXI_LBP_ROTATION, 13, 2.3, DAXI_BORDER_CONSTANT, 0, 70},
                                DaxiLbpCfg{DAXI_LBP_UNIFORM, 24, 3, DAXI_BORDER_REPLICATE, 0, 0}}) {
    TestImage<uint16_t> dst(src.size());
    ASSERT_EQ(DAXI_LBP_32f16u_C1R(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg), DAX_STS_OK);
    digest.add(dst);
  }
  EXPECT_EQ(digest.value(), 11559511761585598835u);
}

// Counts of pairs on pools of any size, their features, and energies.
TEST(Digests, Texture) {
  TestImage<uint8_t> src({203, 67});
  src.fill([](int32_t x, int32_t y) { return x * x / 9 + y * y / 5 + x * y % 7; });
  const DaxiCoOccurrenceCfg pairs = {2, 0, 24, 10, 240, 1};
  const DaxiLawsEnergyCfg laws = {DAXI_LAWS_S5, DAXI_LAWS_W5, {9, 12}, DAXI_BORDER_REPLICATE, 0, 0};
  for (uint32_t threads = 1; threads <= 16; threads += 5) {
    AnyPool pool(threads);
    uint64_t bytes[3] = {};
    ASSERT_EQ(DAXI_CoOccurrence4BufferSize_8u_MT(src.size(), &pairs, threads, &bytes[0]), DAX_STS_OK);
    ASSERT_EQ(DAXI_HaralickFeaturesBufferSize(24, &bytes[1]), DAX_STS_OK);
    ASSERT_EQ(DAXI_LawsEnergyBufferSize_8u32f_MT(src.size(), &laws, threads, &bytes[2]), DAX_STS_OK);
    std::vector<double> buffer(std::max({bytes[0], bytes[1], bytes[2]}) / sizeof(double));
    std::vector<uint32_t> counts(4 * 24 * 24);
    ASSERT_EQ(DAXI_CoOccurrence4_8u_C1R_MT(pool.get(), threads, src.data(), src.step(), src.size(), &pairs,
                                           counts.data(), buffer.data()),
              DAX_STS_OK);
    DaxiHaralickFeatures features;
    ASSERT_EQ(DAXI_HaralickFeatures(&counts[24 * 24], 24, &features, buffer.data()), DAX_STS_OK);
    TestImage<float> energy(src.size());
    ASSERT_EQ(DAXI_LawsEnergy_8u32f_C1R_MT(pool.get(), threads, src.data(), src.step(), energy.data(), energy.step(),
                                           src.size(), &laws, buffer.data()),
              DAX_STS_OK);
    Digest digest;
    digest.add(counts.data(), counts.size() * sizeof counts[0]).add(&features, sizeof features).add(energy);
    EXPECT_EQ(digest.value(), 7025223828818626395u) << threads << " threads";
  }
}

}  // namespace
}  // namespace dax::test
