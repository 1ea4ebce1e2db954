// Floats with a mass above 0.
#include <cmath>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void moments(Call& c) {
  c.draw("src");
  const Block* const made = c.blockOf("src");
  if (!made || c.chance(10)) return;
  auto* const pixels = reinterpret_cast<float*>(made->data);
  for (size_t i = 0; i < made->bytes / sizeof(float); ++i) {
    pixels[i] = std::isfinite(pixels[i]) ? std::fabs(pixels[i]) : 1;
  }
}

const Rows rows = {{"DAXI_Moments_32f_*", moments}};

}  // namespace
}  // namespace dax::hostile
