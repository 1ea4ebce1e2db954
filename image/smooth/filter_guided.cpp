#include "daxi/filter_guided.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "frame/check.h"
#include "frame/rows.h"
#include "image/smooth/guided_sums.h"
#include "image/window/local_sums.h"

static_assert(sizeof(DaxiFilterGuidedCfg) == 16);

namespace dax {
namespace {

DaxStatus checkGuidedCfg(const DaxiFilterGuidedCfg& cfg, DaxiSize size) {
  DAX_REQUIRE(cfg.radius >= 1 && cfg.radius <= 16383, DAX_STS_BAD_PARAM);
  const int32_t maxSide = std::numeric_limits<int32_t>::max() - 2 * cfg.radius - 1;
  DAX_REQUIRE(atMost(size, maxSide), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.subsample >= 1 && cfg.subsample <= 8, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.eps >= 0 && cfg.eps <= std::numeric_limits<double>::max(), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// The pixels from which lines are computed: of every s-th row and column, from s / 2 on.
struct GuidedGrid {
  GuidedGrid(DaxiSize image, const DaxiFilterGuidedCfg& cfg)
      : step(cfg.subsample),
        size{along(image.width), along(image.height)},
        region(size, windowOf(cfg), DAXI_BORDER_CLIP) {}

  int32_t along(int32_t n) const { return std::max((n - step / 2 + step - 1) / step, 1); }
  static int32_t place(int32_t i, int32_t step, int32_t n) { return std::min(step / 2 + i * step, n - 1); }

  int32_t step;
  DaxiSize size;
  WindowedRegion region;

 private:
  static DaxiSize windowOf(const DaxiFilterGuidedCfg& cfg) {
    const int32_t side = 2 * std::max(cfg.radius / cfg.subsample, 1) + 1;
    return {side, side};
  }
};

bool isLargeGrid(const GuidedGrid& grid) {
  return int64_t{grid.region.rows()} * grid.region.columns() > kSmallWindow;
}

// One tile's part: sums of the guide, the source and their products, then those of lines.
template <class T, bool isLarge>
struct GuidedSlice {
  explicit GuidedSlice(const WindowedRegion& region) {
    counts = layout.add<uint32_t>(static_cast<uint64_t>(region.size.width));
    const BufferLayout start = layout;
    guide = layout.add<uint8_t>(LocalSumsBuffer<T, isLarge>(region, true).layout.total());
    source = layout.add<uint8_t>(LocalSumsBuffer<T, isLarge>(region, false).layout.total());
    products = layout.add<uint8_t>(LocalSumsBuffer<GuidedProduct<T>, isLarge>(region, false).layout.total());
    BufferLayout second = start;
    lines = second.add<uint8_t>(LocalSumsBuffer<FloatPair, false>(region, false).layout.total());
    total = std::max(layout.total(), second.total());
  }
  BufferLayout layout;
  uint64_t total;
  BufferPiece<uint32_t> counts;
  BufferPiece<uint8_t> guide, source, products, lines;
};

template <class T>
struct GuidedBuffer {
  GuidedBuffer(DaxiSize size, const DaxiFilterGuidedCfg& cfg, uint32_t threads) {
    const GuidedGrid grid(size, cfg);
    const uint64_t pixels = pixelsOf(grid.size), picked = cfg.subsample > 1 ? pixels : 0;
    lines = layout.add<FloatPair>(pixels);
    products = layout.add<GuidedProduct<T>>(pixels);
    guide = layout.add<T>(picked);
    source = layout.add<T>(picked);
    means = layout.add<FloatPair>(picked);
    sliceBytes = isLargeGrid(grid) ? GuidedSlice<T, true>(grid.region).total : GuidedSlice<T, false>(grid.region).total;
    slices = layout.addSlices(sliceBytes, std::clamp<uint32_t>(threads, 1, static_cast<uint32_t>(grid.size.height)));
  }
  BufferLayout layout;
  uint64_t sliceBytes;
  BufferPiece<FloatPair> lines;  // a and b
  BufferPiece<GuidedProduct<T>> products;
  BufferPiece<T> guide, source;
  BufferPiece<FloatPair> means;
  BufferPiece<uint8_t> slices;
};

template <class T>
struct GuidedCall {
  PoolThreads on;
  const T* src;
  int32_t srcStep;
  const T* guide;
  int32_t guideStep;
  T* dst;
  int32_t dstStep;
  DaxiSize size;
  const DaxiFilterGuidedCfg* cfg;
  void* buffer;

  bool isSelf() const { return guide == src && guideStep == srcStep; }
};

float oneNaN(float v) {
  return v == v ? v : std::numeric_limits<float>::quiet_NaN();
}

// Of integers v is finite. Where the image is its own guide, a is within 0..1 and b is (1 - a) mean(I), so v lies between
// the limits of the type but for roundings below half a level.
template <class T, bool isSelf>
T guidedPixel(double v) {
  if constexpr (std::is_floating_point_v<T>) {
    return oneNaN(static_cast<T>(v));
  } else {
    constexpr double kMax = std::numeric_limits<T>::max();
    const double low = v > 0 ? v : 0, held = isSelf ? v : low < kMax ? low : kMax;
    return static_cast<T>(static_cast<int32_t>(std::rint(held)));
  }
}

// --- a and b of each window ---

// The pixels of the grid, from which this part computes.
template <class T>
struct GuidedPixels {
  const T* guide;
  int32_t guideStep;
  const T* source;
  int32_t sourceStep;
};

template <class T>
void pickRow(const T* src, int32_t srcStep, DaxiSize size, const GuidedGrid& grid, int32_t y, T* to) {
  const T* const row = rowAt(src, srcStep, GuidedGrid::place(y, grid.step, size.height));
  for (int32_t x = 0; x < grid.size.width; ++x) to[x] = row[GuidedGrid::place(x, grid.step, size.width)];
}

template <class T>
DaxStatus pickPixels(const GuidedCall<T>& call, const GuidedGrid& grid, const GuidedBuffer<T>& at,
                     GuidedPixels<T>& pixels) {
  pixels = {call.guide, call.guideStep, call.src, call.srcStep};
  if (grid.step == 1) return DAX_STS_OK;
  const int32_t width = grid.size.width;
  T *const guide = at.guide.in(call.buffer), *const source = at.source.in(call.buffer);
  pixels = {guide, width, call.isSelf() ? guide : source, width};
  return runRows(call.on, grid.size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      pickRow(call.guide, call.guideStep, call.size, grid, y, rowAt(guide, width, y));
      if (!call.isSelf()) pickRow(call.src, call.srcStep, call.size, grid, y, rowAt(source, width, y));
    }
  });
}

template <class T>
DaxStatus multiplyPixels(const GuidedCall<T>& call, const GuidedGrid& grid, const GuidedPixels<T>& pixels,
                         GuidedProduct<T>* products) {
  using Product = GuidedProduct<T>;
  const int32_t width = grid.size.width;
  return runRows(call.on, grid.size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      const T* const a = rowAt(pixels.guide, pixels.guideStep, y);
      const T* const b = rowAt(pixels.source, pixels.sourceStep, y);
      Product* __restrict const to = rowAt(products, width, y);
      for (int32_t x = 0; x < width; ++x) to[x] = static_cast<Product>(static_cast<Product>(a[x]) * b[x]);
    }
  });
}

