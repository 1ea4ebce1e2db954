#include "daxi/filter_median5x5.h"

#include <algorithm>

#include "frame/check.h"
#include "frame/dispatch.h"
#include "frame/rows.h"
#include "frame/tiles.h"
#include "image/rank/filter_median5x5.h"
#include "image/rank/filter_median5x5_neon.h"
#include "image/rank/filter_median5x5_portable.h"

namespace dax {

template <class T>
void filterMedian5x5(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t first, int32_t end,
                     int32_t isa) {
  using RowPair = void (*)(const T* const(&)[6], T*, T*, int32_t);
  const RowPair rowPair = usesNeon(isa) ? RowPair{neon::medianRowPair5<T>} : RowPair{portable::medianRowPair5<T>};
  const auto srcRow = [&](int32_t y) { return rowAt(src, srcStep, std::clamp(y, 0, size.height - 1)); };
  const auto portableRow = [&](int32_t y) {
    portable::medianRow5<T>({srcRow(y - 2), srcRow(y - 1), srcRow(y), srcRow(y + 1), srcRow(y + 2)},
                            rowAt(dst, dstStep, y), 0, size.width, size.width);
  };
  int32_t y = first;
  for (; y + 2 <= end; y += 2) {
    T *const upper = rowAt(dst, dstStep, y), *const lower = rowAt(dst, dstStep, y + 1);
    rowPair({srcRow(y - 2), srcRow(y - 1), srcRow(y), srcRow(y + 1), srcRow(y + 2), srcRow(y + 3)}, upper, lower,
            size.width);
  }
  if (y < end) portableRow(y);
}

#define DAX_MEDIAN_WORKER(T) \
  template void filterMedian5x5<T>(const T*, int32_t, T*, int32_t, DaxiSize, int32_t, int32_t, int32_t);
DAX_MEDIAN_WORKER(uint8_t)
DAX_MEDIAN_WORKER(uint16_t)
DAX_MEDIAN_WORKER(int16_t)
DAX_MEDIAN_WORKER(float)
#undef DAX_MEDIAN_WORKER

namespace {

template <class T>
DaxStatus median5x5(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) {
  DAX_REQUIRE(src && dst, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 5), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(size.width <= std::min(srcStep, dstStep), DAX_STS_BAD_STEP);
  return runRows(on, size.height, [&](int32_t first, int32_t end) {
    filterMedian5x5(src, srcStep, dst, dstStep, size, first, end, currentIsa());
  });
}

}  // namespace
}  // namespace dax

#define DAX_MEDIAN(SUFFIX, T)                                                                                   \
  DaxStatus DAXI_FilterMedian5x5_##SUFFIX##_C1R(const T* src, int32_t srcStep, T* dst, int32_t dstStep,         \
                                                DaxiSize size) {                                                \
    return dax::median5x5({}, src, srcStep, dst, dstStep, size);                                                \
  }                                                                                                             \
  DaxStatus DAXI_FilterMedian5x5_##SUFFIX##_C1R_MT(void* pool, uint32_t threads, const T* src, int32_t srcStep, \
                                                   T* dst, int32_t dstStep, DaxiSize size) {                    \
    return dax::median5x5({pool, threads}, src, srcStep, dst, dstStep, size);                                   \
  }
DAX_MEDIAN(8u, uint8_t)
DAX_MEDIAN(16u, uint16_t)
DAX_MEDIAN(16s, int16_t)
DAX_MEDIAN(32f, float)
#undef DAX_MEDIAN
