// Medians of 3 x 3 and 5 x 5 pixels.
#include <gtest/gtest.h>

#include <limits>

#include "daxi/filter_median3x3.h"
#include "daxi/filter_median5x5.h"
#include "image/rank/filter_median3x3.h"
#include "image/rank/filter_median5x5.h"
#include "tests/image/rank/filter_median_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <int32_t side, class T>
struct Filter;
#define DAX_MEDIAN(SIDE, SUFFIX, TYPE)                                                                              \
  template <>                                                                                                       \
  struct Filter<SIDE, TYPE> {                                                                                       \
    using Pixel = TYPE;                                                                                             \
    static constexpr int32_t kSide = SIDE;                                                                          \
    static constexpr auto exported = DAXI_FilterMedian##SIDE##x##SIDE##_##SUFFIX##_C1R;                             \
    static void rows(const TestImage<Pixel>& src, TestImage<Pixel>& dst, int32_t first, int32_t end, int32_t isa) { \
      filterMedian##SIDE##x##SIDE(src.data(), src.step(), dst.data(), dst.step(), src.size(), first, end, isa);     \
    }                                                                                                               \
  };
DAX_MEDIAN(3, 8u, uint8_t)
DAX_MEDIAN(3, 16u, uint16_t)
DAX_MEDIAN(3, 16s, int16_t)
DAX_MEDIAN(3, 32f, float)
DAX_MEDIAN(3, 64f, double)
DAX_MEDIAN(5, 8u, uint8_t)
DAX_MEDIAN(5, 16u, uint16_t)
DAX_MEDIAN(5, 16s, int16_t)
DAX_MEDIAN(5, 32f, float)
#undef DAX_MEDIAN

template <class>
class Median : public testing::Test {};
using Filters =
    testing::Types<Filter<3, uint8_t>, Filter<3, uint16_t>, Filter<3, int16_t>, Filter<3, float>, Filter<3, double>,
                   Filter<5, uint8_t>, Filter<5, uint16_t>, Filter<5, int16_t>, Filter<5, float>>;
TYPED_TEST_SUITE(Median, Filters);

// Both codes on bands of rows, and the export.
template <class F, class T>
void checkMedian(const TestImage<T>& src, Guard guard) {
  const auto [w, h] = src.size();
  TestImage<T> expected(src.size()), dst(src.size(), 3, guard);
  const auto pixel = [&](int32_t x, int32_t y) { return src.at(x, y); };
  expected.fill([&, w = w, h = h](int32_t x, int32_t y) { return oracle::median<F::kSide>(pixel, x, y, w, h); });
  for (const int32_t isa : {DAX_ISA_PORTABLE, DAX_ISA_NEON}) {
    dst.remember();
    F::rows(src, dst, 0, h / 2, isa);
    F::rows(src, dst, h / 2, h, isa);
    ASSERT_TRUE(samePixels(dst, expected)) << w << " x " << h << " code " << isa;
    ASSERT_TRUE(dst.paddingUntouched());
  }
  ASSERT_EQ(F::exported(src.data(), src.step(), dst.data(), dst.step(), src.size()), DAX_STS_OK);
  ASSERT_TRUE(samePixels(dst, expected));
}

// A selection by comparisons that is right for all arrangements of two values is right for all values (threshold
// decomposition). Of 3 x 3 every 3 x 4 pattern of the two extremes. Of 5 x 5 columns are sorted first, so that their
// counts of the larger value, and those of the two rows that are computed together, are all that matters: every choice of
// six counts in a row of windows.
TYPED_TEST(Median, EveryPatternOfTwoValues) {
  using T = typename TypeParam::Pixel;
  constexpr int32_t kSide = TypeParam::kSide, kPatterns = kSide == 3 ? 1 << 12 : 6 * 6 * 6 * 6 * 6 * 6;
  constexpr int32_t kColumns = kSide == 3 ? 3 : 6, kPart = kPatterns / 4;
  TestImage<T> src({kColumns * kPart, kSide + 1});
  for (int32_t part = 0; part < 4; ++part) {
    src.fill([&](int32_t x, int32_t y) {
      int32_t pattern = x / kColumns + part * kPart;
      for (int32_t i = 0; kSide == 5 && i < x % kColumns; ++i) pattern /= 6;
      const bool isLarge = kSide == 3 ? pattern >> (3 * y + x % 3) & 1 : y < pattern % 6;
      return isLarge ? std::numeric_limits<T>::max() : std::numeric_limits<T>::lowest();
    });
    checkMedian<TypeParam>(src, Guard::after);
  }
}

// Ragged sizes with all bit patterns (infinities, NaNs and zeros of either sign among them), and with many equal
// values: few rows with a NaN, many with zeros of both signs.
TYPED_TEST(Median, RaggedSizes) {
  using T = typename TypeParam::Pixel;
  using Limits = std::numeric_limits<T>;
  const T special[] = {T(0),
                       static_cast<T>(-T(0)),
                       T(1),
                       T(2),
                       Limits::max(),
                       Limits::denorm_min(),
                       Limits::infinity(),
                       Limits::quiet_NaN()};
  for (int32_t w = TypeParam::kSide; w <= 140; w += 1 + w / 70) {
    const Guard guard = kGuards[w % 2];
    TestImage<T> src({w, TypeParam::kSide + w % 5}, w % 4, guard);
    checkMedian<TypeParam>(src.randomize(static_cast<uint64_t>(w)), guard);
    Random random(static_cast<uint64_t>(w));
    src.fill([&](int32_t, int32_t) { return special[random.below(60) ? random.below(4) : random.below(8)]; });
    checkMedian<TypeParam>(src, guard);
  }
  TestImage<T> wide({1000, TypeParam::kSide});  // several pieces of the portable rows
  checkMedian<TypeParam>(wide.randomize(1), Guard::before);
}

TEST(MedianBands, PoolAndStatus) {
  TestImage<uint8_t> src({40, 10}), dst(src.size());
  const auto run = [&](void* pool, uint32_t threads) {
    return DAXI_FilterMedian3x3_8u_C1R_NEON_MT(pool, threads, src.data(), src.step(), dst.data(), dst.step(),
                                               src.size());
  };
  MockPool pool;
  pool.threads = 3;
  EXPECT_EQ(run(&pool, 3), DAX_STS_OK);
  EXPECT_EQ(pool.tiles, 3);  // of 4, 4 and 2 rows
  EXPECT_EQ(run(nullptr, 3), DAX_STS_OK);
  pool.failingTile = 2;
  EXPECT_EQ(run(&pool, 3), pool.failure);
}

TEST(MedianBands, FiveByFiveOnAPool) {
  TestImage<uint16_t> src({40, 13}), dst(src.size()), expected(src.size());
  src.randomize(3);
  MockPool pool;
  ASSERT_EQ(DAXI_FilterMedian5x5_16u_C1R(src.data(), src.step(), expected.data(), expected.step(), src.size()),
            DAX_STS_OK);
  ASSERT_EQ(DAXI_FilterMedian5x5_16u_C1R_MT(&pool, 5, src.data(), src.step(), dst.data(), dst.step(), src.size()),
            DAX_STS_OK);
  EXPECT_TRUE(samePixels(dst, expected));
  EXPECT_EQ(pool.tiles, 5);
}

}  // namespace
}  // namespace dax::test