// lineAt(x, n) is the line of a window of n pixels.
template <class LineAt>
void storeLines(const WindowedRegion& region, int32_t y, const uint32_t* counts, FloatPair* lines, LineAt lineAt) {
  float* __restrict const to = reinterpret_cast<float*>(lines);
  forCountedRuns(region, y, counts, [&](int32_t first, int32_t width, auto count) {
    for (int32_t x = 0; x < width; ++x) {
      const int64_t i = first + x;
      const GuidedLine line = lineAt(first + x, count(x));
      to[2 * i] = line.a;
      to[2 * i + 1] = static_cast<float>(line.b);
    }
  });
}

template <bool isLarge, class T>
DaxStatus linesOfSelf(const GuidedCall<T>& call, const GuidedGrid& grid, const GuidedBuffer<T>& at,
                      const GuidedPixels<T>& pixels) {
  const int32_t width = grid.size.width;
  const double eps = call.cfg->eps;
  const GuidedSlice<T, isLarge> slice(grid.region);
  using Sums = LocalSums<T, isLarge, true>;
  const auto tile = [&](int32_t first, int32_t end, void* own) {
    countColumns(grid.region, slice.counts.in(own));
    Sums guide(pixels.guide, pixels.guideStep, grid.region, 0, slice.guide.in(own));
    guide.start(first, end);
    for (int32_t y = first; y < end; ++y) {
      guide.compute(y);
      const auto* const sums = guide.sums();
      const auto* const squares = guide.squareSums();
      const auto line = [=](int32_t x, uint32_t n) {
        const double spread = spreadOf(n, sums[x], squares[x]), sum = static_cast<double>(sums[x]);
        return guidedLine(n, spread, spread, sum, sum, eps);
      };
      storeLines(grid.region, y, slice.counts.in(own), rowAt(at.lines.in(call.buffer), width, y), line);
    }
  };
  return runWindowTiles(call.on, grid.region, Sums::bandRows(grid.region), at.slices.in(call.buffer), at.sliceBytes,
                        tile);
}

