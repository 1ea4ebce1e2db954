#include <gtest/gtest.h>

#include <vector>

#include "daxi.h"
#include "tests/image/convert/clip_equalize_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

// Dark to one side, with noise.
template <class T>
TestImage<T> unevenImage(DaxiSize size, uint64_t seed, int32_t range) {
  TestImage<T> image(size, 1);
  Random random(seed);
  image.fill([&](int32_t x, int32_t) { return 10 + x * range / (2 * size.width) + random.below(range / 3); });
  return image;
}

template <class T>
auto equalizeFunction() {
  if constexpr (sizeof(T) == 1) {
    return [](const T* src, int32_t step, T* dst, int32_t dstStep, DaxiSize size) {
      return DAXI_EqualizeHist_8u_C1R(src, step, dst, dstStep, size);
    };
  } else {
    return [](const T* src, int32_t step, T* dst, int32_t dstStep, DaxiSize size) {
      uint64_t bytes = 0;
      EXPECT_EQ(DAXI_EqualizeHistBufferSize_16u(&bytes), DAX_STS_OK);
      std::vector<char> buffer(bytes, 0x55);
      return DAXI_EqualizeHist_16u_C1R(src, step, dst, dstStep, size, buffer.data());
    };
  }
}

template <class T>
class Equalize : public testing::Test {};
using PixelTypes = testing::Types<uint8_t, uint16_t>;
TYPED_TEST_SUITE(Equalize, PixelTypes);

TYPED_TEST(Equalize, Global) {
  using T = TypeParam;
  for (int32_t i = 0; i < 12; ++i) {
    const DaxiSize size = {1 + i * 7 % 31, 1 + i};
    TestImage<T> src = unevenImage<T>(size, static_cast<uint64_t>(i),
                                      i == 3           ? 3
                                      : sizeof(T) == 1 ? 200
                                                       : 60000),
                 dst(size, 2);
    if (i == 0 || i == 5) src.fill([](int32_t, int32_t) { return 77; });  // one level
    dst.remember();
    ASSERT_EQ(equalizeFunction<T>()(src.data(), src.step(), dst.data(), dst.step(), size), DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width; ++x) ASSERT_EQ(dst.at(x, y), oracle::equalized(src, src.at(x, y))) << i;
    }
  }
}

template <class T>
constexpr auto kBufferSize = DAXI_ClipEqualizeBufferSize_8u;
template <>
constexpr auto kBufferSize<uint16_t> = DAXI_ClipEqualizeBufferSize_16u;
template <class T>
constexpr auto kClipEqualize = DAXI_ClipEqualize_8u_C1R;
template <>
constexpr auto kClipEqualize<uint16_t> = DAXI_ClipEqualize_16u_C1R;
template <class T>
constexpr auto kClipEqualizeMt = DAXI_ClipEqualize_8u_C1R_MT;
template <>
constexpr auto kClipEqualizeMt<uint16_t> = DAXI_ClipEqualize_16u_C1R_MT;

// Tiles that fit the image, that reach over it, wholly even, and more of them than a side can be divided into.
TYPED_TEST(Equalize, ByTiles) {
  using T = TypeParam;
  const struct {
    DaxiSize size;
    DaxiClipEqualizeCfg cfg;
  } cases[] = {{{48, 32}, {8, 8, 2, 256, 0}},  {{53, 29}, {8, 8, 2, 256, 0}}, {{40, 30}, {1, 1, 1, 256, 0}},
               {{17, 5}, {16, 4, 3.7, 64, 0}}, {{9, 9}, {8, 8, 1e9, 256, 0}}, {{64, 3}, {64, 1, 1.5, 2, 0}},
               {{31, 70}, {3, 2, 40, 32, 0}},  {{1, 20}, {1, 7, 2, 256, 0}}};
  for (const auto& [size, cfg] : cases) {
    const TestImage<T> src = unevenImage<T>(size, 4, sizeof(T) == 1 ? 180 : 50000);
    TestImage<T> dst(size, 2, Guard::before), pooled(size);
    uint64_t bytes = 0;
    ASSERT_EQ(kBufferSize<T>(size, &cfg, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes);
    dst.remember();
    ASSERT_EQ(kClipEqualize<T>(src.data(), src.step(), dst.data(), dst.step(), size, &cfg, buffer.data()), DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    const TestImage<T> expected = oracle::clipEqualized(src, cfg);
    ASSERT_TRUE(samePixels(dst, expected)) << size.width << " x " << size.height;
    for (uint32_t threads = 1; threads <= 5; ++threads) {
      MockPool pool;
      ASSERT_EQ(kClipEqualizeMt<T>(&pool, threads, src.data(), src.step(), pooled.data(), pooled.step(), size, &cfg,
                                   buffer.data()),
                DAX_STS_OK);
      ASSERT_TRUE(samePixels(pooled, expected)) << threads;
    }
  }
}

// As many bins as 16-bit levels.
TEST(ClipEqualize, AllBins) {
  const TestImage<uint16_t> src = unevenImage<uint16_t>({20, 12}, 4, 50000);
  TestImage<uint16_t> dst(src.size());
  const DaxiClipEqualizeCfg cfg = {2, 1, 2, 65536, 0};
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_ClipEqualizeBufferSize_16u(src.size(), &cfg, &bytes), DAX_STS_OK);
  std::vector<char> buffer(bytes);
  ASSERT_EQ(DAXI_ClipEqualize_16u_C1R(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg, buffer.data()),
            DAX_STS_OK);
  EXPECT_TRUE(samePixels(dst, oracle::clipEqualized(src, cfg)));
}

}  // namespace
}  // namespace dax::test
