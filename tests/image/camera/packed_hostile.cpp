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
  const int64_t rowBytes = (std::clamp(size.width, 1, 1 << 20) * bits + 7) / 8;
  c.image(image, "packedStep", {static_cast<int32_t>(rowBytes), size.height});
}

const Rows rows = {{"DAXI_UnpackMono*", packed}, {"DAXI_PackMono*", packed}};

}  // namespace
}  // namespace dax::hostile
