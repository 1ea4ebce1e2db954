#include <algorithm>
#include <array>

#include "base/text.h"
#include "daxi/copy_border.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

using CopyBorder = decltype(&DAXI_CopyReplicateBorder_8u_C1R);

// copy(..., grey) for a border of one grey value, else copy(...).
template <class Copy, class... Grey>
ImageFilter border(int width, Copy copy, Grey... grey) {
  return [=](const GreyImage& image) {
    GreyImage result = makeGreyImage({image.size.width + 2 * width, image.size.height + 2 * width});
    check(copy(image.pixels.data(), image.step(), image.size, result.pixels.data(), result.step(), result.size, width,
               static_cast<uint32_t>(width), grey...),
          "border");
    return result;
  };
}

ImageFilter constantBorder(std::string_view text) {
  const auto pair = splitPair(text, ':');
  const auto width = parseInteger(pair ? pair->first : text, 0, 10000);
  const auto grey = pair ? parseInteger(pair->second, 0, 255) : 0;
  if (!width || !grey) return nullptr;
  return border(*width, DAXI_CopyConstBorder_8u_C1R, static_cast<uint8_t>(*grey));
}

ImageFilter parseBorder(std::string_view text) {
  struct Rule {
    std::string_view name;
    CopyBorder copy;
  };
  const std::array rules = {
      Rule{"replicate", DAXI_CopyReplicateBorder_8u_C1R}, Rule{"mirror", DAXI_CopyMirrorBorder_8u_C1R},
      Rule{"symmetric", DAXI_CopySymmetricBorder_8u_C1R}, Rule{"circular", DAXI_CopyCircularBorder_8u_C1R}};
  const auto pair = splitPair(text, ':');
  if (!pair) return nullptr;
  if (pair->first == "constant") return constantBorder(pair->second);
  const auto* rule = std::find_if(rules.begin(), rules.end(), [&](const Rule& r) { return r.name == pair->first; });
  const auto width = parseInteger(pair->second, 0, 10000);
  if (rule == rules.end() || !width) return nullptr;
  return border(*width, rule->copy);
}

const FilterRegistration registration(
    {"--border", "RULE:N", "RULE:N with N of 0..10000, by replicate, mirror, symmetric, circular or constant",
     "N pixels more on every side, 0..10000, by a RULE: replicate\n"
     "(aa|abc), mirror (cb|abc), symmetric (ba|abc), circular\n"
     "(bc|abc), or constant:N:GREY (constant:N is black)",
     false, parseBorder});

}  // namespace
}  // namespace dax::tool
