// Anchors in the window, masks that are apart, and no pixels around the image.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void borderInside(Call& c, int32_t& border) {
  if (border == DAXI_BORDER_IN_MEMORY) border = c.random.below(5);
}

void line(Call& c) {
  c.filled<DaxiFlatLineCfg>("cfg", 1, [&](DaxiFlatLineCfg& cfg) {
    cfg.dx = c.random.below(31) - 15, cfg.dy = c.random.below(31) - 15;
    cfg.anchor = c.random.below(std::max(std::abs(cfg.dx), std::abs(cfg.dy)) + 2) - 1;
    borderInside(c, cfg.border);
  });
}

void mask(Call& c) {
  c.draw("elementSize");
  const DaxiSize size = c.get<DaxiSize>("elementSize");
  c.filled<DaxiFlatMaskCfg>("cfg", 1, [&](DaxiFlatMaskCfg& cfg) {
    cfg.anchorX = size.width < 1 ? -1 : c.random.below(size.width);
    cfg.anchorY = size.height < 1 ? -1 : c.random.below(size.height);
    borderInside(c, cfg.border);
  });
}

// Clears what both masks have, and sees to it that one has something.
void twoMasks(Call& c) {
  mask(c);
  const DaxiSize size = c.get<DaxiSize>("elementSize");
  auto* const hit = static_cast<uint8_t*>(c.image("hit", "hitStep", size));
  auto* const miss = static_cast<uint8_t*>(c.image("miss", "missStep", size));
  if (!c.block(hit) || !c.block(miss) || c.block(hit)->bytes == 0 || c.block(miss)->bytes == 0) return;
  const ptrdiff_t hitStep = c.get<int32_t>("hitStep"), missStep = c.get<int32_t>("missStep");
  for (int32_t y = 0; y < size.height; ++y) {
    for (int32_t x = 0; x < size.width; ++x) (c.chance(50) ? hit[y * hitStep + x] : miss[y * missStep + x]) = 0;
  }
  hit[0] = 1, miss[0] = 0;
}

const Rows rows = {{"DAXI_GrayErodeLine*", line},  {"DAXI_GrayDilateLine*", line}, {"DAXI_GrayErodeMask*", mask},
                   {"DAXI_GrayDilateMask*", mask}, {"DAXI_ErodeMask*", mask},      {"DAXI_DilateMask*", mask},
                   {"DAXI_HitOrMiss*", twoMasks}};

}  // namespace
}  // namespace dax::hostile
