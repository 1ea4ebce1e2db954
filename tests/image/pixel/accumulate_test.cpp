#include "daxi/accumulate.h"

#include "image/pixel/accumulate.h"
#include "tests/image/pixel/element_check.h"

namespace dax::test {
namespace {

template <class T, class Sum, class Mean>
void checkAccumulation(Sum sum, Mean mean) {
  overRaggedSizes([&](DaxiSize size, int32_t gap, Guard guard) {
    TestImage<T> src(size, gap, guard);
    TestImage<float> sums(size, gap + 1, guard), means(size, gap, guard), before(size);
    src.randomize(static_cast<uint64_t>(size.width));
    before.fill([](int32_t x, int32_t y) { return 1000.3f * static_cast<float>(x) - static_cast<float>(y); });
    const auto atStart = [&](int32_t x, int32_t y) { return before.at(x, y); };
    sums.fill(atStart).remember(), means.fill(atStart).remember();
    ASSERT_EQ(sum(src.data(), src.step(), sums.data(), sums.step(), size), DAX_STS_OK);
    ASSERT_TRUE(
        isEverywhere(sums, [&](int32_t x, int32_t y) { return before.at(x, y) + static_cast<float>(src.at(x, y)); }));
    ASSERT_EQ(mean(src.data(), src.step(), means.data(), means.step(), size, 0.1f), DAX_STS_OK);
    const auto expected = [&](int32_t x, int32_t y) {
      const float old = before.at(x, y), share = 0.1f * (static_cast<float>(src.at(x, y)) - old);
      return old + share;
    };
    ASSERT_TRUE(isEverywhere(means, expected));
    ASSERT_TRUE(sums.paddingUntouched() && means.paddingUntouched());
    for (int32_t y = 0; y < size.height; ++y) {
      means.fill(atStart);
      const float alpha = 0.1f;
      accumulateRow(src.row(y), means.row(y), size.width, &alpha, DAX_ISA_PORTABLE);
      accumulateRow(src.row(y), before.row(y), size.width, &alpha, DAX_ISA_NEON);
      for (int32_t x = 0; x < size.width; ++x) ASSERT_TRUE(sameBits(means.at(x, y), before.at(x, y)));
    }
  });
}

TEST(Accumulate, SumsAndRunningAverages) {
  checkAccumulation<uint8_t>(DAXI_Accumulate_8u32f_C1IR, DAXI_AccumulateWeighted_8u32f_C1IR);
  checkAccumulation<uint16_t>(DAXI_Accumulate_16u32f_C1IR, DAXI_AccumulateWeighted_16u32f_C1IR);
}

// What the contract warns of: the average of a line that has become brighter stays below it.
TEST(Accumulate, AveragesStopBeforeTheValue) {
  float mean = 65000;
  const uint16_t value = 65010;
  for (int i = 0; i < 100000; ++i) {
    ASSERT_EQ(DAXI_AccumulateWeighted_16u32f_C1IR(&value, 1, &mean, 1, {1, 1}, 1e-4f), DAX_STS_OK);
  }
  EXPECT_EQ(mean, 65000);
}

}  // namespace
}  // namespace dax::test
