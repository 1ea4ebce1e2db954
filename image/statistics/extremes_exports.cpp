#include "daxi/extremes.h"
#include "image/statistics/extremes.h"

DaxStatus DAXI_MinMax_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, uint8_t* min, uint8_t* max,
                             DaxiPoint32s* minAt, DaxiPoint32s* maxAt) {
  return dax::minMaxOf<uint8_t, 1, false>(src, srcStep, nullptr, 0, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize size, uint8_t min[3], uint8_t max[3],
                             DaxiPoint32s minAt[3], DaxiPoint32s maxAt[3]) {
  return dax::minMaxOf<uint8_t, 3, false>(src, srcStep, nullptr, 0, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                              uint8_t* min, uint8_t* max, DaxiPoint32s* minAt, DaxiPoint32s* maxAt) {
  return dax::minMaxOf<uint8_t, 1, true>(src, srcStep, mask, maskStep, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_8u_C3MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                              uint8_t min[3], uint8_t max[3], DaxiPoint32s minAt[3], DaxiPoint32s maxAt[3]) {
  return dax::minMaxOf<uint8_t, 3, true>(src, srcStep, mask, maskStep, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, uint16_t* min, uint16_t* max,
                              DaxiPoint32s* minAt, DaxiPoint32s* maxAt) {
  return dax::minMaxOf<uint16_t, 1, false>(src, srcStep, nullptr, 0, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize size, uint16_t min[3], uint16_t max[3],
                              DaxiPoint32s minAt[3], DaxiPoint32s maxAt[3]) {
  return dax::minMaxOf<uint16_t, 3, false>(src, srcStep, nullptr, 0, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                               DaxiSize size, uint16_t* min, uint16_t* max, DaxiPoint32s* minAt, DaxiPoint32s* maxAt) {
  return dax::minMaxOf<uint16_t, 1, true>(src, srcStep, mask, maskStep, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_16u_C3MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                               DaxiSize size, uint16_t min[3], uint16_t max[3], DaxiPoint32s minAt[3],
                               DaxiPoint32s maxAt[3]) {
  return dax::minMaxOf<uint16_t, 3, true>(src, srcStep, mask, maskStep, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, int16_t* min, int16_t* max,
                              DaxiPoint32s* minAt, DaxiPoint32s* maxAt) {
  return dax::minMaxOf<int16_t, 1, false>(src, srcStep, nullptr, 0, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize size, int16_t min[3], int16_t max[3],
                              DaxiPoint32s minAt[3], DaxiPoint32s maxAt[3]) {
  return dax::minMaxOf<int16_t, 3, false>(src, srcStep, nullptr, 0, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                               DaxiSize size, int16_t* min, int16_t* max, DaxiPoint32s* minAt, DaxiPoint32s* maxAt) {
  return dax::minMaxOf<int16_t, 1, true>(src, srcStep, mask, maskStep, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_16s_C3MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                               DaxiSize size, int16_t min[3], int16_t max[3], DaxiPoint32s minAt[3],
                               DaxiPoint32s maxAt[3]) {
  return dax::minMaxOf<int16_t, 3, true>(src, srcStep, mask, maskStep, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, float* min, float* max,
                              DaxiPoint32s* minAt, DaxiPoint32s* maxAt) {
  return dax::minMaxOf<float, 1, false>(src, srcStep, nullptr, 0, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_32f_C3R(const float* src, int32_t srcStep, DaxiSize size, float min[3], float max[3],
                              DaxiPoint32s minAt[3], DaxiPoint32s maxAt[3]) {
  return dax::minMaxOf<float, 3, false>(src, srcStep, nullptr, 0, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                               float* min, float* max, DaxiPoint32s* minAt, DaxiPoint32s* maxAt) {
  return dax::minMaxOf<float, 1, true>(src, srcStep, mask, maskStep, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_MinMax_32f_C3MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                               float min[3], float max[3], DaxiPoint32s minAt[3], DaxiPoint32s maxAt[3]) {
  return dax::minMaxOf<float, 3, true>(src, srcStep, mask, maskStep, size, min, max, minAt, maxAt);
}

DaxStatus DAXI_CountInRange_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, uint8_t low, uint8_t high,
                                   uint64_t* count) {
  return dax::countInRangeOf<uint8_t, false>(src, srcStep, nullptr, 0, size, low, high, count);
}

DaxStatus DAXI_CountInRange_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, uint8_t low, uint8_t high, uint64_t* count) {
  return dax::countInRangeOf<uint8_t, true>(src, srcStep, mask, maskStep, size, low, high, count);
}

DaxStatus DAXI_CountInRange_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, uint16_t low, uint16_t high,
                                    uint64_t* count) {
  return dax::countInRangeOf<uint16_t, false>(src, srcStep, nullptr, 0, size, low, high, count);
}

DaxStatus DAXI_CountInRange_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     DaxiSize size, uint16_t low, uint16_t high, uint64_t* count) {
  return dax::countInRangeOf<uint16_t, true>(src, srcStep, mask, maskStep, size, low, high, count);
}

DaxStatus DAXI_CountInRange_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, int16_t low, int16_t high,
                                    uint64_t* count) {
  return dax::countInRangeOf<int16_t, false>(src, srcStep, nullptr, 0, size, low, high, count);
}

DaxStatus DAXI_CountInRange_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     DaxiSize size, int16_t low, int16_t high, uint64_t* count) {
  return dax::countInRangeOf<int16_t, true>(src, srcStep, mask, maskStep, size, low, high, count);
}

DaxStatus DAXI_CountInRange_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, float low, float high,
                                    uint64_t* count) {
  return dax::countInRangeOf<float, false>(src, srcStep, nullptr, 0, size, low, high, count);
}

DaxStatus DAXI_CountInRange_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     DaxiSize size, float low, float high, uint64_t* count) {
  return dax::countInRangeOf<float, true>(src, srcStep, mask, maskStep, size, low, high, count);
}
