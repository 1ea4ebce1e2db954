#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T, class Defaults, class Query, class Threshold>
void addLocal(Digest& digest, Defaults defaults, Query query, Threshold threshold) {
  TestImage<T> src({203, 61});
  Random random(6);
  src.fill([&](int32_t x, int32_t y) {
    return (sizeof(T) == 1 ? 1 : sizeof(T) == 2 ? 200 : 0.004) * (x + y + random.below(60) % 200);
  });
  TestImage<uint8_t> dst(src.size());
  for (int32_t method = DAXI_LOCAL_MEAN; method <= DAXI_LOCAL_BERNSEN; ++method) {
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

TEST(Digests, ThresholdLocal) {
  Digest digest;
  addLocal<uint8_t>(digest, DAXI_ThresholdLocalDefaultCfg_8u, DAXI_ThresholdLocalBufferSize_8u,
                    DAXI_ThresholdLocal_8u_C1R);
  addLocal<uint16_t>(digest, DAXI_ThresholdLocalDefaultCfg_16u, DAXI_ThresholdLocalBufferSize_16u8u,
                     DAXI_ThresholdLocal_16u8u_C1R);
  addLocal<float>(digest, DAXI_ThresholdLocalDefaultCfg_32f, DAXI_ThresholdLocalBufferSize_32f8u,
                  DAXI_ThresholdLocal_32f8u_C1R);
  EXPECT_EQ(digest.value(), 94395507738052305u);
}

}  // namespace
}  // namespace dax::test
