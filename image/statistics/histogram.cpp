#include "image/statistics/histogram.h"

#include <cfloat>
#include <cmath>
#include <functional>
#include <memory>

#include "frame/memory/work_buffer.h"
#include "image/statistics/level_counts.h"
#include "image/statistics/pixel_runs.h"

namespace dax {
namespace {

constexpr int32_t kMaxBins = 65536;

bool isBinCount(int32_t bins) {
  return bins >= 1 && bins <= kMaxBins;
}

// What a pixel of an integer type counts for.
struct Bins {
  uint64_t* counts;
  DaxiHistogramOutside outside = {};

  void add(int32_t bin, uint64_t pixels) { counts[bin] += pixels; }
};

DaxStatus finish(const DaxiHistogramOutside& found, DaxiHistogramOutside* outside) {
  if (outside) *outside = found;
  return DAX_STS_OK;
}

// Counts levels, then gives each to its bin: binOf(level) for levels from low on and below high.
template <class T, class BinOf>
void countByLevels(Plane<const T> src, MaskPlane mask, DaxiSize size, int64_t low, int64_t high, const BinOf& binOf,
                   Bins& bins, void* buffer) {
  const auto count = [&](auto& tables) {
    LevelCounter counter(tables);
    const auto add = [&](const T* run, int32_t length) { counter.add(run, length, [](T value) { return value; }); };
    forEachRun<1>(size, 0, add, mask, src);
    const uint64_t* const totals = counter.totals();
    for (int32_t level = 0; level < std::remove_reference_t<decltype(tables)>::kLevels; ++level) {
      if (totals[level] == 0) continue;
      uint64_t& counted = level < low     ? bins.outside.below
                          : level >= high ? bins.outside.above
                                          : bins.counts[binOf(level)];
      counted += totals[level];
    }
  };
  if constexpr (sizeof(T) == 1) {
    ByteTables tables;
    count(tables);
  } else {
    count(*static_cast<WordTables*>(buffer));
  }
}

// Floats one by one: the last end belongs to the last bin.
template <class End, class BinOf>
void countOneByOne(Plane<const float> src, MaskPlane mask, DaxiSize size, End low, End high, const BinOf& binOf,
                   Bins& bins) {
  const auto add = [&](const float* run, int32_t length) {
    for (int32_t x = 0; x < length; ++x) {
      const End value = run[x];
      if (value >= low && value <= high) {
        ++bins.counts[binOf(value)];
      } else {
        ++(value < low ? bins.outside.below : value > high ? bins.outside.above : bins.outside.nan);
      }
    }
  };
  forEachRun<1>(size, 0, add, mask, src);
}

// The last edge that is not above the value.
template <class End>
int32_t lastNotAbove(const End* edges, int32_t count, End value) {
  return static_cast<int32_t>(std::upper_bound(edges, edges + count, value) - edges) - 1;
}

// Edges that are computed once decide; a product finds the place to look.
class EvenEdges {
 public:
  EvenEdges(double low, double high, int32_t bins, double* edges)
      : low_(low), scale_(bins / (high - low)), bins_(bins), edges_(edges) {
    for (int32_t i = 0; i < bins; ++i) edges[i] = low + i * (high - low) / bins;
  }
  int32_t binOf(double value) const {
    const double place = (value - low_) * scale_;
    const int32_t i = place < bins_ - 1 ? static_cast<int32_t>(place) : bins_ - 1;
    const bool isThere = edges_[i] <= value && (i == bins_ - 1 || value < edges_[i + 1]);
    return isThere ? i : lastNotAbove(edges_, bins_, value);
  }

