// As many weights as the largest kernel has, anchors in it, and no pixels around the image.
#include <string_view>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

constexpr int64_t kMaxSide = 31;

void kernel(Call& c) {
  c.filled<DaxiConvolveCfg>("cfg", 1, [&](DaxiConvolveCfg& cfg) {
    cfg.kernel = {1 + c.random.below(7), 1 + c.random.below(7)};
    cfg.anchorX = c.random.below(cfg.kernel.width), cfg.anchorY = c.random.below(cfg.kernel.height);
    if (cfg.border == DAXI_BORDER_IN_MEMORY) cfg.border = DAXI_BORDER_MIRROR;
  });
  const auto weights = [&](const char* name, int64_t count) {
    if (std::string_view(c.function.name).find("32f") != std::string_view::npos) {
      c.reals<float>(name, count);
    } else {
      c.array(name, count);
    }
  };
  if (c.has("weights")) return weights("weights", kMaxSide * kMaxSide);
  weights("weightsX", kMaxSide), weights("weightsY", kMaxSide);
}

const Rows rows = {{"DAXI_FilterSeparable*", kernel}, {"DAXI_Filter_*", kernel}};

}  // namespace
}  // namespace dax::hostile
