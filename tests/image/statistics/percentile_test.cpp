// Percentiles against sorted pixels.
#include "daxi/percentile.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "tests/image/statistics/statistics_oracle.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

template <class T>
struct PercentileForms;
#define PERCENTILE_FORMS(SUFFIX, T, ...)                                                                              \
  template <>                                                                                                         \
  struct PercentileForms<T> {                                                                                         \
    template <class... A>                                                                                             \
    static DaxStatus percentiles(const TestImage<T>& image, const TestImage<uint8_t>* mask, A... a) {                 \
      [[maybe_unused]] std::vector<uint8_t> work(bytes(image.size()));                                                \
      return mask ? DAXI_Percentiles_##SUFFIX##_C1MR(image.data(), image.step(), mask->data(), mask->step(),          \
                                                     image.size(), a... __VA_OPT__(, ) __VA_ARGS__)                   \
                  : DAXI_Percentiles_##SUFFIX##_C1R(image.data(), image.step(), image.size(),                         \
                                                    a... __VA_OPT__(, ) __VA_ARGS__);                                 \
    }                                                                                                                 \
    static DaxStatus median(const TestImage<T>& image, const TestImage<uint8_t>* mask, T* value) {                    \
      [[maybe_unused]] std::vector<uint8_t> work(bytes(image.size()));                                                \
      return mask ? DAXI_Median_##SUFFIX##_C1MR(image.data(), image.step(), mask->data(), mask->step(), image.size(), \
                                                value __VA_OPT__(, ) __VA_ARGS__)                                     \
                  : DAXI_Median_##SUFFIX##_C1R(image.data(), image.step(), image.size(),                              \
                                               value __VA_OPT__(, ) __VA_ARGS__);                                     \
    }                                                                                                                 \
    static size_t bytes([[maybe_unused]] DaxiSize size) {                                                             \
      uint64_t need = 0;                                                                                              \
      __VA_OPT__(EXPECT_EQ(DAXI_PercentilesBufferSize_##SUFFIX(size, &need), DAX_STS_OK);)                            \
      return static_cast<size_t>(need);                                                                               \
    }                                                                                                                 \
  };
PERCENTILE_FORMS(8u, uint8_t)
PERCENTILE_FORMS(16u, uint16_t, work.data())
PERCENTILE_FORMS(16s, int16_t, work.data())
PERCENTILE_FORMS(32f, float, work.data())
#undef PERCENTILE_FORMS

template <class T>
std::vector<T> sorted(const TestImage<T>& image, const TestImage<uint8_t>* mask) {
  std::vector<T> pixels = oracle::chosenPixels(image, mask);
  pixels.erase(std::remove_if(pixels.begin(), pixels.end(), [](T x) { return x != x; }), pixels.end());
  std::sort(pixels.begin(), pixels.end(), [](T a, T b) {
    return a < b || (a == b && std::signbit(static_cast<double>(a)) && !std::signbit(static_cast<double>(b)));
  });
  return pixels;
}

template <class T>
class Percentiles : public testing::Test {};
using PixelTypes = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(Percentiles, PixelTypes);

TEST(PercentilesOnPool, EqualThoseOfOneThread) {
  TestImage<float> image({90, 13});
  TestImage<uint8_t> mask(image.size());
  image.randomize(5), mask.randomize(6);
  const double shares[] = {0.1, 0.5, 0.50001, 1};
  float expected[4], values[4];
  ASSERT_EQ(PercentileForms<float>::percentiles(image, &mask, shares, 4, expected), DAX_STS_OK);
  for (const uint32_t threads : {2u, 5u, 40u}) {
    uint64_t bytes = 0;
    ASSERT_EQ(DAXI_PercentilesBufferSize_32f_MT(image.size(), threads, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes);
    MockPool pool;
    ASSERT_EQ(DAXI_Percentiles_32f_C1MR_MT(&pool, threads, image.data(), image.step(), mask.data(), mask.step(),
                                           image.size(), shares, 4, values, buffer.data()),
              DAX_STS_OK);
    for (int i = 0; i < 4; ++i) ASSERT_TRUE(sameBits(values[i], expected[i])) << shares[i] << ", " << threads;
    pool.failingTile = 1;
    ASSERT_EQ(DAXI_Median_32f_C1R_MT(&pool, threads, image.data(), image.step(), image.size(), values, buffer.data()),
              pool.failure);
  }
}

TYPED_TEST(Percentiles, AreOrderStatistics) {
  using T = TypeParam;
  using Forms = PercentileForms<T>;
  for (const DaxiSize size : {DaxiSize{1, 1}, {2, 1}, {10, 10}, {17, 9}, {600, 40}}) {
    for (int round = 0; round < 4; ++round) {
      TestImage<T> image(size, 2);
      TestImage<uint8_t> mask(size);
      const auto* const chosen = round % 2 ? &mask : nullptr;
      image.randomize(static_cast<uint64_t>(round));  // of floats all bits, NaN and infinities too
      if (round >= 2) image.fill([&](int32_t x, int32_t y) { return (x * 7 + y * 3) % 11 - 5.0; });
      mask.fill([&](int32_t x, int32_t y) { return (x + y) % 3 != 1; });
      if (image.at(0, 0) != image.at(0, 0)) image.at(0, 0) = 0;
      const auto pixels = sorted(image, chosen);
      std::vector<double> shares = {0, 1, 0.5, 0.07, 0.25, 1e-12, 0.999};
      std::vector<T> values(shares.size());
      ASSERT_EQ(Forms::percentiles(image, chosen, shares.data(), static_cast<int32_t>(shares.size()), values.data()),
                DAX_STS_OK);
      for (size_t i = 0; i < shares.size(); ++i) {
        // Shares are decimals of at most twelve places here.
        const oracle::Int128 n = pixels.size(), part = std::llround(shares[i] * 1e12), whole = 1000000000000;
        const auto rank = std::max<int64_t>(1, static_cast<int64_t>((part * n + whole - 1) / whole));
        ASSERT_TRUE(sameBits(values[i], pixels[static_cast<size_t>(rank - 1)])) << shares[i] << " of " << pixels.size();
      }
      T median;
      ASSERT_EQ(Forms::median(image, chosen, &median), DAX_STS_OK);
      EXPECT_TRUE(sameBits(median, pixels[(pixels.size() - 1) / 2]));
    }
  }
}

TYPED_TEST(Percentiles, NothingToChooseFrom) {
  using T = TypeParam;
  TestImage<T> image({9, 2});
  TestImage<uint8_t> mask({9, 2});
  mask.fill([](int32_t, int32_t) { return 0; });
  const double share = 0.5;
  T value = 77;
  EXPECT_EQ(PercentileForms<T>::percentiles(image, &mask, &share, 1, &value), DAX_STS_DEGENERATE);
  EXPECT_EQ(PercentileForms<T>::median(image, &mask, &value), DAX_STS_DEGENERATE);
  if constexpr (std::is_floating_point_v<T>) {
    image.fill([](int32_t, int32_t) { return NAN; });
    EXPECT_EQ(PercentileForms<T>::median(image, nullptr, &value), DAX_STS_DEGENERATE);
  }
  EXPECT_EQ(value, 77);
}

TEST(Percentiles, SharesOutsideAreRefused) {
  TestImage<uint8_t> image({3, 3});
  uint8_t values[2];
  for (const double bad : {-1e-9, 1.0000001, static_cast<double>(NAN)}) {
    const double shares[] = {0.5, bad};
    EXPECT_EQ(DAXI_Percentiles_8u_C1R(image.data(), 3, {3, 3}, shares, 2, values), DAX_STS_BAD_PARAM);
  }
}

}  // namespace
}  // namespace dax::test
