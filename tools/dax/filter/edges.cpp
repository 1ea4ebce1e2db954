#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "daxi/canny.h"
#include "daxi/gradient_mag_dir.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

// The magnitude of Sobel's gradient, by which a step is as high as it is in the picture.
template <class Pixel, class Filter>
auto sobelFilter(Filter filter) {
  return [=](const PixelImage<Pixel>& image) {
    constexpr float kGain = 4, kHigh = std::numeric_limits<Pixel>::max();
    std::vector<float> magnitude(image.pixels.size()), direction(image.pixels.size());
    check(filter(image.pixels.data(), image.step(), magnitude.data(), image.step(), direction.data(), image.step(),
                 image.size, DAXI_GRADIENT_SOBEL, 3, DAXI_BORDER_REPLICATE, 0),
          "Sobel");
    auto result = makeImage<Pixel>(image.size);
    std::transform(magnitude.begin(), magnitude.end(), result.pixels.begin(),
                   [=](float m) { return static_cast<Pixel>(std::min(std::nearbyint(m / kGain), kHigh)); });
    return result;
  };
}

ImageFilter parseSobel(std::string_view) {
  return {sobelFilter<uint8_t>(DAXI_GradientMagDir_8u32f_C1R), sobelFilter<uint16_t>(DAXI_GradientMagDir_16u32f_C1R)};
}

ImageFilter parseCanny(std::string_view text) {
  const auto levels = parseNumbers(text, 2);
  if (!levels || !(levels->at(0) >= 0 && levels->at(0) <= levels->at(1))) return {};
  DaxiCannyCfg cfg;
  check(DAXI_CannyDefaultCfg(&cfg), "Canny");
  cfg.low = levels->at(0), cfg.high = levels->at(1);
  return {configuredFilter<uint8_t>("Canny", DAXI_CannyBufferSize_8u, DAXI_Canny_8u_C1R, cfg)};
}

const FilterRegistration sobel({"--sobel", nullptr, nullptr,
                                "magnitude of the gradient by Sobel's windows, a quarter of it", kEdges, parseSobel});
const FilterRegistration canny({"--canny", "LOW,HIGH", "LOW,HIGH with 0 <= LOW <= HIGH",
                                "edges by Canny's method on the image smoothed by 1 pixel:\n"
                                "gradients above HIGH and what above LOW is joined with them",
                                kOutlines, parseCanny});

}  // namespace
}  // namespace dax::tool
