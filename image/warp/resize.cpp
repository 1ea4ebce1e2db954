#include "image/warp/resize.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/border/border_index.h"
#include "image/warp/resize_rows.h"

static_assert(sizeof(DaxiResizeCfg) == 48 && offsetof(DaxiResizeCfg, factorX) == 32);

namespace dax {
namespace {

constexpr int32_t kMaxSide = 1 << 20;
constexpr int32_t kMaxFactor = 256;

// --- Checks ---

bool isSide(int32_t side) {
  return side >= 1 && side <= kMaxSide;
}

bool areSides(int32_t src, int32_t dst) {
  return isSide(src) && isSide(dst) && src <= int64_t{kMaxFactor} * dst && dst <= int64_t{kMaxFactor} * src;
}

bool liesIn(const DaxiRect& rect, DaxiSize size) {
  return rect.x >= 0 && rect.y >= 0 && rect.width >= 1 && rect.height >= 1 && rect.width <= size.width &&
         rect.height <= size.height && rect.x <= size.width - rect.width && rect.y <= size.height - rect.height;
}

// Whether a factor is none, or one that leads from one side to the other.
bool isFactor(double factor, int32_t src, int32_t dst) {
  if (factor == 0) return true;
  if (!(factor >= 1.0 / kMaxFactor && factor <= kMaxFactor)) return false;
  return std::max(1, roundTo<int32_t>(src * factor)) == dst;
}

DaxStatus checkSizes(DaxiSize src, DaxiSize dst, const DaxiRect& rect) {
  DAX_REQUIRE(areSides(src.width, dst.width) && areSides(src.height, dst.height), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(liesIn(rect, dst), DAX_STS_BAD_SIZE);
  return DAX_STS_OK;
}

DaxStatus checkCfg(const DaxiResizeCfg& cfg, DaxiSize src, DaxiSize dst) {
  DAX_REQUIRE(cfg.interpolation == DAXI_INTERPOLATION_LINEAR, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.antialias == 0 || cfg.antialias == 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.cubicA), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(hasBorderIndex(cfg.border), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.value), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isFactor(cfg.factorX, src.width, dst.width), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isFactor(cfg.factorY, src.height, dst.height), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// --- Worker ---

// Taps of all columns, the weights of one row, and as many resized rows as a row of the result needs.
template <class Arithmetic>
struct ResizeBuffer {
  ResizeBuffer(const ResizeGeometry& g, int32_t channels)
      : tapsX(static_cast<uint64_t>(g.x.maxTaps())),
        tapsY(static_cast<uint64_t>(g.y.maxTaps())),
        rowLength(static_cast<uint64_t>(g.rect.width) * static_cast<uint64_t>(channels)),
        columns(layout.add<Taps>(static_cast<uint64_t>(g.rect.width))),
        indices(layout.add<int32_t>(static_cast<uint64_t>(g.rect.width) * tapsX)),
        weightsX(layout.add<typename Arithmetic::Weight>(static_cast<uint64_t>(g.rect.width) * tapsX)),
        weightsY(layout.add<typename Arithmetic::Weight>(tapsY)),
        real(layout.add<double>(std::max(tapsX, tapsY))),
        rows(layout.add<typename Arithmetic::Mid>(rowLength * tapsY)),
        needed(layout.add<const typename Arithmetic::Mid*>(tapsY)),
        held(layout.add<int64_t>(tapsY)) {}
  BufferLayout layout;
  uint64_t tapsX, tapsY, rowLength;
  BufferPiece<Taps> columns;
  BufferPiece<int32_t> indices;
  BufferPiece<typename Arithmetic::Weight> weightsX, weightsY;
  BufferPiece<double> real;
  BufferPiece<typename Arithmetic::Mid> rows;
  BufferPiece<const typename Arithmetic::Mid*> needed;
  BufferPiece<int64_t> held;
};

template <class T, class Arithmetic, int kChannels>
class Resizer {
 public:
  using Weight = typename Arithmetic::Weight;
  using Mid = typename Arithmetic::Mid;

  Resizer(const T* src, int32_t srcStep, const ResizeGeometry& geometry, void* buffer)
      : src_(src), srcStep_(srcStep), g_(geometry), at_(geometry, kChannels), buffer_(buffer) {
    prepareColumns();
    std::fill_n(at_.held.in(buffer), at_.tapsY, kNone);
  }

  void run(T* dst, int32_t dstStep) const {
    Weight* const weights = at_.weightsY.in(buffer_);
    const Mid** const needed = at_.needed.in(buffer_);
    for (int32_t y = 0; y < g_.rect.height; ++y) {
      const Taps taps = linearTaps(g_.y, g_.rect.y + y, at_.real.in(buffer_));
      Arithmetic::setWeights(taps, at_.real.in(buffer_), weights, taps.count);
      for (int32_t k = 0; k < taps.count; ++k) needed[k] = resizedRow(taps.first + k);
      Arithmetic::alongY(needed, weights, taps.count, rowAt(dst, dstStep, y), g_.rect.width * kChannels);
    }
  }

 private:
  static constexpr int64_t kNone = INT64_MIN;

  void prepareColumns() const {
    for (int32_t x = 0; x < g_.rect.width; ++x) {
      Taps& taps = at_.columns.in(buffer_)[x];
      const uint64_t first = static_cast<uint64_t>(x) * at_.tapsX;
      taps = linearTaps(g_.x, g_.rect.x + x, at_.real.in(buffer_));
      Arithmetic::setWeights(taps, at_.real.in(buffer_), at_.weightsX.in(buffer_) + first, taps.count);
      for (int32_t k = 0; k < g_.x.maxTaps(); ++k) {
        const int32_t tap = taps.first + std::min(k, taps.count - 1);
        at_.indices.in(buffer_)[first + static_cast<uint64_t>(k)] =
            static_cast<int32_t>(borderIndex(tap, g_.x.src, g_.border)) * kChannels;
      }
    }
  }

  // Row y of the source, which may lie outside it, resized along x. Rows that are needed together are consecutive, so
  // that each has a place of its own among as many.
  const Mid* resizedRow(int64_t y) const {
    const auto rows = static_cast<int64_t>(at_.tapsY);
    const auto place = static_cast<uint64_t>((y % rows + rows) % rows);
    Mid* const row = at_.rows.in(buffer_) + place * at_.rowLength;
    int64_t& held = at_.held.in(buffer_)[place];
    if (held != y) {
      const auto from = static_cast<int32_t>(borderIndex(y, g_.y.src, g_.border));
      Arithmetic::template alongX<kChannels>(rowAt(src_, srcStep_, from), at_.indices.in(buffer_),
                                             at_.columns.in(buffer_), at_.weightsX.in(buffer_), g_.x.maxTaps(), row,
                                             g_.rect.width);
      held = y;
    }
    return row;
  }

  const T* src_;
  int32_t srcStep_;
  const ResizeGeometry& g_;
  ResizeBuffer<Arithmetic> at_;
  void* buffer_;
};

// Calls use(arithmetic) with the one for the pixel type and the taps.
template <class T, class Use>
auto withArithmetic(const ResizeGeometry& g, Use use) {
  if constexpr (std::is_same_v<T, uint8_t>) {
    if (g.x.maxTaps() == 2 && g.y.maxTaps() == 2) return use(FixedResize{});
  }
  return use(RealResize<T>{});
}

// --- Entry points ---

template <class T>
DaxStatus bufferSize(DaxiSize srcSize, DaxiSize dstSize, const DaxiRect& dstRect, int32_t channels,
                     const DaxiResizeCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(checkSizes(srcSize, dstSize, dstRect) == DAX_STS_OK, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkCfg(*cfg, srcSize, dstSize));
  const ResizeGeometry geometry(srcSize, dstSize, dstRect, *cfg);
  return withArithmetic<T>(geometry, [&](auto arithmetic) {
    return ResizeBuffer<decltype(arithmetic)>(geometry, channels).layout.store(bytes);
  });
}

template <int kChannels, class T>
DaxStatus resize(const T* src, int32_t srcStep, DaxiSize srcSize, T* dst, int32_t dstStep, DaxiSize dstSize,
                 const DaxiRect& dstRect, const DaxiResizeCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSizes(srcSize, dstSize, dstRect));
  DAX_REQUIRE(rowFits(srcSize.width, srcStep, kChannels) && rowFits(dstRect.width, dstStep, kChannels),
              DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkCfg(*cfg, srcSize, dstSize));
  const ResizeGeometry geometry(srcSize, dstSize, dstRect, *cfg);
  withArithmetic<T>(geometry, [&](auto arithmetic) {
    Resizer<T, decltype(arithmetic), kChannels>(src, srcStep, geometry, buffer).run(dst, dstStep);
  });
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_ResizeDefaultCfg(DaxiResizeCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {DAXI_INTERPOLATION_LINEAR, 1, -0.5, DAXI_BORDER_REPLICATE, 0, 0, 0, 0};
  return DAX_STS_OK;
}

#define DAX_RESIZE(SUFFIX, T, CHANNELS)                                                                           \
  DaxStatus DAXI_ResizeBufferSize_##SUFFIX##_C##CHANNELS##R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect, \
                                                            const DaxiResizeCfg* cfg, uint64_t* bytes) {          \
    return dax::bufferSize<T>(srcSize, dstSize, dstRect, CHANNELS, cfg, bytes);                                   \
  }                                                                                                               \
  DaxStatus DAXI_Resize_##SUFFIX##_C##CHANNELS##R(const T* src, int32_t srcStep, DaxiSize srcSize, T* dst,        \
                                                  int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect,            \
                                                  const DaxiResizeCfg* cfg, void* buffer) {                       \
    return dax::resize<CHANNELS>(src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg, buffer);             \
  }
DAX_RESIZE(8u, uint8_t, 1)
DAX_RESIZE(8u, uint8_t, 3)
DAX_RESIZE(16u, uint16_t, 1)
DAX_RESIZE(16u, uint16_t, 3)
DAX_RESIZE(32f, float, 1)
DAX_RESIZE(32f, float, 3)
#undef DAX_RESIZE
