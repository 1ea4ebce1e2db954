#include "base/text.h"
#include "daxi/erode3x3.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

ImageFilter parseErode(std::string_view text) {
  const auto count = parseInteger(text, 1, 1000000);
  if (!count) return {};
  return {bufferedFilter<uint8_t>("erosion", DAXI_Erode3x3BufferSize_8u, DAXI_Erode3x3_8u_C1R, *count), nullptr};
}

const FilterRegistration erode({"--erode", "N", "N of 1..1000000",
                                "N one-sided erosions of a mask (pixels above 0 are set):\n"
                                "each takes the last pixel of the runs along rows, then\n"
                                "along columns; what is one pixel wide stays",
                                true, parseErode});

}  // namespace
}  // namespace dax::tool
