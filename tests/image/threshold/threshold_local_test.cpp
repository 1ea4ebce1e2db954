#include "daxi/threshold_local.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <vector>

#include "tests/image/threshold/threshold_local_oracle.h"
#include "tests/support/mock_pool.h"
#include "tests/support/test_image.h"

namespace dax::test {
namespace {

template <class T>
struct Local;
#define DAX_LOCAL(SUFFIX, DEFAULTS, T)                                                \
  template <>                                                                         \
  struct Local<T> {                                                                   \
    static constexpr auto kDefaults = DAXI_ThresholdLocalDefaultCfg_##DEFAULTS;       \
    static constexpr auto kBytes = DAXI_ThresholdLocalBufferSize_##SUFFIX;            \
    static constexpr auto kPooledBytes = DAXI_ThresholdLocalBufferSize_##SUFFIX##_MT; \
    static constexpr auto kPlain = DAXI_ThresholdLocal_##SUFFIX##_C1R;                \
    static constexpr auto kMasked = DAXI_ThresholdLocal_##SUFFIX##_C1MR;              \
    static constexpr auto kPooled = DAXI_ThresholdLocal_##SUFFIX##_C1R_MT;            \
    static constexpr auto kMaskedPooled = DAXI_ThresholdLocal_##SUFFIX##_C1MR_MT;     \
  };
DAX_LOCAL(8u, 8u, uint8_t)
DAX_LOCAL(16u8u, 16u, uint16_t)
DAX_LOCAL(32f8u, 32f, float)
#undef DAX_LOCAL

// A region of a larger image, all pixels of which are there for borders in memory. Floats are multiples of 1/256, so that
// their sums are exact.
template <class T>
struct Scene {
  Scene(DaxiSize region, int32_t around, uint64_t seed, bool isFlat)
      : size(region), margin(around), image({region.width + 2 * around, region.height + 2 * around}, 3) {
    Random random(seed);
    const double unit = sizeof(T) == 1 ? 1 : sizeof(T) == 2 ? 256 : 1.0 / 256;
    image.fill([&](int32_t x, int32_t) { return unit * (isFlat ? 77 : (x / 3 % 2 ? 150 : 40) + random.below(60)); });
  }
  const T* data() const { return &image.at(margin, margin); }
  T pixel(int64_t x, int64_t y) const {
    return image.at(static_cast<int32_t>(x) + margin, static_cast<int32_t>(y) + margin);
  }

