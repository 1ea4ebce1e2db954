#include "image/statistics/percentile.h"

#include <type_traits>

#include "daxi/percentile.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/rank.h"
#include "frame/numeric/total_order.h"
#include "image/statistics/level_counts.h"
#include "image/statistics/pixel_runs.h"

namespace dax {
namespace {

constexpr int32_t kMaxShares = 256;

// The level of the pixel of a rank, which becomes the rank among those of this level.
int32_t levelAt(const uint64_t* totals, uint64_t& rank) {
  int32_t level = 0;
  for (; totals[level] < rank; ++level) rank -= totals[level];
  return level;
}

uint64_t sumOfTotals(const uint64_t* totals, int32_t levels) {
  uint64_t sum = 0;
  for (int32_t level = 0; level < levels; ++level) sum += totals[level];
  return sum;
}

// Integers in ascending order from 0.
template <class T>
constexpr int32_t kLevelOfZero = std::is_signed_v<T> ? 32768 : 0;

// Tables of a megabyte are cleared and added up for each band, so that more would not pay.
int32_t bandsOf(uint32_t threads, DaxiSize size) {
  constexpr int64_t kMaxBands = 4;
  return static_cast<int32_t>(std::clamp<int64_t>(threads, 1, std::min<int64_t>(kMaxBands, size.height)));
}

// A region, and the tables of as many bands of its rows as there may be.
template <class T>
struct Counted {
  PoolThreads on;
  Plane<const T> src;
  MaskPlane mask;
  DaxiSize size;

