#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/any_pool.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, FilterMean) {
  std::vector<double> buffer(302 * 204);
  Digest digest;
  const auto add = [&]<class T>(DaxStatus (*mean)(const T*, int32_t, T*, int32_t, DaxiSize, DaxiSize, void*)) {
    TestImage<T> src({301, 203}), dst(src.size());
    Random random(8);
    src.fill([&](int32_t, int32_t) { return T(random.below(256)) / T(3); });
    for (const DaxiSize mask : {DaxiSize{3, 3}, {16, 5}, {201, 101}}) {
      ASSERT_EQ(mean(src.data(), src.step(), dst.data(), dst.step(), src.size(), mask, buffer.data()), DAX_STS_OK);
      digest.add(dst);
    }
  };
  add(DAXI_FilterMean_8u_C1R);
  add(DAXI_FilterMean_16u_C1R);
  add(DAXI_FilterMean_16s_C1R);
  add(DAXI_FilterMean_32f_C1R);
  add(DAXI_FilterMean_64f_C1R);
  add(DAXI_FilterMeanInt_8u_C1R);
  add(DAXI_FilterMeanInt_16u_C1R);
  add(DAXI_FilterMeanInt_16s_C1R);
  add(DAXI_FilterMeanInt_32f_C1R);
  add(DAXI_FilterMeanInt_64f_C1R);
  EXPECT_EQ(digest.value(), 0xAC16227DB9AC0895u);
}

TEST(Digests, FilterMeanOnPool) {
  Image src({301, 203}), dst(src.size());
  src.randomize(8);
  for (uint32_t threads = 1; threads <= 16; ++threads) {
    AnyPool pool(threads);
    Digest digest;
    for (const DaxiSize mask : {DaxiSize{3, 3}, {16, 5}, {201, 12}}) {
      uint64_t bytes = 0;
      ASSERT_EQ(DAXI_FilterMeanBufferSize_8u_MT(src.size(), mask, threads, &bytes), DAX_STS_OK);
      std::vector<uint8_t> buffer(bytes);
      ASSERT_EQ(DAXI_FilterMean_8u_C1R_MT(src.data(), src.step(), dst.data(), dst.step(), src.size(), mask,
                                          buffer.data(), threads, pool.get()),
                DAX_STS_OK);
      digest.add(dst);
    }
    EXPECT_EQ(digest.value(), 0x7559546A58D2A75Cu) << threads << " threads";
  }
}

}  // namespace
}  // namespace dax::test
