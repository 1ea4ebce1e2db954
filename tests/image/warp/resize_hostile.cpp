// Part of an image of another size.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// A factor of at most 256, and a rectangle within the destination.
void resize(Call& c) {
  const auto from = c.size("srcSize");
  const auto sideFor = [&](int32_t side) {
    return static_cast<int32_t>(c.between(std::max((side - 1) / 256 + 1, 1), std::clamp(side, 1, 8) * 5));
  };
  const auto to = c.sizeOr("dstSize", {sideFor(from.width % 200), sideFor(from.height % 200)});
  const auto within = [&](int32_t side, int32_t& start, int32_t& length) {
    length = 1 + c.random.below(std::clamp(side, 1, 1000));
    start = c.random.below(std::clamp(side, 1, 1000) - length + 1);
  };
  DaxiRect part = {0, 0, to.width, to.height};
  if (c.chance(50)) within(to.width, part.x, part.width), within(to.height, part.y, part.height);
  part = c.given("dstRect", part);
  c.filled<DaxiResizeCfg>("cfg", 1, [](DaxiResizeCfg& cfg) { cfg.factorX = cfg.factorY = 0; });
  if (!c.has("dst")) return;
  c.draw("src");
  const int32_t channels = std::string_view(c.function.name).find("C3") != std::string_view::npos ? 3 : 1;
  c.image("dst", "dstStep", {part.width, part.height}, channels);
}

const Rows rows = {{"DAXI_Resize_*", resize}, {"DAXI_ResizeBufferSize_*", resize}};

}  // namespace
}  // namespace dax::hostile
