#include "image/pixel/add_weighted.h"

#include <cmath>

#include "image/pixel/add_weighted_neon.h"
#include "image/pixel/add_weighted_portable.h"

namespace dax {

template <class T>
void addWeightedRow(const T* a, const T* b, T* dst, int32_t count, const DaxiAddWeightedCfg& cfg, int32_t isa) {
  (usesNeon(isa) ? neon::addWeightedRow<T> : portable::addWeightedRow<T>)(a, b, dst, count, cfg);
}

template <class T>
DaxStatus addWeighted(PoolThreads on, const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst,
                      int32_t dstStep, DaxiSize size, const DaxiAddWeightedCfg* cfg) {
  const Plane first{src1, step1}, second{src2, step2};
  const Plane to{dst, dstStep};
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  DAX_REQUIRE_OK(checkPlanes(size, 1, first, second, to));
  DAX_REQUIRE(std::isfinite(cfg->a) && std::isfinite(cfg->b) && std::isfinite(cfg->c), DAX_STS_BAD_PARAM);
  const auto row = [weights = *cfg, isa = currentIsa()](const T* a, const T* b, T* result, int32_t count) {
    addWeightedRow(a, b, result, count, weights, isa);
  };
  return forEachRow(on, size, 1, row, first, second, to);
}

#define DAX_ADD_WEIGHTED(T)                                                                                   \
  template DaxStatus addWeighted<T>(PoolThreads, const T*, int32_t, const T*, int32_t, T*, int32_t, DaxiSize, \
                                    const DaxiAddWeightedCfg*);                                               \
  template void addWeightedRow<T>(const T*, const T*, T*, int32_t, const DaxiAddWeightedCfg&, int32_t);
DAX_ADD_WEIGHTED(uint8_t)
DAX_ADD_WEIGHTED(uint16_t)
DAX_ADD_WEIGHTED(int16_t)
DAX_ADD_WEIGHTED(float)
#undef DAX_ADD_WEIGHTED

}  // namespace dax

DaxStatus DAXI_AddWeightedDefaultCfg(DaxiAddWeightedCfg* cfg) {
  DAX_REQUIRE(cfg, DAX_STS_NULL_POINTER);
  *cfg = {.a = 0.5, .b = 0.5, .c = 0};
  return DAX_STS_OK;
}
