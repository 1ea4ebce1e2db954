// Sums, means and deviations against their definitions.
#include "daxi/sum.h"

#include <gtest/gtest.h>
#include <sys/mman.h>

#include <stdexcept>

#include "image/statistics/pixel_runs.h"
#include "tests/image/statistics/statistics_oracle.h"

namespace dax::test {
namespace {

template <class T>
struct SumForms;
#define SUM_FORMS(SUFFIX, T)                                                                                  \
  template <>                                                                                                 \
  struct SumForms<T> {                                                                                        \
    static constexpr auto sum1 = DAXI_Sum_##SUFFIX##_C1R, sum3 = DAXI_Sum_##SUFFIX##_C3R;                     \
    static constexpr auto sum1M = DAXI_Sum_##SUFFIX##_C1MR, sum3M = DAXI_Sum_##SUFFIX##_C3MR;                 \
    static constexpr auto mean1 = DAXI_Mean_##SUFFIX##_C1R, mean3 = DAXI_Mean_##SUFFIX##_C3R;                 \
    static constexpr auto mean1M = DAXI_Mean_##SUFFIX##_C1MR, mean3M = DAXI_Mean_##SUFFIX##_C3MR;             \
    static constexpr auto both1 = DAXI_MeanStdDev_##SUFFIX##_C1R, both3 = DAXI_MeanStdDev_##SUFFIX##_C3R;     \
    static constexpr auto both1M = DAXI_MeanStdDev_##SUFFIX##_C1MR, both3M = DAXI_MeanStdDev_##SUFFIX##_C3MR; \
  };
SUM_FORMS(8u, uint8_t)
SUM_FORMS(16u, uint16_t)
SUM_FORMS(16s, int16_t)
SUM_FORMS(32f, float)
#undef SUM_FORMS

template <class T>
class Sum : public testing::Test {};
using PixelTypes = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(Sum, PixelTypes);

// Whole numbers from the ends of the type; floats of many magnitudes, whose sums depend on the order.
template <class T>
void fillWithNumbers(TestImage<T>& image, uint64_t seed) {
  Random random(seed);
  image.fill([&](int32_t, int32_t) -> T {
    if constexpr (std::is_integral_v<T>) {
      return static_cast<T>(random.next());
    } else {
      return std::ldexp(static_cast<T>(random.below(1 << 20) - (1 << 18)), random.below(60) - 30);
    }
  });
}

TYPED_TEST(Sum, RaggedSizesChannelsAndMasks) {
  using T = TypeParam;
  using Forms = SumForms<T>;
  const std::vector<DaxiSize> sizes = {{1, 1}, {7, 3}, {8, 8}, {9, 2}, {511, 3}, {513, 17}, {1025, 5}, {40000, 1}};
  for (size_t i = 0; i < 4 * sizes.size(); ++i) {
    const DaxiSize size = sizes[i / 4];
    const int32_t channels = i % 2 ? 3 : 1, gap = static_cast<int32_t>(i % 3);
    const bool masked = i % 4 >= 2;
    TestImage<T> image({size.width * channels, size.height}, gap, kGuards[i % 2]);
    TestImage<uint8_t> mask(size, gap);
    fillWithNumbers(image, i);
    Random random(i + 99);
    mask.fill([&](int32_t x, int32_t) { return x % 64 < 20 ? 0 : random.below(3) ? 1 + random.below(255) : 0; });
    mask.at(0, 0) = 1;

    double sum[3], mean[3], meanToo[3], stdDev[3];
    const auto run = [&](auto plain, auto withMask, auto... results) {
      return masked ? withMask(image.data(), image.step(), mask.data(), mask.step(), size, results...)
                    : plain(image.data(), image.step(), size, results...);
    };
    if (channels == 1) {
      ASSERT_EQ(run(Forms::sum1, Forms::sum1M, sum), DAX_STS_OK);
      ASSERT_EQ(run(Forms::mean1, Forms::mean1M, mean), DAX_STS_OK);
      ASSERT_EQ(run(Forms::both1, Forms::both1M, meanToo, stdDev), DAX_STS_OK);
    } else {
      ASSERT_EQ(run(Forms::sum3, Forms::sum3M, sum), DAX_STS_OK);
      ASSERT_EQ(run(Forms::mean3, Forms::mean3M, mean), DAX_STS_OK);
      ASSERT_EQ(run(Forms::both3, Forms::both3M, meanToo, stdDev), DAX_STS_OK);
    }
    for (int32_t c = 0; c < channels; ++c) {
      const std::vector<T> pixels = oracle::chosenPixels(image, masked ? &mask : nullptr, channels, c);
      ASSERT_EQ(sum[c], oracle::sumOf(pixels, [](auto x) { return x; })) << size.width << " channel " << c;
      ASSERT_EQ(mean[c], oracle::mean(pixels));
      ASSERT_EQ(meanToo[c], mean[c]);
      ASSERT_EQ(stdDev[c], oracle::stdDev(pixels)) << size.width << " channel " << c;
    }
  }
}

// All pixels at the end of the type: no lane overflows, and the deviation is exactly 0.
TYPED_TEST(Sum, EndsOfTheType) {
  using T = TypeParam;
  TestImage<T> image({1000, 300});
  for (const T value : {std::numeric_limits<T>::lowest(), std::numeric_limits<T>::max()}) {
    image.fill([&](int32_t, int32_t) { return value; });
    double mean, stdDev;
    ASSERT_EQ(SumForms<T>::both1(image.data(), image.step(), image.size(), &mean, &stdDev), DAX_STS_OK);
    EXPECT_EQ(mean, static_cast<double>(value));
    EXPECT_EQ(stdDev, 0);
  }
}

// A row of as many pixels as the type of its width counts, whose memory nobody reads.
TEST(PixelRuns, OfTheLongestRow) {
  void* const map = mmap(nullptr, INT32_MAX, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1, 0);
  ASSERT_NE(map, MAP_FAILED);
  const auto* const row = static_cast<const uint8_t*>(map);
  ptrdiff_t seen = 0;
  const auto visit = [&](const uint8_t* run, int32_t count) {
    if (run - row != seen || count > INT32_MAX - seen) throw std::out_of_range("run");
    seen += count;
  };
  forEachRunOfRow<1>(INT32_MAX, visit, nullptr, row);
  EXPECT_EQ(seen, INT32_MAX);
  munmap(map, INT32_MAX);
}

TYPED_TEST(Sum, EmptyMask) {
  using T = TypeParam;
  using Forms = SumForms<T>;
  TestImage<T> image({20, 3});
  TestImage<uint8_t> mask({20, 3});
  image.fill([](int32_t, int32_t) { return 5; });
  mask.fill([](int32_t, int32_t) { return 0; });
  double sum = -1, mean = -1, stdDev = -1;
  EXPECT_EQ(Forms::sum1M(image.data(), 20, mask.data(), 20, {20, 3}, &sum), DAX_STS_OK);
  EXPECT_EQ(Forms::mean1M(image.data(), 20, mask.data(), 20, {20, 3}, &mean), DAX_STS_DEGENERATE);
  EXPECT_EQ(Forms::both1M(image.data(), 20, mask.data(), 20, {20, 3}, &mean, &stdDev), DAX_STS_DEGENERATE);
  EXPECT_EQ(sum, 0);
  EXPECT_EQ(mean, -1);
  EXPECT_EQ(stdDev, -1);
}

// Two values far from zero that lie close to each other, and more ones than a float can count.
TEST(SumOfFloats, KeepsWhatOnePassLoses) {
  TestImage<float> image({1000, 1000});
  double mean, stdDev;
  const auto measure = [&](float low, float high) {
    image.fill([&](int32_t x, int32_t) { return x % 2 ? low : high; });
    return DAXI_MeanStdDev_32f_C1R(image.data(), image.step(), image.size(), &mean, &stdDev);
  };
  ASSERT_EQ(measure(1e6f, 1e6f + 0.125f), DAX_STS_OK);
  EXPECT_DOUBLE_EQ(stdDev, 0.0625);
  ASSERT_EQ(measure(1e9f, 1e9f + 64), DAX_STS_OK);
  EXPECT_EQ(stdDev, 32);

  TestImage<float> ones({4100, 4100});
  ones.fill([](int32_t, int32_t) { return 1; });
  double sum;
  ASSERT_EQ(DAXI_Sum_32f_C1R(ones.data(), ones.step(), ones.size(), &sum), DAX_STS_OK);
  EXPECT_EQ(sum, 4100.0 * 4100);
}

// The order is that of the region's pixels, whatever lies between its rows.
TEST(SumOfFloats, DoesNotDependOnTheStep) {
  TestImage<float> packed({61, 99}), padded({61, 99}, 7);
  fillWithNumbers(packed, 4);
  padded.fill([&](int32_t x, int32_t y) { return packed.at(x, y); });
  double one, other;
  ASSERT_EQ(DAXI_Sum_32f_C1R(packed.data(), packed.step(), packed.size(), &one), DAX_STS_OK);
  ASSERT_EQ(DAXI_Sum_32f_C1R(padded.data(), padded.step(), padded.size(), &other), DAX_STS_OK);
  EXPECT_EQ(one, other);
}

TEST(SumOfFloats, NanAndInfinities) {
  TestImage<float> image({30, 1});
  for (int32_t at = 0; at < 30; ++at) {
    image.fill([&](int32_t x, int32_t) { return x == at ? NAN : 1; });
    double sum;
    ASSERT_EQ(DAXI_Sum_32f_C1R(image.data(), 30, {30, 1}, &sum), DAX_STS_OK);
    EXPECT_TRUE(std::isnan(sum) && !std::signbit(sum)) << at;
  }
  image.fill([&](int32_t x, int32_t) { return x == 3 ? INFINITY : 1; });
  double mean, stdDev;
  ASSERT_EQ(DAXI_MeanStdDev_32f_C1R(image.data(), 30, {30, 1}, &mean, &stdDev), DAX_STS_OK);
  EXPECT_EQ(mean, INFINITY);
  EXPECT_TRUE(std::isnan(stdDev) && !std::signbit(stdDev));
}

}  // namespace
}  // namespace dax::test
