// Small radii, and no pixels around the image.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void guidedFilter(Call& c) {
  c.filled<DaxiFilterGuidedCfg>(
      "cfg", 1, [&](DaxiFilterGuidedCfg& cfg) { cfg.radius = 1 + c.random.below(6), cfg.eps = c.random.below(300); });
}

void bilateralFilter(Call& c) {
  c.filled<DaxiFilterBilateralCfg>("cfg", 1, [&](DaxiFilterBilateralCfg& cfg) {
    cfg.radius = 1 + c.random.below(3), cfg.sigmaSpace = 1 + c.random.below(4), cfg.sigmaGrey = 1 + c.random.below(40);
    if (cfg.border == DAXI_BORDER_IN_MEMORY) cfg.border = DAXI_BORDER_MIRROR;
  });
}

const Rows rows = {{"DAXI_FilterGuided*", guidedFilter}, {"DAXI_FilterBilateral*", bilateralFilter}};

}  // namespace
}  // namespace dax::hostile
