// Anchors in the window, and no pixels around the image.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void window(Call& c) {
  c.filled<DaxiGrayMorphologyCfg>("cfg", 1, [&](DaxiGrayMorphologyCfg& cfg) {
    cfg.window = {1 + c.random.below(12), 1 + c.random.below(12)};
    cfg.anchorX = c.random.below(cfg.window.width), cfg.anchorY = c.random.below(cfg.window.height);
    cfg.iterations = 1 + c.random.below(3);
    if (cfg.border == DAXI_BORDER_IN_MEMORY) cfg.border = DAXI_BORDER_MIRROR;
  });
}

const Rows rows = {{"DAXI_GrayErodeRect*", window}, {"DAXI_GrayDilateRect*", window}, {"DAXI_GrayOpen*", window},
                   {"DAXI_GrayClose*", window},     {"DAXI_GrayGradient*", window},   {"DAXI_GrayTopHat*", window},
                   {"DAXI_GrayBlackHat*", window}};

}  // namespace
}  // namespace dax::hostile
