#include "bench/image/threshold/threshold_bench.h"

#include "bench/support/image.h"
#include "bench/support/operation.h"
#include "daxi/threshold.h"

namespace {

using bench::Image;
using bench::kSize;

// Calls threshold(src, srcStep, dst, dstStep, size).
template <class Threshold>
bench::Task prepare(Threshold threshold) {
  const Image<uint8_t> from = bench::noise<uint8_t>();
  const Image<uint8_t> to(kSize);
  return {[=] { bench::require(threshold(from.data(), kSize.width, to.data(), kSize.width, kSize)); },
          [=] { return bench::digest(to); }};
}

bench::Task prepareMethod(const DaxiThresholdBinCfg& cfg) {
  return prepare([cfg](const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
    return DAXI_ThresholdBin_8u_C1R(src, srcStep, dst, dstStep, size, &cfg);
  });
}

bench::Task prepareSingle() {
  DaxiThresholdBinCfg cfg{};
  cfg.method = DAXI_THRESHOLD_SINGLE;
  cfg.t1 = bench::kLevel;
  return prepareMethod(cfg);
}

bench::Task prepareBand() {
  DaxiThresholdBinCfg cfg{};
  cfg.method = DAXI_THRESHOLD_BAND;
  cfg.t1 = bench::kBandLow;
  cfg.t2 = bench::kBandHigh;
  return prepareMethod(cfg);
}

bench::Task prepareSoft() {
  return prepare([](const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
    return DAXI_ThresholdSoftBin_8u_C1R(src, srcStep, dst, dstStep, size, bench::kSoftLow, bench::kSoftHigh,
                                        bench::kSoftLevels);
  });
}

constexpr size_t kBytes = bench::pixelCount(bench::kUsualSize);

const bench::Own operations[] = {
    {"single threshold, 8u", kBytes, prepareSingle},
    {"band threshold, 8u", kBytes, prepareBand},
    {"Otsu threshold, 8u", kBytes, [] { return prepare(DAXI_AdpThresholdOtsu_8u_C1R); }},
    {"soft binarisation, 8u", kBytes, prepareSoft},
};

}  // namespace
