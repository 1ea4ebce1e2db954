// Fields of the configuration that depend on each other.
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

const Rows rows = {
    {"DAXI_ThresholdBin_8u_*", configuration},
    {"DAXI_ThresholdBinV2_8u_*", configuration},
};

}  // namespace
}  // namespace dax::hostile
