#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, Resize) {
  TestImage<uint8_t> bytes({201, 103});
  TestImage<float> floats(bytes.size());
  Random random(4);
  bytes.fill([&](int32_t, int32_t) { return random.below(256); });
  floats.fill([&](int32_t, int32_t) { return static_cast<float>(random.below(1 << 24)) / 37; });
  DaxiResizeCfg cfg;
  ASSERT_EQ(DAXI_ResizeDefaultCfg(&cfg), DAX_STS_OK);
  std::vector<uint8_t> buffer(1 << 20);
  Digest digest;
  for (const DaxiSize size : {DaxiSize{301, 37}, {333, 205}, {50, 20}}) {
    TestImage<uint8_t> dst(size);
    TestImage<float> real(size);
    const DaxiRect all = {0, 0, size.width, size.height};
    ASSERT_EQ(
        DAXI_Resize_8u_C1R(bytes.data(), 201, bytes.size(), dst.data(), dst.step(), size, all, &cfg, buffer.data()),
        DAX_STS_OK);
    ASSERT_EQ(
        DAXI_Resize_32f_C1R(floats.data(), 201, bytes.size(), real.data(), real.step(), size, all, &cfg, buffer.data()),
        DAX_STS_OK);
    digest.add(dst).add(real);
  }
  EXPECT_EQ(digest.value(), 0x9B1E2818035E2D91u);
}

}  // namespace
}  // namespace dax::test