template <bool isLarge, class T>
DaxStatus linesOfGuide(const GuidedCall<T>& call, const GuidedGrid& grid, const GuidedBuffer<T>& at,
                       const GuidedPixels<T>& pixels) {
  const int32_t width = grid.size.width;
  const double eps = call.cfg->eps;
  const GuidedSlice<T, isLarge> slice(grid.region);
  using Product = GuidedProduct<T>;
  using Sums = LocalSums<T, isLarge, true>;
  const Product* const product = at.products.in(call.buffer);
  const auto tile = [&](int32_t first, int32_t end, void* own) {
    countColumns(grid.region, slice.counts.in(own));
    Sums guide(pixels.guide, pixels.guideStep, grid.region, 0, slice.guide.in(own));
    LocalSums<T, isLarge, false> source(pixels.source, pixels.sourceStep, grid.region, 0, slice.source.in(own));
    LocalSums<Product, isLarge, false> products(product, width, grid.region, 0, slice.products.in(own));
    guide.start(first, end), source.start(first, end), products.start(first, end);
    for (int32_t y = first; y < end; ++y) {
      guide.compute(y), source.compute(y), products.compute(y);
      const auto *const sums = guide.sums(), *const sourceSums = source.sums();
      const auto* const squares = guide.squareSums();
      const auto* const productSums = products.sums();
      const auto line = [=](int32_t x, uint32_t n) {
        return guidedLine(n, spreadOf(n, sums[x], squares[x]), covarianceOf(n, sums[x], sourceSums[x], productSums[x]),
                          static_cast<double>(sums[x]), static_cast<double>(sourceSums[x]), eps);
      };
      storeLines(grid.region, y, slice.counts.in(own), rowAt(at.lines.in(call.buffer), width, y), line);
    }
  };
  return runWindowTiles(call.on, grid.region, Sums::bandRows(grid.region), at.slices.in(call.buffer), at.sliceBytes,
                        tile);
}

// --- Means of a and b ---

