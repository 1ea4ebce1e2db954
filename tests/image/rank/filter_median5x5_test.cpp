#include "image/rank/filter_median5x5.h"

#include <gtest/gtest.h>

#include <limits>

#include "daxi/filter_median5x5.h"
#include "tests/image/rank/filter_median_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
constexpr DaxStatus (*kExport)(const T*, int32_t, T*, int32_t, DaxiSize) = nullptr;
template <>
constexpr auto kExport<uint8_t> = DAXI_FilterMedian5x5_8u_C1R;
template <>
constexpr auto kExport<uint16_t> = DAXI_FilterMedian5x5_16u_C1R;
template <>
constexpr auto kExport<int16_t> = DAXI_FilterMedian5x5_16s_C1R;
template <>
constexpr auto kExport<float> = DAXI_FilterMedian5x5_32f_C1R;

template <class T>
class Median5 : public testing::Test {};
using PixelTypes = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(Median5, PixelTypes);

// Both codes on bands of rows, and the export.
template <class T>
void checkMedian(const TestImage<T>& src, Guard guard) {
  const auto [w, h] = src.size();
  TestImage<T> expected(src.size());
  const auto pixel = [&](int32_t x, int32_t y) { return src.at(x, y); };
  expected.fill([&, w = w, h = h](int32_t x, int32_t y) { return oracle::median<5>(pixel, x, y, w, h); });
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    TestImage<T> dst(src.size(), 3, guard);
    dst.remember();
    const int32_t split = h / 2;
    filterMedian5x5(src.data(), src.step(), dst.data(), dst.step(), src.size(), 0, split, isa);
    filterMedian5x5(src.data(), src.step(), dst.data(), dst.step(), src.size(), split, h, isa);
    ASSERT_TRUE(samePixels(dst, expected)) << w << " x " << h << " code " << isa;
    ASSERT_TRUE(dst.paddingUntouched());
  }
  TestImage<T> dst(src.size());
  ASSERT_EQ(kExport<T>(src.data(), src.step(), dst.data(), dst.step(), src.size()), DAX_STS_OK);
  ASSERT_TRUE(samePixels(dst, expected));
}

// A selection by comparisons is right for all values when it is right for all arrangements of two (threshold
// decomposition). Columns are sorted first, so that their counts of the larger value, and those of the two rows that are
// computed together, are all that matters: every choice of six counts in a row of windows.
TYPED_TEST(Median5, EveryPatternOfTwoValues) {
  using T = TypeParam;
  constexpr int32_t kPatterns = 6 * 6 * 6 * 6 * 6 * 6;
  TestImage<T> src({6 * kPatterns / 4, 6});
  for (int32_t quarter = 0; quarter < 4; ++quarter) {
    src.fill([&](int32_t x, int32_t y) {
      int32_t counts = x / 6 + quarter * kPatterns / 4;
      for (int32_t i = 0; i < x % 6; ++i) counts /= 6;
      return y < counts % 6 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::lowest();
    });
    checkMedian(src, Guard::after);
  }
}

// All bit patterns, and many equal values with zeros of both signs and a few NaN.
TYPED_TEST(Median5, RaggedSizes) {
  using T = TypeParam;
  const T special[] = {T(0), static_cast<T>(-T(0)), T(1), T(2), std::numeric_limits<T>::quiet_NaN()};
  for (int32_t w = 5; w <= 140; w += 1 + w / 70) {
    const Guard guard = kGuards[w % 2];
    TestImage<T> src({w, 5 + w % 4}, w % 4, guard);
    checkMedian(src.randomize(static_cast<uint64_t>(w)), guard);
    Random random(static_cast<uint64_t>(w));
    src.fill([&](int32_t, int32_t) { return special[random.below(60) ? random.below(4) : 4]; });
    checkMedian(src, guard);
  }
}

}  // namespace
}  // namespace dax::test
