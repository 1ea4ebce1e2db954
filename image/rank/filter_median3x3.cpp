#include "daxi/filter_median3x3.h"

#include <algorithm>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/tiles.h"
#include "image/rank/filter_median3x3.h"
#include "image/rank/filter_median3x3_neon.h"

namespace dax {
template <class T>
void filterMedian3x3(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t first, int32_t end,
                     int32_t isa) {
  const auto medianRows = usesNeon(isa) ? neon::medianRows<T> : portable::medianRows<T>;
  medianRows({src, srcStep, dst, dstStep, size}, first, end);
}

#define DAX_MEDIAN_WORKER(T) \
  template void filterMedian3x3<T>(const T*, int32_t, T*, int32_t, DaxiSize, int32_t, int32_t, int32_t);
DAX_MEDIAN_WORKER(uint8_t)
DAX_MEDIAN_WORKER(uint16_t)
DAX_MEDIAN_WORKER(int16_t)
DAX_MEDIAN_WORKER(float)
DAX_MEDIAN_WORKER(double)
#undef DAX_MEDIAN_WORKER

namespace {

DaxStatus check(const void* src, int32_t srcStep, const void* dst, int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE(src && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 3), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(size.width <= std::min(srcStep, dstStep), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

template <class T>
DaxStatus median(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t isa) {
  DAX_REQUIRE_OK(check(src, srcStep, dst, dstStep, size));
  filterMedian3x3(src, srcStep, dst, dstStep, size, 0, size.height, isa);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

void _DAXI_FilterMedian3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                  int32_t isa) {
  dax::filterMedian3x3(src, srcStep, dst, dstStep, size, 0, size.height, isa);
}

#define DAX_MEDIAN(SUFFIX, T)                                                                           \
  DaxStatus DAXI_FilterMedian3x3_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep, \
                                                DaxiSize size) {                                        \
    return dax::median(src, srcStep, dst, dstStep, size, dax::currentIsa());                            \
  }
DAX_MEDIAN(8u, uint8_t)
DAX_MEDIAN(16u, uint16_t)
DAX_MEDIAN(16s, int16_t)
DAX_MEDIAN(32f, float)
DAX_MEDIAN(64f, double)
#undef DAX_MEDIAN

DaxStatus DAXI_FilterMedian3x3_8u_C1R_NEON(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size) {
  return dax::median(src, srcStep, dst, dstStep, size, DAX_ISA_NEON);
}

DaxStatus DAXI_FilterMedian3x3_8u_C1R_NEON_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              uint8_t* dst, int32_t dstStep, DaxiSize size) {
  if (!dax::hasPool(pool, threads)) return DAXI_FilterMedian3x3_8u_C1R_NEON(src, srcStep, dst, dstStep, size);
  DAX_REQUIRE_OK(dax::check(src, srcStep, dst, dstStep, size));
  return dax::runTiles(pool, threads, size.height, 1, [&](int32_t first, int32_t end, uint32_t) -> DaxStatus {
    dax::filterMedian3x3(src, srcStep, dst, dstStep, size, first, end, DAX_ISA_NEON);
    return DAX_STS_OK;
  });
}