  int32_t maxBands() const { return hasPool(on.pool, on.threads) ? bandsOf(on.threads, size) : 1; }
};

// Counts what counts(counter, run, length) counts of each run of pixels; bands have tables of their own, the first of which get
// the sum.
template <class T, class Tables, class Count>
DaxStatus countLevels(const Counted<T>& region, Tables* tables, const Count& count) {
  const PoolThreads on = region.on;
  const Plane<const T> src = region.src;
  const MaskPlane mask = region.mask;
  const DaxiSize size = region.size;
  const auto band = [&](int32_t first, int32_t end, uint32_t slice) -> DaxStatus {
    LevelCounter counter(tables[slice]);
    const MaskPlane chosen{mask.data ? rowAt(mask.data, mask.step, first) : nullptr, mask.step};
    const Plane<const T> from{rowAt(src.data, src.step, first), src.step};
    const auto add = [&](const T* run, int32_t length) { count(counter, run, length); };
    forEachRun<1>({size.width, end - first}, 0, add, chosen, from);
    counter.totals();
    return DAX_STS_OK;
  };
  const int32_t bands = region.maxBands();
  if (bands == 1) return band(0, size.height, 0);
  DAX_REQUIRE_OK(runTiles(on.pool, static_cast<uint32_t>(bands), size.height, 1, band));
  const int64_t rows = tilePerThread(size.height, static_cast<uint32_t>(bands));
  for (int64_t i = 1; i * rows < size.height; ++i) {
    for (int32_t level = 0; level < Tables::kLevels; ++level) tables[0].totals[level] += tables[i].totals[level];
  }
  return DAX_STS_OK;
}

template <class T, class Tables>
DaxStatus selectIntegers(const Counted<T>& region, const double* shares, int32_t count, T* values, Tables* tables) {
  DAX_REQUIRE_OK(countLevels(region, tables, [](auto& counter, const T* run, int32_t length) {
    counter.add(run, length, [](T value) { return value + kLevelOfZero<T>; });
  }));
  const uint64_t* const totals = tables->totals;
  const uint64_t n = sumOfTotals(totals, Tables::kLevels);
  DAX_REQUIRE(n > 0, DAX_STS_DEGENERATE);
  for (int32_t i = 0; i < count; ++i) {
    uint64_t rank = rankOf(shares[i], n);
    values[i] = static_cast<T>(levelAt(totals, rank) - kLevelOfZero<T>);
  }
  return DAX_STS_OK;
}

// Counts half of the ordered bits of the values for which accepts(ordered bits) holds; never a NaN.
template <class Accepts, class Half>
DaxStatus countHalves(const Counted<float>& region, WordTables* tables, const Accepts& accepts, const Half& half) {
  return countLevels(region, tables, [&](auto& counter, const float* run, int32_t length) {
    constexpr int32_t kPart = 512;
    uint16_t halves[kPart];
    for (int32_t x = 0; x < length; x += kPart) {
      int32_t found = 0;
      for (int32_t i = x; i < std::min(x + kPart, length); ++i) {
        const uint32_t ordered = orderedBits(run[i]);
        halves[found] = static_cast<uint16_t>(half(ordered));
        found += (run[i] == run[i]) & accepts(ordered);
      }
      counter.add(halves, found, [](uint16_t value) { return value; });
    }
  });
}

// Radix selection: the upper halves of the ordered bits tell the upper half of each percentile, then the lower halves of the
// values that share it tell the rest.
DaxStatus selectFloats(const Counted<float>& region, const double* shares, int32_t count, float* values,
                       WordTables* tables) {
  WordTables* const forLower = tables + 1;  // of the first pass only the sum is needed then
  const uint64_t *const upper = tables->totals, *const lower = forLower->totals;
  DAX_REQUIRE_OK(countHalves(
      region, tables, [](uint32_t) { return true; }, [](uint32_t ordered) { return ordered >> 16; }));
  const uint64_t n = sumOfTotals(upper, WordTables::kLevels);
  DAX_REQUIRE(n > 0, DAX_STS_DEGENERATE);
  int64_t known = -1;
  for (int32_t i = 0; i < count; ++i) {
    uint64_t rank = rankOf(shares[i], n);
    const auto prefix = static_cast<uint32_t>(levelAt(upper, rank));
    if (prefix != known) {
      DAX_REQUIRE_OK(countHalves(
          region, forLower, [=](uint32_t ordered) { return ordered >> 16 == prefix; },
          [](uint32_t ordered) { return ordered; }));
      known = prefix;
    }
    values[i] = fromOrderedBits<float>(prefix << 16 | static_cast<uint32_t>(levelAt(lower, rank)));
  }
  return DAX_STS_OK;
}

template <class T>
constexpr uint64_t kTables = std::is_same_v<T, float> ? 2 : 1;

template <class T>
DaxStatus storeBufferSize(DaxiSize size, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  BufferLayout layout;
  layout.add<WordTables>(kTables<T> - 1 + static_cast<uint64_t>(bandsOf(threads, size)));
  return layout.store(bytes);
}

}  // namespace

template <class T, bool kMasked>
DaxStatus percentilesOf(PoolThreads on, const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                        DaxiSize size, const double* shares, int32_t count, T* values, void* buffer) {
  const Counted<T> region = {on, {src, srcStep}, {mask, maskStep}, size};
  DAX_REQUIRE(shares && values && (buffer || sizeof(T) == 1), DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSources<kMasked>(size, 1, region.mask, region.src));
  DAX_REQUIRE(count >= 1 && count <= kMaxShares, DAX_STS_BAD_PARAM);
  for (int32_t i = 0; i < count; ++i) DAX_REQUIRE(shares[i] >= 0 && shares[i] <= 1, DAX_STS_BAD_PARAM);
  auto* const words = static_cast<WordTables*>(buffer);
  if constexpr (std::is_same_v<T, float>) {
    return selectFloats(region, shares, count, values, words);
  } else if constexpr (sizeof(T) == 2) {
    return selectIntegers(region, shares, count, values, words);
  } else {
    ByteTables tables;
    return selectIntegers(region, shares, count, values, &tables);
  }
}

template <class T, bool kMasked>
DaxStatus medianOf(PoolThreads on, const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                   T* median, void* buffer) {
  const double half = 0.5;
  return percentilesOf<T, kMasked>(on, src, srcStep, mask, maskStep, size, &half, 1, median, buffer);
}

#define DAX_PERCENTILE_FORM(T, MASKED)                                                                           \
  template DaxStatus percentilesOf<T, MASKED>(PoolThreads, const T*, int32_t, const uint8_t*, int32_t, DaxiSize, \
                                              const double*, int32_t, T*, void*);                                \
  template DaxStatus medianOf<T, MASKED>(PoolThreads, const T*, int32_t, const uint8_t*, int32_t, DaxiSize, T*, void*);
#define DAX_PERCENTILE_TYPE(T)  \
  DAX_PERCENTILE_FORM(T, false) \
  DAX_PERCENTILE_FORM(T, true)
DAX_PERCENTILE_TYPE(uint8_t)
DAX_PERCENTILE_TYPE(uint16_t)
DAX_PERCENTILE_TYPE(int16_t)
DAX_PERCENTILE_TYPE(float)
#undef DAX_PERCENTILE_TYPE
#undef DAX_PERCENTILE_FORM

}  // namespace dax

#define DAX_PERCENTILE_QUERY(NAME, SUFFIX, T)                                                         \
  DaxStatus DAXI_##NAME##BufferSize_##SUFFIX(DaxiSize size, uint64_t* bytes) {                        \
    return dax::storeBufferSize<T>(size, 1, bytes);                                                   \
  }                                                                                                   \
  DaxStatus DAXI_##NAME##BufferSize_##SUFFIX##_MT(DaxiSize size, uint32_t threads, uint64_t* bytes) { \
    return dax::storeBufferSize<T>(size, threads, bytes);                                             \
  }
#define DAX_PERCENTILE_QUERIES(SUFFIX, T)      \
  DAX_PERCENTILE_QUERY(Percentiles, SUFFIX, T) \
  DAX_PERCENTILE_QUERY(Median, SUFFIX, T)
DAX_PERCENTILE_QUERIES(16u, uint16_t)
DAX_PERCENTILE_QUERIES(16s, int16_t)
DAX_PERCENTILE_QUERIES(32f, float)
#undef DAX_PERCENTILE_QUERIES
#undef DAX_PERCENTILE_QUERY
