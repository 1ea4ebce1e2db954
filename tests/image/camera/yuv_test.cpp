#include "daxi/yuv.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

#include "daxi/ycbcr.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

// The pixels as YCbCr, decoded by the conversion of colours, which has a test of its own.
TestImage<uint8_t> decoded(DaxiSize size, int32_t standard, int32_t range, bool bgr,
                           const std::function<int32_t(int32_t x, int32_t y, int32_t channel)>& sample) {
  TestImage<uint8_t> ycc({3 * size.width, size.height});
  ycc.fill([&](int32_t x, int32_t y) { return sample(x / 3, y, x % 3); });
  (bgr ? DAXI_YCbCrToBGR_8u_C3IR : DAXI_YCbCrToRGB_8u_C3IR)(ycc.data(), ycc.step(), size, standard, range);
  return ycc;
}

TEST(Yuv, FormatsOverRaggedSizes) {
  MockPool pool;
  for (int32_t width = 1; width <= 70; ++width) {
    const DaxiSize size = {width, 1 + width % 5}, half = {(width + 1) / 2, (size.height + 1) / 2};
    const int32_t standard = width % 2, range = width / 2 % 2;
    const Guard guard = kGuards[width % 2];
    TestImage<uint8_t> y(size, width % 3, guard), u(half, 1, guard), v(half, 2, guard);
    TestImage<uint8_t> uv({2 * half.width, half.height}, 0, guard), vu(uv.size(), 3, guard);
    TestImage<uint8_t> yuyv({4 * half.width, size.height}, 0, guard), uyvy(yuyv.size(), 5, guard);
    y.randomize(1), u.randomize(2), v.randomize(3), yuyv.randomize(4);
    uv.fill([&](int32_t x, int32_t row) { return (x % 2 ? v : u).at(x / 2, row); });
    vu.fill([&](int32_t x, int32_t row) { return (x % 2 ? u : v).at(x / 2, row); });
    uyvy.fill([&](int32_t x, int32_t row) { return yuyv.at(x ^ 1, row); });
    for (const bool bgr : {false, true}) {
      const auto planes = decoded(size, standard, range, bgr, [&](int32_t px, int32_t py, int32_t channel) {
        return channel == 0 ? y.at(px, py) : (channel == 1 ? u : v).at(px / 2, py / 2);
      });
      const auto pairs = decoded(size, standard, range, bgr, [&](int32_t px, int32_t py, int32_t channel) {
        return yuyv.at(channel == 0 ? 2 * px : px / 2 * 4 + 2 * channel - 1, py);
      });
      TestImage<uint8_t> dst(planes.size(), width % 4, guard), pooled(planes.size());
      const auto check = [&](const TestImage<uint8_t>& expected, auto plain, auto onPool, auto... sources) {
        dst.remember();
        ASSERT_EQ(plain(sources..., dst.data(), dst.step(), size, standard, range), DAX_STS_OK);
        ASSERT_TRUE(samePixels(dst, expected) && dst.paddingUntouched()) << "width " << width;
        ASSERT_EQ(onPool(&pool, 3, sources..., pooled.data(), pooled.step(), size, standard, range), DAX_STS_OK);
        ASSERT_TRUE(samePixels(pooled, expected)) << "width " << width;
      };
#define BOTH(NAME, LAYOUT)                                                           \
  (bgr ? DAXI_##NAME##ToBGR_8u_##LAYOUT##C3R : DAXI_##NAME##ToRGB_8u_##LAYOUT##C3R), \
      (bgr ? DAXI_##NAME##ToBGR_8u_##LAYOUT##C3R_MT : DAXI_##NAME##ToRGB_8u_##LAYOUT##C3R_MT)
      check(planes, BOTH(NV12, P2), y.data(), y.step(), uv.data(), uv.step());
      check(planes, BOTH(NV21, P2), y.data(), y.step(), vu.data(), vu.step());
      check(planes, BOTH(I420, P3), y.data(), y.step(), u.data(), u.step(), v.data(), v.step());
      check(pairs, BOTH(YUYV, C2), yuyv.data(), yuyv.step());
      check(pairs, BOTH(UYVY, C2), uyvy.data(), uyvy.step());
#undef BOTH
    }
    TestImage<uint8_t> gray(size, 2, guard);
    const auto checkGray = [&](auto convert, const TestImage<uint8_t>& src, int32_t distance, int32_t offset) {
      ASSERT_EQ(convert(src.data(), src.step(), gray.data(), gray.step(), size, range), DAX_STS_OK);
      for (int32_t i = 0; i < width * size.height; ++i) {
        const int32_t luma = src.at(i % width * distance + offset, i / width);
        const double video = std::clamp(std::round((luma - 16) * 255 / 219.0), 0.0, 255.0);
        ASSERT_EQ(gray.at(i % width, i / width), range == 1 ? luma : video);
      }
    };
    checkGray(DAXI_YToGray_8u_C1R, y, 1, 0);
    checkGray(DAXI_YUYVToGray_8u_C2C1R, yuyv, 2, 0);
    checkGray(DAXI_UYVYToGray_8u_C2C1R, uyvy, 2, 1);
  }
}

}  // namespace
}  // namespace dax::test
