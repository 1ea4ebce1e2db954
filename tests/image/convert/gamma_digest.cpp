#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Gamma) {
  TestImage<uint16_t> src({301, 217}), dst(src.size());
  src.randomize(9);
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_GammaBufferSize_16u(&bytes), DAX_STS_OK);
  std::vector<char> buffer(bytes);
  Digest digest;
  for (const double gamma : {0.02, 1 / 2.2, 1.3, 60.0}) {
    ASSERT_EQ(DAXI_Gamma_16u_C1R(src.data(), src.step(), dst.data(), dst.step(), src.size(), gamma, buffer.data()),
              DAX_STS_OK);
    digest.add(dst);
  }
  EXPECT_EQ(digest.value(), 1637780627285920070u);
}

TEST(Digests, NormaliseAndKnots) {
  TestImage<int16_t> src({301, 17});
  TestImage<float> dst(src.size());
  src.randomize(9);
  const DaxiNormaliseCfg cfg = {0.03, 0.9, -1.0 / 3, 7};
  ASSERT_EQ(DAXI_Normalise_16s32f_C1R(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg), DAX_STS_OK);
  Digest digest;
  digest.add(dst);
  const double levels[] = {-0.2, 0.1, 3, 6.5}, values[] = {1, 0.3, 0.7, -2};
  ASSERT_EQ(DAXI_LutLinear_32f_C1IR(dst.data(), dst.step(), dst.size(), levels, values, 4), DAX_STS_OK);
  EXPECT_EQ(digest.add(dst).value(), 1658259487586865166u);
}

}  // namespace
}  // namespace dax::test
