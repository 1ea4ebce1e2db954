// As many tiles as the image has room for, bins by powers of two.
#include <string_view>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void tiles(Call& c) {
  const DaxiSize size = c.size("size");
  const bool isWide = std::string_view(c.function.name).find("16u") != std::string_view::npos;
  c.filled<DaxiClipEqualizeCfg>("cfg", 1, [&](DaxiClipEqualizeCfg& cfg) {
    cfg.tilesX = 1 + c.random.below(std::clamp(size.width, 1, 64));
    cfg.tilesY = 1 + c.random.below(std::clamp(size.height, 1, 64));
    cfg.bins = 1 << c.between(1, isWide && c.chance(20) ? 16 : 8);
  });
}

const Rows rows = {{"DAXI_ClipEqualize_*", tiles}, {"DAXI_ClipEqualizeBufferSize_*", tiles}};

}  // namespace
}  // namespace dax::hostile
