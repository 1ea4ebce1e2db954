// Results that are one pixel wider and higher than the source, or have one number for each row or column.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void integral(Call& c) {
  const auto size = c.size("size");
  c.draw("src");
  const auto wider = [](int32_t side) { return side == INT32_MAX ? side : side + 1; };
  c.image("dst", "dstStep", {size.width < 1 ? 0 : wider(size.width), size.height < 1 ? 0 : wider(size.height)});
}

void rows(Call& c) {
  c.array("sums", std::max(c.size("size").height, -1));
}

void columns(Call& c) {
  c.array("sums", std::max(c.size("size").width, -1));
}

const Rows registered = {
    {"DAXI_Integral*", integral}, {"DAXI_ProjectRows_*", rows}, {"DAXI_ProjectColumns_*", columns}};

}  // namespace
}  // namespace dax::hostile
