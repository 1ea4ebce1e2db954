// Weighted medians of 3 x 3 pixels and hybrid ones of 5 x 5.
#include <gtest/gtest.h>

#include "daxi/filter_median_hybrid5x5.h"
#include "daxi/filter_median_weighted3x3.h"
#include "tests/image/rank/filter_rank_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct ShapedExports;
#define DAX_SHAPED_EXPORTS(SUFFIX, TYPE)                                                   \
  template <>                                                                              \
  struct ShapedExports<TYPE> {                                                             \
    static constexpr auto weighted = DAXI_FilterMedianWeighted3x3_##SUFFIX##_C1R;          \
    static constexpr auto pooledWeighted = DAXI_FilterMedianWeighted3x3_##SUFFIX##_C1R_MT; \
    static constexpr auto hybrid = DAXI_FilterMedianHybrid5x5_##SUFFIX##_C1R;              \
    static constexpr auto pooledHybrid = DAXI_FilterMedianHybrid5x5_##SUFFIX##_C1R_MT;     \
  };
DAX_SHAPED_EXPORTS(8u, uint8_t)
DAX_SHAPED_EXPORTS(16u, uint16_t)
DAX_SHAPED_EXPORTS(16s, int16_t)
DAX_SHAPED_EXPORTS(32f, float)
#undef DAX_SHAPED_EXPORTS

template <class>
class FilterMedianShaped : public testing::Test {};
using ShapedPixels = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(FilterMedianShaped, ShapedPixels);

// All borders at ragged sizes, of one row or column and of several pieces; many equal pixels, or all bit patterns.
TYPED_TEST(FilterMedianShaped, EqualTheSortedPixels) {
  using T = TypeParam;
  using Exports = ShapedExports<T>;
  Random random(4);
  for (int32_t round = 0; round < 70; ++round) {
    const int32_t border = round % 7, margin = border == DAXI_BORDER_IN_MEMORY ? 2 : 0;
    const DaxiSize size = {round < 63 ? 1 + random.below(round % 4 ? 40 : 5) : 250 + round, 1 + random.below(7)};
    TestImage<T> image({size.width + 2 * margin, size.height + 2 * margin}, 1);
    image.randomize(static_cast<uint64_t>(round));
    if (round % 2) image.fill([&](int32_t, int32_t) { return random.below(4); });
    const T *const src = &image.at(margin, margin), value = T(2);
    const auto pixel = [&](int64_t x, int64_t y) {
      return image.at(static_cast<int32_t>(x) + margin, static_cast<int32_t>(y) + margin);
    };
    uint8_t weights[9] = {};
    weights[random.below(9)] = 1;
    for (uint8_t& weight : weights) {
      if (round % 3) weight = static_cast<uint8_t>(round % 3 == 1 ? 1 + random.below(5) : random.below(256));
    }
    TestImage<T> expected(size), dst(size, 2);
    MockPool pool;
    const auto check = [&](const char* name, auto function, auto... arguments) {
      dst.fill([](int32_t, int32_t) { return T(0); });
      dst.remember();
      ASSERT_EQ(function(arguments..., border, value), DAX_STS_OK);
      ASSERT_TRUE(samePixels(dst, expected))
          << name << " " << size.width << " x " << size.height << " border " << border;
      ASSERT_TRUE(dst.paddingUntouched());
    };
    expected.fill(
        [&](int32_t x, int32_t y) { return oracle::weightedMedian<T>(pixel, x, y, size, weights, border, value); });
    check("weighted", Exports::weighted, src, image.step(), dst.data(), dst.step(), size, weights);
    check("pooled", Exports::pooledWeighted, &pool, 3u, src, image.step(), dst.data(), dst.step(), size, weights);
    expected.fill([&](int32_t x, int32_t y) { return oracle::hybridMedian<T>(pixel, x, y, size, border, value); });
    check("hybrid", Exports::hybrid, src, image.step(), dst.data(), dst.step(), size);
    check("pooled", Exports::pooledHybrid, &pool, 3u, src, image.step(), dst.data(), dst.step(), size);
  }
}

// A line of one pixel and its end remain, which a median takes away.
TEST(FilterMedianHybrid, KeepsThinLines) {
  TestImage<uint8_t> src({20, 9}), dst(src.size());
  src.fill([](int32_t x, int32_t y) { return y == 4 && x < 12 ? 90 : 10; });
  ASSERT_EQ(DAXI_FilterMedianHybrid5x5_8u_C1R(src.data(), src.step(), dst.data(), dst.step(), src.size(),
                                              DAXI_BORDER_REPLICATE, 0),
            DAX_STS_OK);
  EXPECT_EQ(dst.at(6, 4), 90);
  EXPECT_EQ(dst.at(9, 4), 90);
  EXPECT_EQ(dst.at(6, 3), 10);
}

}  // namespace
}  // namespace dax::test
