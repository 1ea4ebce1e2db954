#include "daxi/unsharp.h"

#include <cmath>

#include "frame/check.h"
#include "frame/rows.h"
#include "image/gauss/gauss.h"

static_assert(sizeof(DaxiUnsharpCfg) == 48);

namespace dax {
namespace {

DaxiGaussCfg gaussOf(const DaxiUnsharpCfg& cfg) {
  return {cfg.sigma, cfg.size, cfg.border, 0, cfg.value};
}

DaxStatus checkUnsharp(const DaxiUnsharpCfg& cfg) {
  DAX_REQUIRE_OK(checkGauss(gaussOf(cfg)));
  DAX_REQUIRE(cfg.amount >= -1 && cfg.amount <= 100, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.threshold >= 0 && cfg.threshold <= std::numeric_limits<double>::max(), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class T>
T unsharpPixel(float value) {
  if constexpr (std::is_integral_v<T>) {
    constexpr float kHigh = std::numeric_limits<T>::max();
    const float limited = std::clamp(value, 0.0f, kHigh);
    return static_cast<T>(static_cast<int32_t>(std::rint(limited)));
  } else {
    return value;
  }
}

// smooth is replaced.
template <class T>
void sharpenRow(const T* src, T* smooth, int64_t width, float amount, float threshold) {
  for (int64_t x = 0; x < width; ++x) {
    const auto pixel = static_cast<float>(src[x]);
    const float detail = pixel - static_cast<float>(smooth[x]), added = amount * detail;
    smooth[x] = std::fabs(detail) > threshold ? unsharpPixel<T>(pixel + added) : src[x];
  }
}

template <class T>
DaxStatus unsharpBufferSize(DaxiSize size, const DaxiUnsharpCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkUnsharp(*cfg));
  return GaussRowsBuffer<T>(size, gaussOf(*cfg)).layout.store(bytes);
}

template <class T>
DaxStatus unsharp(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                  const DaxiUnsharpCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkUnsharp(*cfg));
  const GaussRows<T> rows(src, srcStep, size, gaussOf(*cfg), buffer);
  const auto amount = static_cast<float>(cfg->amount);
  const auto threshold = static_cast<float>(std::min<double>(cfg->threshold, std::numeric_limits<float>::max()));
  return runRowTiles(on, size, [&](int32_t first, int32_t end, uint32_t tile) {
    for (int32_t y = first; y < end; ++y) {
      T* const row = rowAt(dst, dstStep, y);
      rows.run(y, tile, row);
      sharpenRow(rowAt(src, srcStep, y), row, size.width, amount, threshold);
    }
  });
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_UnsharpDefaultCfg(DaxiUnsharpCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {1, {0, 0}, DAXI_BORDER_REPLICATE, 0, 0, 1, 0};
  return DAX_STS_OK;
}

#define DAX_UNSHARP(SUFFIX, T)                                                                                        \
  DaxStatus DAXI_UnsharpBufferSize_##SUFFIX(DaxiSize size, const DaxiUnsharpCfg* cfg, uint64_t* bytes) {              \
    return dax::unsharpBufferSize<T>(size, cfg, bytes);                                                               \
  }                                                                                                                   \
  DaxStatus DAXI_Unsharp_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,        \
                                        const DaxiUnsharpCfg* cfg, void* buffer) {                                    \
    return dax::unsharp<T>({}, src, srcStep, dst, dstStep, size, cfg, buffer);                                        \
  }                                                                                                                   \
  DaxStatus DAXI_Unsharp_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst,       \
                                           int32_t dstStep, DaxiSize size, const DaxiUnsharpCfg* cfg, void* buffer) { \
    return dax::unsharp<T>({pool, threads}, src, srcStep, dst, dstStep, size, cfg, buffer);                           \
  }
DAX_UNSHARP(8u, uint8_t)
DAX_UNSHARP(16u, uint16_t)
DAX_UNSHARP(32f, float)
#undef DAX_UNSHARP