// Calls use(y, sums, counts) for the rows of the grid; the sums of a and of b take turns.
template <bool isLarge, class T, class Use>
DaxStatus sumLines(const GuidedCall<T>& call, const GuidedGrid& grid, const GuidedBuffer<T>& at, Use use) {
  using Sums = LocalSums<FloatPair, false, false>;
  const GuidedSlice<T, isLarge> slice(grid.region);
  const auto tile = [&](int32_t first, int32_t end, void* own) {
    countColumns(grid.region, slice.counts.in(own));
    Sums sums(at.lines.in(call.buffer), grid.size.width, grid.region, 0, slice.lines.in(own));
    sums.start(first, end);
    for (int32_t y = first; y < end; ++y) {
      sums.compute(y);
      use(y, sums.sums(), slice.counts.in(own));
    }
  };
  return runWindowTiles(call.on, grid.region, Sums::bandRows(grid.region), at.slices.in(call.buffer), at.sliceBytes,
                        tile);
}

template <bool isSelf, class T>
void applyLines(const WindowedRegion& region, int32_t y, const DoublePair* sums, const uint32_t* counts, const T* guide,
                T* __restrict dst) {
  const double* const pairs = reinterpret_cast<const double*>(sums);
  forCountedRuns(region, y, counts, [&](int32_t first, int32_t width, auto count) {
    for (int32_t x = 0; x < width; ++x) {
      const int64_t i = first + x;
      dst[i] = guidedPixel<T, isSelf>((pairs[2 * i] * static_cast<double>(guide[i]) + pairs[2 * i + 1]) / count(x));
    }
  });
}

// Linear between the rows of the grid above and below, the nearest one beyond the last.
struct RowBetween {
  RowBetween(const FloatPair* means, const GuidedGrid& grid, int32_t y) {
    const int32_t offset = std::max(y - grid.step / 2, 0), low = std::min(offset / grid.step, grid.size.height - 1);
    const bool isLast = low + 1 == grid.size.height;
    upper = rowAt(means, grid.size.width, low);
    lower = rowAt(means, grid.size.width, isLast ? low : low + 1);
    share = isLast ? 0 : static_cast<double>(offset - low * grid.step) / grid.step;
  }
  DoublePair operator()(int32_t x) const { return wide(upper[x]) + share * (wide(lower[x]) - wide(upper[x])); }

  const FloatPair *upper, *lower;
  double share;
};

template <class T>
void interpolateRow(const GuidedCall<T>& call, const GuidedGrid& grid, const FloatPair* means, int32_t y) {
  const int32_t step = grid.step, places = grid.size.width, width = call.size.width;
  const RowBetween between(means, grid, y);
  const T* const guide = rowAt(call.guide, call.guideStep, y);
  T* const dst = rowAt(call.dst, call.dstStep, y);
  DoublePair right = between(0);
  for (int32_t place = 0, x = 0; place < places; ++place) {
    const bool isLast = place + 1 == places;
    const int32_t first = GuidedGrid::place(place, step, width), end = isLast ? width : first + step;
    const DoublePair left = right;
    right = isLast ? left : between(place + 1);
    for (; x < end; ++x) {
      const double share = static_cast<double>(std::max(x - first, 0)) / step;
      const DoublePair line = left + share * (right - left);
      dst[x] = guidedPixel<T, false>(line[0] * static_cast<double>(guide[x]) + line[1]);
    }
  }
}

template <bool isLarge, class T>
DaxStatus applyGrid(const GuidedCall<T>& call, const GuidedGrid& grid, const GuidedBuffer<T>& at) {
  const int32_t width = grid.size.width;
  FloatPair* const means = at.means.in(call.buffer);
  const auto store = [&](int32_t y, const DoublePair* sums, const uint32_t* counts) {
    FloatPair* const row = rowAt(means, width, y);
    for (int32_t x = 0; x < width; ++x) {
      const double n = static_cast<double>(counts[x]) * grid.region.rowsAt(y);
      row[x] = __builtin_convertvector(sums[x] / n, FloatPair);
    }
  };
  DAX_REQUIRE_OK(sumLines<isLarge>(call, grid, at, store));
  return runRows(call.on, call.size.height, [&](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) interpolateRow(call, grid, means, y);
  });
}

// --- Calls ---

