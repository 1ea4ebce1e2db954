#include <gtest/gtest.h>

#include <cmath>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

template <class T>
void addNumber(Digest& digest, const T& number) {
  digest.add(&number, sizeof number);
}

TEST(Digests, SumsAndNorms) {
  TestImage<float> floats({517, 37}, 3);
  TestImage<int16_t> shorts({517, 37}), others({517, 37});
  TestImage<uint8_t> mask({517, 37});
  Random random(6);
  floats.fill([&](int32_t, int32_t) {
    const int32_t mantissa = random.below(1 << 20) - (1 << 18);
    return std::ldexp(mantissa, random.below(60) - 30);
  });
  shorts.randomize(7), others.randomize(8), mask.randomize(9);
  mask.fill([&](int32_t x, int32_t y) { return mask.at(x, y) & 1; });
  Digest digest;
  double value[4];
  DaxiPoint32s places[2];
  float extremes[2];
  const DaxiSize size = floats.size();
  ASSERT_EQ(DAXI_MeanStdDev_32f_C1R(floats.data(), floats.step(), size, value, value + 1), DAX_STS_OK);
  ASSERT_EQ(DAXI_Sum_32f_C1MR(floats.data(), floats.step(), mask.data(), mask.step(), size, value + 2), DAX_STS_OK);
  ASSERT_EQ(DAXI_NormL2_32f_C1R(floats.data(), floats.step(), size, value + 3), DAX_STS_OK);
  addNumber(digest, value);
  ASSERT_EQ(DAXI_MeanStdDev_16s_C1R(shorts.data(), shorts.step(), size, value, value + 1), DAX_STS_OK);
  ASSERT_EQ(DAXI_NormDiffL2_16s_C1R(shorts.data(), 517, others.data(), 517, size, value + 2), DAX_STS_OK);
  ASSERT_EQ(DAXI_NormDiffInf_16s_C1R(shorts.data(), 517, others.data(), 517, size, value + 3), DAX_STS_OK);
  addNumber(digest, value);
  ASSERT_EQ(DAXI_MinMax_32f_C1R(floats.data(), floats.step(), size, extremes, extremes + 1, places, places + 1),
            DAX_STS_OK);
  addNumber(digest, extremes), addNumber(digest, places);
  EXPECT_EQ(digest.value(), 0x0396D8DD81761DD6u);
}

TEST(Digests, HistogramsAndPercentiles) {
  TestImage<float> floats({301, 37});
  Random random(4);
  floats.fill([&](int32_t, int32_t) { return (random.below(2001) - 1000) / 1000.0; });
  double edges[100];
  uint64_t counts[100], bytes = 0;
  DaxiHistogramOutside outside;
  Digest digest;
  ASSERT_EQ(DAXI_HistogramEven_32f_C1R(floats.data(), 301, floats.size(), 100, -0.9, 0.8, counts, &outside, edges),
            DAX_STS_OK);
  addNumber(digest, counts), addNumber(digest, outside);
  ASSERT_EQ(DAXI_PercentilesBufferSize_32f(floats.size(), &bytes), DAX_STS_OK);
  std::vector<uint64_t> buffer(bytes / sizeof(uint64_t));
  const double shares[] = {0.01, 0.5, 0.77};
  float values[3];
  ASSERT_EQ(DAXI_Percentiles_32f_C1R(floats.data(), 301, floats.size(), shares, 3, values, buffer.data()), DAX_STS_OK);
  addNumber(digest, values);
  EXPECT_EQ(digest.value(), 0xBBF4C0DD7A3C2BE6u);
}

TEST(Digests, IntegralsProjectionsMoments) {
  TestImage<uint8_t> bytes({301, 37});
  TestImage<float> floats(bytes.size());
  TestImage<uint32_t> sums({302, 38});
  TestImage<double> realSums({302, 38});
  bytes.randomize(3);
  floats.fill([&](int32_t x, int32_t y) { return bytes.at(x, y) / 7.0; });
  Digest digest;
  DaxiMoments moments;
  double columns[301];
  ASSERT_EQ(DAXI_Integral_8u32u_C1R(bytes.data(), 301, sums.data(), 302, bytes.size()), DAX_STS_OK);
  digest.add(sums);
  ASSERT_EQ(DAXI_IntegralSqr_32f64f_C1R(floats.data(), 301, realSums.data(), 302, bytes.size()), DAX_STS_OK);
  digest.add(realSums);
  ASSERT_EQ(DAXI_ProjectColumns_32f_C1R(floats.data(), 301, bytes.size(), columns), DAX_STS_OK);
  addNumber(digest, columns);
  ASSERT_EQ(DAXI_Moments_8u_C1R(bytes.data(), 301, bytes.size(), &moments), DAX_STS_OK);
  addNumber(digest, moments);
  ASSERT_EQ(DAXI_Moments_32f_C1R(floats.data(), 301, bytes.size(), &moments), DAX_STS_OK);
  addNumber(digest, moments);
  EXPECT_EQ(digest.value(), 0xADDF862AC81B4C21u);
}

}  // namespace
}  // namespace dax::test
