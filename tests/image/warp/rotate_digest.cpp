#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Rotate) {
  constexpr DaxiSize kSize = {157, 83};
  TestImage<uint8_t> bytes(kSize), turned({kSize.height, kSize.width});
  TestImage<float> floats({3 * kSize.width, kSize.height}), mirrored(floats.size());
  bytes.randomize(1), floats.randomize(2);
  Digest digest;
  for (const int32_t quarters : {1, 3}) {
    ASSERT_EQ(DAXI_Rotate90_8u_C1R(bytes.data(), 157, turned.data(), 83, kSize, quarters), DAX_STS_OK);
    digest.add(turned);
  }
  ASSERT_EQ(DAXI_Mirror_32f_C3R(floats.data(), 471, mirrored.data(), 471, kSize, DAXI_MIRROR_BOTH), DAX_STS_OK);
  EXPECT_EQ(digest.add(mirrored).value(), 0x4563FFD83BD02E89u);
}

}  // namespace
}  // namespace dax::test
