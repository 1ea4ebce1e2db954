#include "daxi/threshold_hysteresis.h"

#include <algorithm>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "geometry/union_find.h"

namespace dax {
namespace {

constexpr uint64_t kMaxHysteresisPixels = uint64_t{1} << 31;

// Pixels of a row above the low level, numbered in raster order.
struct WeakRun {
  int32_t first, end;
  uint32_t label;
};

struct HysteresisBuffer {
  explicit HysteresisBuffer(DaxiSize size) : inRow((static_cast<uint64_t>(size.width) + 1) / 2) {
    const uint64_t all = inRow * static_cast<uint64_t>(size.height);
    parents = layout.add<uint32_t>(all);
    strong = layout.add<uint8_t>(all);
    rows = layout.add<WeakRun>(2 * inRow);
  }
  uint64_t inRow;
  BufferLayout layout;
  BufferPiece<uint32_t> parents;
  BufferPiece<uint8_t> strong;  // whether a set has a pixel above the high level, at its root
  BufferPiece<WeakRun> rows;    // the runs of two rows
};

// Calls use(first, end, whether it has a pixel above `high`) for the runs of a row.
template <class T, class Use>
void forWeakRuns(const T* row, int32_t width, T low, T high, Use use) {
  for (int32_t x = 0; x < width;) {
    const int32_t first = x;
    bool isStrong = false;
    for (; x < width && row[x] > low; ++x) isStrong |= row[x] > high;
    if (x > first) {
      use(first, x, isStrong);
    } else {
      ++x;
    }
  }
}

// Joins a row's runs with those above that they touch, `reach` columns aside.
class RunJoiner {
 public:
  RunJoiner(UnionFind& sets, uint8_t* strong, int32_t reach) : sets_(sets), strong_(strong), reach_(reach) {}

  void join(const WeakRun* above, int64_t aboveCount, const WeakRun* runs, int64_t count) {
    int64_t next = 0;
    for (int64_t i = 0; i < count; ++i) {
      while (next < aboveCount && int64_t{above[next].end} + reach_ <= runs[i].first) ++next;
      for (int64_t k = next; k < aboveCount && above[k].first < int64_t{runs[i].end} + reach_; ++k) {
        unite(above[k].label, runs[i].label);
      }
    }
  }

 private:
  void unite(uint32_t a, uint32_t b) {
    const uint32_t rootA = sets_.root(a), rootB = sets_.root(b);
    const uint8_t either = strong_[rootA] | strong_[rootB];
    strong_[sets_.unite(rootA, rootB)] = either;
  }

  UnionFind& sets_;
  uint8_t* strong_;
  int32_t reach_;
};

template <class T>
void applyHysteresis(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, T low, T high,
                     int32_t reach, void* buffer) {
  const HysteresisBuffer at(size);
  UnionFind sets(at.parents.in(buffer));
  uint8_t* const strong = at.strong.in(buffer);
  RunJoiner joiner(sets, strong, reach);
  WeakRun *above = at.rows.in(buffer), *runs = above + at.inRow;
  int64_t aboveCount = 0;
  for (int32_t y = 0; y < size.height; ++y) {
    int64_t count = 0;
    forWeakRuns(rowAt(src, srcStep, y), size.width, low, high, [&](int32_t first, int32_t end, bool isStrong) {
      const uint32_t label = sets.add();
      strong[label] = isStrong;
      runs[count++] = {first, end, label};
    });
    joiner.join(above, aboveCount, runs, count);
    std::swap(above, runs);
    aboveCount = count;
  }
  uint32_t label = 0;
  for (int32_t y = 0; y < size.height; ++y) {
    uint8_t* const row = rowAt(dst, dstStep, y);
    std::fill_n(row, size.width, uint8_t{0});
    forWeakRuns(rowAt(src, srcStep, y), size.width, low, high, [&](int32_t first, int32_t end, bool) {
      if (strong[sets.root(label++)]) std::fill(row + first, row + end, uint8_t{255});
    });
  }
}

DaxStatus hysteresisBufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && pixelsOf(size) <= kMaxHysteresisPixels, DAX_STS_BAD_PARAM);
  return HysteresisBuffer(size).layout.store(bytes);
}

template <class T>
DaxStatus hysteresis(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, T low, T high,
                     int32_t connectivity, void* buffer) {
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && pixelsOf(size) <= kMaxHysteresisPixels, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(size.width <= std::min(srcStep, dstStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE(low <= high, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(connectivity == 4 || connectivity == 8, DAX_STS_PARAM_VALUE);
  applyHysteresis(src, srcStep, dst, dstStep, size, low, high, connectivity == 8 ? 1 : 0, buffer);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

#define DAX_HYSTERESIS(SUFFIX, T)                                                                                 \
  DaxStatus DAXI_ThresholdHysteresisBufferSize_##SUFFIX(DaxiSize size, uint64_t* bytes) {                         \
    return dax::hysteresisBufferSize(size, bytes);                                                                \
  }                                                                                                               \
  DaxStatus DAXI_ThresholdHysteresis_##SUFFIX##_C1R(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, \
                                                    DaxiSize size, T low, T high, int32_t connectivity,           \
                                                    void* buffer) {                                               \
    return dax::hysteresis(src, srcStep, dst, dstStep, size, low, high, connectivity, buffer);                    \
  }
DAX_HYSTERESIS(8u, uint8_t)
DAX_HYSTERESIS(16u8u, uint16_t)
DAX_HYSTERESIS(32f8u, float)
#undef DAX_HYSTERESIS
