#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, FilterMedian) {
  Digest digest;
  const auto add = [&]<class T>(DaxStatus (*median)(const T*, int32_t, T*, int32_t, DaxiSize)) {
    TestImage<T> src({301, 37}), dst(src.size());
    src.randomize(4);
    ASSERT_EQ(median(src.data(), src.step(), dst.data(), dst.step(), src.size()), DAX_STS_OK);
    digest.add(dst);
  };
  add(DAXI_FilterMedian3x3_8u_C1R);
  add(DAXI_FilterMedian3x3_16u_C1R);
  add(DAXI_FilterMedian3x3_16s_C1R);
  add(DAXI_FilterMedian3x3_32f_C1R);
  add(DAXI_FilterMedian3x3_64f_C1R);
  EXPECT_EQ(digest.value(), 0x62584CBCF12CC33Du);
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
