#include "image/gradient/sobel.h"

#include <gtest/gtest.h>

#include "tests/support/test_image.h"

namespace dax::test {
namespace {

// Of whole numbers, so that sums are exact; the source begins one pixel above and to the left.
TEST(Sobel, ByDefinition) {
  for (const DaxiSize size : {DaxiSize{1, 1}, {3, 2}, {4, 5}, {9, 3}, {16, 1}}) {
    TestImage<float> src({size.width + 2, size.height + 2}, 1), along(size, 2), across(size, 3);
    src.fill([](int32_t x, int32_t y) { return x * x * 3 + 7 * y - x * y * y; });
    along.remember(), across.remember();
    _DAXI_FilterSobelHori_32f_C1R(src.data(), src.step(), along.data(), along.step(), size);
    _DAXI_FilterSobelVert_32f_C1R(src.data(), src.step(), across.data(), across.step(), size);
    EXPECT_TRUE(along.paddingUntouched() && across.paddingUntouched());
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width; ++x) {
        float gx = 0, gy = 0;
        for (const int32_t i : {-1, 0, 1}) {
          const auto weight = static_cast<float>(2 - i * i);
          gx += weight * (src.at(x + 2, y + 1 + i) - src.at(x, y + 1 + i));
          gy += weight * (src.at(x + 1 + i, y + 2) - src.at(x + 1 + i, y));
        }
        EXPECT_EQ(along.at(x, y), gx);
        EXPECT_EQ(across.at(x, y), gy);
      }
    }
  }
}

}  // namespace
}  // namespace dax::test
