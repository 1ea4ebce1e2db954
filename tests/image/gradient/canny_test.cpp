#include "daxi/canny.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "daxi/gauss.h"
#include "tests/image/gradient/gradient_oracle.h"
#include "tests/support/filter_scene.h"
#include "tests/support/mock_pool.h"

namespace dax::test {
namespace {

using Bytes = TestImage<uint8_t>;

Bytes smoothed(const Bytes& src, double sigma) {
  Bytes result(src.size());
  result.fill([&](int32_t x, int32_t y) { return src.at(x, y); });
  if (sigma == 0) return result;
  const DaxiGaussCfg cfg = {sigma, {0, 0}, DAXI_BORDER_REPLICATE, 0, 0};
  uint64_t bytes = 0;
  EXPECT_EQ(DAXI_FilterGaussBufferSize_8u(src.size(), &cfg, &bytes), DAX_STS_OK);
  std::vector<double> buffer(bytes / sizeof(double) + 1);
  EXPECT_EQ(
      DAXI_FilterGauss_8u_C1R(src.data(), src.step(), result.data(), result.step(), src.size(), &cfg, buffer.data()),
      DAX_STS_OK);
  return result;
}

// Gradients in double precision; weak pixels join strong ones in rounds over the whole image.
struct CannyOracle {
  CannyOracle(const Bytes& image, const DaxiCannyCfg& of) : src(image), cfg(of) {}

  const Bytes& src;
  const DaxiCannyCfg& cfg;

  double slope(int32_t x, int32_t y, bool isX) const {
    const auto pixel = [&](int32_t u, int32_t v) {
      return src.at(std::clamp(u, 0, src.size().width - 1), std::clamp(v, 0, src.size().height - 1));
    };
    return oracle::product(pixel, x, y, oracle::derivative(0, isX, cfg.aperture));
  }
  double strength(int32_t x, int32_t y) const {
    if (x < 0 || y < 0 || x >= src.size().width || y >= src.size().height) return 0;
    const double gx = slope(x, y, true), gy = slope(x, y, false);
    return cfg.norm == DAXI_CANNY_L1 ? std::fabs(gx) + std::fabs(gy) : gx * gx + gy * gy;
  }
  bool exceeds(double strength, double level) const {
    return strength > (cfg.norm == DAXI_CANNY_L1 ? level : level * level);
  }
  bool isKept(int32_t x, int32_t y) const {
    const double m = strength(x, y), gx = slope(x, y, true), gy = slope(x, y, false);
    const double tangent = 13573.0 / 32768;
    int32_t dx = gx * gy < 0 ? -1 : 1, dy = 1;
    if (std::fabs(gy) < tangent * std::fabs(gx)) {
      dx = 1, dy = 0;
    } else if (std::fabs(gx) < tangent * std::fabs(gy)) {
      dx = 0, dy = 1;
    }
    return exceeds(m, cfg.low) && m > strength(x - dx, y - dy) && m >= strength(x + dx, y + dy);
  }
  Bytes edges() const {
    Bytes kept(src.size()), found(src.size());
    kept.fill([&](int32_t x, int32_t y) { return isKept(x, y); });
    found.fill([&](int32_t x, int32_t y) { return kept.at(x, y) && exceeds(strength(x, y), cfg.high) ? 255 : 0; });
    for (bool isNew = true; isNew;) {
      isNew = false;
      for (int32_t k = 0; k < src.size().width * src.size().height; ++k) {
        const int32_t x = k % src.size().width, y = k / src.size().width;
        if (!kept.at(x, y) || found.at(x, y) != 0) continue;
        for (int32_t n = 0; n < 9 && found.at(x, y) == 0; ++n) {
          const int32_t u = x + n % 3 - 1, v = y + n / 3 - 1;
          if (u < 0 || v < 0 || u >= src.size().width || v >= src.size().height || found.at(u, v) == 0) continue;
          found.at(x, y) = 255, isNew = true;
        }
      }
    }
    return found;
  }
};

TEST(Canny, EqualsItsSteps) {
  Random random(2);
  for (int32_t round = 0; round < 24; ++round) {
    DaxiCannyCfg cfg;
    ASSERT_EQ(DAXI_CannyDefaultCfg(&cfg), DAX_STS_OK);
    cfg.sigma = round % 2 == 0 ? 0 : 0.4 + random.below(20) * 0.1;
    cfg.norm = round / 2 % 2, cfg.aperture = round / 4 % 2 == 0 ? 3 : 5;
    cfg.low = 20 + random.below(200), cfg.high = cfg.low + random.below(400);
    const DaxiSize size = {1 + random.below(round % 5 == 0 ? 4 : 60), 1 + random.below(round % 7 == 0 ? 4 : 40)};
    Bytes src(size, 1), dst(size, 2), tiled(size);
    // Blocks with noise: edges of all lengths, and ties.
    src.fill([&](int32_t x, int32_t y) { return (x / 7 + y / 5) % 3 * 60 + (round % 3 == 0 ? 0 : random.below(50)); });
    dst.remember();
    uint64_t bytes = 0;
    ASSERT_EQ(DAXI_CannyBufferSize_8u(size, &cfg, &bytes), DAX_STS_OK);
    GuardedBuffer<uint8_t> buffer(bytes);
    ASSERT_EQ(DAXI_Canny_8u_C1R(src.data(), src.step(), dst.data(), dst.step(), size, &cfg, buffer.data()), DAX_STS_OK);
    ASSERT_TRUE(dst.paddingUntouched());
    const Bytes smooth = smoothed(src, cfg.sigma);
    ASSERT_TRUE(samePixels(dst, CannyOracle(smooth, cfg).edges())) << "round " << round;
    MockPool pool;
    ASSERT_EQ(
        DAXI_Canny_8u_C1R_MT(&pool, 4, src.data(), src.step(), tiled.data(), tiled.step(), size, &cfg, buffer.data()),
        DAX_STS_OK);
    ASSERT_TRUE(samePixels(dst, tiled)) << "on a pool";
  }
}

}  // namespace
}  // namespace dax::test
