#include <algorithm>

#include "base/text.h"
#include "daxi/reconstruct.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

constexpr int32_t kConnectivity = 8;
using RegionQuery = DaxStatus (*)(DaxiSize, int32_t, uint64_t*);

template <class Pixel, class Filter, class... Arguments>
auto regionFilter(const char* step, RegionQuery query, Filter filter, Arguments... arguments) {
  return [=](const PixelImage<Pixel>& image) {
    uint64_t bytes;
    check(query(image.size, kConnectivity, &bytes), step);
    const Memory buffer(bytes);
    return plainFilter<Pixel>(step, filter, arguments..., kConnectivity, buffer.get())(image);
  };
}

template <class Pixel, class Filter>
auto extremaFilter(const char* step, RegionQuery query, Filter filter) {
  return [=](const PixelImage<Pixel>& image) {
    uint64_t bytes;
    check(query(image.size, kConnectivity, &bytes), step);
    const Memory buffer(bytes);
    GreyImage mask = makeGreyImage(image.size);
    check(filter(image.pixels.data(), image.step(), mask.pixels.data(), mask.step(), image.size, kConnectivity,
                 buffer.get()),
          step);
    return mask;
  };
}

#define DAX_REGION_FILTER(OPTION, NAME, HELP)                                                         \
  const FilterRegistration registered##NAME(                                                          \
      {"--" OPTION, nullptr, nullptr, HELP, kRegions, [](std::string_view) -> ImageFilter {           \
         return {regionFilter<uint8_t>(OPTION, DAXI_##NAME##BufferSize_8u, DAXI_##NAME##_8u_C1R),     \
                 regionFilter<uint16_t>(OPTION, DAXI_##NAME##BufferSize_16u, DAXI_##NAME##_16u_C1R)}; \
       }});
DAX_REGION_FILTER("fill-holes", FillHoles, "dark regions that do not reach the edge are filled")
DAX_REGION_FILTER("clear-border", ClearBorder, "bright things that touch the edge vanish")
#undef DAX_REGION_FILTER

#define DAX_EXTREMA_FILTER(OPTION, NAME, HELP)                                                         \
  const FilterRegistration registered##NAME(                                                           \
      {"--" OPTION, nullptr, nullptr, HELP, kExtrema, [](std::string_view) -> ImageFilter {            \
         return {extremaFilter<uint8_t>(OPTION, DAXI_##NAME##BufferSize_8u, DAXI_##NAME##_8u_C1R),     \
                 extremaFilter<uint16_t>(OPTION, DAXI_##NAME##BufferSize_16u, DAXI_##NAME##_16u_C1R)}; \
       }});
DAX_EXTREMA_FILTER("regional-maxima", RegionalMaxima, "mask of the peaks: flat regions with lower neighbours only")
DAX_EXTREMA_FILTER("regional-minima", RegionalMinima, "mask of the hollows: flat regions with higher neighbours only")
#undef DAX_EXTREMA_FILTER

#define DAX_HEIGHT_FILTER(OPTION, NAME, HELP)                                                        \
  const FilterRegistration registered##NAME(                                                         \
      {"--" OPTION, "H", "H of 0..65535", HELP, kHeights, [](std::string_view text) -> ImageFilter { \
         const auto h = parseInteger(text, 0, 65535);                                                \
         if (!h) return {};                                                                          \
         return {regionFilter<uint8_t>(OPTION, DAXI_##NAME##BufferSize_8u, DAXI_##NAME##_8u_C1R,     \
                                       static_cast<uint8_t>(std::min(*h, 255))),                     \
                 regionFilter<uint16_t>(OPTION, DAXI_##NAME##BufferSize_16u, DAXI_##NAME##_16u_C1R,  \
                                        static_cast<uint16_t>(*h))};                                 \
       }});
DAX_HEIGHT_FILTER("h-maxima", HMaxima, "peaks that rise by at most H vanish, others lose H")
DAX_HEIGHT_FILTER("h-minima", HMinima, "hollows at most H deep vanish, others lose H")
#undef DAX_HEIGHT_FILTER

}  // namespace
}  // namespace dax::tool
