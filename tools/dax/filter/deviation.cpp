#include <algorithm>
#include <cmath>

#include "base/text.h"
#include "daxi/local_statistics.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

template <class Pixel, class Query, class Filter>
auto deviationFilter(Query query, Filter filter, DaxiLocalStatisticsCfg cfg) {
  return [=](const PixelImage<Pixel>& image) {
    uint64_t bytes;
    check(query(image.size, &cfg, &bytes), "deviation");
    const Memory buffer(bytes);
    std::vector<float> deviations(image.pixels.size());
    check(filter(image.pixels.data(), image.step(), deviations.data(), image.step(), image.size, &cfg, buffer.get()),
          "deviation");
    auto result = makeImage<Pixel>(image.size);
    std::transform(deviations.begin(), deviations.end(), result.pixels.begin(),
                   [](float d) { return static_cast<Pixel>(std::nearbyint(d)); });
    return result;
  };
}

ImageFilter parseDeviation(std::string_view text) {
  const auto sides = parseIntegerPair(text, 'x', 1, 32767);
  if (!sides) return {};
  DaxiLocalStatisticsCfg cfg;
  check(DAXI_LocalStatisticsDefaultCfg(&cfg), "deviation");
  cfg.window = {sides->first, sides->second};
  return {deviationFilter<uint8_t>(DAXI_LocalStdDevBufferSize_8u32f, DAXI_LocalStdDev_8u32f_C1R, cfg),
          deviationFilter<uint16_t>(DAXI_LocalStdDevBufferSize_16u32f, DAXI_LocalStdDev_16u32f_C1R, cfg)};
}

const FilterRegistration localDeviation({"--deviation", "WxH", "WxH with sides of 1..32767",
                                         "standard deviation of W x H pixels: texture", kEdges, parseDeviation});

}  // namespace
}  // namespace dax::tool
