// Windows of some pixels, and none around the image.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void statistics(Call& c) {
  c.filled<DaxiLocalStatisticsCfg>("cfg", 1, [&](DaxiLocalStatisticsCfg& cfg) {
    cfg.window = {1 + c.random.below(12), 1 + c.random.below(12)};
    if (cfg.border == DAXI_BORDER_IN_MEMORY) cfg.border = DAXI_BORDER_MIRROR;
  });
}

const Rows rows = {{"DAXI_LocalMean*", statistics},
                   {"DAXI_LocalStdDev*", statistics},
                   {"DAXI_LocalEntropy*", statistics},
                   {"DAXI_LocalRange*", statistics}};

}  // namespace
}  // namespace dax::hostile
