#include <gtest/gtest.h>

#include <vector>

#include "daxi/canny.h"
#include "daxi/gauss_recursive.h"
#include "daxi/log_filter.h"
#include "daxi/unsharp.h"
#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class D, class T, class Cfg, class Filter>
void addFiltered(Digest& digest, const TestImage<T>& src, const Cfg& cfg, Filter filter) {
  TestImage<D> dst(src.size());
  std::vector<double> buffer(1 << 17);
  EXPECT_EQ(filter(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg, buffer.data()), DAX_STS_OK);
  digest.add(dst);
}

TEST(Digests, GaussFamily) {
  Digest digest;
  Random random(3);
  TestImage<uint8_t> bytes({203, 41});
  TestImage<float> floats(bytes.size());
  bytes.fill([&](int32_t x, int32_t y) { return (x / 9 + y / 7) % 3 * 60 + random.below(70); });
  floats.fill([&](int32_t, int32_t) { return static_cast<float>(random.below(65536)) / 9; });
  const DaxiGaussCfg gauss = {2.2, {0, 0}, DAXI_BORDER_MIRROR, 0, 0};
  const DaxiUnsharpCfg unsharp = {1.7, {0, 0}, DAXI_BORDER_MIRROR, 0, 0, 1.3, 4};
  const DaxiGaussRecursiveCfg recursive = {17, DAXI_BORDER_SYMMETRIC, 0, 0};
  const DaxiCannyCfg canny = {1.1, 40, 130, DAXI_CANNY_L2, 5};
  addFiltered<float>(digest, floats, gauss, DAXI_LoG_32f_C1R);
  addFiltered<uint8_t>(digest, bytes, unsharp, DAXI_Unsharp_8u_C1R);
  addFiltered<float>(digest, floats, recursive, DAXI_FilterGaussRecursive_32f_C1R);
  addFiltered<uint8_t>(digest, bytes, canny, DAXI_Canny_8u_C1R);
  EXPECT_EQ(digest.value(), 5247309525098078818u);
}

}  // namespace
}  // namespace dax::test
