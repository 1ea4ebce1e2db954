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
  std::vector<uint8_t> buffer(1 << 22);
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
  // The other interpolations.
  TestImage<int16_t> shorts({67, 41 * 3}), small({31, 27});
  shorts.randomize(5);
  for (const int32_t interpolation : {0, 2, 3, 4}) {
    cfg.interpolation = interpolation;
    for (const DaxiSize size : {DaxiSize{301, 37}, {50, 207}}) {
      TestImage<uint8_t> dst(size);
      const DaxiRect all = {0, 0, size.width, size.height};
      ASSERT_EQ(
          DAXI_Resize_8u_C1R(bytes.data(), 201, bytes.size(), dst.data(), dst.step(), size, all, &cfg, buffer.data()),
          DAX_STS_OK);
      digest.add(dst);
    }
    ASSERT_EQ(DAXI_Resize_16s_C1R(shorts.data(), 67, shorts.size(), small.data(), 31, small.size(), {0, 0, 31, 27},
                                  &cfg, buffer.data()),
              DAX_STS_OK);
    digest.add(small);
  }
  EXPECT_EQ(digest.value(), 0x16EC6FF93F3E68D4u);
}

}  // namespace
}  // namespace dax::test
