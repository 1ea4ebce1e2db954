#include "daxi/gray_morphology.h"

#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "tests/image/morphology/gray_morphology_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct Gray;
#define DAX_GRAY_TYPE(SUFFIX, TYPE)                                                                                   \
  template <>                                                                                                         \
  struct Gray<TYPE> {                                                                                                 \
    using Function = decltype(&DAXI_GrayErodeRect_##SUFFIX##_C1R);                                                    \
    using Pooled = decltype(&DAXI_GrayErodeRect_##SUFFIX##_C1R_MT);                                                   \
    static constexpr Function kFunctions[] = {DAXI_GrayErodeRect_##SUFFIX##_C1R, DAXI_GrayDilateRect_##SUFFIX##_C1R,  \
                                              DAXI_GrayOpen_##SUFFIX##_C1R,      DAXI_GrayClose_##SUFFIX##_C1R,       \
                                              DAXI_GrayGradient_##SUFFIX##_C1R,  DAXI_GrayTopHat_##SUFFIX##_C1R,      \
                                              DAXI_GrayBlackHat_##SUFFIX##_C1R};                                      \
    static constexpr Pooled kPooled[] = {DAXI_GrayErodeRect_##SUFFIX##_C1R_MT, DAXI_GrayDilateRect_##SUFFIX##_C1R_MT, \
                                         DAXI_GrayOpen_##SUFFIX##_C1R_MT,      DAXI_GrayClose_##SUFFIX##_C1R_MT,      \
                                         DAXI_GrayGradient_##SUFFIX##_C1R_MT,  DAXI_GrayTopHat_##SUFFIX##_C1R_MT,     \
                                         DAXI_GrayBlackHat_##SUFFIX##_C1R_MT};                                        \
    static constexpr auto kErodeSize = DAXI_GrayErodeRectBufferSize_##SUFFIX;                                         \
    static constexpr auto kTopHatSize = DAXI_GrayTopHatBufferSize_##SUFFIX;                                           \
    static constexpr auto kErode3x3 = DAXI_GrayErode3x3_##SUFFIX##_C1R;                                               \
    static constexpr auto kDilate3x3 = DAXI_GrayDilate3x3_##SUFFIX##_C1R;                                             \
  };
DAX_GRAY_TYPE(8u, uint8_t)
DAX_GRAY_TYPE(16u, uint16_t)
DAX_GRAY_TYPE(16s, int16_t)
DAX_GRAY_TYPE(32f, float)
#undef DAX_GRAY_TYPE

enum Operation { erode, dilate, open, close, gradient, topHat, blackHat };

// A region of a larger image, all pixels of which are there for borders in memory.
template <class T>
struct Scene {
  Scene(DaxiSize region, int32_t around, uint64_t seed)
      : size(region), margin(around), image({region.width + 2 * around, region.height + 2 * around}, 3) {
    image.randomize(seed);
    // Differences of NaN have any payload.
    if constexpr (std::is_floating_point_v<T>) {
      Random random(seed);
      image.fill([&](int32_t, int32_t) { return static_cast<T>(random.below(2000) - 1000) / 8; });
    }
  }
  const T* data() const { return &image.at(margin, margin); }
  T pixel(int64_t x, int64_t y) const {
    return image.at(static_cast<int32_t>(x) + margin, static_cast<int32_t>(y) + margin);
  }

  DaxiSize size;
  int32_t margin;
  TestImage<T> image;
};

template <class T>
T difference(T a, T b) {
  if constexpr (std::is_floating_point_v<T>) {
    return a - b;
  } else {
    using Limits = std::numeric_limits<T>;
    return static_cast<T>(std::clamp<int32_t>(int32_t{a} - b, Limits::min(), Limits::max()));
  }
}

template <class T>
T expectedAt(const Scene<T>& s, const DaxiGrayMorphologyCfg& cfg, Operation operation, int32_t x, int32_t y) {
  const auto source = [&](int64_t u, int64_t v) { return s.pixel(u, v); };
  const auto once = [&](bool smaller) { return oracle::grayExtreme<T>(source, x, y, s.size, cfg, smaller); };
  const auto twice = [&](bool smaller) {
    const auto first = [&](int64_t u, int64_t v) { return oracle::grayExtreme<T>(source, u, v, s.size, cfg, smaller); };
    return oracle::grayExtreme<T>(first, x, y, s.size, cfg, !smaller);
  };
  switch (operation) {
    case erode:
      return once(true);
    case dilate:
      return once(false);
    case open:
      return twice(true);
    case close:
      return twice(false);
    case gradient:
      return difference(once(false), once(true));
    case topHat:
      return difference(s.pixel(x, y), twice(true));
    default:
      return difference(twice(false), s.pixel(x, y));
  }
}

template <class T>
uint64_t bufferBytes(DaxiSize size, const DaxiGrayMorphologyCfg& cfg, Operation operation) {
  uint64_t bytes = 0;
  const auto query = operation <= dilate ? Gray<T>::kErodeSize : Gray<T>::kTopHatSize;
  EXPECT_EQ(query(size, &cfg, &bytes), DAX_STS_OK);
  return bytes;
}

template <class T>
void checkOperation(const Scene<T>& s, const DaxiGrayMorphologyCfg& cfg, Operation operation) {
  TestImage<T> expected(s.size), dst(s.size, 2);
  expected.fill([&](int32_t x, int32_t y) { return expectedAt(s, cfg, operation, x, y); });
  dst.remember();
  GuardedBuffer<uint8_t> buffer(bufferBytes<T>(s.size, cfg, operation));
  ASSERT_EQ(
      Gray<T>::kFunctions[operation](s.data(), s.image.step(), dst.data(), dst.step(), s.size, &cfg, buffer.data()),
      DAX_STS_OK);
  ASSERT_TRUE(samePixels(dst, expected)) << "operation " << operation << " border " << cfg.border << " window "
                                         << cfg.window.width << " x " << cfg.window.height;
  ASSERT_TRUE(dst.paddingUntouched());
  MockPool pool;
  dst.fill([](int32_t, int32_t) { return T(0); });
  ASSERT_EQ(Gray<T>::kPooled[operation](&pool, 3, s.data(), s.image.step(), dst.data(), dst.step(), s.size, &cfg,
                                        buffer.data()),
            DAX_STS_OK);
  ASSERT_TRUE(samePixels(dst, expected)) << "on a pool";
}

template <class>
class GrayMorphology : public testing::Test {};
using GrayPixels = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(GrayMorphology, GrayPixels);

// Windows of any shape and anchor, larger than the image too, all borders, all operations.
TYPED_TEST(GrayMorphology, EqualsTheWindowsPixelByPixel) {
  Random random(7);
  for (int32_t round = 0; round < 98; ++round) {
    DaxiGrayMorphologyCfg cfg;
    ASSERT_EQ(DAXI_GrayMorphologyDefaultCfg(&cfg), DAX_STS_OK);
    cfg.window = {1 + random.below(9), 1 + random.below(9)};
    cfg.anchorX = random.below(cfg.window.width), cfg.anchorY = random.below(cfg.window.height);
    cfg.iterations = 1 + random.below(2);
    cfg.border = round % 7;
    cfg.value = random.below(200);
    const DaxiSize size = {1 + random.below(round % 5 == 0 ? 4 : 24), 1 + random.below(round % 3 == 0 ? 4 : 12)};
    const Scene<TypeParam> scene(size, cfg.border == DAXI_BORDER_IN_MEMORY ? 40 : 0, static_cast<uint64_t>(round));
    checkOperation(scene, cfg, static_cast<Operation>(round / 7 % 7));
  }
}

// Rows of several strips, windows of several blocks, and of several vectors with and without a rest.
TYPED_TEST(GrayMorphology, WideRowsAndLargeWindows) {
  const Scene<TypeParam> scene({700, 24}, 0, 1), odd({333, 3}, 0, 2);
  DaxiGrayMorphologyCfg cfg = {{37, 11}, 5, 7, 1, DAXI_BORDER_CLIP, 0};
  checkOperation(scene, cfg, erode);
  checkOperation(scene, cfg, dilate);
  for (const int32_t width : {31, 32, 33, 64, 150}) {
    cfg = {{width, 1}, width / 3, 0, 1, DAXI_BORDER_MIRROR, 0};
    checkOperation(odd, cfg, width % 2 ? erode : dilate);
  }
}

TYPED_TEST(GrayMorphology, ThreeByThree) {
  const DaxiGrayMorphologyCfg cfg = {{3, 3}, 1, 1, 1, DAXI_BORDER_CLIP, 0};
  for (const DaxiSize size : {DaxiSize{1, 1}, {1, 5}, {5, 1}, {2, 2}, {33, 6}, {1025, 3}, {4097, 3}}) {
    TestImage<TypeParam> src(size, 1), dst(size), expected(size);
    src.randomize(5);
    for (const bool smaller : {true, false}) {
      const auto pixel = [&](int64_t x, int64_t y) { return src.at(static_cast<int32_t>(x), static_cast<int32_t>(y)); };
      expected.fill(
          [&](int32_t x, int32_t y) { return oracle::grayExtreme<TypeParam>(pixel, x, y, size, cfg, smaller); });
      const auto function = smaller ? Gray<TypeParam>::kErode3x3 : Gray<TypeParam>::kDilate3x3;
      ASSERT_EQ(function(src.data(), src.step(), dst.data(), dst.step(), size), DAX_STS_OK);
      ASSERT_TRUE(samePixels(dst, expected)) << size.width << " x " << size.height;
    }
  }
}

// Floats of all bit patterns keep them.
TEST(GrayMorphologyFloats, AreInTotalOrder) {
  const DaxiGrayMorphologyCfg cfg = {{4, 3}, 1, 1, 1, DAXI_BORDER_MIRROR, 0};
  TestImage<float> src({60, 20}), dst(src.size()), expected(src.size());
  src.randomize(3);
  GuardedBuffer<uint8_t> buffer(bufferBytes<float>(src.size(), cfg, erode));
  const auto pixel = [&](int64_t x, int64_t y) { return src.at(static_cast<int32_t>(x), static_cast<int32_t>(y)); };
  expected.fill([&](int32_t x, int32_t y) { return oracle::grayExtreme<float>(pixel, x, y, src.size(), cfg, true); });
  ASSERT_EQ(DAXI_GrayErodeRect_32f_C1R(src.data(), src.step(), dst.data(), dst.step(), src.size(), &cfg, buffer.data()),
            DAX_STS_OK);
  EXPECT_TRUE(samePixels(dst, expected));
}

// A constant beyond the type is its limit; a reach of 32766 pixels needs no more than the image's own memory.
TEST(GrayMorphologyLimits, ValuesAndReach) {
  DaxiGrayMorphologyCfg cfg = {{3, 3}, 1, 1, 16383, DAXI_BORDER_CONSTANT, 1e300};
  TestImage<uint8_t> src({5, 4}), dst(src.size());
  src.fill([](int32_t x, int32_t) { return x; });
  GuardedBuffer<uint8_t> buffer(bufferBytes<uint8_t>(src.size(), cfg, dilate));
  EXPECT_LT(buffer.size(), 1024u);
  const auto dilated = [&] {
    return DAXI_GrayDilateRect_8u_C1R(src.data(), 5, dst.data(), 5, src.size(), &cfg, buffer.data());
  };
  ASSERT_EQ(dilated(), DAX_STS_OK);
  EXPECT_EQ(dst.at(2, 2), 255);
  cfg.iterations = 16384;
  EXPECT_EQ(dilated(), DAX_STS_BAD_PARAM);
}

}  // namespace
}  // namespace dax::test
