#include "daxi/reconstruct.h"

#include "base/text.h"
#include "daxi/gray_morphology.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

template <class Pixel, class Query, class Filter, class Grow>
auto reconstructed(const char* step, Query query, Filter filter,
                   decltype(&DAXI_ReconstructDilateBufferSize_8u) growQuery, Grow grow,
                   const DaxiGrayMorphologyCfg& cfg) {
  return [=](const PixelImage<Pixel>& image) {
    constexpr int32_t kNeighbours = 8;
    const auto marker = configuredFilter<Pixel>(step, query, filter, cfg)(image);
    uint64_t bytes;
    check(growQuery(image.size, kNeighbours, &bytes), step);
    const Memory buffer(bytes);
    auto result = makeImage<Pixel>(image.size);
    check(grow(marker.pixels.data(), marker.step(), image.pixels.data(), image.step(), result.pixels.data(),
               result.step(), image.size, kNeighbours, buffer.get()),
          step);
    return result;
  };
}

#define DAX_RECONSTRUCT_FILTER(OPTION, FIRST, GROW, HELP)                                                             \
  const FilterRegistration registered##GROW(                                                                          \
      {"--" OPTION, "WxH", "WxH with sides of 1..32767", HELP, kRegions, [](std::string_view text) -> ImageFilter {   \
         const auto sides = parseIntegerPair(text, 'x', 1, 32767);                                                    \
         if (!sides) return {};                                                                                       \
         const DaxiGrayMorphologyCfg cfg = {                                                                          \
             {sides->first, sides->second}, sides->first / 2, sides->second / 2, 1, DAXI_BORDER_CLIP, 0};             \
         return {                                                                                                     \
             reconstructed<uint8_t>(OPTION, DAXI_Gray##FIRST##RectBufferSize_8u, DAXI_Gray##FIRST##Rect_8u_C1R,       \
                                    DAXI_Reconstruct##GROW##BufferSize_8u, DAXI_Reconstruct##GROW##_8u_C1R, cfg),     \
             reconstructed<uint16_t>(OPTION, DAXI_Gray##FIRST##RectBufferSize_16u, DAXI_Gray##FIRST##Rect_16u_C1R,    \
                                     DAXI_Reconstruct##GROW##BufferSize_16u, DAXI_Reconstruct##GROW##_16u_C1R, cfg)}; \
       }});
DAX_RECONSTRUCT_FILTER("open-whole", Erode, Dilate,
                       "--open that leaves what does not vanish as it is:\nby reconstruction")
DAX_RECONSTRUCT_FILTER("close-whole", Dilate, Erode, "--close that leaves what does not vanish as it is")
#undef DAX_RECONSTRUCT_FILTER

}  // namespace
}  // namespace dax::tool
