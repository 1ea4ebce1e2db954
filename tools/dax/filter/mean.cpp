#include "daxi/filter_mean.h"

#include <optional>

#include "base/text.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

std::optional<DaxiSize> parseMask(std::string_view text, int max) {
  const auto sides = parseIntegerPair(text, 'x', 1, max);
  if (!sides) return std::nullopt;
  return DaxiSize{sides->first, sides->second};
}

ImageFilter parseMean(std::string_view text) {
  const auto mask = parseMask(text, 255);
  if (!mask) return {};
  return {bufferedFilter<uint8_t>("mean", DAXI_FilterMeanBufferSize_8u, DAXI_FilterMean_8u_C1R, *mask),
          bufferedFilter<uint16_t>("mean", DAXI_FilterMeanBufferSize_16u, DAXI_FilterMean_16u_C1R, *mask)};
}

ImageFilter parseMeanInside(std::string_view text) {
  const auto mask = parseMask(text, 65535);
  if (!mask) return {};
  return {bufferedFilter<uint8_t>("mean", DAXI_FilterMeanIntBufferSize_8u, DAXI_FilterMeanInt_8u_C1R, *mask),
          bufferedFilter<uint16_t>("mean", DAXI_FilterMeanIntBufferSize_16u, DAXI_FilterMeanInt_16u_C1R, *mask)};
}

const FilterRegistration mean({"--mean", "WxH", "WxH with sides of 1..255",
                               "mean of W x H pixels, sides of 1..255; the image goes on\n"
                               "mirrored beyond its edges",
                               kSmoothing, parseMean});
const FilterRegistration meanInside({"--mean-inside", "WxH", "WxH with sides of 1..65535",
                                     "mean of those of W x H pixels that lie in the image", kSmoothing,
                                     parseMeanInside});

}  // namespace
}  // namespace dax::tool
