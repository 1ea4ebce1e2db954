#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
TestImage<T> picture(uint64_t seed) {
  TestImage<T> image({103, 41});
  Random random(seed);
  return std::move(image.fill([&](int32_t x, int32_t) { return (x / 9 % 2 ? 150 : 40) + random.below(60); }));
}

template <class T, class Query, class Filter>
void addGuided(Digest& digest, Query query, Filter filter, int32_t subsample) {
  const DaxiFilterGuidedCfg cfg = {5, subsample, 150};
  const TestImage<T> src = picture<T>(3), guide = picture<T>(4);
  TestImage<T> dst(src.size());
  uint64_t bytes = 0;
  ASSERT_EQ(query(src.size(), &cfg, &bytes), DAX_STS_OK);
  std::vector<double> buffer(bytes / sizeof(double));
  for (const TestImage<T>* each : {&src, &guide}) {
    ASSERT_EQ(filter(src.data(), src.step(), each->data(), each->step(), dst.data(), dst.step(), src.size(), &cfg,
                     buffer.data()),
              DAX_STS_OK);
    digest.add(dst);
  }
}

TEST(Digests, FilterGuided) {
  Digest digest;
  addGuided<uint8_t>(digest, DAXI_FilterGuidedBufferSize_8u, DAXI_FilterGuided_8u_C1R, 1);
  addGuided<uint16_t>(digest, DAXI_FilterGuidedBufferSize_16u, DAXI_FilterGuided_16u_C1R, 3);
  addGuided<float>(digest, DAXI_FilterGuidedBufferSize_32f, DAXI_FilterGuided_32f_C1R, 1);
  EXPECT_EQ(digest.value(), 10323189749340062567u);
}

template <class T, class Query, class Filter>
void addBilateral(Digest& digest, Query query, Filter filter) {
  const DaxiFilterBilateralCfg cfg = {4, DAXI_BORDER_MIRROR, 2, 20, 0};
  const TestImage<T> src = picture<T>(5);
  TestImage<T> dst(src.size());
  uint64_t bytes = 0;
  ASSERT_EQ(query(src.size(), &cfg, &bytes), DAX_STS_OK);
  std::vector<double> buffer(bytes / sizeof(double));
  ASSERT_EQ(filter(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg, buffer.data()), DAX_STS_OK);
  digest.add(dst);
}

TEST(Digests, FilterBilateral) {
  Digest digest;
  addBilateral<uint8_t>(digest, DAXI_FilterBilateralBufferSize_8u, DAXI_FilterBilateral_8u_C1R);
  addBilateral<float>(digest, DAXI_FilterBilateralBufferSize_32f, DAXI_FilterBilateral_32f_C1R);
  EXPECT_EQ(digest.value(), 7420475067082678244u);
}

}  // namespace
}  // namespace dax::test
