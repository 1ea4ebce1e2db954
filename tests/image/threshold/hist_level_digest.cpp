#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

TEST(Digests, HistLevel) {
  TestImage<uint16_t> src({203, 41});
  src.randomize(6);
  TestImage<uint8_t> dst(src.size());
  const DaxiThresholdGlobalCfg cfg = {{4, 0, 0.3}, DAXI_POLARITY_AUTO, 0};
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_ThresholdOtsuMultiBufferSize_16u(&bytes), DAX_STS_OK);
  std::vector<double> buffer(bytes / sizeof(double));
  Digest digest;
  for (const auto threshold :
       {DAXI_ThresholdKapur_16u_C1R, DAXI_ThresholdYen_16u_C1R, DAXI_ThresholdLi_16u_C1R, DAXI_ThresholdKittler_16u_C1R,
        DAXI_ThresholdIsodata_16u_C1R, DAXI_ThresholdTriangle_16u_C1R, DAXI_ThresholdOtsuMulti_16u_C1R}) {
    DaxiHistLevel level{};
    ASSERT_EQ(threshold(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg, &level, buffer.data()),
              DAX_STS_OK);
    digest.add(dst).add(&level, sizeof level);
  }
  EXPECT_EQ(digest.value(), 0xB30A8492708D535u);
}

}  // namespace
}  // namespace dax::test
