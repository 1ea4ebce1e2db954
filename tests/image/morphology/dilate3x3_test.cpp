#include "daxi/dilate3x3.h"

#include <gtest/gtest.h>

#include "daxi/erode3x3.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

using Mask = TestImage<uint8_t>;

Mask dilatedPass(const Mask& from, int32_t dx, int32_t dy) {
  Mask to(from.size());
  const auto isSet = [&](int32_t x, int32_t y) {
    return x >= 0 && y >= 0 && x < from.size().width && y < from.size().height && from.at(x, y) != 0;
  };
  to.fill(
      [&](int32_t x, int32_t y) { return isSet(x, y) || (isSet(x - dx, y - dy) && !isSet(x + dx, y + dy)) ? 255 : 0; });
  return to;
}

Mask dilated(const Mask& from) {
  return dilatedPass(dilatedPass(from, 1, 0), 0, 1);
}

DaxStatus dilate(const Mask& src, Mask& dst, int32_t iterations) {
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_Dilate3x3BufferSize_8u(src.size(), &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  return DAXI_Dilate3x3_8u_C1R(src.data(), src.step(), dst.data(), dst.step(), src.size(), iterations, buffer.data());
}

TEST(Dilate, EqualsTheDefinition) {
  Random random(1);
  for (int32_t round = 0; round < 200; ++round) {
    Mask src({1 + random.below(70), 1 + random.below(9)}, round % 3, kGuards[round % 2]);
    src.fill([&](int32_t, int32_t) { return random.below(3) ? 0 : 1 + random.below(255); });
    const Mask once = dilated(src), twice = dilated(once);
    Mask dst(src.size(), 2);
    ASSERT_EQ(dilate(src, dst, 1), DAX_STS_OK);
    ASSERT_TRUE(samePixels(dst, once)) << round;
    ASSERT_EQ(dilate(src, src, 2), DAX_STS_OK);
    ASSERT_TRUE(samePixels(src, twice)) << round << " in place";
  }
}

// Rectangles of at least 2 x 2 pixels, not at the edge, are the same after an erosion and a dilation.
TEST(Dilate, GivesBackWhatTheErosionTook) {
  Mask src({90, 40}), dst(src.size());
  src.fill([](int32_t x, int32_t y) { return x > 8 && y > 7 && x % 9 < 2 + x / 15 && y % 8 < 2 + y / 10 ? 255 : 0; });
  GuardedBuffer<uint8_t> buffer(90 * 40 + 128);
  ASSERT_EQ(DAXI_Erode3x3_8u_C1R(src.data(), 90, dst.data(), 90, src.size(), 1, buffer.data()), DAX_STS_OK);
  ASSERT_FALSE(samePixels(src, dst));
  ASSERT_EQ(dilate(dst, dst, 1), DAX_STS_OK);
  int32_t different = 0;
  for (int32_t y = 1; y < 39; ++y) {
    for (int32_t x = 1; x < 89; ++x) different += src.at(x, y) != dst.at(x, y);
  }
  EXPECT_EQ(different, 0);
}

}  // namespace
}  // namespace dax::test
