#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, MasksAndBits) {
  TestImage<float> a({301, 37}), b(a.size());
  TestImage<uint16_t> bits(a.size());
  Image mask(a.size());
  a.randomize(9), b.randomize(10), bits.randomize(11);
  Digest digest;
  for (int32_t op = DAXI_COMPARE_LT; op <= DAXI_COMPARE_GT; ++op) {
    ASSERT_EQ(DAXI_Compare_32f_C1R(a.data(), a.step(), b.data(), b.step(), mask.data(), mask.step(), a.size(), op),
              DAX_STS_OK);
    digest.add(mask);
  }
  ASSERT_EQ(DAXI_CompareEqualEps_32f_C1R(a.data(), a.step(), b.data(), b.step(), mask.data(), mask.step(), a.size(), 1),
            DAX_STS_OK);
  digest.add(mask);
  ASSERT_EQ(DAXI_InRange_16u_C1R(bits.data(), bits.step(), mask.data(), mask.step(), mask.size(), 999, 50000),
            DAX_STS_OK);
  digest.add(mask);
  ASSERT_EQ(DAXI_XorC_16u_C1IR(bits.data(), bits.step(), bits.size(), 0x1234), DAX_STS_OK);
  ASSERT_EQ(DAXI_RShiftC_16u_C1IR(bits.data(), bits.step(), bits.size(), 3), DAX_STS_OK);
  EXPECT_EQ(digest.add(bits).value(), 0x70C93E002A550D52u);
}

}  // namespace
}  // namespace dax::test
