#include "daxi/remap.h"
#include "image/warp/remap.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                             \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize srcSize, const float* mapX, int32_t mapXStep,          \
                 const float* mapY, int32_t mapYStep, T* dst, int32_t dstStep, DaxiSize dstSize,                \
                 const DaxiRemapCfg* cfg) {                                                                     \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, srcSize, mapX, mapXStep, mapY, mapYStep, dst, dstStep, \
                       dstSize, cfg);                                                                           \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                 \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, DaxiSize srcSize, const float* mapX,  \
                 int32_t mapXStep, const float* mapY, int32_t mapYStep, T* dst, int32_t dstStep, DaxiSize dstSize,  \
                 const DaxiRemapCfg* cfg) {                                                                         \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, srcSize, mapX, mapXStep, mapY, mapYStep, dst, \
                       dstStep, dstSize, cfg);                                                                      \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                               \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize srcSize, const void* model, uint64_t modelBytes, T* dst, \
                 int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg) {                                    \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, srcSize, model, modelBytes, dst, dstStep, dstSize, cfg); \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, DaxiSize srcSize, const void* model, \
                 uint64_t modelBytes, T* dst, int32_t dstStep, DaxiSize dstSize, const DaxiRemapCfg* cfg) {        \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, srcSize, model, modelBytes, dst, dstStep,    \
                       dstSize, cfg);                                                                              \
  }

DAX_FORWARD_1(DAXI_Remap_8u_C1R, uint8_t, dax::remap<uint8_t, 1>)
DAX_FORWARD_2(DAXI_Remap_8u_C1R_MT, uint8_t, dax::remap<uint8_t, 1>)
DAX_FORWARD_1(DAXI_Remap_8u_C3R, uint8_t, dax::remap<uint8_t, 3>)
DAX_FORWARD_2(DAXI_Remap_8u_C3R_MT, uint8_t, dax::remap<uint8_t, 3>)
DAX_FORWARD_1(DAXI_Remap_16u_C1R, uint16_t, dax::remap<uint16_t, 1>)
DAX_FORWARD_2(DAXI_Remap_16u_C1R_MT, uint16_t, dax::remap<uint16_t, 1>)
DAX_FORWARD_1(DAXI_Remap_16u_C3R, uint16_t, dax::remap<uint16_t, 3>)
DAX_FORWARD_2(DAXI_Remap_16u_C3R_MT, uint16_t, dax::remap<uint16_t, 3>)
DAX_FORWARD_1(DAXI_Remap_16s_C1R, int16_t, dax::remap<int16_t, 1>)
DAX_FORWARD_2(DAXI_Remap_16s_C1R_MT, int16_t, dax::remap<int16_t, 1>)
DAX_FORWARD_1(DAXI_Remap_16s_C3R, int16_t, dax::remap<int16_t, 3>)
DAX_FORWARD_2(DAXI_Remap_16s_C3R_MT, int16_t, dax::remap<int16_t, 3>)
DAX_FORWARD_1(DAXI_Remap_32f_C1R, float, dax::remap<float, 1>)
DAX_FORWARD_2(DAXI_Remap_32f_C1R_MT, float, dax::remap<float, 1>)
DAX_FORWARD_1(DAXI_Remap_32f_C3R, float, dax::remap<float, 3>)
DAX_FORWARD_2(DAXI_Remap_32f_C3R_MT, float, dax::remap<float, 3>)
DAX_FORWARD_3(DAXI_RemapPrepared_8u_C1R, uint8_t, dax::remapPrepared<uint8_t, 1>)
DAX_FORWARD_4(DAXI_RemapPrepared_8u_C1R_MT, uint8_t, dax::remapPrepared<uint8_t, 1>)
DAX_FORWARD_3(DAXI_RemapPrepared_8u_C3R, uint8_t, dax::remapPrepared<uint8_t, 3>)
DAX_FORWARD_4(DAXI_RemapPrepared_8u_C3R_MT, uint8_t, dax::remapPrepared<uint8_t, 3>)
DAX_FORWARD_3(DAXI_RemapPrepared_16u_C1R, uint16_t, dax::remapPrepared<uint16_t, 1>)
DAX_FORWARD_4(DAXI_RemapPrepared_16u_C1R_MT, uint16_t, dax::remapPrepared<uint16_t, 1>)
DAX_FORWARD_3(DAXI_RemapPrepared_16u_C3R, uint16_t, dax::remapPrepared<uint16_t, 3>)
DAX_FORWARD_4(DAXI_RemapPrepared_16u_C3R_MT, uint16_t, dax::remapPrepared<uint16_t, 3>)
DAX_FORWARD_3(DAXI_RemapPrepared_16s_C1R, int16_t, dax::remapPrepared<int16_t, 1>)
DAX_FORWARD_4(DAXI_RemapPrepared_16s_C1R_MT, int16_t, dax::remapPrepared<int16_t, 1>)
DAX_FORWARD_3(DAXI_RemapPrepared_16s_C3R, int16_t, dax::remapPrepared<int16_t, 3>)
DAX_FORWARD_4(DAXI_RemapPrepared_16s_C3R_MT, int16_t, dax::remapPrepared<int16_t, 3>)
DAX_FORWARD_3(DAXI_RemapPrepared_32f_C1R, float, dax::remapPrepared<float, 1>)
DAX_FORWARD_4(DAXI_RemapPrepared_32f_C1R_MT, float, dax::remapPrepared<float, 1>)
DAX_FORWARD_3(DAXI_RemapPrepared_32f_C3R, float, dax::remapPrepared<float, 3>)
DAX_FORWARD_4(DAXI_RemapPrepared_32f_C3R_MT, float, dax::remapPrepared<float, 3>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
