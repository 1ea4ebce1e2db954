#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Convert) {
  const DaxiSize size = {301, 37};
  TestImage<int16_t> shorts(size);
  TestImage<uint8_t> bytes(size);
  TestImage<float> reals(size);
  shorts.randomize(9);
  Digest digest;
  for (const DaxiConvertCfg cfg : {DaxiConvertCfg{1, 0}, {1 / 128.0, 3}, {0.013, -0.7}}) {
    ASSERT_EQ(DAXI_Convert_16s8u_C1R(shorts.data(), shorts.step(), bytes.data(), bytes.step(), size, &cfg), DAX_STS_OK);
    ASSERT_EQ(DAXI_Convert_8u32f_C1R(bytes.data(), bytes.step(), reals.data(), reals.step(), size, &cfg), DAX_STS_OK);
    digest.add(bytes).add(reals);
    ASSERT_EQ(DAXI_Convert_16s32f_C1R(shorts.data(), shorts.step(), reals.data(), reals.step(), size, &cfg),
              DAX_STS_OK);
    ASSERT_EQ(DAXI_Convert_32f8u_C1R(reals.data(), reals.step(), bytes.data(), bytes.step(), size, &cfg), DAX_STS_OK);
    digest.add(bytes).add(reals);
    ASSERT_EQ(DAXI_ConvertFullRange_16s32f_C1R(shorts.data(), shorts.step(), reals.data(), reals.step(), size),
              DAX_STS_OK);
    ASSERT_EQ(DAXI_ConvertFullRange_32f8u_C1R(reals.data(), reals.step(), bytes.data(), bytes.step(), size),
              DAX_STS_OK);
    digest.add(bytes).add(reals);
  }
  EXPECT_EQ(digest.value(), 8523425296761057787u);
}

}  // namespace
}  // namespace dax::test
