#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "daxi/resize.h"
#include "tests/image/warp/resize_oracle.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct Export {
  decltype(&DAXI_ResizeBufferSize_8u_C1R) bufferSize;
  DaxStatus (*resize)(const T*, int32_t, DaxiSize, T*, int32_t, DaxiSize, DaxiRect, const DaxiResizeCfg*, void*);
};
template <class T>
const Export<T> kExports[2] = {};
template <>
const Export<uint8_t> kExports<uint8_t>[] = {{DAXI_ResizeBufferSize_8u_C1R, DAXI_Resize_8u_C1R},
                                             {DAXI_ResizeBufferSize_8u_C3R, DAXI_Resize_8u_C3R}};
template <>
const Export<uint16_t> kExports<uint16_t>[] = {{DAXI_ResizeBufferSize_16u_C1R, DAXI_Resize_16u_C1R},
                                               {DAXI_ResizeBufferSize_16u_C3R, DAXI_Resize_16u_C3R}};
template <>
const Export<float> kExports<float>[] = {{DAXI_ResizeBufferSize_32f_C1R, DAXI_Resize_32f_C1R},
                                         {DAXI_ResizeBufferSize_32f_C3R, DAXI_Resize_32f_C3R}};

DaxiResizeCfg defaults() {
  DaxiResizeCfg cfg;
  EXPECT_EQ(DAXI_ResizeDefaultCfg(&cfg), DAX_STS_OK);
  return cfg;
}

template <class T>
class Resize : public testing::Test {
 protected:
  // A part of a resize, with a work buffer of exactly the size that is asked for.
  TestImage<T> run(const TestImage<T>& src, int32_t channels, DaxiSize to, DaxiRect rect, const DaxiResizeCfg& cfg) {
    const Export<T>& e = kExports<T>[channels / 2];
    const DaxiSize from = {src.size().width / channels, src.size().height};
    TestImage<T> dst({rect.width * channels, rect.height}, 3);
    dst.remember();
    uint64_t bytes = 0;
    EXPECT_EQ(e.bufferSize(from, to, rect, &cfg, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes, Guard::after);
    EXPECT_EQ(e.resize(src.data(), src.step(), from, dst.data(), dst.step(), to, rect, &cfg, buffer.data()),
              DAX_STS_OK);
    EXPECT_TRUE(dst.paddingUntouched());
    return dst;
  }

  void expectFormula(const TestImage<T>& src, int32_t channels, DaxiSize to, const DaxiResizeCfg& cfg) {
    const oracle::Axis ax{src.size().width / channels, to.width, cfg.factorX, cfg.antialias == 1};
    const oracle::Axis ay{src.size().height, to.height, cfg.factorY, cfg.antialias == 1};
    const TestImage<T> dst = run(src, channels, to, {0, 0, to.width, to.height}, cfg);
    for (int32_t y = 0; y < to.height; ++y) {
      for (int32_t x = 0; x < to.width * channels; ++x) {
        const auto pixel = [&](int32_t i, int32_t j) { return src.at(i * channels + x % channels, j); };
        const long double exact = oracle::resized(pixel, ax, ay, cfg.border, x / channels, y);
        const long double error = std::fabs(dst.at(x, y) - exact);
        ASSERT_LE(error, std::is_integral_v<T> ? 0.51L : std::fabs(exact) * 6e-8L + 1e-6L)
            << x << ", " << y << " of " << to.width << " x " << to.height;
      }
    }
  }
};
using PixelTypes = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(Resize, PixelTypes);

template <class T>
TestImage<T> noise(DaxiSize size, uint64_t seed) {
  TestImage<T> image(size, 2);
  Random random(seed);
  image.fill([&](int32_t, int32_t) {
    const auto level = random.below(1 << 16);
    return std::is_same_v<T, uint8_t> ? level >> 8 : level;
  });
  return image;
}

TYPED_TEST(Resize, IsTheRealFormula) {
  uint64_t seed = 0;
  for (const DaxiSize from : {DaxiSize{1, 1}, {17, 9}, {40, 3}}) {
    for (const DaxiSize to : {DaxiSize{1, 1}, {17, 9}, {5, 4}, {39, 30}, {100, 2}}) {
      for (int32_t i = 0; i < 8; ++i) {
        DaxiResizeCfg cfg = defaults();
        cfg.antialias = i % 2, cfg.border = DAXI_BORDER_REPLICATE + i / 2;
        for (const int32_t channels : {1, 3}) {
          this->expectFormula(noise<TypeParam>({from.width * channels, from.height}, ++seed), channels, to, cfg);
        }
      }
    }
  }
  // By factors, which set the positions.
  DaxiResizeCfg cfg = defaults();
  cfg.factorX = 0.37, cfg.factorY = 2.49;
  this->expectFormula(noise<TypeParam>({41, 11}, 1), 1, {15, 27}, cfg);
}

// A part is that part of the whole; a flat image stays flat, and the same size is the image itself.
TYPED_TEST(Resize, PartsFlatsAndCopies) {
  using T = TypeParam;
  const TestImage<T> src = noise<T>({30, 21}, 3);
  TestImage<T> flat(src.size());
  flat.fill([](int32_t, int32_t) { return std::is_integral_v<T> ? T(201) : T(0.1); });
  for (const DaxiSize to : {DaxiSize{71, 50}, {7, 13}}) {
    const TestImage<T> whole = this->run(src, 1, to, {0, 0, to.width, to.height}, defaults());
    for (int32_t i = 0; i < to.width; i += 3) {
      const DaxiRect rect = {i, i % to.height, to.width - i, to.height - i % to.height};
      const TestImage<T> part = this->run(src, 1, to, rect, defaults());
      for (int32_t y = 0; y < rect.height; ++y) {
        ASSERT_EQ(std::memcmp(part.row(y), whole.row(rect.y + y) + rect.x, static_cast<size_t>(rect.width) * sizeof(T)),
                  0);
      }
    }
    const TestImage<T> level = this->run(flat, 1, to, {0, 0, to.width, to.height}, defaults());
    for (int32_t y = 0; y < to.height; ++y) {
      for (int32_t x = 0; x < to.width; ++x) ASSERT_EQ(level.at(x, y), flat.at(0, 0));
    }
  }
  ASSERT_TRUE(samePixels(this->run(src, 1, src.size(), {0, 0, 30, 21}, defaults()), src));
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
