#include "daxi/warp.h"
#include "image/warp/warp.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                          \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize srcSize, T* dst, int32_t dstStep, DaxiSize dstSize, \
                 DaxiRect dstRect, const DaxiWarpCfg* cfg) {                                                 \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg);      \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                  \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, DaxiSize srcSize, T* dst,              \
                 int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiWarpCfg* cfg) {                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg); \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                          \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize srcSize, T* dst, int32_t dstStep, DaxiSize dstSize, \
                 DaxiRect dstRect, const DaxiRotateCfg* cfg) {                                               \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg);      \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                                  \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, DaxiSize srcSize, T* dst,              \
                 int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiRotateCfg* cfg) {                    \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, srcSize, dst, dstStep, dstSize, dstRect, cfg); \
  }

DAX_FORWARD_1(DAXI_WarpAffine_8u_C1R, uint8_t, dax::warpAffine<uint8_t, 1>)
DAX_FORWARD_2(DAXI_WarpAffine_8u_C1R_MT, uint8_t, dax::warpAffine<uint8_t, 1>)
DAX_FORWARD_1(DAXI_WarpAffine_8u_C3R, uint8_t, dax::warpAffine<uint8_t, 3>)
DAX_FORWARD_2(DAXI_WarpAffine_8u_C3R_MT, uint8_t, dax::warpAffine<uint8_t, 3>)
DAX_FORWARD_1(DAXI_WarpAffine_16u_C1R, uint16_t, dax::warpAffine<uint16_t, 1>)
DAX_FORWARD_2(DAXI_WarpAffine_16u_C1R_MT, uint16_t, dax::warpAffine<uint16_t, 1>)
DAX_FORWARD_1(DAXI_WarpAffine_16u_C3R, uint16_t, dax::warpAffine<uint16_t, 3>)
DAX_FORWARD_2(DAXI_WarpAffine_16u_C3R_MT, uint16_t, dax::warpAffine<uint16_t, 3>)
DAX_FORWARD_1(DAXI_WarpAffine_16s_C1R, int16_t, dax::warpAffine<int16_t, 1>)
DAX_FORWARD_2(DAXI_WarpAffine_16s_C1R_MT, int16_t, dax::warpAffine<int16_t, 1>)
DAX_FORWARD_1(DAXI_WarpAffine_16s_C3R, int16_t, dax::warpAffine<int16_t, 3>)
DAX_FORWARD_2(DAXI_WarpAffine_16s_C3R_MT, int16_t, dax::warpAffine<int16_t, 3>)
DAX_FORWARD_1(DAXI_WarpAffine_32f_C1R, float, dax::warpAffine<float, 1>)
DAX_FORWARD_2(DAXI_WarpAffine_32f_C1R_MT, float, dax::warpAffine<float, 1>)
DAX_FORWARD_1(DAXI_WarpAffine_32f_C3R, float, dax::warpAffine<float, 3>)
DAX_FORWARD_2(DAXI_WarpAffine_32f_C3R_MT, float, dax::warpAffine<float, 3>)
DAX_FORWARD_1(DAXI_WarpPerspective_8u_C1R, uint8_t, dax::warpPerspective<uint8_t, 1>)
DAX_FORWARD_2(DAXI_WarpPerspective_8u_C1R_MT, uint8_t, dax::warpPerspective<uint8_t, 1>)
DAX_FORWARD_1(DAXI_WarpPerspective_8u_C3R, uint8_t, dax::warpPerspective<uint8_t, 3>)
DAX_FORWARD_2(DAXI_WarpPerspective_8u_C3R_MT, uint8_t, dax::warpPerspective<uint8_t, 3>)
DAX_FORWARD_1(DAXI_WarpPerspective_16u_C1R, uint16_t, dax::warpPerspective<uint16_t, 1>)
DAX_FORWARD_2(DAXI_WarpPerspective_16u_C1R_MT, uint16_t, dax::warpPerspective<uint16_t, 1>)
DAX_FORWARD_1(DAXI_WarpPerspective_16u_C3R, uint16_t, dax::warpPerspective<uint16_t, 3>)
DAX_FORWARD_2(DAXI_WarpPerspective_16u_C3R_MT, uint16_t, dax::warpPerspective<uint16_t, 3>)
DAX_FORWARD_1(DAXI_WarpPerspective_16s_C1R, int16_t, dax::warpPerspective<int16_t, 1>)
DAX_FORWARD_2(DAXI_WarpPerspective_16s_C1R_MT, int16_t, dax::warpPerspective<int16_t, 1>)
DAX_FORWARD_1(DAXI_WarpPerspective_16s_C3R, int16_t, dax::warpPerspective<int16_t, 3>)
DAX_FORWARD_2(DAXI_WarpPerspective_16s_C3R_MT, int16_t, dax::warpPerspective<int16_t, 3>)
DAX_FORWARD_1(DAXI_WarpPerspective_32f_C1R, float, dax::warpPerspective<float, 1>)
DAX_FORWARD_2(DAXI_WarpPerspective_32f_C1R_MT, float, dax::warpPerspective<float, 1>)
DAX_FORWARD_1(DAXI_WarpPerspective_32f_C3R, float, dax::warpPerspective<float, 3>)
DAX_FORWARD_2(DAXI_WarpPerspective_32f_C3R_MT, float, dax::warpPerspective<float, 3>)
DAX_FORWARD_3(DAXI_Rotate_8u_C1R, uint8_t, dax::rotate<uint8_t, 1>)
DAX_FORWARD_4(DAXI_Rotate_8u_C1R_MT, uint8_t, dax::rotate<uint8_t, 1>)
DAX_FORWARD_3(DAXI_Rotate_8u_C3R, uint8_t, dax::rotate<uint8_t, 3>)
DAX_FORWARD_4(DAXI_Rotate_8u_C3R_MT, uint8_t, dax::rotate<uint8_t, 3>)
DAX_FORWARD_3(DAXI_Rotate_16u_C1R, uint16_t, dax::rotate<uint16_t, 1>)
DAX_FORWARD_4(DAXI_Rotate_16u_C1R_MT, uint16_t, dax::rotate<uint16_t, 1>)
DAX_FORWARD_3(DAXI_Rotate_16u_C3R, uint16_t, dax::rotate<uint16_t, 3>)
DAX_FORWARD_4(DAXI_Rotate_16u_C3R_MT, uint16_t, dax::rotate<uint16_t, 3>)
DAX_FORWARD_3(DAXI_Rotate_16s_C1R, int16_t, dax::rotate<int16_t, 1>)
DAX_FORWARD_4(DAXI_Rotate_16s_C1R_MT, int16_t, dax::rotate<int16_t, 1>)
DAX_FORWARD_3(DAXI_Rotate_16s_C3R, int16_t, dax::rotate<int16_t, 3>)
DAX_FORWARD_4(DAXI_Rotate_16s_C3R_MT, int16_t, dax::rotate<int16_t, 3>)
DAX_FORWARD_3(DAXI_Rotate_32f_C1R, float, dax::rotate<float, 1>)
DAX_FORWARD_4(DAXI_Rotate_32f_C1R_MT, float, dax::rotate<float, 1>)
DAX_FORWARD_3(DAXI_Rotate_32f_C3R, float, dax::rotate<float, 3>)
DAX_FORWARD_4(DAXI_Rotate_32f_C3R_MT, float, dax::rotate<float, 3>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
