// Planes of chroma have half the pixels of the image, rounded up; rows of pairs an even number of pixels.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

int32_t pairsOf(int32_t side) {
  return std::clamp(side, 0, 1 << 24) / 2 + std::clamp(side, 0, 1 << 24) % 2;
}

void semiplanar(Call& c) {
  const auto size = c.size("size");
  const bool isNv12 = std::string_view(c.function.name).find("NV12") != std::string_view::npos;
  c.image("y", "yStep", size);
  c.image(isNv12 ? "uv" : "vu", isNv12 ? "uvStep" : "vuStep", {2 * pairsOf(size.width), pairsOf(size.height)});
}

void planar(Call& c) {
  const auto size = c.size("size");
  const DaxiSize half = {pairsOf(size.width), pairsOf(size.height)};
  c.image("y", "yStep", size), c.image("u", "uStep", half), c.image("v", "vStep", half);
}

void pairs(Call& c) {
  const auto size = c.size("size");
  c.image("src", "srcStep", {4 * pairsOf(size.width), size.height});
}

const Rows rows = {{"DAXI_NV12To*", semiplanar},
                   {"DAXI_NV21To*", semiplanar},
                   {"DAXI_I420To*", planar},
                   {"DAXI_YUYVTo*", pairs},
                   {"DAXI_UYVYTo*", pairs}};

}  // namespace
}  // namespace dax::hostile
