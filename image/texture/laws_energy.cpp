#include "daxi/laws_energy.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "daxi/convolve.h"
#include "daxi/local_statistics.h"
#include "frame/check.h"
#include "frame/memory/work_buffer.h"
#include "frame/op2d.h"

static_assert(sizeof(DaxiLawsEnergyCfg) == 32);

namespace dax {
namespace {

constexpr float kLawsVectors[5][5] = {
    {1, 4, 6, 4, 1}, {-1, -2, 0, 2, 1}, {-1, 0, 2, 0, -1}, {-1, 2, 0, -2, 1}, {1, -4, 6, -4, 1}};

DaxiConvolveCfg convolution(const DaxiLawsEnergyCfg& cfg) {
  return {{5, 5}, 2, 2, 0, cfg.border, cfg.value};
}

DaxiLocalStatisticsCfg energyWindow(const DaxiLawsEnergyCfg& cfg) {
  return {cfg.window, DAXI_BORDER_CLIP, 0, 0};
}

// The magnitudes of the filtered image, and what their local means need. Sums of products of 16-bit pixels stay below
// 2^24: floats hold them exactly.
struct LawsBuffer {
  explicit LawsBuffer(DaxiSize size, uint64_t meanBytes)
      : magnitudes(layout.add<float>(pixelsOf(size))), means(layout.add<uint8_t>(meanBytes)) {}
  BufferLayout layout;
  BufferPiece<float> magnitudes;
  BufferPiece<uint8_t> means;
};

DaxStatus checkLaws(const DaxiLawsEnergyCfg& cfg, DaxiSize size) {
  constexpr int32_t kMaxSide = 32767, kMaxSum = std::numeric_limits<int32_t>::max();
  DAX_REQUIRE(cfg.across >= DAXI_LAWS_L5 && cfg.across <= DAXI_LAWS_R5, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.down >= DAXI_LAWS_L5 && cfg.down <= DAXI_LAWS_R5, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(atLeast(cfg.window, 1) && atMost(cfg.window, kMaxSide), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(size.width <= kMaxSum - cfg.window.width, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(size.height <= kMaxSum - cfg.window.height, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.border >= DAXI_BORDER_REPLICATE && cfg.border <= DAXI_BORDER_IN_MEMORY, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::fabs(cfg.value) <= std::numeric_limits<double>::max(), DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

DaxStatus lawsBufferSize(DaxiSize size, const DaxiLawsEnergyCfg* cfg, uint32_t threads, uint64_t* bytes) {
  DAX_REQUIRE(cfg && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkLaws(*cfg, size));
  const DaxiLocalStatisticsCfg window = energyWindow(*cfg);
  uint64_t meanBytes = 0;
  DAX_REQUIRE_OK(DAXI_LocalMeanBufferSize_32f_MT(size, &window, threads, &meanBytes));
  return LawsBuffer(size, meanBytes).layout.store(bytes);
}

// filter: the separable correlation of the type.
template <class T, class Filter>
DaxStatus lawsEnergy(PoolThreads on, Filter filter, const T* src, int32_t srcStep, float* dst, int32_t dstStep,
                     DaxiSize size, const DaxiLawsEnergyCfg* cfg, void* buffer) {
  DAX_REQUIRE(src && dst && cfg && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min(srcStep, dstStep)), DAX_STS_BAD_STEP);
  DAX_REQUIRE_OK(checkLaws(*cfg, size));
  const LawsBuffer at(size, 0);
  float* const magnitudes = at.magnitudes.in(buffer);
  const DaxiConvolveCfg kernel = convolution(*cfg);
  DAX_REQUIRE_OK(filter(on.pool, on.threads, src, srcStep, magnitudes, size.width, size, kLawsVectors[cfg->across],
                        kLawsVectors[cfg->down], &kernel));
  const auto takeMagnitudes = [](float* row, int32_t count) {
    for (int32_t i = 0; i < count; ++i) row[i] = std::fabs(row[i]);
  };
  DAX_REQUIRE_OK(forEachRow(on, size, 1, takeMagnitudes, Plane<float>{magnitudes, size.width}));
  const DaxiLocalStatisticsCfg window = energyWindow(*cfg);
  return DAXI_LocalMean_32f_C1R_MT(on.pool, on.threads, magnitudes, size.width, dst, dstStep, size, &window,
                                   at.means.in(buffer));
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_LawsEnergyDefaultCfg(DaxiLawsEnergyCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {DAXI_LAWS_L5, DAXI_LAWS_E5, {15, 15}, DAXI_BORDER_REPLICATE, 0, 0};
  return DAX_STS_OK;
}

#define DAX_LAWS_ENERGY(SUFFIX, T)                                                                                     \
  DaxStatus DAXI_LawsEnergyBufferSize_##SUFFIX(DaxiSize size, const DaxiLawsEnergyCfg* cfg, uint64_t* bytes) {         \
    return dax::lawsBufferSize(size, cfg, 1, bytes);                                                                   \
  }                                                                                                                    \
  DaxStatus DAXI_LawsEnergyBufferSize_##SUFFIX##_MT(DaxiSize size, const DaxiLawsEnergyCfg* cfg, uint32_t threads,     \
                                                    uint64_t* bytes) {                                                 \
    return dax::lawsBufferSize(size, cfg, threads, bytes);                                                             \
  }                                                                                                                    \
  DaxStatus DAXI_LawsEnergy_##SUFFIX##_C1R(const T* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,  \
                                           const DaxiLawsEnergyCfg* cfg, void* buffer) {                               \
    return dax::lawsEnergy<T>({}, DAXI_FilterSeparable_##SUFFIX##_C1R_MT, src, srcStep, dst, dstStep, size, cfg,       \
                              buffer);                                                                                 \
  }                                                                                                                    \
  DaxStatus DAXI_LawsEnergy_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, float* dst, \
                                              int32_t dstStep, DaxiSize size, const DaxiLawsEnergyCfg* cfg,            \
                                              void* buffer) {                                                          \
    return dax::lawsEnergy<T>({pool, threads}, DAXI_FilterSeparable_##SUFFIX##_C1R_MT, src, srcStep, dst, dstStep,     \
                              size, cfg, buffer);                                                                      \
  }
DAX_LAWS_ENERGY(8u32f, uint8_t)
DAX_LAWS_ENERGY(16u32f, uint16_t)
DAX_LAWS_ENERGY(32f, float)
#undef DAX_LAWS_ENERGY
