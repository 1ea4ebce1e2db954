// Levels in their order.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void levels(Call& c) {
  c.filled<DaxiCannyCfg>("cfg", 1, [&](DaxiCannyCfg& cfg) {
    cfg.sigma = c.chance(30) ? 0 : 0.3 + c.random.below(40) * 0.1;
    cfg.low = c.random.below(400), cfg.high = cfg.low + c.random.below(400);
    cfg.aperture = c.chance(50) ? 3 : 5;
  });
}

const Rows rows = {{"DAXI_Canny_*", levels}, {"DAXI_CannyBufferSize*", levels}};

}  // namespace
}  // namespace dax::hostile
