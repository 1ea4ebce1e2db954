#include "daxi/gauss.h"

#include <gtest/gtest.h>

#include "image/gauss/gauss_taps.h"
#include "tests/image/gauss/gauss_oracle.h"
#include "tests/support/filter_scene.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

template <class T>
struct Gauss;
#define DAX_GAUSS_TYPE(SUFFIX, TYPE)                                    \
  template <>                                                           \
  struct Gauss<TYPE> {                                                  \
    static constexpr auto kQuery = DAXI_FilterGaussBufferSize_##SUFFIX; \
    static constexpr auto kFunction = DAXI_FilterGauss_##SUFFIX##_C1R;  \
    static constexpr auto kPooled = DAXI_FilterGauss_##SUFFIX##_C1R_MT; \
  };
DAX_GAUSS_TYPE(8u, uint8_t)
DAX_GAUSS_TYPE(16u, uint16_t)
DAX_GAUSS_TYPE(16s, int16_t)
DAX_GAUSS_TYPE(32f, float)
#undef DAX_GAUSS_TYPE

// Floats are below 125: two passes of up to 20 additions.
template <class T>
constexpr double kBound = std::is_floating_point_v<T> ? 125 * 50 * 0x1p-24 : 0.51;

template <class T>
void checkGaussian(const FilterScene<T>& s, const DaxiGaussCfg& cfg) {
  uint64_t bytes = 0;
  ASSERT_EQ(Gauss<T>::kQuery(s.size, &cfg, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  TestImage<T> dst(s.size, 2), tiled(s.size);
  dst.remember();
  ASSERT_EQ(Gauss<T>::kFunction(s.data(), s.image.step(), dst.data(), dst.step(), s.size, &cfg, buffer.data()),
            DAX_STS_OK);
  ASSERT_TRUE(dst.paddingUntouched());
  const auto along = oracle::gaussWeights(cfg.sigma, cfg.size.width);
  const auto down = oracle::gaussWeights(cfg.sigma, cfg.size.height);
  const auto pixel = [&](int64_t x, int64_t y) { return s.pixel(x, y, cfg.border, cfg.value); };
  for (int32_t y = 0; y < s.size.height; ++y) {
    for (int32_t x = 0; x < s.size.width; ++x) {
      ASSERT_NEAR(dst.at(x, y), oracle::gauss(pixel, x, y, along, down), kBound<T>)
          << x << ", " << y << " sigma " << cfg.sigma << " border " << cfg.border;
    }
  }
  MockPool pool;
  ASSERT_EQ(
      Gauss<T>::kPooled(&pool, 5, s.data(), s.image.step(), tiled.data(), tiled.step(), s.size, &cfg, buffer.data()),
      DAX_STS_OK);
  ASSERT_TRUE(samePixels(dst, tiled)) << "on a pool";
}

template <class>
class Gaussian : public testing::Test {};
using GaussPixels = testing::Types<uint8_t, uint16_t, int16_t, float>;
TYPED_TEST_SUITE(Gaussian, GaussPixels);

TYPED_TEST(Gaussian, IsNearTheRealValuedFilter) {
  Random random(3);
  for (int32_t round = 0; round < 36; ++round) {
    DaxiGaussCfg cfg;
    ASSERT_EQ(DAXI_GaussDefaultCfg(&cfg), DAX_STS_OK);
    cfg.sigma = 0.3 + random.below(round % 3 == 0 ? 60 : 15) * 0.1;
    if (round % 4 == 1) cfg.size = {1 + 2 * random.below(5), 1 + 2 * random.below(8)};
    cfg.border = round % 6;
    cfg.value = random.below(200);
    const DaxiSize size = {1 + random.below(round % 5 == 0 ? 5 : 70), 1 + random.below(round % 3 == 0 ? 5 : 20)};
    checkGaussian(FilterScene<TypeParam>(size, cfg.border == DAXI_BORDER_IN_MEMORY ? 32 : 0, round + 1u), cfg);
  }
}

// Kernels of many groups of taps; black and white pixels only, the ends of the type.
TYPED_TEST(Gaussian, OfWideKernelsAndExtremePixels) {
  using Limits = std::numeric_limits<TypeParam>;
  FilterScene<TypeParam> scene({67, 12}, 0, 5);
  if constexpr (std::is_integral_v<TypeParam>) {
    scene.image.fill([](int32_t x, int32_t y) { return (x * y + x / 3) % 7 < 3 ? Limits::min() : Limits::max(); });
  }
  for (const double sigma : {2.0, 14.0}) {
    checkGaussian(scene, {sigma, {0, 0}, DAXI_BORDER_MIRROR, 0, 0});
  }
}

TYPED_TEST(Gaussian, LeavesFlatImagesAlone) {
  if constexpr (std::is_integral_v<TypeParam>) {
    using Limits = std::numeric_limits<TypeParam>;
    for (const TypeParam level : {Limits::min(), Limits::max(), TypeParam(77)}) {
      TestImage<TypeParam> flat({40, 2}), dst(flat.size());
      flat.fill([&](int32_t, int32_t) { return level; });
      for (const double sigma : {0.3, 1.7, 25.0, 100.0}) {
        const DaxiGaussCfg cfg = {sigma, {0, 0}, DAXI_BORDER_CIRCULAR, 0, 0};
        GuardedBuffer<uint8_t> buffer(2 << 20);
        ASSERT_EQ(Gauss<TypeParam>::kFunction(flat.data(), 40, dst.data(), 40, flat.size(), &cfg, buffer.data()),
                  DAX_STS_OK);
        ASSERT_TRUE(samePixels(flat, dst)) << sigma;
      }
    }
  }
}

// Whatever the image is: at worst the pixels of weights that are too large are white, the others black.
TEST(GaussTaps, AreNearTheWeights) {
  for (int32_t k = 0; k <= 400; ++k) {
    const double sigma = 0.3 * std::pow(100 / 0.3, k / 400.0);
    for (const int32_t side : {0, 5, 31}) {
      GaussTaps<uint16_t> taps;
      makeGaussTaps(std::min(sigma, 100.0), side, taps);
      const auto exact = oracle::gaussWeights(std::min(sigma, 100.0), side);
      std::vector<double> rounded(exact.size());
      for (int32_t i = 0; i < taps.count; ++i) {
        const double weight = std::ldexp(taps.weight[i], -taps.bits - 1);
        rounded[exact.size() / 2 - taps.distance[i]] += weight;
        rounded[exact.size() / 2 + taps.distance[i]] += weight;
      }
      double errors = 0, sum = 0;
      for (size_t i = 0; i < exact.size(); ++i) errors += std::fabs(rounded[i] - exact[i]), sum += rounded[i];
      ASSERT_EQ(sum, 1) << sigma;
      // Two passes, and the rounding between them.
      ASSERT_LE(2 * errors * 255 / 2 + 0.5 / 128, 0.01) << sigma << " side " << side;
    }
  }
}

}  // namespace
}  // namespace dax::test
