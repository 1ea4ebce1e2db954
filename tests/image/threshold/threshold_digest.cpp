#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Threshold) {
  const Image src = hills({301, 203}, 2);
  Digest digest;
  for (uint32_t method = 1; method <= 6; ++method) {
    DaxiThresholdBinCfg cfg = {method, 1, 0.03f, 0.11f, 0.1f, 0.83f, 77, 40, 190, 120, 60};
    Image dst(src.size());
    uint8_t levels[2];
    ASSERT_EQ(DAXI_ThresholdBinV2_8u_C1R(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg, levels,
                                         levels + 1),
              DAX_STS_OK);
    digest.add(dst).add(levels, 2);
  }
  EXPECT_EQ(digest.value(), 0x22150A20762B2ED9u);
}

}  // namespace
}  // namespace dax::test
