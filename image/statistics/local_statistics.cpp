#include "daxi/local_statistics.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/check.h"
#include "frame/slices.h"
#include "image/morphology/window_extremes.h"
#include "image/statistics/local_entropy.h"
#include "image/window/local_sums.h"

static_assert(sizeof(DaxiLocalStatisticsCfg) == 24);

namespace dax {
namespace {

constexpr int64_t kMaxEntropyWindow = 65536;

DaxStatus checkStatisticsCfg(const DaxiLocalStatisticsCfg& cfg, DaxiSize size, int64_t maxPixels) {
  constexpr int32_t kMaxSide = 32767, kMaxSum = std::numeric_limits<int32_t>::max();
  DAX_REQUIRE(atLeast(cfg.window, 1) && atMost(cfg.window, kMaxSide), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(int64_t{cfg.window.width} * cfg.window.height <= maxPixels, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(size.width <= kMaxSum - cfg.window.width, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(size.height <= kMaxSum - cfg.window.height, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.border >= DAXI_BORDER_REPLICATE && cfg.border <= DAXI_BORDER_CLIP, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::fabs(cfg.value) <= std::numeric_limits<double>::max(), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class T, class D>
struct StatisticsCall {
  PoolThreads on;
  const T* src;
  int32_t srcStep;
  D* dst;
  int32_t dstStep;
  DaxiSize size;
  const DaxiLocalStatisticsCfg* cfg;
  void* buffer;

  WindowedRegion region() const { return {size, cfg->window, cfg->border}; }
  D* row(int32_t y) const { return rowAt(dst, dstStep, y); }
};

// --- Means and deviations ---

// Of NaN all machines write the same one.
float singleOf(double v) {
  return v == v ? static_cast<float>(v) : std::numeric_limits<float>::quiet_NaN();
}

struct LocalMeanOf {
  static constexpr bool kSquares = false;
  template <class Sum, class Squares>
  static double of(uint32_t n, Sum sum, Squares) {
    return static_cast<double>(sum) / n;
  }
};
struct LocalStdDevOf {
  static constexpr bool kSquares = true;
  template <class Sum, class Squares>
  static double of(uint32_t n, Sum sum, Squares squares) {
    return std::sqrt(spreadOf(n, sum, squares)) / n;
  }
};

template <class Statistic>
struct BySums {
  static constexpr int64_t kMaxPixels = std::numeric_limits<int64_t>::max();

  template <class T>
  static DaxStatus store(DaxiSize size, const DaxiLocalStatisticsCfg& cfg, uint32_t threads, uint64_t* bytes) {
    const WindowedRegion region(size, cfg.window, cfg.border);
    BufferLayout layout;
    const auto add = [&](const auto& slices) { layout.addSlices(slices.bytes, slices.count); };
    isLarge(cfg) ? add(LocalSumsSlices<T, true>(region, Statistic::kSquares, threads))
                 : add(LocalSumsSlices<T, false>(region, Statistic::kSquares, threads));
    return layout.store(bytes);
  }

  template <class T>
  static DaxStatus run(const StatisticsCall<T, float>& call) {
    return isLarge(*call.cfg) ? runSized<true>(call) : runSized<false>(call);
  }

 private:
  static bool isLarge(const DaxiLocalStatisticsCfg& cfg) {
    return int64_t{cfg.window.width} * cfg.window.height > kSmallWindow;
  }

  template <bool large, class T>
  static DaxStatus runSized(const StatisticsCall<T, float>& call) {
    const WindowedRegion region = call.region();
    const auto row = [&](int32_t y, const auto* sums, const auto* squares, const uint32_t* counts) {
      float* const dst = call.row(y);
      forCountedRuns(region, y, counts, [&](int32_t first, int32_t width, auto count) {
        for (int32_t x = 0; x < width; ++x) {
          const auto square = Statistic::kSquares ? squares[first + x] : 0;
          dst[first + x] = singleOf(Statistic::of(count(x), sums[first + x], square));
        }
      });
    };
    return runLocalSums<T, large, Statistic::kSquares>(call.on, call.src, call.srcStep, region, call.cfg->value,
                                                       call.buffer, row);
  }
};

// --- Ranges ---

struct ByExtremes {
  static constexpr int64_t kMaxPixels = std::numeric_limits<int64_t>::max();

  static WindowAndBorder windowOf(const DaxiLocalStatisticsCfg& cfg) { return {cfg.window, cfg.border, cfg.value}; }

  template <class T>
  static DaxStatus store(DaxiSize size, const DaxiLocalStatisticsCfg& cfg, uint32_t, uint64_t* bytes) {
    return WindowExtremesBuffer<T>(size, windowOf(cfg)).store(bytes);
  }

  template <class T>
  static DaxStatus run(const StatisticsCall<T, T>& call) {
    const auto row = [&](int32_t y, const T* least, const T* greatest) {
      T* const dst = call.row(y);
      for (int32_t x = 0; x < call.size.width; ++x) dst[x] = static_cast<T>(greatest[x] - least[x]);
      if constexpr (std::is_floating_point_v<T>) {
        for (int32_t x = 0; x < call.size.width; ++x) dst[x] = singleOf(dst[x]);
      }
    };
    return runWindowExtremes(call.on, call.src, call.srcStep, call.size, windowOf(*call.cfg), call.buffer, row);
  }
};

// --- Entropy ---

struct ByCounts {
  static constexpr int64_t kMaxPixels = kMaxEntropyWindow;

  template <class T>
  struct Buffer {
    Buffer(const WindowedRegion& region, uint32_t threads)
        : pixels(region.rows() * region.columns()),
          bytes(EntropyBuffer<T>(region).layout.total()),
          terms(layout.add<int64_t>(static_cast<uint64_t>(pixels) + 1)),
          slices(layout.addSlices(bytes, std::clamp<uint32_t>(threads, 1, static_cast<uint32_t>(region.size.height)))) {
    }
    int32_t pixels;
    uint64_t bytes;
    BufferLayout layout;
    BufferPiece<int64_t> terms;
    BufferPiece<uint8_t> slices;
  };

  template <class T>
  static DaxStatus store(DaxiSize size, const DaxiLocalStatisticsCfg& cfg, uint32_t threads, uint64_t* bytes) {
    return Buffer<T>({size, cfg.window, cfg.border}, threads).layout.store(bytes);
  }

  template <class T>
  static DaxStatus run(const StatisticsCall<T, float>& call) {
    const WindowedRegion region = call.region();
    const Buffer<T> at(region, 1);
    fillEntropyTerms(at.terms.in(call.buffer), at.pixels);
    const auto tile = [&](int32_t first, int32_t end, uint32_t slice) {
      LocalEntropy<T> entropy(call.src, call.srcStep, region, call.cfg->value, at.terms.in(call.buffer),
                              at.slices.in(call.buffer) + slice * at.bytes);
      entropy.computeRows(first, end, call.dst, call.dstStep);
    };
    return runSlices(call.on, call.on.threads, call.size.height, 1, tile);
  }
};

// --- Calls ---

template <class Way, class T>
DaxStatus statisticsBufferSize(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkStatisticsCfg(*cfg, size, Way::kMaxPixels));
  return Way::template store<T>(size, *cfg, threads, bytes);
}

template <class Way, class T, class D>
DaxStatus localStatistics(const StatisticsCall<T, D>& call) {
  DAX_REQUIRE(call.src && call.dst && call.cfg && call.buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(call.size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(call.size.width <= std::min(call.srcStep, call.dstStep), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkStatisticsCfg(*call.cfg, call.size, Way::kMaxPixels));
  return Way::run(call);
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_LocalStatisticsDefaultCfg(DaxiLocalStatisticsCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {{9, 9}, DAXI_BORDER_CLIP, 0, 0};
  return DAX_STS_OK;
}

#define DAX_LOCAL_STATISTIC(NAME, WAY, SUFFIX, T, D)                                                                   \
  DaxStatus DAXI_Local##NAME##BufferSize_##SUFFIX(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes) { \
    return dax::statisticsBufferSize<dax::WAY, T>(size, cfg, 1, bytes);                                                \
  }                                                                                                                    \
  DaxStatus DAXI_Local##NAME##BufferSize_##SUFFIX##_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg,               \
                                                       uint32_t threads, uint64_t* bytes) {                            \
    return dax::statisticsBufferSize<dax::WAY, T>(size, cfg, threads, bytes);                                          \
  }                                                                                                                    \
  DaxStatus DAXI_Local##NAME##_##SUFFIX##_C1R(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size,   \
                                              const DaxiLocalStatisticsCfg* cfg, void* buffer) {                       \
    return dax::localStatistics<dax::WAY, T, D>({{}, src, srcStep, dst, dstStep, size, cfg, buffer});                  \
  }                                                                                                                    \
  DaxStatus DAXI_Local##NAME##_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst,  \
                                                 int32_t dstStep, DaxiSize size, const DaxiLocalStatisticsCfg* cfg,    \
                                                 void* buffer) {                                                       \
    return dax::localStatistics<dax::WAY, T, D>({{pool, threads}, src, srcStep, dst, dstStep, size, cfg, buffer});     \
  }
DAX_LOCAL_STATISTIC(Mean, BySums<dax::LocalMeanOf>, 8u32f, uint8_t, float)
DAX_LOCAL_STATISTIC(Mean, BySums<dax::LocalMeanOf>, 16u32f, uint16_t, float)
DAX_LOCAL_STATISTIC(Mean, BySums<dax::LocalMeanOf>, 32f, float, float)
DAX_LOCAL_STATISTIC(StdDev, BySums<dax::LocalStdDevOf>, 8u32f, uint8_t, float)
DAX_LOCAL_STATISTIC(StdDev, BySums<dax::LocalStdDevOf>, 16u32f, uint16_t, float)
DAX_LOCAL_STATISTIC(StdDev, BySums<dax::LocalStdDevOf>, 32f, float, float)
DAX_LOCAL_STATISTIC(Entropy, ByCounts, 8u32f, uint8_t, float)
DAX_LOCAL_STATISTIC(Entropy, ByCounts, 16u32f, uint16_t, float)
DAX_LOCAL_STATISTIC(Range, ByExtremes, 8u, uint8_t, uint8_t)
DAX_LOCAL_STATISTIC(Range, ByExtremes, 16u, uint16_t, uint16_t)
DAX_LOCAL_STATISTIC(Range, ByExtremes, 32f, float, float)
#undef DAX_LOCAL_STATISTIC
