#include "daxi/normalise.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "image/convert/level_rank.h"
#include "image/convert/lut.h"
#include "image/convert/normalise_neon.h"
#include "image/convert/normalise_portable.h"

static_assert(sizeof(DaxiNormaliseCfg) == 32 && offsetof(DaxiNormaliseCfg, outHigh) == 24);

namespace dax {
namespace {

bool isShare(double p) {
  return p >= 0 && p <= 1;
}

DaxStatus checkNormaliseCfg(const DaxiNormaliseCfg& cfg) {
  DAX_REQUIRE(isShare(cfg.pLow), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isShare(cfg.pHigh), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.outLow), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(std::isfinite(cfg.outHigh), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.pLow <= cfg.pHigh, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

template <class From, class To>
void applyStretch(Plane<const From> from, Plane<To> to, DaxiSize size, const Stretch& stretch) {
  if constexpr (sizeof(From) == 1) {
    To table[kLevels<From>];
    for (int32_t v = 0; v < kLevels<From>; ++v) table[v] = portable::pixelOf<To>(stretch.at(v));
    applyTable(from, to, size, 1, table);
  } else {
    const auto row = [&, neon = usesNeon(currentIsa())](const From* src, To* dst, int32_t count) {
      neon ? neon::stretchRow(src, dst, count, stretch) : portable::stretchRow(src, dst, count, stretch);
    };
    forEachRow(size, 1, row, from, to);
  }
}

// Minimum and maximum of the finite pixels.
template <class T>
void extremes(const T* src, int32_t srcStep, DaxiSize size, T (&levels)[2]) {
  T low = std::numeric_limits<T>::max(), high = std::numeric_limits<T>::lowest();
  forFinitePixels(src, srcStep, size, [&](T pixel) {
    low = pixel < low ? pixel : low;
    high = pixel > high ? pixel : high;
  });
  levels[0] = low, levels[1] = high;
}

template <class From, class To>
DaxStatus normalise(const From* src, int32_t srcStep, To* dst, int32_t dstStep, DaxiSize size,
                    const DaxiNormaliseCfg* cfg) {
  const Plane from{src, srcStep};
  const Plane to{dst, dstStep};
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPlanes(size, 1, from, to));
  DAX_REQUIRE_OK(checkNormaliseCfg(*cfg));
  const uint64_t count = countFinite(src, srcStep, size);
  DAX_REQUIRE(count > 0, DAX_STS_DEGENERATE);
  From levels[2];
  if (cfg->pLow == 0 && cfg->pHigh == 1)
    extremes(src, srcStep, size, levels);
  else
    levelsOfRanks(src, srcStep, size, {rankOf(cfg->pLow, count), rankOf(cfg->pHigh, count)}, levels);
  applyStretch(from, to, size, Stretch(static_cast<double>(levels[0]), static_cast<double>(levels[1]), *cfg));
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

DaxStatus DAXI_NormaliseDefaultCfg(DaxiNormaliseCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {0, 1, 0, 255};
  return DAX_STS_OK;
}

#define DAX_NORMALISE(NAME, FROM, TO)                                                                              \
  DaxStatus DAXI_Normalise_##NAME##_C1R(const FROM* src, int32_t srcStep, TO* dst, int32_t dstStep, DaxiSize size, \
                                        const DaxiNormaliseCfg* cfg) {                                             \
    return dax::normalise(src, srcStep, dst, dstStep, size, cfg);                                                  \
  }
#define DAX_NORMALISE_IN_PLACE(SUFFIX, T)                                                                         \
  DAX_NORMALISE(SUFFIX, T, T)                                                                                     \
  DaxStatus DAXI_Normalise_##SUFFIX##_C1IR(T* srcDst, int32_t step, DaxiSize size, const DaxiNormaliseCfg* cfg) { \
    return dax::normalise<T>(srcDst, step, srcDst, step, size, cfg);                                              \
  }
DAX_NORMALISE_IN_PLACE(8u, uint8_t)
DAX_NORMALISE_IN_PLACE(16u, uint16_t)
DAX_NORMALISE_IN_PLACE(16s, int16_t)
DAX_NORMALISE_IN_PLACE(32f, float)
DAX_NORMALISE(8u32f, uint8_t, float)
DAX_NORMALISE(16u8u, uint16_t, uint8_t)
DAX_NORMALISE(16u32f, uint16_t, float)
DAX_NORMALISE(16s8u, int16_t, uint8_t)
DAX_NORMALISE(16s32f, int16_t, float)
DAX_NORMALISE(32f8u, float, uint8_t)
#undef DAX_NORMALISE_IN_PLACE
#undef DAX_NORMALISE
