#include "bench/image/warp/warp_bench.h"

#include "bench/support/operation.h"
#include "daxi/polar.h"
#include "daxi/remap.h"
#include "daxi/warp.h"

namespace {

using bench::Image;
using bench::kSize;

constexpr DaxiRect rectOf(DaxiSize size) {
  return {0, 0, size.width, size.height};
}

template <class T, class Cfg>
using Warp = DaxStatus (*)(const T*, int32_t, DaxiSize, T*, int32_t, DaxiSize, DaxiRect, const Cfg*);

template <class T, class Cfg>
bench::Task prepare(Warp<T, Cfg> warp, const Cfg& cfg, DaxiSize to, int channels = 1) {
  const Image<T> from = bench::noise<T>({kSize.width * channels, kSize.height});
  const Image<T> result({to.width * channels, to.height});
  return {[=] {
            bench::require(
                warp(from.data(), from.size.width, kSize, result.data(), result.size.width, to, rectOf(to), &cfg));
          },
          nullptr};
}

DaxiWarpCfg warpCfg(bool isTilted, int32_t interpolation) {
  DaxiWarpCfg cfg;
  bench::require(DAXI_WarpDefaultCfg(&cfg));
  isTilted ? bench::tiltBack(cfg.m) : bench::turnBack(cfg.m);
  cfg.inverse = 1, cfg.interpolation = interpolation;
  return cfg;
}

template <int32_t interpolation>
bench::Task turned8() {
  return prepare(DAXI_WarpAffine_8u_C1R, warpCfg(false, interpolation), kSize);
}

bench::Task colour8() {
  return prepare(DAXI_WarpAffine_8u_C3R, warpCfg(false, DAXI_INTERPOLATION_LINEAR), kSize, 3);
}
bench::Task turned16() {
  return prepare(DAXI_WarpAffine_16u_C1R, warpCfg(false, DAXI_INTERPOLATION_LINEAR), kSize);
}
bench::Task turned32() {
  return prepare(DAXI_WarpAffine_32f_C1R, warpCfg(false, DAXI_INTERPOLATION_LINEAR), kSize);
}
bench::Task tilted8() {
  return prepare(DAXI_WarpPerspective_8u_C1R, warpCfg(true, DAXI_INTERPOLATION_LINEAR), kSize);
}

template <bool isPrepared>
bench::Task remapped8() {
  const Image<uint8_t> from = bench::noise<uint8_t>(), result(kSize);
  const Image<float> x = bench::turnMap(true), y = bench::turnMap(false);
  DaxiRemapCfg cfg;
  bench::require(DAXI_RemapDefaultCfg(&cfg));
  uint64_t bytes = 0;
  bench::require(DAXI_RemapPrepareModelSize(kSize, &bytes));
  const auto model = std::make_shared<std::vector<uint64_t>>(bytes / 8);
  bench::require(DAXI_RemapPrepare(x.data(), kSize.width, y.data(), kSize.width, kSize, model->data()));
  return {[=] {
            bench::require(isPrepared
                               ? DAXI_RemapPrepared_8u_C1R(from.data(), kSize.width, kSize, model->data(), bytes,
                                                           result.data(), kSize.width, kSize, &cfg)
                               : DAXI_Remap_8u_C1R(from.data(), kSize.width, kSize, x.data(), kSize.width, y.data(),
                                                   kSize.width, result.data(), kSize.width, kSize, &cfg));
          },
          nullptr};
}

DaxiPolarCfg ringCfg() {
  DaxiPolarCfg cfg;
  bench::require(DAXI_PolarDefaultCfg(&cfg));
  cfg.cx = (kSize.width - 1) / 2.0, cfg.cy = (kSize.height - 1) / 2.0, cfg.r1 = kSize.height / 2.0;
  return cfg;
}

bench::Task unrolled8() {
  return prepare(DAXI_Polar_8u_C1R, ringCfg(), bench::kRing);
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"warp by an affine matrix, nearest, 8u", kBytes, turned8<DAXI_INTERPOLATION_NEAREST>},
    {"warp by an affine matrix, linear, 8u", kBytes, turned8<DAXI_INTERPOLATION_LINEAR>},
    {"warp by an affine matrix, cubic, 8u", kBytes, turned8<DAXI_INTERPOLATION_CUBIC>},
    {"warp by an affine matrix, Lanczos, 8u", kBytes, turned8<DAXI_INTERPOLATION_LANCZOS3>},
    {"warp by an affine matrix, linear, 8u, colour", 3 * kBytes, colour8},
    {"warp by an affine matrix, linear, 16u", 2 * kBytes, turned16},
    {"warp by an affine matrix, linear, 32f", 4 * kBytes, turned32},
    {"warp by a homography, linear, 8u", kBytes, tilted8},
    {"remap, linear, 8u", kBytes, remapped8<false>},
    {"remap by a prepared map, linear, 8u", kBytes, remapped8<true>},
    {"polar image, linear, 8u", kBytes / 2, unrolled8},
};

}  // namespace
