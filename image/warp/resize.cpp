#include "daxi/resize.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "frame/check.h"
#include "frame/cpu_feature.h"
#include "frame/tiles.h"
#include "image/border/border_index.h"
#include "image/warp/resize_area.h"
#include "image/warp/resize_by_taps.h"
#include "image/warp/resize_bytes.h"
#include "image/warp/resize_halve.h"
#include "image/warp/resize_nearest.h"
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
  DAX_REQUIRE(cfg.interpolation >= DAXI_INTERPOLATION_NEAREST && cfg.interpolation <= DAXI_INTERPOLATION_AREA,
              DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.antialias == 0 || cfg.antialias == 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.cubicA), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(hasBorderIndex(cfg.border) || cfg.border == DAXI_BORDER_CONSTANT, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.value), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isFactor(cfg.factorX, src.width, dst.width), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isFactor(cfg.factorY, src.height, dst.height), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// --- Methods ---

// Whether the sums of whole weights fit: those of the cubic's magnitudes stay below 2.
bool fitWideWeights(const ResizeGeometry& g) {
  const bool isTame = g.x.interpolation != DAXI_INTERPOLATION_CUBIC || (g.x.cubicA >= -1 && g.x.cubicA <= 0);
  return g.x.interpolation != DAXI_INTERPOLATION_AREA && isTame && std::max(g.x.maxTaps(), g.y.maxTaps()) <= kWideTaps;
}

// Whether a column of a row of cells fits 32 bits.
bool fitAreaSums(const ResizeGeometry& g, int64_t levels) {
  return levels * AreaAxis(g.y.src, g.y.dst).src <= int64_t{1} << 32;
}

// Calls use.operator()<the class that resizes>() -> DaxStatus.
template <class T, int kChannels, class Use>
DaxStatus withResizer(const ResizeGeometry& g, const Use& use) {
  if (g.x.interpolation == DAXI_INTERPOLATION_NEAREST) return use.template operator()<NearestResizer<T, kChannels>>();
  if constexpr (std::is_integral_v<T>) {
    if (g.x.interpolation == DAXI_INTERPOLATION_AREA && g.x.factor == 0 && g.y.factor == 0) {
      if constexpr (sizeof(T) > 1) {
        if (!fitAreaSums(g, 1 << 16)) return use.template operator()<AreaResizer<T, uint64_t, kChannels>>();
      }
      return use.template operator()<AreaResizer<T, uint32_t, kChannels>>();
    }
  }
  if constexpr (std::is_same_v<T, uint8_t>) {
    if (HalvingResizer<kChannels>::fits(g)) return use.template operator()<HalvingResizer<kChannels>>();
    if (g.x.interpolation == DAXI_INTERPOLATION_LINEAR && g.x.maxTaps() == 2 && g.y.maxTaps() == 2) {
      return use.template operator()<Resizer<T, PairResize<kChannels>, kChannels>>();
    }
    if (fitWideWeights(g)) return use.template operator()<Resizer<T, WideResize<kChannels>, kChannels>>();
  }
  return use.template operator()<Resizer<T, RealResize<T, kChannels>, kChannels>>();
}

// --- Entry points ---

template <class T, int kChannels>
DaxStatus resizeBufferSize(DaxiSize srcSize, DaxiSize dstSize, const DaxiRect& dstRect, const DaxiResizeCfg* cfg,
                           uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(checkSizes(srcSize, dstSize, dstRect) == DAX_STS_OK, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkCfg(*cfg, srcSize, dstSize));
  const ResizeGeometry geometry(srcSize, dstSize, dstRect, *cfg);
  return withResizer<T, kChannels>(
      geometry, [&]<class Method>() -> DaxStatus { return typename Method::Buffer(geometry).layout.store(bytes); });
}

template <int kChannels, class T>
DaxStatus resize(PoolThreads on, const T* src, int32_t srcStep, DaxiSize srcSize, T* dst, int32_t dstStep,
                 DaxiSize dstSize, const DaxiRect& dstRect, const DaxiResizeCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkSizes(srcSize, dstSize, dstRect));
  DAX_REQUIRE(rowFits(srcSize.width, srcStep, kChannels) && rowFits(dstRect.width, dstStep, kChannels),
              DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkCfg(*cfg, srcSize, dstSize));
  const ResizeGeometry geometry(srcSize, dstSize, dstRect, *cfg);
  const ResizedImage<T> image{src, srcStep, dst, dstStep};
  return withResizer<T, kChannels>(geometry, [&]<class Method>() -> DaxStatus {
    const Method method(image, geometry, buffer, currentIsa());
    const auto tile = [&](int32_t first, int32_t end, uint32_t slice) -> DaxStatus {
      method.run(first, end, slice);
      return DAX_STS_OK;
    };
    if (!hasPool(on.pool, on.threads)) return tile(0, dstRect.height, 0);
    return runTiles(on.pool, std::min(on.threads, geometry.tiles()), dstRect.height, 1, tile);
  });
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_ResizeDefaultCfg(DaxiResizeCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {DAXI_INTERPOLATION_LINEAR, 1, -0.5, DAXI_BORDER_REPLICATE, 0, 0, 0, 0};
  return DAX_STS_OK;
}

#define DAX_RESIZE(SUFFIX, T, CHANNELS)                                                                                \
  DaxStatus DAXI_ResizeBufferSize_##SUFFIX##_C##CHANNELS##R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect,      \
                                                            const DaxiResizeCfg* cfg, uint64_t* bytes) {               \
    return dax::resizeBufferSize<T, CHANNELS>(srcSize, dstSize, dstRect, cfg, bytes);                                  \
  }                                                                                                                    \
  DaxStatus DAXI_Resize_##SUFFIX##_C##CHANNELS##R(const T* src, int32_t srcStep, DaxiSize srcSize, T* dst,             \
                                                  int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect,                 \
                                                  const DaxiResizeCfg* cfg, void* buffer) {                            \
    return dax::resize<CHANNELS>({}, src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg, buffer);              \
  }                                                                                                                    \
  DaxStatus DAXI_Resize_##SUFFIX##_C##CHANNELS##R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,      \
                                                     DaxiSize srcSize, T* dst, int32_t dstStep, DaxiSize dstSize,      \
                                                     DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer) {       \
    return dax::resize<CHANNELS>({pool, threads}, src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg, buffer); \
  }
DAX_RESIZE(8u, uint8_t, 1)
DAX_RESIZE(8u, uint8_t, 3)
DAX_RESIZE(16u, uint16_t, 1)
DAX_RESIZE(16u, uint16_t, 3)
DAX_RESIZE(16s, int16_t, 1)
DAX_RESIZE(16s, int16_t, 3)
DAX_RESIZE(32f, float, 1)
DAX_RESIZE(32f, float, 3)
#undef DAX_RESIZE
