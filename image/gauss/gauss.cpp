#include "image/gauss/gauss.h"

#include <cmath>
#include <limits>

#include "frame/check.h"
#include "frame/rows.h"
#include "image/gauss/gauss_neon.h"

static_assert(sizeof(DaxiGaussCfg) == 32);

namespace dax {

DaxStatus checkGauss(const DaxiGaussCfg& cfg) {
  const auto isSide = [](int32_t side) { return side == 0 || (side >= 1 && side / 2 <= kMaxGaussRadius && side % 2); };
  DAX_REQUIRE(cfg.sigma >= 0.3 && cfg.sigma <= 100, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isSide(cfg.size.width) && isSide(cfg.size.height), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.border >= DAXI_BORDER_REPLICATE && cfg.border <= DAXI_BORDER_IN_MEMORY, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.value), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class T>
GaussRows<T>::GaussRows(const T* src, int32_t srcStep, DaxiSize size, const DaxiGaussCfg& cfg, void* buffer)
    : at_(size, cfg),
      buffer_(buffer),
      image_{src, srcStep, size, cfg.border, borderPixel<T>(cfg.value)},
      isa_(currentIsa()) {
  makeGaussTaps(cfg.sigma, cfg.size.width, *at_.tapsX.in(buffer));
  makeGaussTaps(cfg.sigma, cfg.size.height, *at_.tapsY.in(buffer));
  if (cfg.border != DAXI_BORDER_CONSTANT) return;
  std::fill_n(at_.constantRow.in(buffer), size.width, image_.value);
  const T** const sources = at_.sources.in(buffer);
  std::fill_n(sources, 2 * GaussTapsOf<T>::kRoom, at_.constantRow.in(buffer));
  portable::gaussColumns<T>(sources, *at_.tapsY.in(buffer), &constant_, 0, 1);
}

template <class T>
void GaussRows<T>::run(int32_t y, uint32_t tile, T* to) const {
  const auto& tapsX = *at_.tapsX.in(buffer_);
  const auto& tapsY = *at_.tapsY.in(buffer_);
  const T** const sources = at_.sources.in(buffer_) + uint64_t{2} * GaussTapsOf<T>::kRoom * tile;
  const T* const constantRow = at_.constantRow.in(buffer_);
  for (int32_t k = 0; k < tapsY.count; ++k) {
    sources[2 * k] = image_.row(int64_t{y} - tapsY.distance[k], constantRow);
    sources[2 * k + 1] = image_.row(int64_t{y} + tapsY.distance[k], constantRow);
  }
  const bool usesLanes = usesNeon(isa_);
  const int32_t reach = tapsX.radius, around = image_.isInMemory() ? reach : 0;
  const ptrdiff_t width = image_.size.width;
  Between* const row = at_.rows.in(buffer_) + at_.rowLength * tile + at_.radiusX;
  (usesLanes ? neon::gaussColumns<T> : portable::gaussColumns<T>)(sources, tapsY, row, -around, width + around);
  extendRow(row, width, reach, reach, image_.border, constant_);
  (usesLanes ? neon::gaussRow<T> : portable::gaussRow<T>)(row, tapsX, to, 0, width);
}

template class GaussRows<uint8_t>;
template class GaussRows<uint16_t>;
template class GaussRows<int16_t>;
template class GaussRows<float>;

namespace {

template <class T>
DaxStatus gaussBufferSize(DaxiSize size, const DaxiGaussCfg* cfg, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkGauss(*cfg));
  return GaussRowsBuffer<T>(size, *cfg).layout.store(bytes);
}

template <class T>
DaxStatus filterGauss(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                      const DaxiGaussCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkGauss(*cfg));
  const GaussRows<T> rows(src, srcStep, size, *cfg, buffer);
  return runRowTiles(on, size, [&](int32_t first, int32_t end, uint32_t tile) {
    for (int32_t y = first; y < end; ++y) rows.run(y, tile, rowAt(dst, dstStep, y));
  });
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_GaussDefaultCfg(DaxiGaussCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {1, {0, 0}, DAXI_BORDER_REPLICATE, 0, 0};
  return DAX_STS_OK;
}

#define DAX_GAUSS(SUFFIX, T)                                                                                        \
  DaxStatus DAXI_FilterGaussBufferSize_##SUFFIX(DaxiSize size, const DaxiGaussCfg* cfg, uint64_t* bytes) {          \
    return dax::gaussBufferSize<T>(size, cfg, bytes);                                                               \
  }                                                                                                                 \
  DaxStatus DAXI_FilterGauss_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,  \
                                            const DaxiGaussCfg* cfg, void* buffer) {                                \
    return dax::filterGauss<T>({}, src, srcStep, dst, dstStep, size, cfg, buffer);                                  \
  }                                                                                                                 \
  DaxStatus DAXI_FilterGauss_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, \
                                               int32_t dstStep, DaxiSize size, const DaxiGaussCfg* cfg,             \
                                               void* buffer) {                                                      \
    return dax::filterGauss<T>({pool, threads}, src, srcStep, dst, dstStep, size, cfg, buffer);                     \
  }
DAX_GAUSS(8u, uint8_t)
DAX_GAUSS(16u, uint16_t)
DAX_GAUSS(16s, int16_t)
DAX_GAUSS(32f, float)
#undef DAX_GAUSS