template <bool isLarge, class T>
DaxStatus filterGuided(const GuidedCall<T>& call, const GuidedGrid& grid, const GuidedBuffer<T>& at) {
  GuidedPixels<T> pixels;
  DAX_REQUIRE_OK(pickPixels(call, grid, at, pixels));
  if (call.isSelf()) {
    DAX_REQUIRE_OK(linesOfSelf<isLarge>(call, grid, at, pixels));
  } else {
    DAX_REQUIRE_OK(multiplyPixels(call, grid, pixels, at.products.in(call.buffer)));
    DAX_REQUIRE_OK(linesOfGuide<isLarge>(call, grid, at, pixels));
  }
  if (grid.step > 1) return applyGrid<isLarge>(call, grid, at);
  return sumLines<isLarge>(call, grid, at, [&](int32_t y, const DoublePair* sums, const uint32_t* counts) {
    const T* const guide = rowAt(call.guide, call.guideStep, y);
    T* const dst = rowAt(call.dst, call.dstStep, y);
    call.isSelf() ? applyLines<true>(grid.region, y, sums, counts, guide, dst)
                  : applyLines<false>(grid.region, y, sums, counts, guide, dst);
  });
}

template <class T>
DaxStatus guided(const GuidedCall<T>& call) {
  DAX_REQUIRE(call.src && call.guide && call.dst && call.cfg && call.buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(call.size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(call.size.width <= std::min({call.srcStep, call.guideStep, call.dstStep}), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkGuidedCfg(*call.cfg, call.size));
  const GuidedGrid grid(call.size, *call.cfg);
  const GuidedBuffer<T> at(call.size, *call.cfg, 1);
  return isLargeGrid(grid) ? filterGuided<true>(call, grid, at) : filterGuided<false>(call, grid, at);
}

template <class T>
DaxStatus guidedBufferSize(DaxiSize size, const DaxiFilterGuidedCfg* cfg, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkGuidedCfg(*cfg, size));
  return GuidedBuffer<T>(size, *cfg, threads).layout.store(bytes);
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_FilterGuidedDefaultCfg(DaxiFilterGuidedCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {8, 1, 100};
  return DAX_STS_OK;
}

#define DAX_GUIDED(SUFFIX, T)                                                                                          \
  DaxStatus DAXI_FilterGuidedBufferSize_##SUFFIX(DaxiSize size, const DaxiFilterGuidedCfg* cfg, uint64_t* bytes) {     \
    return dax::guidedBufferSize<T>(size, cfg, 1, bytes);                                                              \
  }                                                                                                                    \
  DaxStatus DAXI_FilterGuidedBufferSize_##SUFFIX##_MT(DaxiSize size, const DaxiFilterGuidedCfg* cfg, uint32_t threads, \
                                                      uint64_t* bytes) {                                               \
    return dax::guidedBufferSize<T>(size, cfg, threads, bytes);                                                        \
  }                                                                                                                    \
  DaxStatus DAXI_FilterGuided_##SUFFIX##_C1R(const T* src, int32_t srcStep, const T* guide, int32_t guideStep, T* dst, \
                                             int32_t dstStep, DaxiSize size, const DaxiFilterGuidedCfg* cfg,           \
                                             void* buffer) {                                                           \
    return dax::guided<T>({{}, src, srcStep, guide, guideStep, dst, dstStep, size, cfg, buffer});                      \
  }                                                                                                                    \
  DaxStatus DAXI_FilterGuided_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,           \
                                                const T* guide, int32_t guideStep, T* dst, int32_t dstStep,            \
                                                DaxiSize size, const DaxiFilterGuidedCfg* cfg, void* buffer) {         \
    return dax::guided<T>({{pool, threads}, src, srcStep, guide, guideStep, dst, dstStep, size, cfg, buffer});         \
  }
DAX_GUIDED(8u, uint8_t)
DAX_GUIDED(16u, uint16_t)
DAX_GUIDED(32f, float)
#undef DAX_GUIDED
