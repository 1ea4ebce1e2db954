#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "daxi.h"
#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T, class D, class Query, class Statistic>
void addStatistic(Digest& digest, Query query, Statistic statistic) {
  const DaxiLocalStatisticsCfg cfg = {{14, 7}, DAXI_BORDER_CLIP, 0, 0};
  TestImage<T> src({103, 41});
  TestImage<D> dst(src.size());
  Random random(6);
  src.fill([&](int32_t, int32_t) { return (sizeof(T) == 1 ? 1 : sizeof(T) == 2 ? 250 : 0.004) * random.below(250); });
  if constexpr (std::is_floating_point_v<T>) src.at(50, 20) = -std::numeric_limits<T>::quiet_NaN();
  uint64_t bytes = 0;
  ASSERT_EQ(query(src.size(), &cfg, &bytes), DAX_STS_OK);
  std::vector<double> buffer(bytes / sizeof(double));
  ASSERT_EQ(statistic(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg, buffer.data()), DAX_STS_OK);
  digest.add(dst);
}

TEST(Digests, LocalStatistics) {
  Digest digest;
  addStatistic<uint8_t, float>(digest, DAXI_LocalMeanBufferSize_8u32f, DAXI_LocalMean_8u32f_C1R);
  addStatistic<float, float>(digest, DAXI_LocalMeanBufferSize_32f, DAXI_LocalMean_32f_C1R);
  addStatistic<uint16_t, float>(digest, DAXI_LocalStdDevBufferSize_16u32f, DAXI_LocalStdDev_16u32f_C1R);
  addStatistic<float, float>(digest, DAXI_LocalStdDevBufferSize_32f, DAXI_LocalStdDev_32f_C1R);
  addStatistic<uint8_t, float>(digest, DAXI_LocalEntropyBufferSize_8u32f, DAXI_LocalEntropy_8u32f_C1R);
  addStatistic<float, float>(digest, DAXI_LocalRangeBufferSize_32f, DAXI_LocalRange_32f_C1R);
  EXPECT_EQ(digest.value(), 15770906814199059295u);
}

}  // namespace
}  // namespace dax::test
