#include "image/rank/filter_median3x3.h"

#include <gtest/gtest.h>

#include <limits>

#include "daxi/filter_median3x3.h"
#include "tests/image/rank/filter_median_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
constexpr DaxStatus (*kExport)(const T*, int32_t, T*, int32_t, DaxiSize) = nullptr;
template <>
constexpr auto kExport<uint8_t> = DAXI_FilterMedian3x3_8u_C1R;
template <>
constexpr auto kExport<uint16_t> = DAXI_FilterMedian3x3_16u_C1R;
template <>
constexpr auto kExport<int16_t> = DAXI_FilterMedian3x3_16s_C1R;
template <>
constexpr auto kExport<float> = DAXI_FilterMedian3x3_32f_C1R;
template <>
constexpr auto kExport<double> = DAXI_FilterMedian3x3_64f_C1R;

template <class T>
class Median : public testing::Test {};
using PixelTypes = testing::Types<uint8_t, uint16_t, int16_t, float, double>;
TYPED_TEST_SUITE(Median, PixelTypes);

template <class T>
::testing::AssertionResult isMedian(const TestImage<T>& src, const TestImage<T>& dst) {
  const auto [w, h] = src.size();
  const auto pixel = [&](int32_t x, int32_t y) { return src.at(x, y); };
  for (int32_t y = 0; y < h; ++y) {
    for (int32_t x = 0; x < w; ++x) {
      if (!sameBits(dst.at(x, y), oracle::median<3>(pixel, x, y, w, h))) {
        return ::testing::AssertionFailure() << w << " x " << h << " at " << x << ", " << y;
      }
    }
  }
  return ::testing::AssertionSuccess();
}

constexpr int32_t kExported = -1;

// The kernels of both codes and the export.
template <class T>
void checkMedian(const TestImage<T>& src, Guard guard) {
  for (const int32_t isa : {int32_t{DAX_ISA_PORTABLE}, int32_t{DAX_ISA_NEON}, kExported}) {
    TestImage<T> dst(src.size(), 3, guard);
    dst.remember();
    if (isa != kExported) {
      filterMedian3x3(src.data(), src.step(), dst.data(), dst.step(), src.size(), 0, src.size().height, isa);
    } else {
      ASSERT_EQ(kExport<T>(src.data(), src.step(), dst.data(), dst.step(), src.size()), DAX_STS_OK);
    }
    ASSERT_TRUE(isMedian(src, dst)) << "code " << isa;
    ASSERT_TRUE(dst.paddingUntouched());
  }
}

// A selection by comparisons that is right for all arrangements of two values is right for all values (threshold
// decomposition). Every 3 x 4 pattern of the two extremes stands once in the image.
TYPED_TEST(Median, EveryPatternOfTwoValues) {
  using T = TypeParam;
  TestImage<T> src({3 << 12, 4});
  src.fill([](int32_t x, int32_t y) {
    return x / 3 >> (3 * y + x % 3) & 1 ? std::numeric_limits<T>::max() : std::numeric_limits<T>::lowest();
  });
  checkMedian(src, Guard::after);
}

// Ragged sizes with all bit patterns (infinities, NaNs and zeros of either sign among them), and with many equal
// values.
TYPED_TEST(Median, RaggedSizes) {
  using T = TypeParam;
  const T special[] = {T(0),
                       static_cast<T>(-T(0)),
                       std::numeric_limits<T>::max(),
                       std::numeric_limits<T>::denorm_min(),
                       std::numeric_limits<T>::infinity(),
                       std::numeric_limits<T>::quiet_NaN(),
                       T(1),
                       T(2)};
  for (int32_t w = 3; w <= 100; ++w) {
    const Guard guard = kGuards[w % 2];
    TestImage<T> src({w, 3 + w % 5}, w % 4, guard);
    checkMedian(src.randomize(static_cast<uint64_t>(w)), guard);
    Random random(static_cast<uint64_t>(w));
    // Few rows with a NaN, many with zeros of both signs.
    src.fill([&](int32_t, int32_t) { return special[random.below(60) ? random.below(3) : random.below(8)]; });
    checkMedian(src, guard);
  }
  TestImage<T> wide({1000, 3});  // several pieces of the portable rows
  checkMedian(wide.randomize(1), Guard::before);
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

}  // namespace
}  // namespace dax::test
