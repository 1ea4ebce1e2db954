#include <gtest/gtest.h>

#include <cmath>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

// Finite floats of both signs, from 2^-30 to 2^30.
TestImage<float> floats(DaxiSize size, uint64_t seed) {
  TestImage<float> image(size);
  Random random(seed);
  image.fill([&](int32_t x, int32_t) {
    return std::ldexp(static_cast<float>(random.below(1 << 25) - (1 << 24)), x % 61 - 54);
  });
  return image;
}

TEST(Digests, IntegerElements) {
  TestImage<uint16_t> a({301, 37}), b(a.size()), dst(a.size());
  a.randomize(9), b.randomize(10);
  b.fill([&](int32_t x, int32_t y) { return b.at(x, y) | 1; });
  const auto on = [&](auto function, auto... rest) {
    return function(a.data(), a.step(), b.data(), b.step(), dst.data(), dst.step(), a.size(), rest...);
  };
  Digest digest;
  for (const int32_t factor : {-9, -3, 0, 2}) {
    ASSERT_EQ(on(DAXI_Div_16u_C1RSfs, factor), DAX_STS_OK);
    digest.add(dst);
    ASSERT_EQ(on(DAXI_Mul_16u_C1RSfs, factor + 12), DAX_STS_OK);
    digest.add(dst);
  }
  const DaxiAddWeightedCfg cfg = {0.3, 0.7, -0.25};
  ASSERT_EQ(on(DAXI_AddWeighted_16u_C1R, &cfg), DAX_STS_OK);
  digest.add(dst);
  ASSERT_EQ(on(DAXI_Min_16u_C1R), DAX_STS_OK);
  digest.add(dst);
  ASSERT_EQ(DAXI_Sqrt_16u_C1R(a.data(), a.step(), dst.data(), dst.step(), a.size()), DAX_STS_OK);
  EXPECT_EQ(digest.add(dst).value(), 0x98960111559E4294u);
}

TEST(Digests, FloatElements) {
  TestImage<float> a = floats({301, 37}, 11), b = floats(a.size(), 12), dst(a.size());
  TestImage<uint16_t> levels(a.size());
  levels.randomize(13);
  Digest digest;
  for (const auto function : {DAXI_Exp_32f_C1R, DAXI_Ln_32f_C1R, DAXI_Abs_32f_C1R}) {
    ASSERT_EQ(function(a.data(), a.step(), dst.data(), dst.step(), a.size()), DAX_STS_OK);
    for (int32_t y = 0; y < 37; ++y) {  // of negative numbers there is no logarithm
      for (int32_t x = 0; x < 301; ++x) dst.at(x, y) = dst.at(x, y) == dst.at(x, y) ? dst.at(x, y) : -1;
    }
    digest.add(dst);
  }
  for (const auto function : {DAXI_Div_32f_C1R, DAXI_Max_32f_C1R}) {
    ASSERT_EQ(function(a.data(), a.step(), b.data(), b.step(), dst.data(), dst.step(), a.size()), DAX_STS_OK);
    digest.add(dst);
  }
  ASSERT_EQ(DAXI_AccumulateWeighted_16u32f_C1IR(levels.data(), levels.step(), a.data(), a.step(), a.size(), 0.3f),
            DAX_STS_OK);
  EXPECT_EQ(digest.add(a).value(), 0x61BAC588D2260AC8u);
}

}  // namespace
}  // namespace dax::test
