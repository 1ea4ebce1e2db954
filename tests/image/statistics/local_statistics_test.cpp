#include "daxi/local_statistics.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <vector>

#include "tests/image/threshold/threshold_local_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

enum Statistic { mean, deviation, entropy, range };

template <class T, class D>
struct Functions {
  DaxStatus (*bytes)(DaxiSize, const DaxiLocalStatisticsCfg*, uint64_t*);
  DaxStatus (*pooledBytes)(DaxiSize, const DaxiLocalStatisticsCfg*, uint32_t, uint64_t*);
  DaxStatus (*plain)(const T*, int32_t, D*, int32_t, DaxiSize, const DaxiLocalStatisticsCfg*, void*);
  DaxStatus (*pooled)(void*, uint32_t, const T*, int32_t, D*, int32_t, DaxiSize, const DaxiLocalStatisticsCfg*, void*);
};
#define DAX_FUNCTIONS(NAME, SUFFIX)                                                    \
  {                                                                                    \
    DAXI_Local##NAME##BufferSize_##SUFFIX, DAXI_Local##NAME##BufferSize_##SUFFIX##_MT, \
        DAXI_Local##NAME##_##SUFFIX##_C1R, DAXI_Local##NAME##_##SUFFIX##_C1R_MT        \
  }

long double expectedOf(Statistic statistic, const std::vector<long double>& pixels) {
  const oracle::WindowMoments moments(pixels);
  if (statistic == mean) return moments.mean;
  if (statistic == deviation) return moments.deviation;
  const auto [low, high] = std::minmax_element(pixels.begin(), pixels.end());
  if (statistic == range) return *high - *low;
  std::map<long double, long double> counts;
  for (const long double v : pixels) ++counts[v];
  long double sum = 0;
  for (const auto& [v, count] : counts) {
    const long double share = count / static_cast<long double>(pixels.size());
    sum -= share * std::log2(share);
  }
  return sum;
}

// Greys in the middle of the type: floats are multiples of 1/8, which have exact sums.
template <class T, class D>
void checkStatistic(Statistic statistic, const Functions<T, D>& f) {
  Random random(statistic + 5);
  for (int32_t round = 0; round < 42; ++round) {
    DaxiLocalStatisticsCfg cfg;
    ASSERT_EQ(DAXI_LocalStatisticsDefaultCfg(&cfg), DAX_STS_OK);
    cfg.window = {1 + random.below(9), 1 + random.below(9)};
    cfg.border = round % 7, cfg.value = random.below(100);
    if (round % 14 == 0) cfg.window = {300, statistic == entropy ? 218 : 219};
    const int32_t margin = cfg.border == DAXI_BORDER_IN_MEMORY ? 10 : 0;
    const DaxiSize size = {1 + random.below(round % 14 == 0 ? 5 : 50), 1 + random.below(round % 14 == 0 ? 5 : 14)};
    TestImage<T> src({size.width + 2 * margin, size.height + 2 * margin}, 1);
    src.fill([&](int32_t, int32_t) {
      return (sizeof(T) == 2 ? 250 : 1.0) * random.below(sizeof(T) == 4 ? 2000 : 250) / (sizeof(T) == 4 ? 8 : 1);
    });
    uint64_t bytes = 0, pooledBytes = 0;
    ASSERT_EQ(f.bytes(size, &cfg, &bytes), DAX_STS_OK);
    ASSERT_EQ(f.pooledBytes(size, &cfg, 3, &pooledBytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes), slices(pooledBytes);
    TestImage<D> dst(size, 2), again(size);
    dst.remember();
    ASSERT_EQ(f.plain(&src.at(margin, margin), src.step(), dst.data(), dst.step(), size, &cfg, buffer.data()),
              DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    const auto pixel = [&](int64_t x, int64_t y) {
      return src.at(static_cast<int32_t>(x) + margin, static_cast<int32_t>(y) + margin);
    };
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width; ++x) {
        const auto pixels = oracle::windowPixels(pixel, x, y, size, cfg.window, cfg.border, cfg.value);
        const auto expected = static_cast<double>(expectedOf(statistic, pixels));
        const double tolerance = statistic == range ? 0 : statistic == entropy ? 1e-5 : 1e-6 * (1e-3 + expected);
        ASSERT_NEAR(static_cast<double>(dst.at(x, y)), expected, tolerance)
            << x << ", " << y << " border " << cfg.border;
      }
    }
    MockPool pool;
    ASSERT_EQ(
        f.pooled(&pool, 3, &src.at(margin, margin), src.step(), again.data(), again.step(), size, &cfg, slices.data()),
        DAX_STS_OK);
    ASSERT_TRUE(samePixels(dst, again)) << "on a pool";
  }
}

TEST(LocalStatistics, EqualTheWindowsPixelByPixel) {
  checkStatistic<uint8_t, float>(mean, DAX_FUNCTIONS(Mean, 8u32f));
  checkStatistic<uint16_t, float>(mean, DAX_FUNCTIONS(Mean, 16u32f));
  checkStatistic<float, float>(mean, DAX_FUNCTIONS(Mean, 32f));
  checkStatistic<uint8_t, float>(deviation, DAX_FUNCTIONS(StdDev, 8u32f));
  checkStatistic<uint16_t, float>(deviation, DAX_FUNCTIONS(StdDev, 16u32f));
  checkStatistic<float, float>(deviation, DAX_FUNCTIONS(StdDev, 32f));
  checkStatistic<uint8_t, uint8_t>(range, DAX_FUNCTIONS(Range, 8u));
  checkStatistic<uint16_t, uint16_t>(range, DAX_FUNCTIONS(Range, 16u));
  checkStatistic<float, float>(range, DAX_FUNCTIONS(Range, 32f));
}

TEST(LocalStatistics, Entropy) {
  constexpr Functions<uint8_t, float> kEntropy = DAX_FUNCTIONS(Entropy, 8u32f);
  checkStatistic<uint8_t, float>(entropy, kEntropy);
  checkStatistic<uint16_t, float>(entropy, DAX_FUNCTIONS(Entropy, 16u32f));
  // As many levels as there are, and more pixels than a window may have.
  TestImage<uint8_t> src({16, 16});
  src.fill([](int32_t x, int32_t y) { return 16 * y + x; });
  TestImage<float> dst({16, 16});
  DaxiLocalStatisticsCfg cfg = {{16, 16}, DAXI_BORDER_CIRCULAR, 0, 0};
  uint64_t bytes = 0;
  ASSERT_EQ(kEntropy.bytes({16, 16}, &cfg, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  ASSERT_EQ(kEntropy.plain(src.data(), 16, dst.data(), 16, {16, 16}, &cfg, buffer.data()), DAX_STS_OK);
  EXPECT_EQ(dst.at(3, 9), 8);
  cfg.window = {256, 257};
  EXPECT_EQ(kEntropy.bytes({16, 16}, &cfg, &bytes), DAX_STS_BAD_PARAM);
}
#undef DAX_FUNCTIONS

}  // namespace
}  // namespace dax::test
