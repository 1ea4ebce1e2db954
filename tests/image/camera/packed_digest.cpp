#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Packed) {
  Image packed({600, 37});
  TestImage<uint16_t> dst({397, 37});
  packed.randomize(4);
  Digest digest;
  for (const auto unpack : {DAXI_UnpackMono10p_8u16u_C1R, DAXI_UnpackMono12p_8u16u_C1R,
                            DAXI_UnpackMono10Packed_8u16u_C1R, DAXI_UnpackMono12Packed_8u16u_C1R}) {
    for (const int32_t step : {0, 600}) {
      ASSERT_EQ(unpack(packed.data(), step, dst.data(), dst.step(), dst.size()), DAX_STS_OK);
      digest.add(dst);
    }
  }
  EXPECT_EQ(digest.value(), 0x49ABE52D1E3BBF15u);
}

}  // namespace
}  // namespace dax::test
