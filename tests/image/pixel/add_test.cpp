#include "daxi/add.h"

#include <gtest/gtest.h>

#include "image/pixel/copy.h"
#include "image/pixel/logic.h"
#include "image/threshold/threshold.h"
#include "tests/support/check_order.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

struct AddArguments {
  const uint8_t* src1;
  int32_t step1;
  const uint8_t* src2;
  int32_t step2;
  uint8_t* dst;
  int32_t dstStep;
  DaxiSize size;
  int32_t isa;
};

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
    TestImage<uint8_t> src({67, 3}, 2), copy(src.size(), 1), inverse(src.size()), mask(src.size(), 3);
    src.randomize(4);
    _DAXI_Copy_8u_C1R(src.data(), src.step(), copy.data(), copy.step(), src.size());
    EXPECT_TRUE(samePixels(copy, src));
    _DAXI_Not_8u_C1R(src.data(), src.step(), inverse.data(), inverse.step(), src.size(), isa);
    src.fill([](int32_t x, int32_t y) { return (x + y) % 3 == 0 ? 30 : 90; });
    _DAXI_AdpThresholdOtsu_8u_C1R(src.data(), src.step(), mask.data(), mask.step(), src.size(), isa);
    for (int32_t i = 0; i < 3 * 67; ++i) {
      ASSERT_EQ(inverse.at(i % 67, i / 67), 255 - copy.at(i % 67, i / 67));
      ASSERT_EQ(mask.at(i % 67, i / 67), 255);  // the level is the lower of two
    }
  }
}

TEST(Add, ChecksInOrder) {
  TestImage<uint8_t> a({8, 2}), dst({8, 2});
  dst.remember();
  const std::vector<CheckClause<AddArguments>> clauses = {
      {"first null", DAX_STS_NULL_POINTER, [](AddArguments& c) { c.src1 = nullptr; }},
      {"second null", DAX_STS_NULL_POINTER, [](AddArguments& c) { c.src2 = nullptr; }},
      {"destination null", DAX_STS_NULL_POINTER, [](AddArguments& c) { c.dst = nullptr; }},
      {"width", DAX_STS_BAD_SIZE, [](AddArguments& c) { c.size.width = 0; }},
      {"second step", DAX_STS_BAD_STEP, [](AddArguments& c) { c.step2 = 7; }},
      {"destination step", DAX_STS_BAD_STEP, [](AddArguments& c) { c.dstStep = 7; }},
      {"code", DAX_STS_BAD_ISA, [](AddArguments& c) { c.isa = -1; }},
  };
  expectCheckOrder<AddArguments>(
      {a.data(), 8, a.data(), 8, dst.data(), 8, {8, 2}, 0}, clauses,
      [](const AddArguments& c) {
        return DAXI_Add_8u_C1RSfs_IS(c.src1, c.step1, c.src2, c.step2, c.dst, c.dstStep, c.size, c.isa);
      },
      [&] { return dst.untouched(); });
}

}  // namespace
}  // namespace dax::test
