// Windows of some pixels, and none around the image.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void local(Call& c) {
  c.filled<DaxiThresholdLocalCfg>("cfg", 1, [&](DaxiThresholdLocalCfg& cfg) {
    cfg.window = {1 + c.random.below(12), 1 + c.random.below(12)};
    cfg.k = c.pick({-0.2, 0.0, 0.5}), cfg.r = 100, cfg.minDeviation = c.random.below(20);
    cfg.minContrast = c.random.below(20), cfg.offset = c.random.below(9) - 4;
    if (cfg.border == DAXI_BORDER_IN_MEMORY) cfg.border = DAXI_BORDER_MIRROR;
  });
}

const Rows rows = {{"DAXI_ThresholdLocal_*", local}, {"DAXI_ThresholdLocalBufferSize*", local}};

}  // namespace
}  // namespace dax::hostile
