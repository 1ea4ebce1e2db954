// The mass is known when the rows have been summed up; of floats it is above 0.
#include <cmath>

#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void integers(Call& c) {
  c.worksBeforeFailing = true;
}

void floats(Call& c) {
  c.worksBeforeFailing = true;
  c.draw("src");
  const Block* const made = c.blockOf("src");
  if (!made || c.chance(10)) return;
  auto* const pixels = reinterpret_cast<float*>(made->data);
  for (size_t i = 0; i < made->bytes / sizeof(float); ++i) {
    pixels[i] = std::isfinite(pixels[i]) ? std::fabs(pixels[i]) : 1;
  }
}

const Rows rows = {{"DAXI_Moments_8u_*", integers}, {"DAXI_Moments_16u_*", integers}, {"DAXI_Moments_32f_*", floats}};

}  // namespace
}  // namespace dax::hostile
