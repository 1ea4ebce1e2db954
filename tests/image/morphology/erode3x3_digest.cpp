#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Erode) {
  const Image gray = hills({301, 203}, 5);
  Image mask(gray.size()), dst(gray.size());
  mask.fill([&](int32_t x, int32_t y) { return gray.at(x, y) > 120 ? gray.at(x, y) : 0; });
  std::vector<uint8_t> buffer(301 * 204);
  Digest digest;
  for (const int32_t iterations : {1, 2, 30}) {
    ASSERT_EQ(
        DAXI_Erode3x3_8u_C1R(mask.data(), mask.step(), dst.data(), dst.step(), mask.size(), iterations, buffer.data()),
        DAX_STS_OK);
    digest.add(dst);
  }
  EXPECT_EQ(digest.value(), 0x4D680024EDF33C59u);
}

}  // namespace
}  // namespace dax::test
