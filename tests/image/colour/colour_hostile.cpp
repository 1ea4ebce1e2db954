// Coefficients, and estimates of gains, which need levels above 0 and below saturation.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void coefficients(Call& c) {
  for (const char* const name : {"matrix", "gains", "weights"}) {
    if (c.has(name)) c.reals<double>(name, name[0] == 'm' ? 12 : 3);
  }
}

// Floats mostly in 0..1. What the way to a result found to be impossible has used the buffer.
void estimate(Call& c) {
  c.draw("src");
  Block* const image = c.blockOf("src");
  if (std::string_view(c.function.name).find("32f") != std::string_view::npos && image && c.chance(80)) {
    auto* const levels = reinterpret_cast<float*>(image->data);
    for (size_t i = 0; i < image->bytes / sizeof(float); ++i)
      levels[i] = static_cast<float>(c.random.below(1000) + 1) / 1001;
  }
  if (!c.has("buffer")) return;
  c.draw("buffer");
  if (Block* const buffer = c.blockOf("buffer")) buffer->role = Role::foreign;
}

const Rows rows = {{"DAXI_GrayWorld_*", estimate},
                   {"DAXI_WhitePatch_*", estimate},
                   {"DAXI_ColourMatrix_*", coefficients},
                   {"DAXI_WhiteBalance_*", coefficients},
                   {"DAXI_ColourToGray_*", coefficients}};

}  // namespace
}  // namespace dax::hostile
