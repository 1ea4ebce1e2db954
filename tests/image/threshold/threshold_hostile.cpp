// Fields of the configuration, and levels, that depend on each other.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void configuration(Call& c) {
  c.filled<DaxiThresholdBinCfg>("cfg", 1, [&](DaxiThresholdBinCfg& cfg) {
    cfg.darkTail /= 2, cfg.brightTail /= 2;
    cfg.lowPos = cfg.highPos * static_cast<float>(c.random.below(101)) / 100;
    cfg.softLow = c.random.below(255), cfg.softHigh = static_cast<int32_t>(c.between(cfg.softLow + 1, 255));
  });
}

void levels(Call& c) {
  c.number("low", 0, 100);
  c.number("high", 100, 255);
}

void floatLevels(Call& c) {
  c.real("low", -9, 1);
  c.real("high", 1, 9);
}

const Rows rows = {
    {"DAXI_ThresholdHysteresis_8u_*", levels},         {"DAXI_ThresholdHysteresis_16u8u_*", levels},
    {"DAXI_ThresholdHysteresis_32f8u_*", floatLevels}, {"DAXI_ThresholdBin_8u_*", configuration},
    {"DAXI_ThresholdBinV2_8u_*", configuration},
};

}  // namespace
}  // namespace dax::hostile
