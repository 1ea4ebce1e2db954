#include <algorithm>

#include "base/text.h"
#include "daxi/filter_box.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

ImageFilter parseBox(std::string_view text) {
  const auto radius = parseInteger(text, 1, 1000);
  if (!radius) return {};
  const auto filter = [radius = *radius](const GreyImage& image) {
    const Memory buffer = workBuffer("box sum", DAXI_FilterBoxBufferSize_8u32s, image.size);
    std::vector<int32_t> sums(image.pixels.size());
    check(DAXI_FilterBox_8u32s_C1R(image.pixels.data(), image.step(), sums.data(), image.step(), image.size, radius,
                                   buffer.get()),
          "box sum");
    GreyImage result = makeGreyImage(image.size);
    const int32_t pixels = (2 * radius + 1) * (2 * radius + 1);
    std::transform(sums.begin(), sums.end(), result.pixels.begin(),
                   [pixels](int32_t sum) { return static_cast<uint8_t>((sum + pixels / 2) / pixels); });
    return result;
  };
  return {filter};
}

const FilterRegistration box({"--box", "R", "R of 1..1000, which makes 2 R + 1 pixels each way",
                              "sum over squares of 2 R + 1 pixels, R in 1..1000, drawn as\n"
                              "a share of their area: nothing is added beyond the edges,\n"
                              "so they come out darker",
                              kSmoothing, parseBox});

}  // namespace
}  // namespace dax::tool
