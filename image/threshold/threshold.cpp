#include "daxi/threshold.h"

#include <algorithm>
#include <cstddef>
#include <cstring>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/rows.h"
#include "image/logic/logic.h"
#include "image/statistics/histogram.h"
#include "image/threshold/threshold.h"
#include "image/threshold/threshold_levels.h"
#include "image/threshold/threshold_neon.h"

static_assert(sizeof(DaxiThresholdBinCfg) == 44 && offsetof(DaxiThresholdBinCfg, soft) == 24 &&
              offsetof(DaxiThresholdBinCfg, t1) == 36);

namespace dax {

void maskInterval(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                  LevelInterval interval, int32_t isa) {
  const auto maskRow = usesNeon(isa) ? neon::maskRow : portable::maskRow;
  for (int32_t y = 0; y < size.height; ++y) {
    uint8_t* const row = rowAt(dst, dstStep, y);
    if (interval.count == 0) {
      std::memset(row, 0, static_cast<size_t>(size.width));
    } else {
      maskRow(rowAt(src, srcStep, y), row, size.width, interval.first, static_cast<uint8_t>(interval.count - 1));
    }
  }
}

void mapLevels(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
               const LevelTable& table, int32_t isa) {
  const auto mapRow = usesNeon(isa) ? neon::mapRow : portable::mapRow;
  for (int32_t y = 0; y < size.height; ++y) {
    mapRow(rowAt(src, srcStep, y), rowAt(dst, dstStep, y), size.width, table.data());
  }
}

namespace {

// The two images of a call.
struct Views {
  const uint8_t* src;
  int32_t srcStep;
  uint8_t* dst;
  int32_t dstStep;
  DaxiSize size;
};

void mask(const Views& v, LevelInterval interval) {
  maskInterval(v.src, v.srcStep, v.dst, v.dstStep, v.size, interval, currentIsa());
}

void invert(const Views& v) {
  _DAXI_Not_8u_C1R(v.src, v.srcStep, v.dst, v.dstStep, v.size, currentIsa());
}

void copy(const Views& v) {
  for (int32_t y = 0; y < v.size.height; ++y) {
    std::memmove(rowAt(v.dst, v.dstStep, y), rowAt(v.src, v.srcStep, y), static_cast<size_t>(v.size.width));
  }
}

void softMask(const Views& v, LevelPair levels, uint32_t soft, bool inverted) {
  const int32_t steps = static_cast<int32_t>(soft) + 1;
  LevelTable table;
  for (int32_t level = 0; level < 256; ++level) {
    const int32_t value = (2 * 255 * rampStep(level, levels, soft) + steps) / (2 * steps);
    table[static_cast<size_t>(level)] = static_cast<uint8_t>(inverted ? 255 - value : value);
  }
  mapLevels(v.src, v.srcStep, v.dst, v.dstStep, v.size, table, currentIsa());
}

void softWeights(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size, LevelPair levels,
                 uint32_t soft) {
  std::array<float, 256> table;
  for (int32_t level = 0; level < 256; ++level) {
    table[static_cast<size_t>(level)] =
        static_cast<float>(rampStep(level, levels, soft)) / static_cast<float>(soft + 1);
  }
  for (int32_t y = 0; y < size.height; ++y) {
    const uint8_t* const from = rowAt(src, srcStep, y);
    float* const to = rowAt(dst, dstStep, y);
    for (int32_t x = 0; x < size.width; ++x) to[x] = table[from[x]];
  }
}

DaxStatus checkSoft(int32_t low, int32_t high, uint32_t soft) {
  DAX_REQUIRE(soft < 255, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(low >= 0 && high < 256 && low < high, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus checkRelative(const TailPositions& t, uint32_t soft) {
  DAX_REQUIRE(t.darkTail >= 0 && t.darkTail <= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(t.brightTail >= 0 && t.brightTail <= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(t.darkTail + t.brightTail <= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(t.lowPos >= 0 && t.highPos <= 1 && t.lowPos <= t.highPos, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(soft < 255, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

TailPositions tailPositions(const DaxiThresholdBinCfg& cfg) {
  return {cfg.darkTail, cfg.brightTail, cfg.lowPos, cfg.highPos};
}

DaxStatus checkMethod(const DaxiThresholdBinCfg& cfg) {
  switch (cfg.method) {
    case DAXI_THRESHOLD_COPY:
    case DAXI_THRESHOLD_OTSU:
      return DAX_STS_OK;
    case DAXI_THRESHOLD_SINGLE:
      return cfg.t1 < 256 ? DAX_STS_OK : DAX_STS_BAD_PARAM;
    case DAXI_THRESHOLD_BAND:
      return cfg.t1 < 256 && cfg.t2 < 256 ? DAX_STS_OK : DAX_STS_BAD_PARAM;
    case DAXI_THRESHOLD_SOFT:
      return checkSoft(cfg.softLow, cfg.softHigh, cfg.soft);
    case DAXI_THRESHOLD_RELATIVE_SOFT:
      return checkRelative(tailPositions(cfg), cfg.soft);
    default:
      return DAX_STS_BAD_PARAM;
  }
}

DaxStatus checkBinarize(const Views& v, const DaxiThresholdBinCfg* cfg) {
  DAX_REQUIRE_OK(checkImagePair(v.src, v.srcStep, v.dst, v.dstStep, v.size));
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(cfg->polarity <= 1, DAX_STS_BAD_PARAM);
  return checkMethod(*cfg);
}

LevelPair copyOrInvert(const Views& v, bool inverted) {
  inverted ? invert(v) : copy(v);
  return {0, 255};
}

LevelPair maskSingle(const Views& v, uint8_t level, bool below) {
  mask(v, below ? LevelInterval::below(level) : LevelInterval::atLeast(level));
  return {level, level};
}

// With t2 < t1 the set levels are those outside t2..t1.
LevelPair maskBand(const Views& v, uint8_t t1, uint8_t t2) {
  mask(v, t2 >= t1 ? LevelInterval::inside(t1, t2) : LevelInterval::inside(t2, t1).complement());
  return {std::min(t1, t2), std::max(t1, t2)};
}

LevelPair maskOtsu(const Views& v, bool atOrBelow) {
  const uint8_t level = otsuLevel(histogram(v.src, v.srcStep, v.size));
  mask(v, atOrBelow ? LevelInterval::inside(0, level) : LevelInterval::atLeast(level));
  return {level, level};
}

LevelPair maskSoft(const Views& v, LevelPair levels, uint32_t soft, bool inverted) {
  softMask(v, levels, soft, inverted);
  return levels;
}

// Returns the levels that were applied.
LevelPair binarize(const Views& v, const DaxiThresholdBinCfg& cfg) {
  const bool polarity = cfg.polarity == 1;
  const auto t1 = static_cast<uint8_t>(cfg.t1), t2 = static_cast<uint8_t>(cfg.t2);
  switch (cfg.method) {
    case DAXI_THRESHOLD_SINGLE:
      return maskSingle(v, t1, polarity);
    case DAXI_THRESHOLD_BAND:
      return maskBand(v, t1, t2);
    case DAXI_THRESHOLD_OTSU:
      return maskOtsu(v, polarity);
    case DAXI_THRESHOLD_SOFT:
      return maskSoft(v, {static_cast<uint8_t>(cfg.softLow), static_cast<uint8_t>(cfg.softHigh)}, cfg.soft, !polarity);
    case DAXI_THRESHOLD_RELATIVE_SOFT:
      return maskSoft(v, relativeLevels(histogram(v.src, v.srcStep, v.size), tailPositions(cfg)), cfg.soft, !polarity);
    default:
      return copyOrInvert(v, polarity);
  }
}

DaxStatus otsu(const Views& v, int32_t isa) {
  DAX_REQUIRE_OK(checkImagePair(v.src, v.srcStep, v.dst, v.dstStep, v.size));
  DAX_REQUIRE(isa >= 0, DAX_STS_BAD_ISA);
  _DAXI_AdpThresholdOtsu_8u_C1R(v.src, v.srcStep, v.dst, v.dstStep, v.size, isa);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

void _DAXI_AdpThresholdOtsu_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   int32_t isa) {
  const uint8_t level = dax::otsuLevel(dax::histogram(src, srcStep, size));
  dax::maskInterval(src, srcStep, dst, dstStep, size, dax::LevelInterval::atLeast(level), isa);
}

DaxStatus DAXI_ThresholdBin_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   const DaxiThresholdBinCfg* cfg) {
  const dax::Views views{src, srcStep, dst, dstStep, size};
  DAX_REQUIRE_OK(dax::checkBinarize(views, cfg));
  dax::binarize(views, *cfg);
  return DAX_STS_OK;
}

DaxStatus DAXI_ThresholdBin_8u_C1R_IS(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      const DaxiThresholdBinCfg* cfg) {
  return DAXI_ThresholdBin_8u_C1R(src, srcStep, dst, dstStep, size, cfg);
}

DaxStatus DAXI_ThresholdBinV2_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                     const DaxiThresholdBinCfg* cfg, uint8_t* low, uint8_t* high) {
  const dax::Views views{src, srcStep, dst, dstStep, size};
  DAX_REQUIRE_OK(dax::checkBinarize(views, cfg));
  DAX_REQUIRE(low && high, DAX_STS_NULL_POINTER);
  const dax::LevelPair levels = dax::binarize(views, *cfg);
  *low = levels.low;
  *high = levels.high;
  return DAX_STS_OK;
}

DaxStatus DAXI_ThresholdBinV2_8u_C1R_IS(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, const DaxiThresholdBinCfg* cfg, uint8_t* low, uint8_t* high) {
  return DAXI_ThresholdBinV2_8u_C1R(src, srcStep, dst, dstStep, size, cfg, low, high);
}

DaxStatus DAXI_AdpThresholdOtsu_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size) {
  return dax::otsu({src, srcStep, dst, dstStep, size}, dax::currentIsa());
}

DaxStatus DAXI_AdpThresholdOtsu_8u_C1R_IS(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t isa) {
  return dax::otsu({src, srcStep, dst, dstStep, size}, isa);
}

DaxStatus DAXI_AdpThresholdOtsu_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size) {
  DAX_REQUIRE_OK(dax::checkImage(srcDst, step, size));
  const uint8_t level = dax::otsuLevel(dax::histogram(srcDst, step, size));
  dax::mask({srcDst, step, srcDst, step, size}, dax::LevelInterval::atLeast(level + 1));
  return DAX_STS_OK;
}

DaxStatus DAXI_ThresholdSoftBin_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t low, int32_t high, uint32_t soft) {
  DAX_REQUIRE_OK(dax::checkImagePair(src, srcStep, dst, dstStep, size));
  DAX_REQUIRE_OK(dax::checkSoft(low, high, soft));
  dax::softMask({src, srcStep, dst, dstStep, size}, {static_cast<uint8_t>(low), static_cast<uint8_t>(high)}, soft,
                false);
  return DAX_STS_OK;
}

DaxStatus DAXI_ThresholdSoftBin_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                          DaxiSize size, int32_t low, int32_t high, uint32_t soft) {
  DAX_REQUIRE_OK(dax::checkImagePair(src, srcStep, dst, dstStep, size));
  DAX_REQUIRE_OK(dax::checkSoft(low, high, soft));
  dax::softWeights(src, srcStep, dst, dstStep, size, {static_cast<uint8_t>(low), static_cast<uint8_t>(high)}, soft);
  return DAX_STS_OK;
}

DaxStatus DAXI_ThresholdRelativeSoft_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size, float darkTail, float brightTail, float lowPos,
                                            float highPos, uint32_t soft) {
  const dax::TailPositions tails{darkTail, brightTail, lowPos, highPos};
  DAX_REQUIRE_OK(dax::checkImagePair(src, srcStep, dst, dstStep, size));
  DAX_REQUIRE_OK(dax::checkRelative(tails, soft));
  const dax::LevelPair levels = dax::relativeLevels(dax::histogram(src, srcStep, size), tails);
  dax::softMask({src, srcStep, dst, dstStep, size}, levels, soft, false);
  return DAX_STS_OK;
}

DaxStatus DAXI_ThresholdRelativeSoft_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                               DaxiSize size, float darkTail, float brightTail, float lowPos,
                                               float highPos, uint32_t soft) {
  const dax::TailPositions tails{darkTail, brightTail, lowPos, highPos};
  DAX_REQUIRE_OK(dax::checkImagePair(src, srcStep, dst, dstStep, size));
  DAX_REQUIRE_OK(dax::checkRelative(tails, soft));
  const dax::LevelPair levels = dax::relativeLevels(dax::histogram(src, srcStep, size), tails);
  dax::softWeights(src, srcStep, dst, dstStep, size, levels, soft);
  return DAX_STS_OK;
}

DaxStatus DAXI_ThresholdBin_0to255_8u_C1R_NEON(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                               DaxiSize size) {
  DAX_REQUIRE_OK(dax::checkImagePair(src, srcStep, dst, dstStep, size));
  dax::invert({src, srcStep, dst, dstStep, size});
  return DAX_STS_OK;
}

DaxStatus DAXI_ThresholdBin_0to255_8u_C1IR_NEON(uint8_t* srcDst, int32_t step, DaxiSize size) {
  DAX_REQUIRE_OK(dax::checkImage(srcDst, step, size));
  dax::invert({srcDst, step, srcDst, step, size});
  return DAX_STS_OK;
}

DaxStatus DAXI_ThresholdBin_out_range_is_255_NEON(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                  DaxiSize size, uint8_t low, uint8_t high) {
  DAX_REQUIRE_OK(dax::checkImagePair(src, srcStep, dst, dstStep, size));
  dax::mask({src, srcStep, dst, dstStep, size}, dax::LevelInterval::inside(low, high).complement());
  return DAX_STS_OK;
}
