#include "daxi/convolve.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "tests/support/filter_scene.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

template <class T, class D, class W>
struct Forms {
  DaxStatus (*separable)(const T*, int32_t, D*, int32_t, DaxiSize, const W*, const W*, const DaxiConvolveCfg*);
  DaxStatus (*separablePooled)(void*, uint32_t, const T*, int32_t, D*, int32_t, DaxiSize, const W*, const W*,
                               const DaxiConvolveCfg*);
  DaxStatus (*full)(const T*, int32_t, D*, int32_t, DaxiSize, const W*, const DaxiConvolveCfg*);
  DaxStatus (*fullPooled)(void*, uint32_t, const T*, int32_t, D*, int32_t, DaxiSize, const W*, const DaxiConvolveCfg*);
};
#define DAX_FORMS(SUFFIX)                                                                                    \
  {                                                                                                          \
    DAXI_FilterSeparable_##SUFFIX##_C1R, DAXI_FilterSeparable_##SUFFIX##_C1R_MT, DAXI_Filter_##SUFFIX##_C1R, \
        DAXI_Filter_##SUFFIX##_C1R_MT                                                                        \
  }

// The exact sum: whole numbers below 2^53, and floats that are small multiples of powers of two.
template <class T, class W>
double sumAt(const FilterScene<T>& s, const DaxiConvolveCfg& cfg, const std::vector<W>& weights, int32_t x, int32_t y) {
  double sum = 0;
  for (int32_t j = 0; j < cfg.kernel.height; ++j) {
    for (int32_t i = 0; i < cfg.kernel.width; ++i) {
      sum += static_cast<double>(weights[static_cast<size_t>(j * cfg.kernel.width + i)]) *
             static_cast<double>(s.pixel(x - cfg.anchorX + i, y - cfg.anchorY + j, cfg.border, cfg.value));
    }
  }
  return sum;
}

template <class D>
D resultOf(double sum, int32_t shift) {
  if constexpr (std::is_floating_point_v<D>) {
    return static_cast<D>(sum);
  } else {
    using Limits = std::numeric_limits<D>;
    return static_cast<D>(std::clamp<double>(std::nearbyint(std::ldexp(sum, -shift)), Limits::min(), Limits::max()));
  }
}

template <class T, class D, class W>
void checkKernel(const Forms<T, D, W>& forms, const FilterScene<T>& s, const DaxiConvolveCfg& cfg,
                 const std::vector<W>& x, const std::vector<W>& y, bool isSeparable) {
  TestImage<D> dst(s.size, 2), tiled(s.size);
  dst.remember();
  MockPool pool;
  std::vector<W> weights;
  for (const W wy : y) {
    for (const W wx : x) weights.push_back(static_cast<W>(wx * wy));
  }
  const T* const src = s.data();
  const int32_t step = s.image.step();
  if (isSeparable) {
    ASSERT_EQ(forms.separable(src, step, dst.data(), dst.step(), s.size, x.data(), y.data(), &cfg), DAX_STS_OK);
    ASSERT_EQ(forms.separablePooled(&pool, 3, src, step, tiled.data(), tiled.step(), s.size, x.data(), y.data(), &cfg),
              DAX_STS_OK);
  } else {
    ASSERT_EQ(forms.full(src, step, dst.data(), dst.step(), s.size, weights.data(), &cfg), DAX_STS_OK);
    ASSERT_EQ(forms.fullPooled(&pool, 3, src, step, tiled.data(), tiled.step(), s.size, weights.data(), &cfg),
              DAX_STS_OK);
  }
  ASSERT_TRUE(dst.paddingUntouched());
  ASSERT_TRUE(samePixels(dst, tiled)) << "on a pool";
  for (int32_t v = 0; v < s.size.height; ++v) {
    for (int32_t u = 0; u < s.size.width; ++u) {
      ASSERT_EQ(dst.at(u, v), resultOf<D>(sumAt(s, cfg, weights, u, v), cfg.shift))
          << u << ", " << v << (isSeparable ? " separable " : " ") << cfg.kernel.width << " x " << cfg.kernel.height;
    }
  }
}

// Kernels of any shape and anchor, all borders. Products of weights stay within 16 bits; floats are exact.
template <class T, class D, class W>
void checkKernels(const Forms<T, D, W>& forms) {
  Random random(6);
  for (int32_t round = 0; round < 24; ++round) {
    DaxiConvolveCfg cfg;
    ASSERT_EQ(DAXI_ConvolveDefaultCfg(&cfg), DAX_STS_OK);
    cfg.kernel = {1 + random.below(7), 1 + random.below(round % 4 == 0 ? 31 : 7)};
    cfg.anchorX = random.below(cfg.kernel.width), cfg.anchorY = random.below(cfg.kernel.height);
    cfg.shift = random.below(12);
    cfg.border = round / 2 % 6;
    cfg.value = random.below(250);
    const bool isFloat = std::is_floating_point_v<W>;
    const auto drawn = [&](int32_t count) {
      std::vector<W> weights(static_cast<size_t>(count));
      const int32_t reach = isFloat ? 4 : round % 3 == 0 ? 181 : 9;
      for (W& weight : weights) weight = static_cast<W>(random.below(2 * reach) - reach);
      return weights;
    };
    const auto x = drawn(cfg.kernel.width), y = drawn(cfg.kernel.height);
    const DaxiSize size = {1 + random.below(round % 5 == 0 ? 5 : 40), 1 + random.below(12)};
    const FilterScene<T> scene(size, cfg.border == DAXI_BORDER_IN_MEMORY ? 31 : 0, static_cast<uint64_t>(round));
    checkKernel(forms, scene, cfg, x, y, round % 2 == 0);
  }
}

TEST(Convolve, EqualsTheSum) {
  checkKernels<uint8_t, uint8_t, int16_t>(DAX_FORMS(8u));
  checkKernels<uint8_t, int16_t, int16_t>(DAX_FORMS(8u16s));
  checkKernels<uint16_t, uint16_t, int16_t>(DAX_FORMS(16u));
  checkKernels<uint8_t, float, float>(DAX_FORMS(8u32f));
  checkKernels<uint16_t, float, float>(DAX_FORMS(16u32f));
  checkKernels<float, float, float>(DAX_FORMS(32f));
}

// Sums beyond 32 bits, of both signs; rows of several strips.
TEST(Convolve, OfLargeWeightsAndWideRows) {
  const DaxiConvolveCfg cfg = {{31, 31}, 30, 2, 30, DAXI_BORDER_CIRCULAR, 0};
  FilterScene<uint16_t> scene({1030, 2}, 0, 4);
  scene.image.fill([](int32_t x, int32_t) { return x % 4 == 0 ? 65535 : x; });
  std::vector<int16_t> x(31, 181), y(31, 181);
  x[3] = -181;
  checkKernel<uint16_t, uint16_t, int16_t>(DAX_FORMS(16u), scene, cfg, x, y, true);
  checkKernel<uint16_t, uint16_t, int16_t>(DAX_FORMS(16u), scene, cfg, x, y, false);
}

}  // namespace
}  // namespace dax::test
