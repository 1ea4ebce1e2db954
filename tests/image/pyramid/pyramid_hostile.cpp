// Halves of images, and images of twice the size.
#include <string_view>

#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

DaxiSize halfOf(DaxiSize size) {
  return {size.width / 2 + size.width % 2, size.height / 2 + size.height % 2};
}

int32_t channelsOf(const Call& c) {
  return std::string_view(c.function.name).find("_C3") != std::string_view::npos ? 3 : 1;
}

void down(Call& c) {
  c.image("dst", "dstStep", halfOf(c.size("size")), channelsOf(c));
}

void up(Call& c) {
  const DaxiSize size = c.size("size");
  const auto twice = [&](int32_t side) {
    const int64_t longest = std::min<int64_t>(2 * int64_t{side}, INT32_MAX);
    return static_cast<int32_t>(std::max<int64_t>(longest - c.random.below(2), INT32_MIN));
  };
  const DaxiSize to = c.sizeOr("dstSize", {twice(size.width), twice(size.height)});
  if (!c.has("dst")) return;
  c.image("src", "srcStep", size, channelsOf(c));
  c.image("dst", "dstStep", to, channelsOf(c));
}

void laplacian(Call& c) {
  c.image("coarse", "coarseStep", halfOf(c.size("size")), channelsOf(c));
}

const Rows rows = {{"DAXI_PyrDown_*", down},
                   {"DAXI_PyrUp*", up},
                   {"DAXI_LaplacianBuild_*", laplacian},
                   {"DAXI_LaplacianCollapse_*", laplacian}};

}  // namespace
}  // namespace dax::hostile
