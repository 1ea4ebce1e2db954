#include <gtest/gtest.h>

#include "daxi.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

TEST(Digests, FilterBox) {
  std::vector<uint8_t> buffer(4 * 512);
  Digest digest;
  const auto add = [&](auto* box, auto pixel, auto sum) {
    TestImage<decltype(pixel)> src({301, 203});
    TestImage<decltype(sum)> dst(src.size());
    Random random(6);
    src.fill([&](int32_t, int32_t) { return decltype(pixel)(random.below(256)) / decltype(pixel)(3); });
    for (const int32_t radius : {1, 7, 60}) {
      ASSERT_EQ(box(src.data(), src.step(), dst.data(), dst.step(), src.size(), radius, buffer.data()), DAX_STS_OK);
      digest.add(dst);
    }
  };
  add(DAXI_FilterBox_8u32s_C1R, uint8_t{}, int32_t{});
  add(DAXI_FilterBox_16s32f_C1R, int16_t{}, float{});
  add(DAXI_FilterBox_32s_C1R, int32_t{}, int32_t{});
  add(DAXI_FilterBox_32f_C1R, float{}, float{});
  EXPECT_EQ(digest.value(), 0xF1EAF9B45932609Eu);
}

}  // namespace
}  // namespace dax::test
