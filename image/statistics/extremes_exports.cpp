#include "daxi/extremes.h"
#include "image/statistics/extremes.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                 \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, T* min, T* max, DaxiPoint32s* minAt, \
                 DaxiPoint32s* maxAt) {                                                             \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, min, max, minAt, maxAt);                     \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, T min[3], T max[3], DaxiPoint32s minAt[3], \
                 DaxiPoint32s maxAt[3]) {                                                                 \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, min, max, minAt, maxAt);                           \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                                   \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T* min, T* max, \
                 DaxiPoint32s* minAt, DaxiPoint32s* maxAt) {                                                          \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, min, max, minAt, maxAt);                                   \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                             \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T min[3], \
                 T max[3], DaxiPoint32s minAt[3], DaxiPoint32s maxAt[3]) {                                      \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, min, max, minAt, maxAt);                             \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                              \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, T low, T high, uint64_t* count) { \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, low, high, count);                        \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                                                                  \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T low, T high, \
                 uint64_t* count) {                                                                                  \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, low, high, count);                                        \
  }

DAX_FORWARD_1(DAXI_MinMax_8u_C1R, uint8_t, dax::minMaxOf<uint8_t, 1, false>)
DAX_FORWARD_2(DAXI_MinMax_8u_C3R, uint8_t, dax::minMaxOf<uint8_t, 3, false>)
DAX_FORWARD_3(DAXI_MinMax_8u_C1MR, uint8_t, dax::minMaxOf<uint8_t, 1, true>)
DAX_FORWARD_4(DAXI_MinMax_8u_C3MR, uint8_t, dax::minMaxOf<uint8_t, 3, true>)
DAX_FORWARD_1(DAXI_MinMax_16u_C1R, uint16_t, dax::minMaxOf<uint16_t, 1, false>)
DAX_FORWARD_2(DAXI_MinMax_16u_C3R, uint16_t, dax::minMaxOf<uint16_t, 3, false>)
DAX_FORWARD_3(DAXI_MinMax_16u_C1MR, uint16_t, dax::minMaxOf<uint16_t, 1, true>)
DAX_FORWARD_4(DAXI_MinMax_16u_C3MR, uint16_t, dax::minMaxOf<uint16_t, 3, true>)
DAX_FORWARD_1(DAXI_MinMax_16s_C1R, int16_t, dax::minMaxOf<int16_t, 1, false>)
DAX_FORWARD_2(DAXI_MinMax_16s_C3R, int16_t, dax::minMaxOf<int16_t, 3, false>)
DAX_FORWARD_3(DAXI_MinMax_16s_C1MR, int16_t, dax::minMaxOf<int16_t, 1, true>)
DAX_FORWARD_4(DAXI_MinMax_16s_C3MR, int16_t, dax::minMaxOf<int16_t, 3, true>)
DAX_FORWARD_1(DAXI_MinMax_32f_C1R, float, dax::minMaxOf<float, 1, false>)
DAX_FORWARD_2(DAXI_MinMax_32f_C3R, float, dax::minMaxOf<float, 3, false>)
DAX_FORWARD_3(DAXI_MinMax_32f_C1MR, float, dax::minMaxOf<float, 1, true>)
DAX_FORWARD_4(DAXI_MinMax_32f_C3MR, float, dax::minMaxOf<float, 3, true>)
DAX_FORWARD_5(DAXI_CountInRange_8u_C1R, uint8_t, dax::countInRangeOf<uint8_t, false>)
DAX_FORWARD_6(DAXI_CountInRange_8u_C1MR, uint8_t, dax::countInRangeOf<uint8_t, true>)
DAX_FORWARD_5(DAXI_CountInRange_16u_C1R, uint16_t, dax::countInRangeOf<uint16_t, false>)
DAX_FORWARD_6(DAXI_CountInRange_16u_C1MR, uint16_t, dax::countInRangeOf<uint16_t, true>)
DAX_FORWARD_5(DAXI_CountInRange_16s_C1R, int16_t, dax::countInRangeOf<int16_t, false>)
DAX_FORWARD_6(DAXI_CountInRange_16s_C1MR, int16_t, dax::countInRangeOf<int16_t, true>)
DAX_FORWARD_5(DAXI_CountInRange_32f_C1R, float, dax::countInRangeOf<float, false>)
DAX_FORWARD_6(DAXI_CountInRange_32f_C1MR, float, dax::countInRangeOf<float, true>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
