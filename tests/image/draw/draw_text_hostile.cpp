// Text of characters, of lines and of rubbish.
#include <cstring>
#include <string_view>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// Many characters are spaces, whose strokes need no memory.
void fillText(Call& c, char* at, int64_t bytes) {
  static constexpr std::string_view kParts[] = {"A", "V", "gQ", " ", "\n", "\u00e9", "\u03a9", "\u2192", "8", "\xff"};
  std::memset(at, ' ', static_cast<size_t>(bytes));
  for (int64_t i = 0, used = 0; i < 40; ++i) {
    const std::string_view part = c.chance(90) ? kParts[c.random.below(10)] : "\xe2\x86";
    const auto length = static_cast<int64_t>(part.size());
    if (used + length <= bytes) std::memcpy(at + used, part.data(), part.size());
    used += length;
  }
}

void text(Call& c) {
  const int64_t count = c.number("textBytes", 0, 1 << 20, 40);
  const int64_t bytes = count >= 0 && count <= 1 << 20 ? count : 1;
  auto* const at = static_cast<char*>(c.array("text", bytes));
  if (at && c.block(at)) fillText(c, at, bytes);
  if (c.has("x")) {
    const double far = c.pick({1.0, 1.0, 1.0, 1e6});
    c.real("x", -30 * far, 200 * far), c.real("y", -30 * far, 200 * far);
  }
  c.filled<DaxiTextCfg>("cfg", 1, [&](DaxiTextCfg& cfg) {
    cfg.height = static_cast<double>(c.between(8, 300)) / 8;
    cfg.angle = c.chance(50) ? 0 : static_cast<double>(c.between(-80, 80)) / 8;
    cfg.slant = c.chance(50) ? 0 : static_cast<double>(c.between(-16, 16)) / 8;
    cfg.lineStep = static_cast<double>(c.between(0, 80)) / 8;
    cfg.alignX = static_cast<int32_t>(c.between(0, 2)), cfg.alignY = static_cast<int32_t>(c.between(0, 3));
  });
  c.filled<DaxiStroke>("stroke", 1, [&](DaxiStroke& stroke) {
    stroke.width = c.chance(80) ? static_cast<double>(c.between(0, 80)) / 8 : c.pick({0.001, 300.0, 1e6});
    stroke.miterLimit = static_cast<double>(c.between(1, 20)), stroke.alpha = static_cast<double>(c.between(0, 8)) / 8;
    for (int32_t& each : stroke.color) each = static_cast<int32_t>(c.between(0, 255));
  });
}

const Rows rows = {{"DAXI_DrawText*", text}, {"DAXI_TextSize", text}};

}  // namespace
}  // namespace dax::hostile
