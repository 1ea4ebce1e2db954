#include <algorithm>
#include <array>

#include "base/failure.h"
#include "base/text.h"
#include "daxi/copy_border.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

// copy(..., grey) for a border of one grey value, else copy(...).
template <class Pixel, class Copy, class... Grey>
auto border(int width, Copy copy, Grey... grey) {
  return [=](const PixelImage<Pixel>& image) {
    auto result = makeImage<Pixel>({image.size.width + 2 * width, image.size.height + 2 * width});
    check(copy(image.pixels.data(), image.step(), image.size, result.pixels.data(), result.step(), result.size, width,
               static_cast<uint32_t>(width), grey...),
          "border");
    return result;
  };
}

// A grey value above 255 is of 16-bit images only.
ImageFilter constantBorder(std::string_view text) {
  const auto pair = splitPair(text, ':');
  const auto width = parseInteger(pair ? pair->first : text, 0, 10000);
  const auto grey = pair ? parseInteger(pair->second, 0, 65535) : 0;
  if (!width || !grey) return {};
  const auto on16 = border<uint16_t>(*width, DAXI_CopyConstBorder_16u_C1R, static_cast<uint16_t>(*grey));
  if (*grey <= 255) return {border<uint8_t>(*width, DAXI_CopyConstBorder_8u_C1R, static_cast<uint8_t>(*grey)), on16};
  const auto refuse = [](const GreyImage&) -> GreyImage {
    throw Failure(ExitStatus::kUsage, "--border: the picture has grey values of 0..255");
  };
  return {refuse, on16};
}

ImageFilter parseBorder(std::string_view text) {
  struct Rule {
    std::string_view name;
    decltype(&DAXI_CopyReplicateBorder_8u_C1R) on8;
    decltype(&DAXI_CopyReplicateBorder_16u_C1R) on16;
  };
  const std::array rules = {Rule{"replicate", DAXI_CopyReplicateBorder_8u_C1R, DAXI_CopyReplicateBorder_16u_C1R},
                            Rule{"mirror", DAXI_CopyMirrorBorder_8u_C1R, DAXI_CopyMirrorBorder_16u_C1R},
                            Rule{"symmetric", DAXI_CopySymmetricBorder_8u_C1R, DAXI_CopySymmetricBorder_16u_C1R},
                            Rule{"circular", DAXI_CopyCircularBorder_8u_C1R, DAXI_CopyCircularBorder_16u_C1R}};
  const auto pair = splitPair(text, ':');
  if (!pair) return {};
  if (pair->first == "constant") return constantBorder(pair->second);
  const auto* rule = std::find_if(rules.begin(), rules.end(), [&](const Rule& r) { return r.name == pair->first; });
  const auto width = parseInteger(pair->second, 0, 10000);
  if (rule == rules.end() || !width) return {};
  return {border<uint8_t>(*width, rule->on8), border<uint16_t>(*width, rule->on16)};
}

const FilterRegistration registration(
    {"--border", "RULE:N", "RULE:N with N of 0..10000, by replicate, mirror, symmetric, circular or constant",
     "N pixels more on every side, 0..10000, by a RULE: replicate\n"
     "(aa|abc), mirror (cb|abc), symmetric (ba|abc), circular\n"
     "(bc|abc), or constant:N:GREY (constant:N is black)",
     kFrames, parseBorder});

}  // namespace
}  // namespace dax::tool