 private:
  double low_, scale_;
  int32_t bins_;
  const double* edges_;
};

template <class T>
constexpr bool kEvenNeedsBuffer = !std::is_same_v<T, uint8_t>;
template <class T>
constexpr bool kRangeNeedsBuffer = std::is_same_v<T, uint16_t>;

}  // namespace

Histogram histogram(const uint8_t* src, int32_t srcStep, DaxiSize size, int64_t maxPixels) {
  ByteTables tables;
  LevelCounter counter(tables, static_cast<uint64_t>(maxPixels));
  for (int32_t y = 0; y < size.height; ++y) {
    counter.add(rowAt(src, srcStep, y), size.width, [](uint8_t value) { return value; });
  }
  Histogram counts;
  std::copy_n(counter.totals(), counts.size(), counts.begin());
  return counts;
}

template <class T, bool kMasked, class End>
DaxStatus histogramEven(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                        int32_t bins, End low, End high, uint64_t* counts, DaxiHistogramOutside* outside,
                        void* buffer) {
  const Plane from{src, srcStep};
  const MaskPlane chosen{mask, maskStep};
  DAX_REQUIRE(counts && (buffer || !kEvenNeedsBuffer<T>), DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSources<kMasked>(size, 1, chosen, from));
  DAX_REQUIRE(isBinCount(bins), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(low < high, DAX_STS_BAD_PARAM);
  Bins found{counts};
  if constexpr (std::is_same_v<T, float>) {
    DAX_REQUIRE(low >= -FLT_MAX && high <= FLT_MAX, DAX_STS_BAD_PARAM);
    std::fill_n(counts, bins, 0);
    const EvenEdges edges(low, high, bins, static_cast<double*>(buffer));
    countOneByOne(
        from, chosen, size, low, high, [&](double value) { return edges.binOf(value); }, found);
  } else {
    std::fill_n(counts, bins, 0);
    const auto binOf = [=](int64_t level) { return (level - low) * bins / (int64_t{high} - low); };
    countByLevels(from, chosen, size, low, high, binOf, found, buffer);
  }
  return finish(found.outside, outside);
}

template <class T, bool kMasked, class End>
DaxStatus histogramRange(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                         const End* edges, int32_t bins, uint64_t* counts, DaxiHistogramOutside* outside,
                         void* buffer) {
  const Plane from{src, srcStep};
  const MaskPlane chosen{mask, maskStep};
  DAX_REQUIRE(edges && counts && (buffer || !kRangeNeedsBuffer<T>), DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSources<kMasked>(size, 1, chosen, from));
  DAX_REQUIRE(isBinCount(bins), DAX_STS_BAD_PARAM);
  for (int32_t i = 0; i < bins; ++i) DAX_REQUIRE(edges[i] < edges[i + 1], DAX_STS_BAD_PARAM);
  std::fill_n(counts, bins, 0);
  Bins found{counts};
  const End low = edges[0], high = edges[bins];
  const auto binOf = [=](End value) { return lastNotAbove(edges, bins, value); };
  if constexpr (std::is_same_v<T, float>) {
    countOneByOne(from, chosen, size, low, high, binOf, found);
  } else {
    countByLevels(from, chosen, size, low, high, binOf, found, buffer);
  }
  return finish(found.outside, outside);
}

#define DAX_HISTOGRAM_FORM(T, END, EDGE, MASKED)                                                                       \
  template DaxStatus histogramEven<T, MASKED, END>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize, int32_t, END, \
                                                   END, uint64_t*, DaxiHistogramOutside*, void*);                      \
  template DaxStatus histogramRange<T, MASKED, EDGE>(const T*, int32_t, const uint8_t*, int32_t, DaxiSize,             \
                                                     const EDGE*, int32_t, uint64_t*, DaxiHistogramOutside*, void*);
#define DAX_HISTOGRAM_TYPE(T, END, EDGE)  \
  DAX_HISTOGRAM_FORM(T, END, EDGE, false) \
  DAX_HISTOGRAM_FORM(T, END, EDGE, true)
DAX_HISTOGRAM_TYPE(uint8_t, int32_t, int32_t)
DAX_HISTOGRAM_TYPE(uint16_t, int32_t, int32_t)
DAX_HISTOGRAM_TYPE(float, double, float)
#undef DAX_HISTOGRAM_TYPE
#undef DAX_HISTOGRAM_FORM

}  // namespace dax

namespace {

template <class Element>
DaxStatus queryOf(int32_t bins, uint64_t elements, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::isBinCount(bins), DAX_STS_BAD_PARAM);
  dax::BufferLayout layout;
  layout.add<Element>(elements);
  return layout.store(bytes);
}

}  // namespace

DaxStatus DAXI_HistogramEvenBufferSize_16u(int32_t bins, uint64_t* bytes) {
  return queryOf<dax::WordTables>(bins, 1, bytes);
}

DaxStatus DAXI_HistogramEvenBufferSize_32f(int32_t bins, uint64_t* bytes) {
  return queryOf<double>(bins, static_cast<uint64_t>(bins), bytes);
}

DaxStatus DAXI_HistogramRangeBufferSize_16u(int32_t bins, uint64_t* bytes) {
  return queryOf<dax::WordTables>(bins, 1, bytes);
}
