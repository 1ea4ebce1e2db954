#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "daxi/polar.h"
#include "daxi/remap.h"
#include "daxi/warp.h"
#include "tests/support/digest.h"

namespace dax::test {
namespace {

constexpr DaxiSize kFrom = {201, 103}, kTo = {230, 151};
constexpr DaxiRect kAll = {0, 0, 230, 151};

template <class T>
TestImage<T> warpSource() {
  TestImage<T> image(kFrom);
  Random random(4);
  image.fill([&](int32_t, int32_t) { return random.below(1 << 16); });
  return image;
}

// By all kernels and some borders.
template <class T, class Cfg, class Operation>
void addWarp(Digest& digest, Cfg cfg, Operation operation) {
  const TestImage<T> src = warpSource<T>();
  for (cfg.interpolation = 0; cfg.interpolation < 4; ++cfg.interpolation) {
    cfg.border = cfg.interpolation == 2 ? DAXI_BORDER_CONSTANT : cfg.interpolation;
    TestImage<T> dst(kTo);
    EXPECT_EQ(operation(src.data(), src.step(), kFrom, dst.data(), dst.step(), kTo, kAll, &cfg), DAX_STS_OK);
    digest.add(dst);
  }
}

TEST(Digests, Warp) {
  Digest digest;
  const DaxiWarpCfg affine = {{0.83, -0.41, 60, 0.4, 0.9, -8, 0, 0, 1}, 0, 0, 0, 0, 77, -0.5};
  const DaxiWarpCfg perspective = {{1, 0.2, 5, -0.1, 1.1, 9, 0.002, -0.003, 1}, 0, 0, 0, 0, 77, -0.75};
  addWarp<uint8_t>(digest, affine, DAXI_WarpAffine_8u_C1R);
  addWarp<uint16_t>(digest, affine, DAXI_WarpAffine_16u_C1R);
  addWarp<int16_t>(digest, perspective, DAXI_WarpPerspective_16s_C1R);
  addWarp<float>(digest, perspective, DAXI_WarpPerspective_32f_C1R);
  addWarp<uint8_t>(digest, DaxiRotateCfg{0.7, 0, 0, 9, -0.5}, DAXI_Rotate_8u_C1R);
  addWarp<float>(digest, DaxiRotateCfg{-2, 0, 0, 9, -0.5}, DAXI_Rotate_32f_C1R);
  EXPECT_EQ(digest.value(), 3308965878349311333u);
}

TEST(Digests, Polar) {
  Digest digest;
  const DaxiPolarCfg ring = {101.3, 50.7, 70, 6, 0.3, 2 * M_PI, 0, 0, 0, 0, 77, -0.5};
  DaxiPolarCfg log = ring;
  log.log = 1, log.span = -2;
  addWarp<uint8_t>(digest, ring, DAXI_Polar_8u_C1R);
  addWarp<float>(digest, log, DAXI_Polar_32f_C1R);
  addWarp<uint16_t>(digest, ring, DAXI_PolarBack_16u_C1R);
  addWarp<float>(digest, log, DAXI_PolarBack_32f_C1R);
  EXPECT_EQ(digest.value(), 14575368682562498298u);
}

TEST(Digests, Remap) {
  Digest digest;
  TestImage<float> x(kTo), y(kTo);
  Random random(6);
  x.fill([&](int32_t i, int32_t j) { return i * 0.9 + j * 0.1 + random.below(4096) / 997.0 - 5; });
  y.fill([&](int32_t i, int32_t j) { return j * 0.8 - i * 0.1 + random.below(4096) / 991.0; });
  uint64_t bytes = 0;
  ASSERT_EQ(DAXI_RemapPrepareModelSize(kTo, &bytes), DAX_STS_OK);
  std::vector<uint64_t> model(bytes / 8);
  ASSERT_EQ(DAXI_RemapPrepare(x.data(), x.step(), y.data(), y.step(), kTo, model.data()), DAX_STS_OK);
  digest.add(model.data(), bytes);
  const auto by = [&](const uint8_t* src, int32_t srcStep, DaxiSize from, uint8_t* dst, int32_t dstStep, DaxiSize to,
                      DaxiRect, const DaxiRemapCfg* cfg) {
    return DAXI_Remap_8u_C1R(src, srcStep, from, x.data(), x.step(), y.data(), y.step(), dst, dstStep, to, cfg);
  };
  const auto prepared = [&](const float* src, int32_t srcStep, DaxiSize from, float* dst, int32_t dstStep, DaxiSize to,
                            DaxiRect, const DaxiRemapCfg* cfg) {
    return DAXI_RemapPrepared_32f_C1R(src, srcStep, from, model.data(), bytes, dst, dstStep, to, cfg);
  };
  addWarp<uint8_t>(digest, DaxiRemapCfg{0, 0, 77, -0.5}, by);
  addWarp<float>(digest, DaxiRemapCfg{0, 0, 77, -0.5}, prepared);
  EXPECT_EQ(digest.value(), 17847394606871048714u);
}

}  // namespace
}  // namespace dax::test
