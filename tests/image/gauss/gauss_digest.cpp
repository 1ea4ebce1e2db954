#include "daxi/gauss.h"

#include <gtest/gtest.h>

#include <vector>

#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T, class Filter>
void addGauss(Digest& digest, Filter filter) {
  TestImage<T> src({203, 41}), dst(src.size());
  Random random(8);
  src.fill([&](int32_t, int32_t) { return random.below(65536); });
  std::vector<double> buffer(1 << 17);
  for (const double sigma : {0.8, 2.3, 14.0}) {
    const DaxiGaussCfg cfg = {sigma, {0, 0}, DAXI_BORDER_SYMMETRIC, 0, 0};
    EXPECT_EQ(filter(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg, buffer.data()), DAX_STS_OK);
    digest.add(dst);
  }
}

TEST(Digests, Gauss) {
  Digest digest;
  addGauss<uint8_t>(digest, DAXI_FilterGauss_8u_C1R);
  addGauss<uint16_t>(digest, DAXI_FilterGauss_16u_C1R);
  addGauss<int16_t>(digest, DAXI_FilterGauss_16s_C1R);
  addGauss<float>(digest, DAXI_FilterGauss_32f_C1R);
  EXPECT_EQ(digest.value(), 3091284091185531532u);
}

}  // namespace
}  // namespace dax::test
