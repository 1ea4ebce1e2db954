#include "daxi/add_weighted.h"
#include "image/pixel/add_weighted.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                                  \
  DaxStatus NAME(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep, DaxiSize size, \
                 const DaxiAddWeightedCfg* cfg) {                                                                    \
    return __VA_ARGS__(dax::PoolThreads{}, src1, step1, src2, step2, dst, dstStep, size, cfg);                       \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, \
                 int32_t dstStep, DaxiSize size, const DaxiAddWeightedCfg* cfg) {                                  \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src1, step1, src2, step2, dst, dstStep, size, cfg);        \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                          \
  DaxStatus NAME(const T* src, int32_t srcStep, T* srcDst, int32_t srcDstStep, DaxiSize size,                \
                 const DaxiAddWeightedCfg* cfg) {                                                            \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size, cfg); \
  }

DAX_FORWARD_1(DAXI_AddWeighted_8u_C1R, uint8_t, dax::addWeighted<uint8_t>)
DAX_FORWARD_2(DAXI_AddWeighted_8u_C1R_MT, uint8_t, dax::addWeighted<uint8_t>)
DAX_FORWARD_3(DAXI_AddWeighted_8u_C1IR, uint8_t, dax::addWeighted<uint8_t>)
DAX_FORWARD_1(DAXI_AddWeighted_16u_C1R, uint16_t, dax::addWeighted<uint16_t>)
DAX_FORWARD_2(DAXI_AddWeighted_16u_C1R_MT, uint16_t, dax::addWeighted<uint16_t>)
DAX_FORWARD_3(DAXI_AddWeighted_16u_C1IR, uint16_t, dax::addWeighted<uint16_t>)
DAX_FORWARD_1(DAXI_AddWeighted_16s_C1R, int16_t, dax::addWeighted<int16_t>)
DAX_FORWARD_2(DAXI_AddWeighted_16s_C1R_MT, int16_t, dax::addWeighted<int16_t>)
DAX_FORWARD_3(DAXI_AddWeighted_16s_C1IR, int16_t, dax::addWeighted<int16_t>)
DAX_FORWARD_1(DAXI_AddWeighted_32f_C1R, float, dax::addWeighted<float>)
DAX_FORWARD_2(DAXI_AddWeighted_32f_C1R_MT, float, dax::addWeighted<float>)
DAX_FORWARD_3(DAXI_AddWeighted_32f_C1IR, float, dax::addWeighted<float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
