#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/support/digest.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
using GrayFilter = DaxStatus (*)(const T*, int32_t, T*, int32_t, DaxiSize, const DaxiGrayMorphologyCfg*, void*);

template <class T, class... Filter>
void addGray(Digest& digest, Filter... filters) {
  const DaxiGrayMorphologyCfg cfg = {{14, 6}, 3, 4, 1, DAXI_BORDER_SYMMETRIC, 0};
  TestImage<T> src({203, 41}), dst(src.size());
  src.randomize(6);
  std::vector<double> buffer(1 << 15);
  const auto add = [&](GrayFilter<T> filter) {
    EXPECT_EQ(filter(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg, buffer.data()), DAX_STS_OK);
    digest.add(dst);
  };
  (add(filters), ...);
}

TEST(Digests, GrayMorphology) {
  Digest digest;
  addGray<uint8_t>(digest, DAXI_GrayErodeRect_8u_C1R, DAXI_GrayClose_8u_C1R, DAXI_GrayGradient_8u_C1R);
  addGray<uint16_t>(digest, DAXI_GrayDilateRect_16u_C1R, DAXI_GrayTopHat_16u_C1R);
  addGray<int16_t>(digest, DAXI_GrayOpen_16s_C1R, DAXI_GrayBlackHat_16s_C1R);
  addGray<float>(digest, DAXI_GrayErodeRect_32f_C1R, DAXI_GrayClose_32f_C1R);
  EXPECT_EQ(digest.value(), 0xFEC8D691E516BA18u);
}

}  // namespace
}  // namespace dax::test
