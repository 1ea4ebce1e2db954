// Rows of packed pixels have fewer bytes than bits of 16.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

void packed(Call& c) {
  const auto size = c.size("size");
  const std::string_view name = c.function.name;
  const int64_t bits = name.find("Mono10p") != name.npos ? 10 : 12;
  const bool reads = name.find("Unpack") != name.npos;
  const char* const image = reads ? "src" : "dst";
  const auto bytesOf = [=](int64_t pixels) { return (pixels * bits + 7) / 8; };
  // At times one stream of bits through all rows. A step that is wrong is not 0, which says that.
  if (!c.isSpoiled("packedStep") && c.chance(25)) {
    const int64_t pixels = Call::product({size.width, size.height});
    c.set("packedStep", int32_t{0});
    c.array(image, pixels < 0 ? -1 : bytesOf(pixels));
    return;
  }
  c.image(image, "packedStep", {static_cast<int32_t>(bytesOf(std::clamp(size.width, 1, 1 << 20))), size.height});
  if (c.get<int32_t>("packedStep") == 0) c.set("packedStep", int32_t{-1});
}

const Rows rows = {{"DAXI_UnpackMono*", packed}, {"DAXI_PackMono*", packed}};

}  // namespace
}  // namespace dax::hostile
