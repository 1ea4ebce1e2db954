#include <algorithm>
#include <iostream>
#include <limits>
#include <utility>

#include "base/text.h"
#include "daxi/threshold_hysteresis.h"
#include "filter/filter_option.h"
#include "model/threshold_method.h"

namespace dax::tool {
namespace {

template <class Pixel>
auto byLevel(int level, bool dark) {
  return [=](const PixelImage<Pixel>& image) {
    GreyImage mask = makeGreyImage(image.size);
    std::transform(image.pixels.begin(), image.pixels.end(), mask.pixels.begin(),
                   [=](Pixel v) { return static_cast<uint8_t>((v >= level) != dark ? 255 : 0); });
    return mask;
  };
}

GreyImage maskOf(MethodMask found) {
  if (!found.note.empty()) std::cerr << "dax: --threshold: " << found.note << '\n';
  return std::move(found.mask);
}

ImageFilter parseThreshold(std::string_view text, bool dark) {
  if (const auto level = parseInteger(text, 0, 65535)) {
    return {byLevel<uint8_t>(*level, dark), byLevel<uint16_t>(*level, dark)};
  }
  const auto method = parseThresholdMethod(text);
  if (!method) return {};
  const auto on8 = [=](const GreyImage& image) {
    Picture picture;
    picture.grey = image;
    return maskOf(applyThresholdMethod(*method, picture, dark));
  };
  const auto onValues = [=](const Grey16Image& image, const Levels& levels) {
    Picture picture;
    picture.values = image, picture.levels = levels;
    return maskOf(applyThresholdMethod(*method, picture, dark));
  };
  return {on8, {}, onValues};
}

template <class Pixel, class Filter>
auto hysteresisFilter(SizeQuery query, Filter filter, int low, int high) {
  return [=](const PixelImage<Pixel>& image) {
    constexpr int kWhite = std::numeric_limits<Pixel>::max();
    const Memory buffer = workBuffer("hysteresis", query, image.size);
    GreyImage mask = makeGreyImage(image.size);
    check(
        filter(image.pixels.data(), image.step(), mask.pixels.data(), mask.step(), image.size,
               static_cast<Pixel>(std::min(low, kWhite)), static_cast<Pixel>(std::min(high, kWhite)), 8, buffer.get()),
        "hysteresis");
    return mask;
  };
}

ImageFilter parseHysteresis(std::string_view text) {
  const auto levels = parseIntegerPair(text, ',', 0, 65535);
  if (!levels || levels->first > levels->second) return {};
  const auto [low, high] = *levels;
  return {hysteresisFilter<uint8_t>(DAXI_ThresholdHysteresisBufferSize_8u, DAXI_ThresholdHysteresis_8u_C1R, low, high),
          hysteresisFilter<uint16_t>(DAXI_ThresholdHysteresisBufferSize_16u8u, DAXI_ThresholdHysteresis_16u8u_C1R, low,
                                     high)};
}

constexpr const char* kMethods = "a grey level or a method that dax threshold --help tells";
const FilterRegistration bright({"--threshold", "M", kMethods,
                                 "what is at least the grey level M, or bright by the method M of\n"
                                 "dax threshold, such as otsu or sauvola:31,0.2",
                                 kBinarising, [](std::string_view text) { return parseThreshold(text, false); }});
const FilterRegistration dark({"--threshold-dark", "M", kMethods,
                               "what is below the grey level M, or dark by the method M", kBinarising,
                               [](std::string_view text) { return parseThreshold(text, true); }});
const FilterRegistration hysteresis({"--hysteresis", "LOW,HIGH", "LOW,HIGH with 0 <= LOW <= HIGH <= 65535",
                                     "what is above LOW and hangs together with what is above HIGH", kBinarising,
                                     parseHysteresis});

}  // namespace
}  // namespace dax::tool
