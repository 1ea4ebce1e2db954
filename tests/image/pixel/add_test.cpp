#include "daxi/add.h"

#include <gtest/gtest.h>

#include "image/logic/logic.h"
#include "image/pixel/copy.h"
#include "image/threshold/threshold.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

TEST(Add, SaturatesAndTwinsAgree) {
  for (int32_t width = 1; width < 70; ++width) {
    TestImage<uint8_t> a({width, 2}, 1), b({width, 2}, 2), portable({width, 2}, 3), neon({width, 2});
    a.randomize(1), b.randomize(2);
    for (auto* dst : {&portable, &neon}) {
      ASSERT_EQ(DAXI_Add_8u_C1RSfs_IS(a.data(), a.step(), b.data(), b.step(), dst->data(), dst->step(), a.size(),
                                      dst == &neon ? DAX_ISA_NEON : DAX_ISA_PORTABLE),
                DAX_STS_OK);
    }
    ASSERT_TRUE(samePixels(portable, neon));
    for (int32_t x = 0; x < width; ++x) ASSERT_EQ(portable.at(x, 1), std::min(a.at(x, 1) + b.at(x, 1), 255));
  }
}

TEST(Workers, CopyInvertAndOtsu) {
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    TestImage<uint8_t> src({211, 3}, 2), copy(src.size(), 1), inverse(src.size()), mask(src.size(), 3);
    src.randomize(4);
    _DAXI_Copy_8u_C1R(src.data(), src.step(), copy.data(), copy.step(), src.size());
    EXPECT_TRUE(samePixels(copy, src));
    _DAXI_Not_8u_C1R(src.data(), src.step(), inverse.data(), inverse.step(), src.size(), isa);
    src.fill([](int32_t x, int32_t y) { return (x + y) % 3 == 0 ? 30 : 90; });
    _DAXI_AdpThresholdOtsu_8u_C1R(src.data(), src.step(), mask.data(), mask.step(), src.size(), isa);
    for (int32_t i = 0; i < 3 * 211; ++i) {
      ASSERT_EQ(inverse.at(i % 211, i / 211), 255 - copy.at(i % 211, i / 211));
      ASSERT_EQ(mask.at(i % 211, i / 211), 255);  // the level is the lower of two
    }
  }
}

}  // namespace
}  // namespace dax::test
