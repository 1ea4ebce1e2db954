#include "daxi/threshold_hysteresis.h"

#include <algorithm>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/op2d.h"
#include "frame/slices.h"
#include "geometry/union_find.h"

namespace dax {
namespace {

constexpr uint64_t kMaxHysteresisPixels = uint64_t{1} << 31;

constexpr uint32_t kHysteresisTiles = 64;
uint32_t hysteresisTiles(DaxiSize size) {
  return std::min(static_cast<uint32_t>(size.height), kHysteresisTiles);
}

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
    rows = layout.add<WeakRun>(2 * inRow * hysteresisTiles(size));
    labels = layout.add<uint32_t>(static_cast<uint64_t>(size.height));
    tiles = layout.add<int32_t>(kHysteresisTiles);
  }
  uint64_t inRow;
  BufferLayout layout;
  BufferPiece<uint32_t> parents;
  BufferPiece<uint8_t> strong;   // whether a set has a pixel above the high level, at its root
  BufferPiece<WeakRun> rows;     // the runs of two rows, for each tile
  BufferPiece<uint32_t> labels;  // of the first run of each row
  BufferPiece<int32_t> tiles;    // their first rows; 0 where there is none
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

// Tiles of rows label their runs from the number that the first one has if all pixels before are runs; then tiles are
// joined, and rows are written.
template <class T>
class Hysteresis {
 public:
  Hysteresis(Plane<const T> src, Plane<uint8_t> dst, DaxiSize size, T low, T high, int32_t reach, void* buffer)
      : src_(src),
        dst_(dst),
        size_(size),
        low_(low),
        high_(high),
        reach_(reach),
        at_(size),
        parents_(at_.parents.in(buffer)),
        strong_(at_.strong.in(buffer)),
        rows_(at_.rows.in(buffer)),
        labels_(at_.labels.in(buffer)),
        tiles_(at_.tiles.in(buffer)) {
    std::fill_n(tiles_, kHysteresisTiles, 0);
  }

  void labelRows(int32_t first, int32_t end, uint32_t tile) const {
    const auto base = static_cast<uint32_t>(at_.inRow * static_cast<uint64_t>(first));
    UnionFind sets(parents_, base);
    RunJoiner joiner(sets, strong_, reach_);
    tiles_[tile] = first;
    WeakRun *above = rows_ + 2 * at_.inRow * tile, *runs = above + at_.inRow;
    int64_t aboveCount = 0;
    for (int32_t y = first; y < end; ++y) {
      int64_t count = 0;
      labels_[y] = sets.count();
      forRuns(y, [&](int32_t x, int32_t runEnd, bool isStrong) {
        const uint32_t label = sets.add();
        strong_[label] = isStrong;
        runs[count++] = {x, runEnd, label};
      });
      joiner.join(above, aboveCount, runs, count);
      std::swap(above, runs);
      aboveCount = count;
    }
    for (uint32_t label = base; label < sets.count(); ++label) parents_[label] = parents_[parents_[label]];
  }

  void joinTiles() const {
    UnionFind sets(parents_);
    RunJoiner joiner(sets, strong_, reach_);
    for (uint32_t tile = 1; tile < kHysteresisTiles; ++tile) {
      const int32_t y = tiles_[tile];
      if (y == 0) continue;
      WeakRun *const above = rows_, *const runs = above + at_.inRow;
      joiner.join(above, labelledRuns(y - 1, above), runs, labelledRuns(y, runs));
    }
  }

  void writeRows(int32_t first, int32_t end) const {
    const UnionFind sets(parents_);
    for (int32_t y = first; y < end; ++y) {
      uint8_t* const row = rowAt(dst_.data, dst_.step, y);
      uint32_t label = labels_[y];
      std::fill_n(row, size_.width, uint8_t{0});
      forRuns(y, [&](int32_t x, int32_t runEnd, bool) {
        if (strong_[sets.rootOf(label++)]) std::fill(row + x, row + runEnd, uint8_t{255});
      });
    }
  }

 private:
  template <class Use>
  void forRuns(int32_t y, Use use) const {
    forWeakRuns(rowAt(src_.data, src_.step, y), size_.width, low_, high_, use);
  }

  int64_t labelledRuns(int32_t y, WeakRun* runs) const {
    uint32_t label = labels_[y];
    int64_t count = 0;
    forRuns(y, [&](int32_t x, int32_t end, bool) { runs[count++] = {x, end, label++}; });
    return count;
  }

  Plane<const T> src_;
  Plane<uint8_t> dst_;
  DaxiSize size_;
  T low_, high_;
  int32_t reach_;
  HysteresisBuffer at_;
  uint32_t* parents_;
  uint8_t* strong_;
  WeakRun* rows_;
  uint32_t* labels_;
  int32_t* tiles_;
};

DaxStatus hysteresisBufferSize(DaxiSize size, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && pixelsOf(size) <= kMaxHysteresisPixels, DAX_STS_BAD_PARAM);
  return HysteresisBuffer(size).layout.store(bytes);
}

template <class T>
DaxStatus hysteresis(PoolThreads on, const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, T low,
                     T high, int32_t connectivity, void* buffer) {
  DAX_REQUIRE(src && dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1) && pixelsOf(size) <= kMaxHysteresisPixels, DAX_STS_BAD_SIZE);
  DAX_REQUIRE(size.width <= std::min(srcStep, dstStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE(low <= high, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(connectivity == 4 || connectivity == 8, DAX_STS_PARAM_VALUE);
  const Hysteresis<T> call({src, srcStep}, {dst, dstStep}, size, low, high, connectivity == 8 ? 1 : 0, buffer);
  const uint32_t tiles = hysteresisTiles(size);
  DAX_REQUIRE_OK(runSlices(on, tiles, size.height, 1,
                           [&](int32_t first, int32_t end, uint32_t tile) { call.labelRows(first, end, tile); }));
  call.joinTiles();
  return runSlices(on, tiles, size.height, 1,
                   [&](int32_t first, int32_t end, uint32_t) { call.writeRows(first, end); });
}

}  // namespace
}  // namespace dax

#define DAX_HYSTERESIS(SUFFIX, T)                                                                                   \
  DaxStatus DAXI_ThresholdHysteresisBufferSize_##SUFFIX(DaxiSize size, uint64_t* bytes) {                           \
    return dax::hysteresisBufferSize(size, bytes);                                                                  \
  }                                                                                                                 \
  DaxStatus DAXI_ThresholdHysteresis_##SUFFIX##_C1R(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,   \
                                                    DaxiSize size, T low, T high, int32_t connectivity,             \
                                                    void* buffer) {                                                 \
    return dax::hysteresis({}, src, srcStep, dst, dstStep, size, low, high, connectivity, buffer);                  \
  }                                                                                                                 \
  DaxStatus DAXI_ThresholdHysteresis_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, \
                                                       uint8_t* dst, int32_t dstStep, DaxiSize size, T low, T high, \
                                                       int32_t connectivity, void* buffer) {                        \
    return dax::hysteresis({pool, threads}, src, srcStep, dst, dstStep, size, low, high, connectivity, buffer);     \
  }
DAX_HYSTERESIS(8u, uint8_t)
DAX_HYSTERESIS(16u8u, uint16_t)
DAX_HYSTERESIS(32f8u, float)
#undef DAX_HYSTERESIS
