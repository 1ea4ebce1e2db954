#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Arithmetic) {
  TestImage<int16_t> a({301, 37}), dst(a.size());
  a.randomize(9);
  Digest digest;
  for (int32_t factor = -3; factor <= 9; factor += 3) {
    ASSERT_EQ(DAXI_MulC_16s_C1RSfs(a.data(), a.step(), dst.data(), dst.step(), a.size(), -77, factor), DAX_STS_OK);
    digest.add(dst);
    ASSERT_EQ(DAXI_AbsDiffC_16s_C1IRSfs(dst.data(), dst.step(), dst.size(), 20000, factor), DAX_STS_OK);
    digest.add(dst);
    ASSERT_EQ(DAXI_Sub_16s_C1RSfs(a.data(), a.step(), dst.data(), dst.step(), dst.data(), dst.step(), a.size(), factor),
              DAX_STS_OK);
    digest.add(dst);
  }
  EXPECT_EQ(digest.value(), 0x42D753FEC6867488u);
}

}  // namespace
}  // namespace dax::test