  DaxiSize size;
  int32_t margin;
  TestImage<T> image;
};

// What each pixel is compared with: its distance above the threshold.
template <class T>
std::vector<long double> distances(const Scene<T>& s, const DaxiThresholdLocalCfg& cfg) {
  std::vector<std::vector<long double>> windows;
  std::vector<long double> result;
  oracle::WolfExtremes wolf = {0, std::numeric_limits<double>::infinity()};
  const auto pixel = [&](int64_t x, int64_t y) { return s.pixel(x, y); };
  for (int32_t y = 0; y < s.size.height; ++y) {
    for (int32_t x = 0; x < s.size.width; ++x) {
      windows.push_back(oracle::windowPixels(pixel, x, y, s.size, cfg.window, cfg.border, cfg.value));
      wolf.deviation = std::max(wolf.deviation, oracle::WindowMoments(windows.back()).deviation);
      wolf.least = std::min<long double>(wolf.least, s.pixel(x, y));
    }
  }
  for (int32_t y = 0; y < s.size.height; ++y) {
    for (int32_t x = 0; x < s.size.width; ++x) {
      if (cfg.method == DAXI_LOCAL_GAUSS) {
        result.push_back(s.pixel(x, y) - oracle::gaussMean(pixel, x, y, s.size, cfg));
        continue;
      }
      result.push_back(oracle::aboveLocal(s.pixel(x, y), windows[result.size()], cfg, wolf));
    }
  }
  return result;
}

// Bernsen's flat windows, NaN here, set nothing.
bool isSet(long double above, const DaxiThresholdLocalCfg& cfg) {
  switch (cfg.mode) {
    case DAXI_LOCAL_LIGHT:
      return above >= cfg.offset;
    case DAXI_LOCAL_DARK:
      return above <= -cfg.offset;
    case DAXI_LOCAL_EQUAL:
      return std::fabs(above) <= cfg.offset;
    default:
      return std::fabs(above) > cfg.offset;
  }
}

// Pixels nearer to the threshold than the rounding of the definition itself, or of the weights of a Gaussian, are left out,
// but for means of 8 bits, which are exact.
template <class T>
void checkMask(const TestImage<uint8_t>& dst, const std::vector<long double>& above, const DaxiThresholdLocalCfg& cfg,
               const TestImage<uint8_t>* chosen) {
  const bool isExact = cfg.method == DAXI_LOCAL_MEAN || cfg.method == DAXI_LOCAL_BERNSEN;
  const double unit = sizeof(T) == 1 ? 1 : sizeof(T) == 2 ? 256 : 1.0 / 256;
  const double doubt = cfg.method == DAXI_LOCAL_GAUSS ? 0.01 : 1e-9;
  for (int32_t y = 0; y < dst.size().height; ++y) {
    for (int32_t x = 0; x < dst.size().width; ++x) {
      const long double d =
          above[static_cast<size_t>(y) * static_cast<size_t>(dst.size().width) + static_cast<size_t>(x)];
      if (!isExact && std::fabs(std::fabs(d) - std::fabs(cfg.offset)) < doubt * unit) continue;
      const bool expected = isSet(d, cfg) && (!chosen || chosen->at(x, y));
      ASSERT_EQ(dst.at(x, y), expected ? 255 : 0)
          << x << ", " << y << " method " << cfg.method << " mode " << cfg.mode << " border " << cfg.border
          << " window " << cfg.window.width << " x " << cfg.window.height << " above " << static_cast<double>(d);
    }
  }
}

template <class T>
void checkScene(const Scene<T>& s, const DaxiThresholdLocalCfg& cfg) {
  using F = Local<T>;
  const std::vector<long double> above = distances(s, cfg);
  TestImage<uint8_t> dst(s.size, 2), again(s.size), chosen(s.size, 1);
  chosen.fill([](int32_t x, int32_t y) { return x % 4 ? 3 * y : 0; });
  uint64_t bytes = 0;
  ASSERT_EQ(F::kBytes(s.size, &cfg, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  dst.remember();
  ASSERT_EQ(F::kPlain(s.data(), s.image.step(), dst.data(), dst.step(), s.size, &cfg, buffer.data()), DAX_STS_OK);
  ASSERT_NO_FATAL_FAILURE(checkMask<T>(dst, above, cfg, nullptr));
  ASSERT_TRUE(dst.paddingUntouched());
  ASSERT_EQ(F::kPooledBytes(s.size, &cfg, 3, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> slices(bytes);
  MockPool pool;
  ASSERT_EQ(F::kPooled(&pool, 3, s.data(), s.image.step(), again.data(), again.step(), s.size, &cfg, slices.data()),
            DAX_STS_OK);
  ASSERT_TRUE(samePixels(dst, again)) << "on a pool";
  ASSERT_EQ(F::kMaskedPooled(&pool, 3, s.data(), s.image.step(), chosen.data(), chosen.step(), again.data(),
                             again.step(), s.size, &cfg, slices.data()),
            DAX_STS_OK);
  checkMask<T>(again, above, cfg, &chosen);
}

template <class>
class ThresholdLocal : public testing::Test {};
using Greys = testing::Types<uint8_t, uint16_t, float>;
TYPED_TEST_SUITE(ThresholdLocal, Greys);

// All methods, modes and borders, windows of any shape, larger than the image too; flat images, where nothing is rounded.
TYPED_TEST(ThresholdLocal, EqualsTheWindowsPixelByPixel) {
  Random random(11);
  const double unit = sizeof(TypeParam) == 1 ? 1 : sizeof(TypeParam) == 2 ? 256 : 1.0 / 256;
  for (int32_t round = 0; round < 196; ++round) {
    DaxiThresholdLocalCfg cfg;
    ASSERT_EQ(Local<TypeParam>::kDefaults(round % 7, &cfg), DAX_STS_OK);
    cfg.mode = round / 7 % 4;
    cfg.window = {1 + random.below(9), 1 + random.below(9)};
    cfg.border = round / 28;
    cfg.value = unit * random.below(200);
    if (round % 5 == 0) cfg.k = -cfg.k, cfg.offset = unit * (random.below(40) - 20) / 4;
    const DaxiSize size = {1 + random.below(round % 5 == 0 ? 4 : 48), 1 + random.below(round % 3 == 0 ? 4 : 12)};
    const int32_t margin = cfg.border == DAXI_BORDER_IN_MEMORY ? 10 : 0;
    const Scene<TypeParam> scene(size, margin, static_cast<uint64_t>(round), round % 8 == 7);
    ASSERT_NO_FATAL_FAILURE(checkScene(scene, cfg));
  }
}

// Windows of more than 65536 pixels, whose sums need more bits: of the brightest pixels, too.
TYPED_TEST(ThresholdLocal, LargestWindows) {
  for (const int32_t method : {DAXI_LOCAL_MEAN, DAXI_LOCAL_NIBLACK, DAXI_LOCAL_GAUSS}) {
    for (const DaxiSize window : {DaxiSize{256, 256}, {257, 300}}) {
      DaxiThresholdLocalCfg cfg;
      ASSERT_EQ(Local<TypeParam>::kDefaults(method, &cfg), DAX_STS_OK);
      cfg.window = window, cfg.border = DAXI_BORDER_CIRCULAR, cfg.offset = 0;
      Scene<TypeParam> scene({5, 4}, 0, 3, false);
      scene.image.fill([](int32_t x, int32_t y) {
        return std::is_floating_point_v<TypeParam> ? 1.0 - (x + y) / 512.0
                                                   : double{std::numeric_limits<TypeParam>::max()} - x * y;
      });
      ASSERT_NO_FATAL_FAILURE(checkScene(scene, cfg));
    }
  }
}

// Where all pixels are equal, so is the weighted mean, however the weights are rounded.
TYPED_TEST(ThresholdLocal, WeightedMeansOfEvenGroundAreExact) {
  Random random(5);
  for (int32_t round = 0; round < 24; ++round) {
    DaxiThresholdLocalCfg cfg;
    ASSERT_EQ(Local<TypeParam>::kDefaults(DAXI_LOCAL_GAUSS, &cfg), DAX_STS_OK);
    cfg.window = {1 + random.below(60), 1 + random.below(60)}, cfg.mode = DAXI_LOCAL_EQUAL, cfg.offset = 0;
    cfg.k = round % 4 == 0 ? 1e-3 : round % 4 == 1 ? 40 : 0;
    cfg.border = round % 3 == 0 ? DAXI_BORDER_MIRROR : DAXI_BORDER_CLIP;
    const Scene<TypeParam> scene({30, 20}, 0, 1, true);
    TestImage<uint8_t> dst(scene.size), all(scene.size);
    all.fill([](int32_t, int32_t) { return 255; });
    uint64_t bytes = 0;
    ASSERT_EQ(Local<TypeParam>::kBytes(scene.size, &cfg, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes);
    ASSERT_EQ(Local<TypeParam>::kPlain(scene.data(), scene.image.step(), dst.data(), dst.step(), scene.size, &cfg,
                                       buffer.data()),
              DAX_STS_OK);
    ASSERT_TRUE(samePixels(dst, all)) << cfg.window.width << " x " << cfg.window.height << ", " << cfg.k;
  }
}

// A NaN and a value of 1e20 count in their own windows, and nowhere else.
void checkStrayValues(int32_t method) {
  DaxiThresholdLocalCfg cfg;
  ASSERT_EQ(DAXI_ThresholdLocalDefaultCfg_32f(method, &cfg), DAX_STS_OK);
  cfg.window = {5, 7};
  Scene<float> scene({40, 30}, 0, 5, false);
  TestImage<uint8_t> clean(scene.size), dst(scene.size);
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_ThresholdLocalBufferSize_32f8u(scene.size, &cfg, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  const auto run = [&](TestImage<uint8_t>& to) {
    return DAXI_ThresholdLocal_32f8u_C1R(scene.data(), scene.image.step(), to.data(), to.step(), scene.size, &cfg,
                                         buffer.data());
  };
  ASSERT_EQ(run(clean), DAX_STS_OK);
  scene.image.at(10, 12) = std::numeric_limits<float>::quiet_NaN();
  scene.image.at(30, 9) = 1e20F;
  ASSERT_EQ(run(dst), DAX_STS_OK);
  const auto isNear = [](int32_t x, int32_t y, int32_t u, int32_t v) {
    return std::abs(x - u) <= 2 && std::abs(y - v) <= 3;
  };
  for (int32_t y = 0; y < 30; ++y) {
    for (int32_t x = 0; x < 40; ++x) {
      if (isNear(x, y, 10, 12)) {
        ASSERT_EQ(dst.at(x, y), 0);
      } else if (!isNear(x, y, 30, 9)) {
        ASSERT_EQ(dst.at(x, y), clean.at(x, y)) << x << ", " << y;
      }
    }
  }
}

TEST(ThresholdLocalFloats, StrayValuesStayWhereTheyAre) {
  checkStrayValues(DAXI_LOCAL_SAUVOLA);
  checkStrayValues(DAXI_LOCAL_GAUSS);
}

}  // namespace
}  // namespace dax::test
