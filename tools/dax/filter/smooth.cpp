#include <cmath>

#include "base/text.h"
#include "daxi/filter_bilateral.h"
#include "daxi/filter_guided.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

template <class Pixel, class Query, class Filter>
auto guidedBySelf(Query query, Filter filter, DaxiFilterGuidedCfg cfg) {
  return [=](const PixelImage<Pixel>& image) {
    uint64_t bytes;
    check(query(image.size, &cfg, &bytes), "guided filter");
    const Memory buffer(bytes);
    auto result = makeImage<Pixel>(image.size);
    check(filter(image.pixels.data(), image.step(), image.pixels.data(), image.step(), result.pixels.data(),
                 result.step(), image.size, &cfg, buffer.get()),
          "guided filter");
    return result;
  };
}

// The deviation is one of 8 bits.
ImageFilter parseGuided(std::string_view text) {
  const auto parts = splitPair(text, ',');
  const auto radius = parts ? parseInteger(parts->first, 1, 16383) : std::nullopt;
  const auto deviation = parts ? parseNumber(parts->second) : std::nullopt;
  if (!radius || !deviation || !(*deviation >= 0 && *deviation <= 1e6)) return {};
  const auto cfg = [&](double unit) { return DaxiFilterGuidedCfg{*radius, 1, *deviation * *deviation * unit * unit}; };
  return {guidedBySelf<uint8_t>(DAXI_FilterGuidedBufferSize_8u, DAXI_FilterGuided_8u_C1R, cfg(1)),
          guidedBySelf<uint16_t>(DAXI_FilterGuidedBufferSize_16u, DAXI_FilterGuided_16u_C1R, cfg(257))};
}

ImageFilter parseBilateral(std::string_view text) {
  const auto numbers = parseNumbers(text, 3);
  if (!numbers) return {};
  const double radius = (*numbers)[0], near = (*numbers)[1], alike = (*numbers)[2];
  const bool isValid = radius >= 1 && radius <= 15 && radius == std::floor(radius) && near >= 1e-3 && alike >= 1e-3;
  if (!isValid) return {};
  const DaxiFilterBilateralCfg cfg = {static_cast<int32_t>(radius), DAXI_BORDER_REPLICATE, near, alike, 0};
  return {configuredFilter<uint8_t>("bilateral filter", DAXI_FilterBilateralBufferSize_8u, DAXI_FilterBilateral_8u_C1R,
                                    cfg)};
}

const FilterRegistration guided({"--guided", "R,S", "R,S with a radius of 1..16383 and a deviation of grey levels",
                                 "smooth by the guided filter with itself as guide, windows of\n"
                                 "2 R + 1 pixels: edges that exceed S grey levels of 8 bits stay",
                                 kSmoothing, parseGuided});
const FilterRegistration bilateral({"--bilateral", "R,P,S",
                                    "R,P,S with a radius of 1..15 and deviations of pixels and of grey levels",
                                    "bilateral filter of radius R, 1..15: weights fall with the\n"
                                    "distance by P pixels and with the contrast by S grey levels",
                                    kSmoothing, parseBilateral});

}  // namespace
}  // namespace dax::tool
