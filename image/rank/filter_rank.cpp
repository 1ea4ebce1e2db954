#include "image/rank/filter_rank.h"

#include <cmath>
#include <limits>

#include "daxi/filter_rank.h"
#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "frame/tiles.h"
#include "image/rank/column_histograms.h"
#include "image/rank/filter_median3x3.h"
#include "image/rank/filter_median5x5.h"
#include "image/rank/median_network.h"
#include "image/rank/moving_histogram.h"

namespace dax {
namespace {

template <class T>
struct RankEngine {
  using Histogram = MovingHistogram<T>;
  using Buffer = TileBuffer<T>;
};
template <>
struct RankEngine<uint8_t> {
  using Histogram = ColumnHistograms;
  using Buffer = ColumnBuffer;
};

// --- Medians of small windows ---

template <class T>
bool isMedianOf(const RankFilter<T>& filter, int32_t side) {
  return filter.window.width == side && filter.window.height == side && filter.rank == side * side / 2;
}

// By the filters of one size, which replicate the edge.
template <class T>
bool replicatedMedian(const RankFilter<T>& f, int32_t first, int32_t end, int32_t isa) {
  if (f.border != DAXI_BORDER_REPLICATE) return false;
  if (isMedianOf(f, 3) && atLeast(f.size, 3)) {
    filterMedian3x3(f.src, f.srcStep, f.dst, f.dstStep, f.size, first, end, isa);
    return true;
  }
  if (isMedianOf(f, 5) && atLeast(f.size, 5)) {
    filterMedian5x5(f.src, f.srcStep, f.dst, f.dstStep, f.size, first, end, isa);
    return true;
  }
  return false;
}

#if DAX_HAVE_NEON
template <class T>
bool networkMedian(const RankFilter<T>& filter, const DaxiRect& part, int32_t isa) {
  using Lanes = neon::Lanes<typename OrderKey<T>::Key>;
  if (!usesNeon(isa)) return false;
  if (isMedianOf(filter, 3)) {
    MedianNetwork<Lanes, T, 3>(filter).run(part);
  } else if (isMedianOf(filter, 5)) {
    MedianNetwork<Lanes, T, 5>(filter).run(part);
  } else if (isMedianOf(filter, 7)) {
    MedianNetwork<Lanes, T, 7>(filter).run(part);
  } else if (isMedianOf(filter, 9)) {
    MedianNetwork<Lanes, T, 9>(filter).run(part);
  } else {
    return false;
  }
  return true;
}
#else
template <class T>
bool networkMedian(const RankFilter<T>&, const DaxiRect&, int32_t) {
  return false;
}
#endif

// The part of rows first..end - 1 where no window is clipped.
template <class T>
DaxiRect fullWindows(const RankFilter<T>& filter, int32_t first, int32_t end) {
  if (!filter.clips()) return {0, first, filter.size.width, end - first};
  const auto [w, h] = filter.window;
  const int32_t left = std::min(w / 2, filter.size.width), top = std::clamp(h / 2, first, end);
  const int32_t right = std::max(filter.size.width - (w - 1) / 2, left);
  const int32_t bottom = std::max(std::min(filter.size.height - (h - 1) / 2, end), top);
  return {left, top, right - left, bottom - top};
}

}  // namespace

template <class T>
uint64_t rankBytes(DaxiSize size, DaxiSize window) {
  return typename RankEngine<T>::Buffer(size, window).layout.total();
}

template <class T>
void rankRows(const RankFilter<T>& filter, int32_t first, int32_t end, void* buffer, int32_t isa) {
  if (replicatedMedian(filter, first, end, isa)) return;
  typename RankEngine<T>::Histogram histogram(filter, buffer);
  const DaxiRect full = fullWindows(filter, first, end);
  if (!networkMedian(filter, full, isa)) {
    histogram.run({0, first, filter.size.width, end - first});
    return;
  }
  const int32_t right = full.x + full.width, bottom = full.y + full.height;
  const DaxiRect frame[] = {{0, first, filter.size.width, full.y - first},
                            {0, full.y, full.x, full.height},
                            {right, full.y, filter.size.width - right, full.height},
                            {0, bottom, filter.size.width, end - bottom}};
  for (const DaxiRect& part : frame) {
    if (part.width > 0 && part.height > 0) histogram.run(part);
  }
}

#define DAX_RANK_WORKER(T)                            \
  template uint64_t rankBytes<T>(DaxiSize, DaxiSize); \
  template void rankRows<T>(const RankFilter<T>&, int32_t, int32_t, void*, int32_t);
DAX_RANK_WORKER(uint8_t)
DAX_RANK_WORKER(uint16_t)
DAX_RANK_WORKER(int16_t)
DAX_RANK_WORKER(float)
#undef DAX_RANK_WORKER

// --- Entry points ---

namespace {

DaxStatus checkRankWindow(DaxiSize size, DaxiSize window) {
  constexpr int32_t kMaxSide = 255;  // counts of its pixels fit 16 bits
  const auto isInt = [](int64_t v) { return v <= std::numeric_limits<int32_t>::max(); };
  DAX_REQUIRE(atLeast(window, 1) && atMost(window, kMaxSide), DAX_STS_BAD_PARAM);
  const bool fit = isInt(int64_t{size.width} + window.width) && isInt(int64_t{size.height} + window.height);
  return fit ? DAX_STS_OK : DAX_STS_BAD_PARAM;
}

template <class T>
DaxStatus rankBufferSize(DaxiSize size, DaxiSize window, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkRankWindow(size, window));
  BufferLayout layout;
  layout.addSlices(rankBytes<T>(size, window), std::max(threads, 1u));
  return layout.store(bytes);
}

template <class T>
DaxStatus checkRankFilter(const RankFilter<T>& f, const void* buffer) {
  DAX_REQUIRE(f.src && f.dst && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(f.size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(f.size.width <= std::min(f.srcStep, f.dstStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkRankWindow(f.size, f.window));
  DAX_REQUIRE(f.rank >= 0 && f.rank < f.windowPixels(), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(f.border >= DAXI_BORDER_REPLICATE && f.border <= DAXI_BORDER_CLIP, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class T>
DaxStatus runRank(PoolThreads on, const RankFilter<T>& filter, void* buffer) {
  DAX_REQUIRE_OK(checkRankFilter(filter, buffer));
  const int32_t rows = filter.size.height;
  if (!hasPool(on.pool, on.threads)) {
    rankRows(filter, 0, rows, buffer, currentIsa());
    return DAX_STS_OK;
  }
  const uint64_t bytes = rankBytes<T>(filter.size, filter.window);
  const auto band = [&](int32_t first, int32_t end, uint32_t slice) -> DaxStatus {
    rankRows(filter, first, end, static_cast<uint8_t*>(buffer) + slice * bytes, currentIsa());
    return DAX_STS_OK;
  };
  constexpr int32_t kMinRows = 16;  // above a band its first windows are made anew
  return runTiles(on.pool, on.threads, rows, kMinRows, band);
}

template <class T>
DaxStatus runMedian(PoolThreads on, RankFilter<T> filter, void* buffer) {
  const bool isWindow = atLeast(filter.window, 1) && atMost(filter.window, 255);
  filter.rank = isWindow ? filter.windowPixels() / 2 : 0;
  return runRank(on, filter, buffer);
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_RankFromPercentile(double percentile, DaxiSize window, int32_t* rank) {
  DAX_REQUIRE(rank, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(percentile >= 0 && percentile <= 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::atLeast(window, 1) && dax::atMost(window, 255), DAX_STS_BAD_PARAM);
  const int32_t pixels = window.width * window.height;
  *rank = std::min(pixels - 1, static_cast<int32_t>(std::floor(percentile * pixels)));
  return DAX_STS_OK;
}

#define DAX_RANK_QUERIES(NAME, SUFFIX, T)                                                                 \
  DaxStatus DAXI_Filter##NAME##BufferSize_##SUFFIX(DaxiSize size, DaxiSize window, uint64_t* bytes) {     \
    return dax::rankBufferSize<T>(size, window, 1, bytes);                                                \
  }                                                                                                       \
  DaxStatus DAXI_Filter##NAME##BufferSize_##SUFFIX##_MT(DaxiSize size, DaxiSize window, uint32_t threads, \
                                                        uint64_t* bytes) {                                \
    return dax::rankBufferSize<T>(size, window, threads, bytes);                                          \
  }
#define DAX_RANK(SUFFIX, T)                                                                                           \
  DAX_RANK_QUERIES(Median, SUFFIX, T)                                                                                 \
  DAX_RANK_QUERIES(Rank, SUFFIX, T)                                                                                   \
  DaxStatus DAXI_FilterMedian_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,   \
                                             DaxiSize window, int32_t border, T value, void* buffer) {                \
    return dax::runMedian<T>({}, {src, srcStep, dst, dstStep, size, window, 0, border, value}, buffer);               \
  }                                                                                                                   \
  DaxStatus DAXI_FilterMedian_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst,  \
                                                int32_t dstStep, DaxiSize size, DaxiSize window, int32_t border,      \
                                                T value, void* buffer) {                                              \
    return dax::runMedian<T>({pool, threads}, {src, srcStep, dst, dstStep, size, window, 0, border, value}, buffer);  \
  }                                                                                                                   \
  DaxStatus DAXI_FilterRank_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,     \
                                           DaxiSize window, int32_t rank, int32_t border, T value, void* buffer) {    \
    return dax::runRank<T>({}, {src, srcStep, dst, dstStep, size, window, rank, border, value}, buffer);              \
  }                                                                                                                   \
  DaxStatus DAXI_FilterRank_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst,    \
                                              int32_t dstStep, DaxiSize size, DaxiSize window, int32_t rank,          \
                                              int32_t border, T value, void* buffer) {                                \
    return dax::runRank<T>({pool, threads}, {src, srcStep, dst, dstStep, size, window, rank, border, value}, buffer); \
  }
DAX_RANK(8u, uint8_t)
DAX_RANK(16u, uint16_t)
DAX_RANK(16s, int16_t)
DAX_RANK(32f, float)
#undef DAX_RANK
#undef DAX_RANK_QUERIES
