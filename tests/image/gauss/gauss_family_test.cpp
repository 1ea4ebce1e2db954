// What is built on Gaussians: the recursive filter, the Laplacian, the unsharp mask.
#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "daxi/gauss_recursive.h"
#include "daxi/log_filter.h"
#include "daxi/unsharp.h"
#include "tests/image/gauss/gauss_oracle.h"
#include "tests/support/filter_scene.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

// Runs a function with its buffer, then on a pool, which must give the same.
template <class D, class T, class Query, class Filter, class Pooled, class Cfg>
void runBoth(const FilterScene<T>& s, const Cfg& cfg, Query query, Filter filter, Pooled pooled, TestImage<D>& dst) {
  uint64_t bytes = 0;
  ASSERT_EQ(query(s.size, &cfg, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  TestImage<D> tiled(s.size);
  dst.remember();
  ASSERT_EQ(filter(s.data(), s.image.step(), dst.data(), dst.step(), s.size, &cfg, buffer.data()), DAX_STS_OK);
  ASSERT_TRUE(dst.paddingUntouched());
  MockPool pool;
  ASSERT_EQ(pooled(&pool, 11, s.data(), s.image.step(), tiled.data(), tiled.step(), s.size, &cfg, buffer.data()),
            DAX_STS_OK);
  ASSERT_TRUE(samePixels(dst, tiled)) << "on a pool";
}

template <class T, class... Functions>
void checkRecursive(double range, double rounding, Functions... functions) {
  Random random(1);
  for (int32_t round = 0; round < 10; ++round) {
    const DaxiGaussRecursiveCfg cfg = {2 + random.below(40) * 0.1, round % 5, 0, std::floor(range / 2)};
    const DaxiSize size = {1 + random.below(round < 5 ? 60 : 8), 1 + random.below(round < 5 ? 8 : 40)};
    FilterScene<T> s(size, 0, round + 1u);
    // Black and white: the whole range.
    s.image.fill([&](int32_t, int32_t) { return random.below(2) * range; });
    TestImage<T> dst(size, 1);
    runBoth<T>(s, cfg, functions..., dst);
    // 8 sigma each way, without an end that matters.
    const auto weights = oracle::gaussWeights(cfg.sigma, 2 * static_cast<int32_t>(8 * cfg.sigma) + 1);
    const auto pixel = [&](int64_t x, int64_t y) { return s.pixel(x, y, cfg.border, cfg.value); };
    for (int32_t y = 0; y < size.height; y += 3) {
      for (int32_t x = 0; x < size.width; x += 3) {
        ASSERT_NEAR(dst.at(x, y), oracle::gauss(pixel, x, y, weights, weights), 1e-3 * range + rounding)
            << x << ", " << y << " sigma " << cfg.sigma << " border " << cfg.border;
      }
    }
  }
}

TEST(GaussRecursive, IsNearTheGaussian) {
  checkRecursive<uint8_t>(255, 0.5, DAXI_FilterGaussRecursiveBufferSize_8u, DAXI_FilterGaussRecursive_8u_C1R,
                          DAXI_FilterGaussRecursive_8u_C1R_MT);
  checkRecursive<uint16_t>(65535, 0.5, DAXI_FilterGaussRecursiveBufferSize_16u, DAXI_FilterGaussRecursive_16u_C1R,
                           DAXI_FilterGaussRecursive_16u_C1R_MT);
  checkRecursive<float>(1, 0, DAXI_FilterGaussRecursiveBufferSize_32f, DAXI_FilterGaussRecursive_32f_C1R,
                        DAXI_FilterGaussRecursive_32f_C1R_MT);
}

// At sigma 100, where single precision would be off by half of the range.
TEST(GaussRecursive, OfLargeSigmas) {
  const DaxiGaussRecursiveCfg cfg = {100, DAXI_BORDER_CIRCULAR, 0, 0};
  FilterScene<float> s({900, 3}, 0, 1), flat({70, 9}, 0, 1);
  s.image.fill([](int32_t x, int32_t) { return x / 150 % 2; });
  flat.image.fill([](int32_t, int32_t) { return 1.1; });
  TestImage<float> dst(s.size), still(flat.size);
  const auto run = [&](const FilterScene<float>& scene, TestImage<float>& to) {
    runBoth<float>(scene, cfg, DAXI_FilterGaussRecursiveBufferSize_32f, DAXI_FilterGaussRecursive_32f_C1R,
                   DAXI_FilterGaussRecursive_32f_C1R_MT, to);
  };
  run(s, dst), run(flat, still);
  const auto weights = oracle::gaussWeights(100, 801);
  const auto pixel = [&](int64_t x, int64_t y) { return s.pixel(x, y, cfg.border, 0); };
  for (int32_t x = 0; x < 900; x += 7) ASSERT_NEAR(dst.at(x, 1), oracle::gauss(pixel, x, 1, weights, {1}), 1e-3) << x;
  ASSERT_TRUE(samePixels(flat.image, still));
}

template <class T, class... Functions>
void checkLog(Functions... functions) {
  for (int32_t round = 0; round < 12; ++round) {
    const DaxiGaussCfg cfg = {0.5 + round * 0.3, {round % 3 == 0 ? 9 : 0, 0}, round % 6, 0, 40};
    const FilterScene<T> s({40, 7}, cfg.border == DAXI_BORDER_IN_MEMORY ? 16 : 0, round + 1u);
    TestImage<float> dst(s.size, 1);
    runBoth<float>(s, cfg, functions..., dst);
    const auto derived = [&](const std::vector<double>& weights) {
      std::vector<double> result = weights;
      const int32_t radius = static_cast<int32_t>(weights.size()) / 2;
      double sum = 0;
      for (int32_t i = -radius; i <= radius; ++i) {
        sum += result[static_cast<size_t>(i + radius)] *= (i * i - cfg.sigma * cfg.sigma) / std::pow(cfg.sigma, 4);
      }
      for (double& weight : result) weight -= sum / static_cast<double>(result.size());
      return result;
    };
    const auto along = oracle::gaussWeights(cfg.sigma, cfg.size.width), down = oracle::gaussWeights(cfg.sigma, 0);
    const auto along2 = derived(along), down2 = derived(down);
    const auto pixel = [&](int64_t x, int64_t y) { return s.pixel(x, y, cfg.border, cfg.value); };
    const double largest = std::is_same_v<T, uint16_t> ? 65535 : 255;
    for (int32_t y = 0; y < s.size.height; ++y) {
      for (int32_t x = 0; x < s.size.width; ++x) {
        const double expected = oracle::gauss(pixel, x, y, along2, down) + oracle::gauss(pixel, x, y, along, down2);
        ASSERT_NEAR(dst.at(x, y), expected, 1e-5 / (cfg.sigma * cfg.sigma) * largest) << x << ", " << y;
      }
    }
  }
}

TEST(LogFilter, EqualsTheSumOfTwoProducts) {
  checkLog<uint8_t>(DAXI_LoGBufferSize_8u32f, DAXI_LoG_8u32f_C1R, DAXI_LoG_8u32f_C1R_MT);
  checkLog<uint16_t>(DAXI_LoGBufferSize_16u32f, DAXI_LoG_16u32f_C1R, DAXI_LoG_16u32f_C1R_MT);
  checkLog<float>(DAXI_LoGBufferSize_32f, DAXI_LoG_32f_C1R, DAXI_LoG_32f_C1R_MT);
}

template <class T, class Gauss, class... Functions>
void checkUnsharp(Gauss gauss, Functions... functions) {
  for (int32_t round = 0; round < 8; ++round) {
    const DaxiUnsharpCfg cfg = {1.5, {0, 0}, round % 5, 0, 30, -1 + round * 0.75, round % 2 == 0 ? 0.0 : 20.0};
    const FilterScene<T> s({50, 9}, 0, round + 1u);
    TestImage<T> dst(s.size, 1), smooth(s.size);
    runBoth<T>(s, cfg, functions..., dst);
    const DaxiGaussCfg gaussCfg = {cfg.sigma, cfg.size, cfg.border, 0, cfg.value};
    std::vector<double> buffer(1 << 14);
    ASSERT_EQ(gauss(s.data(), s.image.step(), smooth.data(), smooth.step(), s.size, &gaussCfg, buffer.data()),
              DAX_STS_OK);
    for (int32_t y = 0; y < s.size.height; ++y) {
      for (int32_t x = 0; x < s.size.width; ++x) {
        const double pixel = static_cast<double>(s.pixel(x, y, 0, 0));
        const double detail = pixel - static_cast<double>(smooth.at(x, y));
        double expected = std::fabs(detail) > cfg.threshold ? pixel + cfg.amount * detail : pixel;
        if constexpr (std::is_integral_v<T>) {
          expected = std::clamp<double>(std::nearbyint(expected), 0, std::numeric_limits<T>::max());
        }
        ASSERT_NEAR(dst.at(x, y), expected, std::is_integral_v<T> ? 0 : 1e-3) << x << ", " << y << " round " << round;
      }
    }
  }
}

// Amounts are multiples of 1/4, so that floats are exact.
TEST(Unsharp, AddsWhatTheGaussianTakes) {
  checkUnsharp<uint8_t>(DAXI_FilterGauss_8u_C1R, DAXI_UnsharpBufferSize_8u, DAXI_Unsharp_8u_C1R,
                        DAXI_Unsharp_8u_C1R_MT);
  checkUnsharp<uint16_t>(DAXI_FilterGauss_16u_C1R, DAXI_UnsharpBufferSize_16u, DAXI_Unsharp_16u_C1R,
                         DAXI_Unsharp_16u_C1R_MT);
  checkUnsharp<float>(DAXI_FilterGauss_32f_C1R, DAXI_UnsharpBufferSize_32f, DAXI_Unsharp_32f_C1R,
                      DAXI_Unsharp_32f_C1R_MT);
}

}  // namespace
}  // namespace dax::test
