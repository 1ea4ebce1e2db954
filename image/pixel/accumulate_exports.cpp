#include "daxi/accumulate.h"
#include "image/pixel/accumulate.h"

#define DAX_FORWARD_1(NAME, T, D, ...)                                                          \
  DaxStatus NAME(const T* src, int32_t srcStep, D* srcDst, int32_t srcDstStep, DaxiSize size) { \
    return __VA_ARGS__(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size);             \
  }
#define DAX_FORWARD_2(NAME, T, D, ...)                                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, D* srcDst, int32_t srcDstStep, DaxiSize size, float alpha) { \
    return __VA_ARGS__(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size, alpha);                   \
  }

DAX_FORWARD_1(DAXI_Accumulate_8u32f_C1IR, uint8_t, float, dax::accumulate<uint8_t>)
DAX_FORWARD_1(DAXI_Accumulate_16u32f_C1IR, uint16_t, float, dax::accumulate<uint16_t>)
DAX_FORWARD_2(DAXI_AccumulateWeighted_8u32f_C1IR, uint8_t, float, dax::accumulateWeighted<uint8_t>)
DAX_FORWARD_2(DAXI_AccumulateWeighted_16u32f_C1IR, uint16_t, float, dax::accumulateWeighted<uint16_t>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
