#include "daxi/in_range.h"
#include "image/logic/in_range.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                      \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T low, T high) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, &low, &high);                                   \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                     \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const T low[3], \
                 const T high[3]) {                                                                     \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, low, high);                                    \
  }
#define DAX_FORWARD_3(NAME, T, D, ...)                                                                   \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, T low, T high) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, &low, &high);                                   \
  }
#define DAX_FORWARD_4(NAME, T, D, ...)                                                                  \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, const T low[3], \
                 const T high[3]) {                                                                     \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, low, high);                                    \
  }

DAX_FORWARD_1(DAXI_InRange_8u_C1R, uint8_t, dax::inRange<uint8_t, 1>)
DAX_FORWARD_2(DAXI_InRange_8u_C3C1R, uint8_t, dax::inRange<uint8_t, 3>)
DAX_FORWARD_3(DAXI_InRange_16u_C1R, uint16_t, uint8_t, dax::inRange<uint16_t, 1>)
DAX_FORWARD_4(DAXI_InRange_16u_C3C1R, uint16_t, uint8_t, dax::inRange<uint16_t, 3>)
DAX_FORWARD_3(DAXI_InRange_16s_C1R, int16_t, uint8_t, dax::inRange<int16_t, 1>)
DAX_FORWARD_4(DAXI_InRange_16s_C3C1R, int16_t, uint8_t, dax::inRange<int16_t, 3>)
DAX_FORWARD_3(DAXI_InRange_32f_C1R, float, uint8_t, dax::inRange<float, 1>)
DAX_FORWARD_4(DAXI_InRange_32f_C3C1R, float, uint8_t, dax::inRange<float, 3>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
