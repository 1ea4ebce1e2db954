#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

template <class T>
void add(Digest& digest, DaxStatus (*median)(const T*, int32_t, T*, int32_t, DaxiSize)) {
  TestImage<T> src({203, 41}), dst(src.size());
  src.randomize(5);
  ASSERT_EQ(median(src.data(), src.step(), dst.data(), dst.step(), src.size()), DAX_STS_OK);
  digest.add(dst);
}

TEST(Digests, FilterMedian5x5) {
  Digest digest;
  add<uint8_t>(digest, DAXI_FilterMedian5x5_8u_C1R);
  add<uint16_t>(digest, DAXI_FilterMedian5x5_16u_C1R);
  add<int16_t>(digest, DAXI_FilterMedian5x5_16s_C1R);
  add<float>(digest, DAXI_FilterMedian5x5_32f_C1R);
  EXPECT_EQ(digest.value(), 0x689D3F74551304A7u);
}

}  // namespace
}  // namespace dax::test
