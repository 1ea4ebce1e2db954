#include "daxi/polar.h"
#include "image/warp/polar.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                          \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize srcSize, T* dst, int32_t dstStep, DaxiSize dstSize, \
                 DaxiRect dstRect, const DaxiPolarCfg* cfg) {                                                \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg);      \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                  \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, DaxiSize srcSize, T* dst,              \
                 int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg) {                     \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg); \
  }

DAX_FORWARD_1(DAXI_Polar_8u_C1R, uint8_t, dax::polar<uint8_t, 1>)
DAX_FORWARD_2(DAXI_Polar_8u_C1R_MT, uint8_t, dax::polar<uint8_t, 1>)
DAX_FORWARD_1(DAXI_Polar_8u_C3R, uint8_t, dax::polar<uint8_t, 3>)
DAX_FORWARD_2(DAXI_Polar_8u_C3R_MT, uint8_t, dax::polar<uint8_t, 3>)
DAX_FORWARD_1(DAXI_Polar_16u_C1R, uint16_t, dax::polar<uint16_t, 1>)
DAX_FORWARD_2(DAXI_Polar_16u_C1R_MT, uint16_t, dax::polar<uint16_t, 1>)
DAX_FORWARD_1(DAXI_Polar_16u_C3R, uint16_t, dax::polar<uint16_t, 3>)
DAX_FORWARD_2(DAXI_Polar_16u_C3R_MT, uint16_t, dax::polar<uint16_t, 3>)
DAX_FORWARD_1(DAXI_Polar_16s_C1R, int16_t, dax::polar<int16_t, 1>)
DAX_FORWARD_2(DAXI_Polar_16s_C1R_MT, int16_t, dax::polar<int16_t, 1>)
DAX_FORWARD_1(DAXI_Polar_16s_C3R, int16_t, dax::polar<int16_t, 3>)
DAX_FORWARD_2(DAXI_Polar_16s_C3R_MT, int16_t, dax::polar<int16_t, 3>)
DAX_FORWARD_1(DAXI_Polar_32f_C1R, float, dax::polar<float, 1>)
DAX_FORWARD_2(DAXI_Polar_32f_C1R_MT, float, dax::polar<float, 1>)
DAX_FORWARD_1(DAXI_Polar_32f_C3R, float, dax::polar<float, 3>)
DAX_FORWARD_2(DAXI_Polar_32f_C3R_MT, float, dax::polar<float, 3>)
DAX_FORWARD_1(DAXI_PolarBack_8u_C1R, uint8_t, dax::polarBack<uint8_t, 1>)
DAX_FORWARD_2(DAXI_PolarBack_8u_C1R_MT, uint8_t, dax::polarBack<uint8_t, 1>)
DAX_FORWARD_1(DAXI_PolarBack_8u_C3R, uint8_t, dax::polarBack<uint8_t, 3>)
DAX_FORWARD_2(DAXI_PolarBack_8u_C3R_MT, uint8_t, dax::polarBack<uint8_t, 3>)
DAX_FORWARD_1(DAXI_PolarBack_16u_C1R, uint16_t, dax::polarBack<uint16_t, 1>)
DAX_FORWARD_2(DAXI_PolarBack_16u_C1R_MT, uint16_t, dax::polarBack<uint16_t, 1>)
DAX_FORWARD_1(DAXI_PolarBack_16u_C3R, uint16_t, dax::polarBack<uint16_t, 3>)
DAX_FORWARD_2(DAXI_PolarBack_16u_C3R_MT, uint16_t, dax::polarBack<uint16_t, 3>)
DAX_FORWARD_1(DAXI_PolarBack_16s_C1R, int16_t, dax::polarBack<int16_t, 1>)
DAX_FORWARD_2(DAXI_PolarBack_16s_C1R_MT, int16_t, dax::polarBack<int16_t, 1>)
DAX_FORWARD_1(DAXI_PolarBack_16s_C3R, int16_t, dax::polarBack<int16_t, 3>)
DAX_FORWARD_2(DAXI_PolarBack_16s_C3R_MT, int16_t, dax::polarBack<int16_t, 3>)
DAX_FORWARD_1(DAXI_PolarBack_32f_C1R, float, dax::polarBack<float, 1>)
DAX_FORWARD_2(DAXI_PolarBack_32f_C1R_MT, float, dax::polarBack<float, 1>)
DAX_FORWARD_1(DAXI_PolarBack_32f_C3R, float, dax::polarBack<float, 3>)
DAX_FORWARD_2(DAXI_PolarBack_32f_C3R_MT, float, dax::polarBack<float, 3>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
