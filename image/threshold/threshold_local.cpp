#include "daxi/threshold_local.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/check.h"
#include "frame/op2d.h"
#include "image/morphology/window_extremes.h"
#include "image/threshold/gauss_windows.h"
#include "image/threshold/threshold_local_portable.h"
#include "image/window/local_sums.h"

static_assert(sizeof(DaxiThresholdLocalCfg) == 72);

namespace dax {
namespace {

constexpr double kInfinite = std::numeric_limits<double>::infinity();

bool isFinite(double v) {
  return v > -kInfinite && v < kInfinite;
}
bool isFiniteFrom(double v, double low) {
  return v >= low && v < kInfinite;
}

DaxStatus checkLocalCfg(const DaxiThresholdLocalCfg& cfg, DaxiSize size) {
  constexpr int32_t kMaxSide = 32767, kMaxSum = std::numeric_limits<int32_t>::max();
  DAX_REQUIRE(cfg.method >= DAXI_LOCAL_MEAN && cfg.method <= DAXI_LOCAL_GAUSS, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.mode >= DAXI_LOCAL_LIGHT && cfg.mode <= DAXI_LOCAL_NOT_EQUAL, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(atLeast(cfg.window, 1) && atMost(cfg.window, kMaxSide), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(size.width <= kMaxSum - cfg.window.width, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(size.height <= kMaxSum - cfg.window.height, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isFinite(cfg.k), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isFinite(cfg.r) && cfg.r > 0, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isFinite(cfg.offset), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isFiniteFrom(cfg.minDeviation, 0), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isFiniteFrom(cfg.minContrast, 0), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.border >= DAXI_BORDER_REPLICATE && cfg.border <= DAXI_BORDER_CLIP, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isFinite(cfg.value), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

bool isLargeWindow(const DaxiThresholdLocalCfg& cfg) {
  return int64_t{cfg.window.width} * cfg.window.height > kSmallWindow;
}

WindowAndBorder windowOf(const DaxiThresholdLocalCfg& cfg) {
  return {cfg.window, cfg.border, cfg.value};
}

// --- Memory ---

template <class T>
struct LocalBuffer {
  LocalBuffer(DaxiSize size, const DaxiThresholdLocalCfg& cfg, uint32_t threads) {
    if (cfg.method == DAXI_LOCAL_WOLF) rows = layout.add<WolfRow>(static_cast<uint64_t>(size.height));
    const WindowedRegion region(size, cfg.window, cfg.border);
    if (cfg.method == DAXI_LOCAL_GAUSS) {
      const auto tiles = std::clamp<uint32_t>(threads, 1, static_cast<uint32_t>(size.height));
      work = layout.addSlices(GaussWindowsBuffer<T>(region).layout.total(), tiles);
      return;
    }
    const auto addSlices = [&](const auto& slices) { work = layout.addSlices(slices.bytes, slices.count); };
    const bool squares = cfg.method != DAXI_LOCAL_MEAN;
    isLargeWindow(cfg) ? addSlices(LocalSumsSlices<T, true>(region, squares, threads))
                       : addSlices(LocalSumsSlices<T, false>(region, squares, threads));
  }

  struct WolfRow {
    double deviation, least;
  };

  BufferLayout layout;
  BufferPiece<WolfRow> rows{};
  BufferPiece<uint8_t> work{};
};

template <class T>
DaxStatus localBufferSize(DaxiSize size, const DaxiThresholdLocalCfg* cfg, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkLocalCfg(*cfg, size));
  if (cfg->method == DAXI_LOCAL_BERNSEN) return WindowExtremesBuffer<T>(size, windowOf(*cfg)).store(bytes);
  return LocalBuffer<T>(size, *cfg, threads).layout.store(bytes);
}

// --- One call ---

template <class T>
struct LocalCall {
  PoolThreads on;
  Plane<const T> src;
  Plane<const uint8_t> mask;  // null: all pixels
  Plane<uint8_t> dst;
  DaxiSize size;
  const DaxiThresholdLocalCfg* cfg;
  void* buffer;

  WindowedRegion region() const { return {size, cfg->window, cfg->border}; }
  LocalBuffer<T> at() const { return {size, *cfg, 1}; }

  LocalTest test() const {
    const double o = cfg->offset;
    switch (cfg->mode) {
      case DAXI_LOCAL_LIGHT:
        return {o, kInfinite, 0};
      case DAXI_LOCAL_DARK:
        return {-kInfinite, -o, 0};
      default:
        return {-o, o, static_cast<uint8_t>(cfg->mode == DAXI_LOCAL_EQUAL ? 0 : 255)};
    }
  }

  void applyMask(int32_t y) const {
    if (!mask.data) return;
    const uint8_t* const chosen = rowAt(mask.data, mask.step, y);
    uint8_t* const row = rowAt(dst.data, dst.step, y);
    for (int32_t x = 0; x < size.width; ++x) row[x] = chosen[x] ? row[x] : 0;
  }
};

// --- From sums ---

// The ends n low and n high in whole numbers; beyond what n x - S may be they are taken to 2^30.
void meanRun(const uint8_t* src, const uint32_t* sums, uint8_t* dst, int32_t width, uint32_t n, LocalTest test) {
  constexpr double kBeyond = 1 << 30;
  const double low = std::clamp(std::ceil(n * test.low), -kBeyond, kBeyond);
  const double high = std::clamp(std::floor(n * test.high), -kBeyond, kBeyond);
  if (low > high) {
    std::fill_n(dst, width, test.invert);
  } else {
    const auto first = static_cast<int32_t>(low);
    portable::meanMask(src, sums, dst, width, n, first, static_cast<uint32_t>(high - low), test.invert);
  }
}

// Most pixels need one comparison only.
template <class Use>
void withTest(const LocalTest& test, Use use) {
  if (test.high == kInfinite) {
    use(LowTest{test});
  } else if (test.low == -kInfinite) {
    use(HighTest{test});
  } else {
    use(test);
  }
}

template <bool isLarge, class Term, class T>
DaxStatus maskBySums(const LocalCall<T>& call, Term term) {
  const WindowedRegion region = call.region();
  const LocalTest test = call.test();
  const auto row = [&](int32_t y, const auto* sums, const auto* squares, const uint32_t* counts) {
    const T* const src = rowAt(call.src.data, call.src.step, y);
    uint8_t* const dst = rowAt(call.dst.data, call.dst.step, y);
    forCountedRuns(region, y, counts, [&](int32_t x, int32_t width, auto count) {
      const auto* const squaresHere = Term::kSquares ? squares + x : nullptr;
      const auto apply = [&](auto ends) {
        portable::localMask(src + x, sums + x, squaresHere, dst + x, width, count, term, ends);
      };
      constexpr bool kIsUsual = std::is_same_v<decltype(count), SameCount> && !isLarge;
      if constexpr (kIsUsual && !Term::kSquares && sizeof(T) == 1) {
        meanRun(src + x, sums + x, dst + x, width, count.n, test);
      } else if constexpr (kIsUsual) {
        withTest(test, apply);
      } else {
        apply(test);
      }
    });
    call.applyMask(y);
  };
  return runLocalSums<T, isLarge, Term::kSquares>(call.on, call.src.data, call.src.step, region, call.cfg->value,
                                                  call.at().work.in(call.buffer), row);
}

// The greatest n Q - S^2 of windows of n pixels; NaN is passed over. In lanes, which compilers turn into vectors.
template <class Sum, class Squares>
double greatestSpread(const Sum* sums, const Squares* squares, int32_t width, uint32_t n) {
  constexpr int32_t kLanes = 8;
  double lanes[kLanes] = {};
  const auto take = [&](int32_t lane, int32_t x) {
    const double spread = spreadOf(n, sums[x], squares[x]);
    lanes[lane] = spread > lanes[lane] ? spread : lanes[lane];
  };
  int32_t x = 0;
  for (; x <= width - kLanes; x += kLanes) {
    for (int32_t i = 0; i < kLanes; ++i) take(i, x + i);
  }
  for (; x < width; ++x) take(0, x);
  return *std::max_element(lanes, lanes + kLanes);
}

template <class T>
double leastOf(const T* row, int32_t width) {
  T least = std::numeric_limits<T>::max();
  for (int32_t x = 0; x < width; ++x) least = row[x] < least ? row[x] : least;
  return static_cast<double>(least);
}

// Greatest deviation and least pixel, of each row first.
template <bool isLarge, class T>
DaxStatus findWolfExtremes(const LocalCall<T>& call, double& deviation, double& least) {
  const WindowedRegion region = call.region();
  const LocalBuffer<T> at = call.at();
  auto* const rows = at.rows.in(call.buffer);
  const auto row = [&](int32_t y, const auto* sums, const auto* squares, const uint32_t* counts) {
    double most = 0;
    forCountedRuns(region, y, counts, [&](int32_t first, int32_t width, auto count) {
      const auto take = [&](int32_t x, int32_t length) {
        const double spread = greatestSpread(sums + first + x, squares + first + x, length, count(x));
        most = std::max(most, std::sqrt(spread) / count(x));
      };
      if constexpr (std::is_same_v<decltype(count), SameCount>) {
        take(0, width);
      } else {
        for (int32_t x = 0; x < width; ++x) take(x, 1);
      }
    });
    rows[y] = {most, leastOf(rowAt(call.src.data, call.src.step, y), call.size.width)};
  };
  DAX_REQUIRE_OK((runLocalSums<T, isLarge, true>(call.on, call.src.data, call.src.step, region, call.cfg->value,
                                                 at.work.in(call.buffer), row)));
  deviation = 0, least = kInfinite;
  for (int32_t y = 0; y < call.size.height; ++y) {
    deviation = std::max(deviation, rows[y].deviation), least = std::min(least, rows[y].least);
  }
  return DAX_STS_OK;
}

template <bool isLarge, class T>
DaxStatus maskByDeviation(const LocalCall<T>& call) {
  const DaxiThresholdLocalCfg& cfg = *call.cfg;
  switch (cfg.method) {
    case DAXI_LOCAL_MEAN_VARIANCE:
      return maskBySums<isLarge>(call, DeviationTerm{cfg.k, cfg.minDeviation});
    case DAXI_LOCAL_NIBLACK:
      return maskBySums<isLarge>(call, DeviationTerm{cfg.k, 0});
    case DAXI_LOCAL_SAUVOLA:
      return maskBySums<isLarge>(call, SauvolaTerm{cfg.k, cfg.r});
    default:
      break;
  }
  double deviation = 0, least = 0;
  DAX_REQUIRE_OK(findWolfExtremes<isLarge>(call, deviation, least));
  if (deviation > 0) return maskBySums<isLarge>(call, WolfTerm{{cfg.k, deviation}, least});
  return maskBySums<isLarge>(call, DeviationTerm{0, 0});
}

// --- From weighted sums ---

template <class T>
DaxStatus maskByGauss(const LocalCall<T>& call) {
  const WindowedRegion region = call.region();
  const uint64_t bytes = GaussWindowsBuffer<T>(region).layout.total();
  const LocalTest test = call.test();
  return runWindowTiles(call.on, region, 1, call.buffer, bytes, [&](int32_t first, int32_t end, void* own) {
    const GaussWindows<T> windows(call.src.data, call.src.step, region, *call.cfg, own);
    for (int32_t y = first; y < end; ++y) {
      portable::weightedMask(rowAt(call.src.data, call.src.step, y), windows.compute(y), windows.columnTotals(),
                             windows.rowTotal(y), rowAt(call.dst.data, call.dst.step, y), region.size.width, test);
      call.applyMask(y);
    }
  });
}

// --- From extremes ---

template <class T>
void bernsenRow(const LocalCall<T>& call, const T* least, const T* greatest, int32_t y) {
  const T* const src = rowAt(call.src.data, call.src.step, y);
  uint8_t* const dst = rowAt(call.dst.data, call.dst.step, y);
  const LocalTest test = call.test();
  const double contrast = call.cfg->minContrast;
  for (int32_t x = 0; x < call.size.width; ++x) {
    const double low = least[x], high = greatest[x];
    const double excess = 2 * static_cast<double>(src[x]) - (high + low);
    const auto value = static_cast<uint8_t>((test.holds(excess, 2) ? 255 : 0) ^ test.invert);
    dst[x] = high - low < contrast ? 0 : value;
  }
  call.applyMask(y);
}

template <class T>
DaxStatus maskByExtremes(const LocalCall<T>& call) {
  return runWindowExtremes(call.on, call.src.data, call.src.step, call.size, windowOf(*call.cfg), call.buffer,
                           [&](int32_t y, const T* least, const T* greatest) { bernsenRow(call, least, greatest, y); });
}

// --- Calls ---

template <class T>
DaxStatus thresholdLocal(const LocalCall<T>& call, bool isMasked) {
  const DaxiThresholdLocalCfg* const cfg = call.cfg;
  DAX_REQUIRE(call.src.data && (call.mask.data || !isMasked) && call.dst.data && cfg && call.buffer,
              DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(call.size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(call.size.width <= std::min({call.src.step, call.mask.step, call.dst.step}), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkLocalCfg(*cfg, call.size));
  if (cfg->method == DAXI_LOCAL_BERNSEN) return maskByExtremes(call);
  if (cfg->method == DAXI_LOCAL_GAUSS) return maskByGauss(call);
  const bool isMean = cfg->method == DAXI_LOCAL_MEAN;
  if (isLargeWindow(*cfg)) return isMean ? maskBySums<true>(call, MeanTerm{}) : maskByDeviation<true>(call);
  return isMean ? maskBySums<false>(call, MeanTerm{}) : maskByDeviation<false>(call);
}

// `unit`: a grey level of 8 bits.
DaxStatus localDefaults(int32_t method, DaxiThresholdLocalCfg* cfg, double unit) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(method >= DAXI_LOCAL_MEAN && method <= DAXI_LOCAL_GAUSS, DAX_STS_BAD_PARAM);
  constexpr double kFactors[] = {0, 0.2, -0.2, 0.2, 0.5, 0, 0}, kOffsets[] = {5, 5, 0, 0, 0, 5, 5};
  *cfg = {method,
          DAXI_LOCAL_LIGHT,
          {31, 31},
          kFactors[method],
          128 * unit,
          kOffsets[method] * unit,
          2 * unit,
          15 * unit,
          DAXI_BORDER_CLIP,
          0,
          0};
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_ThresholdLocalDefaultCfg_8u(int32_t method, DaxiThresholdLocalCfg* cfg) {
  return dax::localDefaults(method, cfg, 1);
}
DaxStatus DAXI_ThresholdLocalDefaultCfg_16u(int32_t method, DaxiThresholdLocalCfg* cfg) {
  return dax::localDefaults(method, cfg, 256);
}
DaxStatus DAXI_ThresholdLocalDefaultCfg_32f(int32_t method, DaxiThresholdLocalCfg* cfg) {
  return dax::localDefaults(method, cfg, 1.0 / 256);
}

#define DAX_THRESHOLD_LOCAL(SUFFIX, T)                                                                                 \
  DaxStatus DAXI_ThresholdLocalBufferSize_##SUFFIX(DaxiSize size, const DaxiThresholdLocalCfg* cfg, uint64_t* bytes) { \
    return dax::localBufferSize<T>(size, cfg, 1, bytes);                                                               \
  }                                                                                                                    \
  DaxStatus DAXI_ThresholdLocalBufferSize_##SUFFIX##_MT(DaxiSize size, const DaxiThresholdLocalCfg* cfg,               \
                                                        uint32_t threads, uint64_t* bytes) {                           \
    return dax::localBufferSize<T>(size, cfg, threads, bytes);                                                         \
  }                                                                                                                    \
  DaxStatus DAXI_ThresholdLocal_##SUFFIX##_C1R(const T* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,           \
                                               DaxiSize size, const DaxiThresholdLocalCfg* cfg, void* buffer) {        \
    return DAXI_ThresholdLocal_##SUFFIX##_C1R_MT(nullptr, 0, src, srcStep, dst, dstStep, size, cfg, buffer);           \
  }                                                                                                                    \
  DaxStatus DAXI_ThresholdLocal_##SUFFIX##_C1MR(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,  \
                                                uint8_t* dst, int32_t dstStep, DaxiSize size,                          \
                                                const DaxiThresholdLocalCfg* cfg, void* buffer) {                      \
    return DAXI_ThresholdLocal_##SUFFIX##_C1MR_MT(nullptr, 0, src, srcStep, mask, maskStep, dst, dstStep, size, cfg,   \
                                                  buffer);                                                             \
  }                                                                                                                    \
  DaxStatus DAXI_ThresholdLocal_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,         \
                                                  uint8_t* dst, int32_t dstStep, DaxiSize size,                        \
                                                  const DaxiThresholdLocalCfg* cfg, void* buffer) {                    \
    return dax::thresholdLocal<T>(                                                                                     \
        {{pool, threads}, {src, srcStep}, {nullptr, srcStep}, {dst, dstStep}, size, cfg, buffer}, false);              \
  }                                                                                                                    \
  DaxStatus DAXI_ThresholdLocal_##SUFFIX##_C1MR_MT(                                                                    \
      void* pool, uint32_t threads, const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,              \
      uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiThresholdLocalCfg* cfg, void* buffer) {                  \
    return dax::thresholdLocal<T>(                                                                                     \
        {{pool, threads}, {src, srcStep}, {mask, maskStep}, {dst, dstStep}, size, cfg, buffer}, true);                 \
  }
DAX_THRESHOLD_LOCAL(8u, uint8_t)
DAX_THRESHOLD_LOCAL(16u8u, uint16_t)
DAX_THRESHOLD_LOCAL(32f8u, float)
#undef DAX_THRESHOLD_LOCAL
