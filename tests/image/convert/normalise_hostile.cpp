// The lower share first.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void shares(Call& c) {
  c.filled<DaxiNormaliseCfg>("cfg", 1, [](DaxiNormaliseCfg& cfg) {
    if (cfg.pLow > cfg.pHigh) std::swap(cfg.pLow, cfg.pHigh);
  });
}

const Rows rows = {{"DAXI_Normalise_*", shares}};

}  // namespace
}  // namespace dax::hostile
