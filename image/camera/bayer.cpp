#include "daxi/bayer.h"

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/camera/bayer_neon.h"
#include "image/camera/bayer_portable.h"

namespace dax {
namespace {

constexpr int32_t kMinBayerSide = 2;

template <int kChannels, class T>
DaxStatus checkBayer(const T* src, int32_t srcStep, const T* dst, int32_t dstStep, DaxiSize size, int32_t phase) {
  DAX_REQUIRE(src && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, kMinBayerSide), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, srcStep) && rowFits(size.width, dstStep, kChannels), DAX_STS_BAD_STEP);
  DAX_REQUIRE(phase >= DAXI_BAYER_RGGB && phase <= DAXI_BAYER_BGGR, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class Method, int kChannels, class T>
DaxStatus bayer(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t phase) {
  DAX_REQUIRE_OK(checkBayer<kChannels>(src, srcStep, dst, dstStep, size, phase));
  const bool neon = usesNeon(currentIsa());
  const BayerRowKernel<T> colours = neon ? neon::bayerRow<Method, T> : portable::bayerRow<Method, T>;
  const BayerRowKernel<T> grays = neon ? neon::bayerGrayRow<Method, T> : portable::bayerGrayRow<Method, T>;
  const auto rowOf = [=](int64_t y) {
    return rowAt(src, srcStep, static_cast<int32_t>(borderIndex(y, size.height, DAXI_BORDER_MIRROR)));
  };
  return runRows(on, size.height, [=](int32_t first, int32_t end) {
    for (int32_t y = first; y < end; ++y) {
      const T* const rows[5] = {rowOf(int64_t{y} - 2), rowOf(int64_t{y} - 1), rowOf(y), rowOf(int64_t{y} + 1),
                                rowOf(int64_t{y} + 2)};
      (kChannels == 3 ? colours : grays)(rows, BayerRow(phase, y), size.width, 0, size.width, rowAt(dst, dstStep, y));
    }
  });
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_BayerPhaseAt(int32_t phase, int32_t x, int32_t y, int32_t* phaseAt) {
  DAX_REQUIRE(phaseAt, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(phase >= DAXI_BAYER_RGGB && phase <= DAXI_BAYER_BGGR, DAX_STS_BAD_PARAM);
  *phaseAt = phase ^ (x & 1) ^ (y & 1) << 1;
  return DAX_STS_OK;
}

#define DAX_BAYER(NAME, METHOD, SUFFIX, LAYOUT, CHANNELS, T)                                                         \
  DaxStatus DAXI_##NAME##_##SUFFIX##_##LAYOUT(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                                              int32_t phase) {                                                       \
    return dax::bayer<dax::METHOD, CHANNELS>({}, src, srcStep, dst, dstStep, size, phase);                           \
  }                                                                                                                  \
  DaxStatus DAXI_##NAME##_##SUFFIX##_##LAYOUT##_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep,      \
                                                   T* dst, int32_t dstStep, DaxiSize size, int32_t phase) {          \
    return dax::bayer<dax::METHOD, CHANNELS>({pool, threads}, src, srcStep, dst, dstStep, size, phase);              \
  }
#define DAX_BAYER_TYPE(SUFFIX, T)                                  \
  DAX_BAYER(BayerBilinear, BayerBilinear, SUFFIX, C1C3R, 3, T)     \
  DAX_BAYER(BayerMHC, BayerMhc, SUFFIX, C1C3R, 3, T)               \
  DAX_BAYER(BayerBilinearToGray, BayerBilinear, SUFFIX, C1R, 1, T) \
  DAX_BAYER(BayerMHCToGray, BayerMhc, SUFFIX, C1R, 1, T)
DAX_BAYER_TYPE(8u, uint8_t)
DAX_BAYER_TYPE(16u, uint16_t)
#undef DAX_BAYER_TYPE
#undef DAX_BAYER
