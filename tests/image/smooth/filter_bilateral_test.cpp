#include "daxi/filter_bilateral.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/support/filter_scene.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

template <class T>
double bilateralAt(const TestImage<T>& src, DaxiSize size, int32_t margin, const DaxiFilterBilateralCfg& cfg, int32_t x,
                   int32_t y) {
  const auto pixel = [&](int64_t u, int64_t v) {
    return static_cast<double>(src.at(static_cast<int32_t>(u) + margin, static_cast<int32_t>(v) + margin));
  };
  double sum = 0, weights = 0;
  for (int32_t dy = -cfg.radius; dy <= cfg.radius; ++dy) {
    for (int32_t dx = -cfg.radius; dx <= cfg.radius; ++dx) {
      if (dx * dx + dy * dy > cfg.radius * cfg.radius) continue;
      const bool isInMemory = cfg.border == DAXI_BORDER_IN_MEMORY;
      const auto u = isInMemory ? x + dx : walkInside(x + dx, size.width, cfg.border);
      const auto v = isInMemory ? y + dy : walkInside(y + dy, size.height, cfg.border);
      if ((!u || !v) && cfg.border != DAXI_BORDER_CONSTANT) continue;
      const double value = u && v ? pixel(*u, *v) : cfg.value, d = value - pixel(x, y);
      if (!(std::fabs(d) < 8 * cfg.sigmaGrey)) continue;
      const double w = std::exp(-(dx * dx + dy * dy) / (2 * cfg.sigmaSpace * cfg.sigmaSpace)) *
                       std::exp(-d * d / (2 * cfg.sigmaGrey * cfg.sigmaGrey));
      sum += w * value, weights += w;
    }
  }
  return sum / weights;
}

template <class T, class Query, class Filter, class Pooled>
void checkBilateral(Query query, Filter filter, Pooled pooled) {
  Random random(9);
  for (int32_t round = 0; round < 28; ++round) {
    DaxiFilterBilateralCfg cfg = {1 + random.below(5), round % 7, 0.5 + random.below(4), 3.0 + random.below(60), 77};
    if (round == 13) cfg.radius = 15;
    const DaxiSize size = {1 + random.below(round % 4 ? 90 : 4), 1 + random.below(round % 4 ? 14 : 4)};
    const int32_t margin = cfg.border == DAXI_BORDER_IN_MEMORY ? 15 : 0;
    TestImage<T> src({size.width + 2 * margin, size.height + 2 * margin}, 1), dst(size, 2), again(size);
    src.fill([&](int32_t x, int32_t) { return (x / 5 % 2 ? 150 : 40) + random.below(60); });
    uint64_t bytes = 0;
    ASSERT_EQ(query(size, &cfg, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes);
    dst.remember();
    ASSERT_EQ(filter(&src.at(margin, margin), src.step(), dst.data(), dst.step(), size, &cfg, buffer.data()),
              DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    for (int32_t y = 0; y < size.height; ++y) {
      for (int32_t x = 0; x < size.width; ++x) {
        const double expected = bilateralAt(src, size, margin, cfg, x, y);
        ASSERT_NEAR(static_cast<double>(dst.at(x, y)), expected, sizeof(T) == 1 ? 0.501 : 1e-3)
            << x << ", " << y << " border " << cfg.border;
      }
    }
    MockPool pool;
    ASSERT_EQ(
        pooled(&pool, 3, &src.at(margin, margin), src.step(), again.data(), again.step(), size, &cfg, buffer.data()),
        DAX_STS_OK);
    ASSERT_TRUE(samePixels(dst, again)) << "on a pool";
  }
}

TEST(FilterBilateral, EqualsTheDefinition) {
  checkBilateral<uint8_t>(DAXI_FilterBilateralBufferSize_8u, DAXI_FilterBilateral_8u_C1R,
                          DAXI_FilterBilateral_8u_C1R_MT);
  checkBilateral<float>(DAXI_FilterBilateralBufferSize_32f, DAXI_FilterBilateral_32f_C1R,
                        DAXI_FilterBilateral_32f_C1R_MT);
}

TEST(FilterBilateral, NumbersThatAreNoneCountNowhere) {
  const DaxiFilterBilateralCfg cfg = {3, DAXI_BORDER_CLIP, 2, 10, 0};
  TestImage<float> src({12, 9}), dst({12, 9});
  src.fill([](int32_t, int32_t) { return 7; });
  src.at(4, 4) = std::numeric_limits<float>::quiet_NaN();
  src.at(8, 2) = -std::numeric_limits<float>::infinity();
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_FilterBilateralBufferSize_32f(src.size(), &cfg, &bytes), DAX_STS_OK);
  GuardedBuffer<uint8_t> buffer(bytes);
  ASSERT_EQ(DAXI_FilterBilateral_32f_C1R(src.data(), 12, dst.data(), 12, src.size(), &cfg, buffer.data()), DAX_STS_OK);
  for (int32_t y = 0; y < 9; ++y) {
    for (int32_t x = 0; x < 12; ++x) {
      if (src.at(x, y) == 7) {
        ASSERT_NEAR(dst.at(x, y), 7, 1e-5);
      } else {
        ASSERT_TRUE(sameBits(dst.at(x, y), src.at(x, y)));
      }
    }
  }
}

}  // namespace
}  // namespace dax::test
