#include "base/text.h"
#include "daxi/filter_rank.h"
#include "filter/filter_option.h"

namespace dax::tool {
namespace {

template <class T>
using RankFilter = DaxStatus (*)(const T*, int32_t, T*, int32_t, DaxiSize, DaxiSize, int32_t, int32_t, T, void*);
using RankQuery = DaxStatus (*)(DaxiSize, DaxiSize, uint64_t*);

template <class Pixel>
auto rankFilter(RankQuery query, RankFilter<Pixel> filter, DaxiSize window, int32_t rank) {
  return [=](const PixelImage<Pixel>& image) {
    uint64_t bytes;
    check(query(image.size, window, &bytes), "rank");
    const Memory buffer(bytes);
    return plainFilter<Pixel>("rank", filter, window, rank, DAXI_BORDER_REPLICATE, Pixel{0}, buffer.get())(image);
  };
}

ImageFilter ofRank(std::string_view window, double percentile) {
  const auto sides = parseIntegerPair(window, 'x', 1, 255);
  int32_t rank;
  if (!sides || DAXI_RankFromPercentile(percentile, {sides->first, sides->second}, &rank) != DAX_STS_OK) return {};
  const DaxiSize size = {sides->first, sides->second};
  return {rankFilter<uint8_t>(DAXI_FilterRankBufferSize_8u, DAXI_FilterRank_8u_C1R, size, rank),
          rankFilter<uint16_t>(DAXI_FilterRankBufferSize_16u, DAXI_FilterRank_16u_C1R, size, rank)};
}

const FilterRegistration anyMedian({"--median", "WxH", "WxH with sides of 1..255",
                                    "median of W x H pixels: removes specks, keeps edges", kRanks,
                                    [](std::string_view text) { return ofRank(text, 0.5); }});

const FilterRegistration anyRank({"--rank", "WxH,P", "WxH,P with sides of 1..255 and a P of 0..1",
                                  "percentile P of W x H pixels: 0 minimum, 0.5 median, 1 maximum", kRanks,
                                  [](std::string_view text) {
                                    const auto parts = splitPair(text, ',');
                                    const auto percentile = parts ? parseNumber(parts->second) : std::nullopt;
                                    return percentile ? ofRank(parts->first, *percentile) : ImageFilter{};
                                  }});

}  // namespace
}  // namespace dax::tool
