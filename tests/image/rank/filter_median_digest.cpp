#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

template <class T>
using Median = DaxStatus (*)(const T*, int32_t, T*, int32_t, DaxiSize);

template <class... T>
uint64_t digestOf(DaxiSize size, uint64_t seed, Median<T>... medians) {
  Digest digest;
  const auto add = [&]<class Pixel>(Median<Pixel> median) {
    TestImage<Pixel> src(size), dst(size);
    src.randomize(seed);
    EXPECT_EQ(median(src.data(), src.step(), dst.data(), dst.step(), size), DAX_STS_OK);
    digest.add(dst);
  };
  (add.template operator()<T>(medians), ...);
  return digest.value();
}

TEST(Digests, FilterMedian) {
  EXPECT_EQ(digestOf({301, 37}, 4, DAXI_FilterMedian3x3_8u_C1R, DAXI_FilterMedian3x3_16u_C1R,
                     DAXI_FilterMedian3x3_16s_C1R, DAXI_FilterMedian3x3_32f_C1R, DAXI_FilterMedian3x3_64f_C1R),
            0x62584CBCF12CC33Du);
  EXPECT_EQ(digestOf({203, 41}, 5, DAXI_FilterMedian5x5_8u_C1R, DAXI_FilterMedian5x5_16u_C1R,
                     DAXI_FilterMedian5x5_16s_C1R, DAXI_FilterMedian5x5_32f_C1R),
            0x689D3F74551304A7u);
}

TEST(Digests, FilterMedianOnPool) {
  TestImage<uint8_t> src({301, 37}), dst(src.size());
  src.randomize(4);
  for (uint32_t threads = 1; threads <= 16; ++threads) {
    AnyPool pool(threads);
    ASSERT_EQ(DAXI_FilterMedian3x3_8u_C1R_NEON_MT(pool.get(), threads, src.data(), src.step(), dst.data(), dst.step(),
                                                  src.size()),
              DAX_STS_OK);
    EXPECT_EQ(Digest().add(dst).value(), 0x49424509E44C80D2u) << threads << " threads";
  }
}

}  // namespace
}  // namespace dax::test
