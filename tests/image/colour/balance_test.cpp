// Matrices and gains, and the estimates of gains.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "daxi/colour_matrix.h"
#include "daxi/white_balance.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct Balance;
#define BALANCE(SUFFIX, T, FULL)                                                  \
  template <>                                                                     \
  struct Balance<T> {                                                             \
    static constexpr T full = FULL;                                               \
    static constexpr auto matrix = DAXI_ColourMatrix_##SUFFIX##_C3R;              \
    static constexpr auto matrixInPlace = DAXI_ColourMatrix_##SUFFIX##_C3IR;      \
    static constexpr auto matrixOnPool = DAXI_ColourMatrix_##SUFFIX##_C3R_MT;     \
    static constexpr auto gains = DAXI_WhiteBalance_##SUFFIX##_C3R;               \
    static constexpr auto gainsInPlace = DAXI_WhiteBalance_##SUFFIX##_C3IR;       \
    static constexpr auto gainsOnPool = DAXI_WhiteBalance_##SUFFIX##_C3R_MT;      \
    static constexpr auto grayWorld = DAXI_GrayWorld_##SUFFIX##_C3R;              \
    static constexpr auto patchBuffer = DAXI_WhitePatchBufferSize_##SUFFIX##_C3R; \
    static constexpr auto whitePatch = DAXI_WhitePatch_##SUFFIX##_C3R;            \
  };
BALANCE(8u, uint8_t, 255)
BALANCE(16u, uint16_t, 65535)
BALANCE(32f, float, 1)
#undef BALANCE

template <class T>
class BalanceOf : public testing::Test {};
using BalanceTypes = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(BalanceOf, BalanceTypes);

// Levels below `full` but for one in twenty.
template <class T>
TestImage<T> colours(DaxiSize size, uint64_t seed, int32_t padding = 0, Guard guard = Guard::after) {
  TestImage<T> image({3 * size.width, size.height}, padding, guard);
  Random random(seed);
  const T full = Balance<T>::full;
  image.fill([&](int32_t, int32_t) {
    return random.below(20) == 0 ? full : full * static_cast<T>(random.below(100)) / T(100);
  });
  return image;
}

TYPED_TEST(BalanceOf, MatricesOverRaggedSizes) {
  using T = TypeParam;
  MockPool pool;
  for (int32_t width = 1; width <= 40; ++width) {
    const DaxiSize size = {width, 1 + width % 3};
    auto src = colours<T>(size, static_cast<uint64_t>(width), width % 3, kGuards[width % 2]);
    TestImage<T> dst(src.size(), width % 4), pooled(src.size()), scaled(src.size());
    const double m[12] = {0.25, 0.5, 0.25, 0.5, -0.125, 2.5, -0.375, 0, 0.1, 0.2, 0.3, -0.4};
    const double gains[3] = {1.25, 1, 0.7};
    const auto expectedOf = [](double value) {
      return static_cast<T>(std::is_integral_v<T> ? std::clamp(std::nearbyint(value), 0.0, double{Balance<T>::full})
                                                  : value);
    };
    dst.remember();
    ASSERT_EQ(Balance<T>::matrix(src.data(), src.step(), dst.data(), dst.step(), size, m), DAX_STS_OK);
    ASSERT_EQ(Balance<T>::matrixOnPool(&pool, 3, src.data(), src.step(), pooled.data(), pooled.step(), size, m),
              DAX_STS_OK);
    ASSERT_EQ(Balance<T>::gains(src.data(), src.step(), scaled.data(), scaled.step(), size, gains), DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched() && samePixels(dst, pooled));
    for (int32_t i = 0; i < 3 * width * size.height; ++i) {
      const int32_t x = i % (3 * width), y = i / (3 * width), k = x % 3;
      const T* const c = &src.at(x - k, y);
      const double* const row = m + 4 * k;
      ASSERT_EQ(dst.at(x, y), expectedOf(((row[0] * c[0] + row[1] * c[1]) + row[2] * c[2]) + row[3]));
      ASSERT_EQ(scaled.at(x, y), expectedOf(gains[k] * c[k]));
    }
    ASSERT_EQ(Balance<T>::gainsOnPool(&pool, 3, src.data(), src.step(), pooled.data(), pooled.step(), size, gains),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(scaled, pooled));
    ASSERT_EQ(Balance<T>::gainsInPlace(pooled.data(), pooled.step(), size, gains), DAX_STS_OK);
    ASSERT_EQ(Balance<T>::matrixInPlace(src.data(), src.step(), size, m), DAX_STS_OK);
    ASSERT_TRUE(samePixels(src, dst));
  }
}

