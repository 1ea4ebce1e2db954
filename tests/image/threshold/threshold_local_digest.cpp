#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T, class Defaults, class Query, class Threshold>
void addLocal(Digest& digest, int32_t first, int32_t last, Defaults defaults, Query query, Threshold threshold) {
  TestImage<T> src({203, 61});
  Random random(6);
  src.fill([&](int32_t x, int32_t y) {
    return (sizeof(T) == 1 ? 1 : sizeof(T) == 2 ? 200 : 0.004) * (x + y + random.below(60) % 200);
  });
  TestImage<uint8_t> dst(src.size());
  for (int32_t method = first; method <= last; ++method) {
    DaxiThresholdLocalCfg cfg;
    ASSERT_EQ(defaults(method, &cfg), DAX_STS_OK);
    cfg.window = {14, 9};
    uint64_t bytes = 0;
    ASSERT_EQ(query(src.size(), &cfg, &bytes), DAX_STS_OK);
    std::vector<double> buffer(bytes / sizeof(double));
    ASSERT_EQ(threshold(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg, buffer.data()), DAX_STS_OK);
    digest.add(dst);
  }
}

uint64_t digestOf(int32_t first, int32_t last) {
  Digest digest;
  addLocal<uint8_t>(digest, first, last, DAXI_ThresholdLocalDefaultCfg_8u, DAXI_ThresholdLocalBufferSize_8u,
                    DAXI_ThresholdLocal_8u_C1R);
  addLocal<uint16_t>(digest, first, last, DAXI_ThresholdLocalDefaultCfg_16u, DAXI_ThresholdLocalBufferSize_16u8u,
                     DAXI_ThresholdLocal_16u8u_C1R);
  addLocal<float>(digest, first, last, DAXI_ThresholdLocalDefaultCfg_32f, DAXI_ThresholdLocalBufferSize_32f8u,
                  DAXI_ThresholdLocal_32f8u_C1R);
  return digest.value();
}

TEST(Digests, ThresholdLocal) {
  EXPECT_EQ(digestOf(DAXI_LOCAL_MEAN, DAXI_LOCAL_BERNSEN), 94395507738052305u);
}

TEST(Digests, ThresholdLocalGauss) {
  EXPECT_EQ(digestOf(DAXI_LOCAL_GAUSS, DAXI_LOCAL_GAUSS), 2699694004916094898u);
}

}  // namespace
}  // namespace dax::test
