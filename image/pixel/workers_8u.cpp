#include "image/pixel/workers_8u.h"

#include <cstring>

#include "frame/cpu_feature.h"
#include "frame/rows.h"
#include "image/morphology/erode3x3.h"
#include "image/rank/filter_median3x3.h"
#include "image/threshold/threshold.h"
#include "image/threshold/threshold_portable.h"
#if DAX_HAVE_NEON
#include "image/threshold/threshold_neon.h"
#else
namespace dax {
namespace neon = portable;
}
#endif

void _DAXI_Copy_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  for (int32_t y = 0; y < size.height; ++y) {
    std::memcpy(dax::rowAt(dst, dstStep, y), dax::rowAt(src, srcStep, y), static_cast<size_t>(size.width));
  }
}

void _DAXI_Not_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t isa) {
  const auto invertRow = dax::usesNeon(isa) ? dax::neon::invertRow : dax::portable::invertRow;
  for (int32_t y = 0; y < size.height; ++y) {
    invertRow(dax::rowAt(src, srcStep, y), dax::rowAt(dst, dstStep, y), size.width);
  }
}

void _DAXI_AdpThresholdOtsu_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   int32_t isa) {
  const uint8_t level = dax::otsuLevel(dax::histogram(src, srcStep, size));
  dax::maskInterval(src, srcStep, dst, dstStep, size, dax::LevelInterval::atLeast(level), isa);
}

void _DAXI_Erode3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                           int32_t iterations, void* buffer, int32_t isa) {
  dax::erode3x3(src, srcStep, dst, dstStep, size, iterations, buffer, isa);
}

void _DAXI_FilterMedian3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                  int32_t isa) {
  dax::filterMedian3x3(src, srcStep, dst, dstStep, size, 0, size.height, isa);
}
