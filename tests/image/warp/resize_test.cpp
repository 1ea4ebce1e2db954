#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <vector>

#include "daxi/resize.h"
#include "tests/image/warp/resize_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct Export {
  decltype(&DAXI_ResizeBufferSize_8u_C1R) bufferSize;
  DaxStatus (*resize)(void*, uint32_t, const T*, int32_t, DaxiSize, T*, int32_t, DaxiSize, DaxiRect,
                      const DaxiResizeCfg*, void*);
};
template <class T>
const Export<T> kExports[2] = {};
#define DAX_RESIZE_EXPORTS(SUFFIX, T)                                                                     \
  template <>                                                                                             \
  const Export<T> kExports<T>[] = {{DAXI_ResizeBufferSize_##SUFFIX##_C1R, DAXI_Resize_##SUFFIX##_C1R_MT}, \
                                   {DAXI_ResizeBufferSize_##SUFFIX##_C3R, DAXI_Resize_##SUFFIX##_C3R_MT}};
DAX_RESIZE_EXPORTS(8u, uint8_t)
DAX_RESIZE_EXPORTS(16u, uint16_t)
DAX_RESIZE_EXPORTS(16s, int16_t)
DAX_RESIZE_EXPORTS(32f, float)
#undef DAX_RESIZE_EXPORTS

DaxiResizeCfg defaults() {
  DaxiResizeCfg cfg;
  EXPECT_EQ(DAXI_ResizeDefaultCfg(&cfg), DAX_STS_OK);
  return cfg;
}

template <class T>
class Resize : public testing::Test {
 protected:
  // A part of a resize, with a work buffer of exactly the size that is asked for; on a pool, or without one.
  TestImage<T> run(const TestImage<T>& src, int32_t channels, DaxiSize to, DaxiRect rect, const DaxiResizeCfg& cfg,
                   bool onPool = true) {
    const Export<T>& e = kExports<T>[channels / 2];
    const DaxiSize from = {src.size().width / channels, src.size().height};
    TestImage<T> dst({rect.width * channels, rect.height}, 3);
    dst.remember();
    uint64_t bytes = 0;
    EXPECT_EQ(e.bufferSize(from, to, rect, &cfg, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes, Guard::after);
    MockPool pool;
    EXPECT_EQ(e.resize(onPool ? &pool : nullptr, 20, src.data(), src.step(), from, dst.data(), dst.step(), to, rect,
                       &cfg, buffer.data()),
              DAX_STS_OK);
    EXPECT_TRUE(dst.paddingUntouched());
    return dst;
  }

  void expectFormula(const TestImage<T>& src, int32_t channels, DaxiSize to, const DaxiResizeCfg& cfg) {
    const int32_t width = src.size().width / channels;
    const oracle::Axis ax{width, to.width, cfg.factorX, cfg.antialias == 1, cfg.interpolation, cfg.cubicA};
    const oracle::Axis ay{src.size().height, to.height, cfg.factorY, cfg.antialias == 1, cfg.interpolation, cfg.cubicA};
    std::vector<std::vector<oracle::Tap>> columns, rows;
    for (int32_t x = 0; x < to.width; ++x) columns.push_back(oracle::tapsOf(ax, cfg.border, x));
    for (int32_t y = 0; y < to.height; ++y) rows.push_back(oracle::tapsOf(ay, cfg.border, y));
    const TestImage<T> dst = run(src, channels, to, {0, 0, to.width, to.height}, cfg);
    for (int32_t y = 0; y < to.height; ++y) {
      for (int32_t x = 0; x < to.width * channels; ++x) {
        const auto pixel = [&](int32_t i, int32_t j) { return src.at(i * channels + x % channels, j); };
        double exact =
            oracle::resized(pixel, columns[static_cast<size_t>(x / channels)], rows[static_cast<size_t>(y)], cfg.value);
        if constexpr (std::is_integral_v<T>) {
          exact = std::clamp<double>(exact, std::numeric_limits<T>::min(), std::numeric_limits<T>::max());
        }
        const double error = std::fabs(dst.at(x, y) - exact);
        ASSERT_LE(error, std::is_integral_v<T> ? 0.51 : std::fabs(exact) * 6e-8 + 1e-6)
            << x << ", " << y << " of " << to.width << " x " << to.height << ", interpolation " << cfg.interpolation;
      }
    }
  }
};
using PixelTypes = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(Resize, PixelTypes);

template <class T>
TestImage<T> noise(DaxiSize size, uint64_t seed) {
  TestImage<T> image(size, 2);
  Random random(seed);
  image.fill([&](int32_t, int32_t) {
    const auto level = random.below(1 << 16);
    return std::is_same_v<T, uint8_t> ? level >> 8 : std::is_same_v<T, int16_t> ? level - (1 << 15) : level;
  });
  return image;
}

TYPED_TEST(Resize, IsTheRealFormula) {
  uint64_t seed = 0;
  for (const DaxiSize from : {DaxiSize{1, 1}, {17, 9}, {40, 3}}) {
    for (const DaxiSize to : {DaxiSize{1, 1}, {17, 9}, {5, 4}, {39, 30}, {100, 2}}) {
      for (int32_t i = 0; i < 10; ++i) {
        DaxiResizeCfg cfg = defaults();
        cfg.interpolation = i % 5, cfg.antialias = i / 5, cfg.border = static_cast<int32_t>(seed % 5), cfg.value = 77;
        for (const int32_t channels : {1, 3}) {
          this->expectFormula(noise<TypeParam>({from.width * channels, from.height}, ++seed), channels, to, cfg);
        }
      }
    }
  }
  DaxiResizeCfg halving = defaults();
  halving.antialias = 0;
  this->expectFormula(noise<TypeParam>({3 * 76, 6}, 1), 3, {38, 3}, halving);
  this->expectFormula(noise<TypeParam>({76, 6}, 1), 1, {38, 3}, halving);
  for (int32_t i = 0; i < 5; ++i) {
    DaxiResizeCfg cfg = defaults();
    cfg.interpolation = i, cfg.border = i % 2 ? DAXI_BORDER_CONSTANT : DAXI_BORDER_CIRCULAR;
    // More taps than whole weights are meant for, and a cubic whose weights are too large for them.
    this->expectFormula(noise<TypeParam>({700, 2}, 1), 1, {8, 3}, cfg);
    cfg.cubicA = -2.5, cfg.antialias = 0;
    this->expectFormula(noise<TypeParam>({31, 12}, 1), 1, {80, 13}, cfg);
    // Factors set the positions.
    cfg.cubicA = -0.75, cfg.factorX = 0.37, cfg.factorY = 2.49;
    this->expectFormula(noise<TypeParam>({41, 11}, 1), 1, {15, 27}, cfg);
  }
}

// A part is that part of the whole, on a pool and without one; a flat image stays flat, and the same size is the image.
TYPED_TEST(Resize, PartsFlatsAndCopies) {
  using T = TypeParam;
  const TestImage<T> src = noise<T>({30, 21}, 3);
  TestImage<T> flat(src.size());
  flat.fill([](int32_t, int32_t) { return std::is_integral_v<T> ? T(101) : T(0.1); });
  for (const int32_t interpolation : {0, 1, 2, 3, 4}) {
    DaxiResizeCfg cfg = defaults();
    cfg.interpolation = interpolation;
    // Of the third some positions are whole, where kernels have one tap.
    for (const DaxiSize to : {DaxiSize{71, 50}, {7, 13}, {90, 63}}) {
      const TestImage<T> whole = this->run(src, 1, to, {0, 0, to.width, to.height}, cfg);
      for (int32_t i = 0; i < to.width; i += 3) {
        const DaxiRect rect = {i, i % to.height, to.width - i, to.height - i % to.height};
        const TestImage<T> part = this->run(src, 1, to, rect, cfg, i % 2 == 0);
        for (int32_t y = 0; y < rect.height; ++y) {
          const T* const expected = whole.row(rect.y + y) + rect.x;
          ASSERT_EQ(std::memcmp(part.row(y), expected, static_cast<size_t>(rect.width) * sizeof(T)), 0);
        }
      }
      const TestImage<T> level = this->run(flat, 1, to, {0, 0, to.width, to.height}, cfg);
      for (int32_t y = 0; y < to.height; ++y) {
        for (int32_t x = 0; x < to.width; ++x) ASSERT_EQ(level.at(x, y), flat.at(0, 0));
      }
    }
    ASSERT_TRUE(samePixels(this->run(src, 1, src.size(), {0, 0, 30, 21}, cfg), src));
  }
}

// Means of cells are exact, halves to even.
TYPED_TEST(Resize, AreasAreExact) {
  using T = TypeParam;
  if constexpr (std::is_integral_v<T>) {
    DaxiResizeCfg cfg = defaults();
    cfg.interpolation = DAXI_INTERPOLATION_AREA;
    for (const DaxiSize to : {DaxiSize{24, 8}, {6, 4}, {17, 30}, {5, 3}, {1, 1}}) {
      const TestImage<T> src = noise<T>({48, 16}, static_cast<uint64_t>(to.width));
      const TestImage<T> dst = this->run(src, 1, to, {0, 0, to.width, to.height}, cfg);
      for (int32_t y = 0; y < to.height; ++y) {
        for (int32_t x = 0; x < to.width; ++x) {
          const auto pixel = [&](int32_t i, int32_t j) { return src.at(i, j); };
          ASSERT_EQ(dst.at(x, y), oracle::areaMean(pixel, src.size(), to, x, y))
              << x << ", " << y << " of " << to.width;
        }
      }
      if (to.width == 24) {  // halving linearly is the same
        cfg.interpolation = DAXI_INTERPOLATION_LINEAR, cfg.antialias = 0;
        ASSERT_TRUE(samePixels(this->run(src, 1, to, {0, 0, 24, 8}, cfg), dst));
        cfg.interpolation = DAXI_INTERPOLATION_AREA;
      }
    }
  }
}

// Twice the size: quarters of differences, halves to the even number.
TEST(ResizeOfBytes, HalvesGoToTheEven) {
  TestImage<uint8_t> src({2, 2}), dst({4, 4});
  src.fill([](int32_t x, int32_t) { return 6 * x; });
  std::vector<uint8_t> buffer(1 << 12);
  DaxiResizeCfg cfg = defaults();
  const auto resize = [&] {
    return DAXI_Resize_8u_C1R(src.data(), 2, {2, 2}, dst.data(), 4, {4, 4}, {0, 0, 4, 4}, &cfg, buffer.data());
  };
  ASSERT_EQ(resize(), DAX_STS_OK);
  for (int32_t y = 0; y < 4; ++y) {
    EXPECT_EQ(std::vector<int>(dst.row(y), dst.row(y) + 4), (std::vector<int>{0, 2, 4, 6})) << y;
  }
  cfg.value = INFINITY;
  EXPECT_EQ(resize(), DAX_STS_BAD_PARAM);
}

}  // namespace
}  // namespace dax::test
