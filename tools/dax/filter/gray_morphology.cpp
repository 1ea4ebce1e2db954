#include "daxi/gray_morphology.h"
#include "base/text.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

template <class T>
using GrayFilter = DaxStatus (*)(const T*, int32_t, T*, int32_t, DaxiSize, const DaxiGrayMorphologyCfg*, void*);
using GrayQuery = DaxStatus (*)(DaxiSize, const DaxiGrayMorphologyCfg*, uint64_t*);

struct GrayOperation {
  const char* step;
  GrayQuery query8, query16;
  GrayFilter<uint8_t> on8;
  GrayFilter<uint16_t> on16;
};

template <const GrayOperation& operation>
ImageFilter parseGray(std::string_view text) {
  const auto sides = parseIntegerPair(text, 'x', 1, 32767);
  if (!sides) return {};
  const DaxiGrayMorphologyCfg cfg = {
      {sides->first, sides->second}, sides->first / 2, sides->second / 2, 1, DAXI_BORDER_CLIP, 0};
  return {configuredFilter<uint8_t>(operation.step, operation.query8, operation.on8, cfg),
          configuredFilter<uint16_t>(operation.step, operation.query16, operation.on16, cfg)};
}

#define DAX_GRAY_FILTER(OPTION, NAME, HELP)                                                                       \
  constexpr GrayOperation k##NAME = {OPTION + 2, DAXI_Gray##NAME##BufferSize_8u, DAXI_Gray##NAME##BufferSize_16u, \
                                     DAXI_Gray##NAME##_8u_C1R, DAXI_Gray##NAME##_16u_C1R};                        \
  const FilterRegistration registered##NAME(                                                                      \
      {OPTION, "WxH", "WxH with sides of 1..32767", HELP, kSizes, parseGray<k##NAME>});

DAX_GRAY_FILTER("--min", ErodeRect, "minimum of W x H pixels: grey erosion")
DAX_GRAY_FILTER("--max", DilateRect, "maximum of W x H pixels: grey dilation")
DAX_GRAY_FILTER("--open", Open, "bright things in which W x H pixels do not fit vanish")
DAX_GRAY_FILTER("--close", Close, "dark things in which W x H pixels do not fit vanish")
DAX_GRAY_FILTER("--gradient", Gradient, "maximum less minimum of W x H pixels: edges")
DAX_GRAY_FILTER("--top-hat", TopHat, "bright things smaller than W x H pixels alone")
DAX_GRAY_FILTER("--black-hat", BlackHat, "dark things smaller than W x H pixels alone")
#undef DAX_GRAY_FILTER

}  // namespace
}  // namespace dax::tool