TYPED_TEST(BalanceOf, Estimates) {
  using T = TypeParam;
  uint64_t bytes = 0;
  ASSERT_EQ(Balance<T>::patchBuffer(&bytes), DAX_STS_OK);
  GuardedBuffer<uint64_t> buffer(bytes / 8, Guard::after);
  for (int32_t i = 3; i < 60; ++i) {
    const DaxiSize size = {i, 1 + i % 7};
    const auto src = colours<T>(size, static_cast<uint64_t>(i), i % 3);
    std::vector<T> levels[3];
    for (int32_t p = 0; p < size.width * size.height; ++p) {
      const T* const at = &src.at(p % i * 3, p / i);
      if (*std::max_element(at, at + 3) >= Balance<T>::full) continue;
      for (int32_t k = 0; k < 3; ++k) levels[k].push_back(at[k]);
    }
    double sums[3] = {}, gains[3] = {};
    for (int32_t k = 0; k < 3; ++k) {
      for (const T level : levels[k]) sums[k] += level;
      std::sort(levels[k].begin(), levels[k].end());
    }
    ASSERT_EQ(Balance<T>::grayWorld(src.data(), src.step(), size, gains), DAX_STS_OK);
    for (int32_t k = 0; k < 3; ++k) ASSERT_NEAR(gains[k], sums[1] / sums[k], 1e-12 * gains[k]);
    for (const double percentile : {0.07, 0.5, 0.99, 1.0}) {
      const auto count = static_cast<double>(levels[0].size());
      const auto rank = static_cast<size_t>(std::max(1.0, std::ceil(percentile * count - 1e-9)));
      const double at[3] = {static_cast<double>(levels[0][rank - 1]), static_cast<double>(levels[1][rank - 1]),
                            static_cast<double>(levels[2][rank - 1])};
      const bool hasGains = at[0] > 0 && at[1] > 0 && at[2] > 0;
      const DaxStatus status = Balance<T>::whitePatch(src.data(), src.step(), size, percentile, gains, buffer.data());
      ASSERT_EQ(status, hasGains ? DAX_STS_OK : DAX_STS_DEGENERATE);
      for (int32_t k = 0; hasGains && k < 3; ++k) ASSERT_EQ(gains[k], at[1] / at[k]) << percentile;
    }
  }
}

TYPED_TEST(BalanceOf, NothingToGoBy) {
  using T = TypeParam;
  const T full = Balance<T>::full, half = full / 2;
  const T images[][6] = {
      {full, 0, 0, 0, full, 0}, {0, 0, 0}, {0, half, half}, {half, 0, half}, {half, half, 0, full, full, half}};
  double gains[3] = {7, 7, 7};
  uint64_t bytes = 0;
  Balance<T>::patchBuffer(&bytes);
  std::vector<uint64_t> buffer(bytes / 8);
  for (const T* const src : images) {
    EXPECT_EQ(Balance<T>::grayWorld(src, 6, {2, 1}, gains), DAX_STS_DEGENERATE);
    EXPECT_EQ(Balance<T>::whitePatch(src, 6, {2, 1}, 1, gains, buffer.data()), DAX_STS_DEGENERATE);
  }
  EXPECT_EQ(gains[0], 7);
}

}  // namespace
}  // namespace dax::test
