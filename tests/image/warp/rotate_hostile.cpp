// Destinations of the turned size, squares in place.
#include <string_view>

#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

bool isInPlace(const Call& c) {
  return std::string_view(c.function.name).ends_with("IR");
}

DaxiSize drawSize(Call& c) {
  if (!isInPlace(c)) return c.size("size");
  const auto side = static_cast<int32_t>(c.between(1, 70));
  return c.sizeOr("size", {side, side});
}

void turnedDestination(Call& c, DaxiSize size) {
  if (isInPlace(c)) return;
  const std::string_view name = c.function.name;
  const DaxiSize turned = {size.height, size.width};
  if (name.find("_P3") != std::string_view::npos) return c.planes("dst", "dstStep", turned);
  c.image("dst", "dstStep", turned, name.find("_C3") != std::string_view::npos ? 3 : 1);
}

void transposed(Call& c) {
  turnedDestination(c, drawSize(c));
}

void rotated(Call& c) {
  const DaxiSize size = drawSize(c);
  if (c.number("quarters", 0, 3) % 2) turnedDestination(c, size);
}

const Rows rows = {{"DAXI_Transpose_*", transposed}, {"DAXI_Rotate90_*", rotated}};

}  // namespace
}  // namespace dax::hostile
