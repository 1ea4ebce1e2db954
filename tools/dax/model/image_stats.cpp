#include "model/image_stats.h"

#include <algorithm>
#include <utility>

#include "base/library_call.h"
#include "daxi/extremes.h"
#include "daxi/histogram.h"
#include "daxi/percentile.h"
#include "daxi/sum.h"

namespace dax::tool {
namespace {

// The library's functions of one pixel type, without work buffers.
struct OfBytes {
  static constexpr auto meanStdDev = DAXI_MeanStdDev_8u_C1R;
  static constexpr auto minMax = DAXI_MinMax_8u_C1R;
  static constexpr auto count = DAXI_CountInRange_8u_C1R;
  static constexpr auto percentiles = DAXI_Percentiles_8u_C1R;
  static DaxStatus histogram(const uint8_t* src, int32_t step, DaxiSize size, int bins, int high, uint64_t* counts) {
    return DAXI_HistogramEven_8u_C1R(src, step, size, bins, 0, high, counts, nullptr);
  }
};

struct OfWords {
  static constexpr auto meanStdDev = DAXI_MeanStdDev_16u_C1R;
  static constexpr auto minMax = DAXI_MinMax_16u_C1R;
  static constexpr auto count = DAXI_CountInRange_16u_C1R;
  static DaxStatus percentiles(const uint16_t* src, int32_t step, DaxiSize size, const double* shares, int32_t count,
                               uint16_t* values) {
    uint64_t bytes = 0;
    check(DAXI_PercentilesBufferSize_16u(size, &bytes), "percentiles");
    const Memory work(bytes);
    return DAXI_Percentiles_16u_C1R(src, step, size, shares, count, values, work.get());
  }
  static DaxStatus histogram(const uint16_t* src, int32_t step, DaxiSize size, int bins, int high, uint64_t* counts) {
    uint64_t bytes = 0;
    check(DAXI_HistogramEvenBufferSize_16u(bins, &bytes), "histogram");
    const Memory work(bytes);
    return DAXI_HistogramEven_16u_C1R(src, step, size, bins, 0, high, counts, nullptr, work.get());
  }
};

template <class Of, class Pixel>
ImageStats measure(const PixelImage<Pixel>& image, int maxValue, int bins) {
  const Pixel* const src = image.pixels.data();
  const int32_t step = image.step();
  const Pixel last = static_cast<Pixel>(maxValue);
  ImageStats stats{};
  Pixel min, max;
  std::array<Pixel, kShares.size()> values;
  stats.counts.resize(static_cast<size_t>(bins));
  check(Of::meanStdDev(src, step, image.size, &stats.mean, &stats.stdDev), "mean");
  check(Of::minMax(src, step, image.size, &min, &max, &stats.minAt, &stats.maxAt), "minimum and maximum");
  check(Of::percentiles(src, step, image.size, kShares.data(), std::ssize(kShares), values.data()), "percentiles");
  check(Of::count(src, step, image.size, 0, 0, &stats.black), "count");
  check(Of::count(src, step, image.size, last, last, &stats.white), "count");
  check(Of::histogram(src, step, image.size, bins, maxValue + 1, stats.counts.data()), "histogram");
  stats.min = min;
  stats.max = max;
  std::copy(values.begin(), values.end(), stats.percentiles.begin());
  return stats;
}

}  // namespace

ImageStats measureStats(const Picture& picture, int bins) {
  if (picture.hasValues()) return measure<OfWords>(picture.values, picture.maxValue, bins);
  return measure<OfBytes>(picture.grey, picture.maxValue, bins);
}

}  // namespace dax::tool
