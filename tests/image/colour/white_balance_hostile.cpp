// Estimates of gains need levels below saturation.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

// Floats mostly in 0..1.
void estimate(Call& c) {
  c.draw("src");
  if (std::string_view(c.function.name).find("32f") == std::string_view::npos) return;
  if (Block* const made = c.blockOf("src")) {
    auto* const levels = reinterpret_cast<float*>(made->data);
    for (size_t i = 0; i < made->bytes / sizeof(float); ++i) {
      if (!c.chance(3)) levels[i] = static_cast<float>(c.random.below(1000) + 1) / 1001;
    }
  }
}

const Rows rows = {{"DAXI_GrayWorld_*", estimate}, {"DAXI_WhitePatch_*", estimate}};

}  // namespace
}  // namespace dax::hostile
