#include "image/gauss/filter_gauss.h"

#include <gtest/gtest.h>

#include <cmath>

#include "tests/support/test_image.h"

namespace dax::test {
namespace {

// By the product of 13 x 13 weights in double precision, the edges going on outside.
TEST(FilterGauss, ByDefinition) {
  double weights[13], sum = 0;
  for (int32_t i = -6; i <= 6; ++i) sum += weights[i + 6] = std::exp(-i * i / 18.0);
  for (const DaxiSize size : {DaxiSize{1, 1}, {2, 30}, {31, 3}, {20, 17}, {45, 14}}) {
    for (const Guard guard : kGuards) {
      TestImage<uint8_t> src(size, 2, guard);
      TestImage<float> dst(size, 3, guard);
      src.randomize(static_cast<uint64_t>(size.width));
      dst.remember();
      GuardedBuffer<uint8_t> buffer(GaussBuffer(size).layout.total(), guard);
      _DAXI_FilterGauss_8u32f_C1R(src.data(), src.step(), dst.data(), dst.step(), size, buffer.data());
      EXPECT_TRUE(dst.paddingUntouched());
      for (int32_t i = 0; i < size.width * size.height; ++i) {
        const int32_t x = i % size.width, y = i / size.width;
        double expected = 0;
        for (int32_t k = 0; k < 169; ++k) {
          const int32_t u = std::clamp(x + k % 13 - 6, 0, size.width - 1);
          const int32_t v = std::clamp(y + k / 13 - 6, 0, size.height - 1);
          expected += weights[k % 13] * weights[k / 13] / (sum * sum) * src.at(u, v);
        }
        ASSERT_NEAR(dst.at(x, y), expected, 1e-4) << x << ", " << y << " of " << size.width;
      }
    }
  }
}

// One padded row and a ring of 13 smoothed ones, whole vectors each.
TEST(FilterGauss, Memory) {
  EXPECT_EQ(GaussBuffer({100, 999}).layout.total(), 512u + 5504u);  // 4 (100 + 12 + 4) and 4 * 13 * 104 bytes
}

}  // namespace
}  // namespace dax::test
