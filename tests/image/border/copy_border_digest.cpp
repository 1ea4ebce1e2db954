#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, CopyBorder) {
  TestImage<float> src({37, 23});
  src.randomize(1);
  Digest digest;
  for (auto* const border : {DAXI_CopyReplicateBorder_32f_C1R, DAXI_CopyMirrorBorder_32f_C1R,
                             DAXI_CopySymmetricBorder_32f_C1R, DAXI_CopyCircularBorder_32f_C1R}) {
    TestImage<float> dst({140, 90});
    ASSERT_EQ(border(src.data(), src.step(), src.size(), dst.data(), dst.step(), dst.size(), 30, 51), DAX_STS_OK);
    digest.add(dst);
  }
  EXPECT_EQ(digest.value(), 0x7BC30AE92DF1C490u);
}

}  // namespace
}  // namespace dax::test
