#include "image/statistics/sum.h"

#include "frame/dispatch.h"
#include "image/statistics/sum_neon.h"

namespace dax {
namespace {

template <int32_t kChannels, class T>
Sums<PixelValue, T> valuesOf(Plane<const T> src, MaskPlane mask, DaxiSize size, int32_t channel) {
  Sums<PixelValue, T> sums;
  const auto addRun = [&, neon = usesNeon(currentIsa())](const T* run, int32_t count) {
    if constexpr (std::is_floating_point_v<T>)
      sums.addValues(count, run);
    else
      sums.addTotal(count, neon ? neon::totalOfPixels(count, run) : portable::totalOfPixels(count, run));
  };
  forEachRun<kChannels>(size, channel, addRun, mask, src);
  return sums;
}

// Population variance of integers: (n S2 - S1^2) / n^2, the numerator exact.
template <int32_t kChannels, class T>
double stdDevOf(Sums<PixelValue, T> sums, double, Plane<const T> src, MaskPlane mask, DaxiSize size, int32_t channel) {
  forEachRun<kChannels>(
      size, channel, [&](const T* run, int32_t count) { sums.addSquares(count, run); }, mask, src);
  const Wide n = sums.count;
  return std::sqrt(static_cast<double>(n * sums.squares - Wide{sums.values} * sums.values)) / static_cast<double>(n);
}

// Of floats in a second pass: the squares of deviations from the mean.
template <int32_t kChannels>
double stdDevOf(const Sums<PixelValue, float>& sums, double mean, Plane<const float> src, MaskPlane mask, DaxiSize size,
                int32_t channel) {
  PairwiseSum squares;
  const auto addRun = [&](const float* run, int32_t count) {
    squares.add(count, [=](int32_t x) {
      const double deviation = run[x] - mean;
      return deviation * deviation;
    });
  };
  forEachRun<kChannels>(size, channel, addRun, mask, src);
  return std::sqrt(squares.total() / static_cast<double>(sums.count));
}

}  // namespace

template <class T, int32_t kChannels, bool kMasked>
DaxStatus sumOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double* sum) {
  const Plane from{src, srcStep};
  const MaskPlane chosen{mask, maskStep};
  DAX_REQUIRE(sum, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSources<kMasked>(size, kChannels, chosen, from));
  for (int32_t c = 0; c < kChannels; ++c) sum[c] = valuesOf<kChannels>(from, chosen, size, c).total();
  return DAX_STS_OK;
}

template <class T, int32_t kChannels, bool kMasked>
DaxStatus meanOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double* mean) {
  const Plane from{src, srcStep};
  const MaskPlane chosen{mask, maskStep};
  DAX_REQUIRE(mean, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSources<kMasked>(size, kChannels, chosen, from));
  for (int32_t c = 0; c < kChannels; ++c) {
    const auto sums = valuesOf<kChannels>(from, chosen, size, c);
    DAX_REQUIRE(sums.count > 0, DAX_STS_DEGENERATE);
    mean[c] = sums.total() / static_cast<double>(sums.count);
  }
  return DAX_STS_OK;
}

template <class T, int32_t kChannels, bool kMasked>
DaxStatus meanStdDevOf(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                       double* mean, double* stdDev) {
  const Plane from{src, srcStep};
  const MaskPlane chosen{mask, maskStep};
  DAX_REQUIRE(mean && stdDev, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSources<kMasked>(size, kChannels, chosen, from));
  for (int32_t c = 0; c < kChannels; ++c) {
    const auto sums = valuesOf<kChannels>(from, chosen, size, c);
    DAX_REQUIRE(sums.count > 0, DAX_STS_DEGENERATE);
    const double centre = sums.total() / static_cast<double>(sums.count);
    mean[c] = centre;
    stdDev[c] = stdDevOf<kChannels>(sums, centre, from, chosen, size, c);
  }
  return DAX_STS_OK;
}

#define DAX_SUM_FORM(T, CHANNELS, MASKED)                                                                             \
  template DaxStatus sumOf<T, CHANNELS, MASKED>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, double*);       \
  template DaxStatus meanOf<T, CHANNELS, MASKED>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, double*);      \
  template DaxStatus meanStdDevOf<T, CHANNELS, MASKED>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, double*, \
                                                       double*);
#define DAX_SUM_TYPE(T)     \
  DAX_SUM_FORM(T, 1, false) \
  DAX_SUM_FORM(T, 1, true)  \
  DAX_SUM_FORM(T, 3, false) \
  DAX_SUM_FORM(T, 3, true)
DAX_SUM_TYPE(uint8_t)
DAX_SUM_TYPE(uint16_t)
DAX_SUM_TYPE(int16_t)
DAX_SUM_TYPE(float)
#undef DAX_SUM_TYPE
#undef DAX_SUM_FORM

}  // namespace dax
