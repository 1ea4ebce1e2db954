#include "daxi/convert.h"
#include "image/convert/convert.h"

#define DAX_FORWARD_1(NAME, T, D, ...)                                                                               \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, const DaxiConvertCfg* cfg) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, cfg);                                   \
  }
#define DAX_FORWARD_2(NAME, T, D, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, \
                 const DaxiConvertCfg* cfg) {                                                                         \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, cfg);                       \
  }
#define DAX_FORWARD_3(NAME, T, D, ...)                                                    \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);             \
  }
#define DAX_FORWARD_4(NAME, T, D, ...)                                                                 \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst, int32_t dstStep, \
                 DaxiSize size) {                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);             \
  }

DAX_FORWARD_1(DAXI_Convert_8u16u_C1R, uint8_t, uint16_t, dax::convert<uint8_t, uint16_t, 1>)
DAX_FORWARD_2(DAXI_Convert_8u16u_C1R_MT, uint8_t, uint16_t, dax::convert<uint8_t, uint16_t, 1>)
DAX_FORWARD_1(DAXI_Convert_8u16u_C3R, uint8_t, uint16_t, dax::convert<uint8_t, uint16_t, 3>)
DAX_FORWARD_2(DAXI_Convert_8u16u_C3R_MT, uint8_t, uint16_t, dax::convert<uint8_t, uint16_t, 3>)
DAX_FORWARD_1(DAXI_Convert_8u16s_C1R, uint8_t, int16_t, dax::convert<uint8_t, int16_t, 1>)
DAX_FORWARD_2(DAXI_Convert_8u16s_C1R_MT, uint8_t, int16_t, dax::convert<uint8_t, int16_t, 1>)
DAX_FORWARD_1(DAXI_Convert_8u16s_C3R, uint8_t, int16_t, dax::convert<uint8_t, int16_t, 3>)
DAX_FORWARD_2(DAXI_Convert_8u16s_C3R_MT, uint8_t, int16_t, dax::convert<uint8_t, int16_t, 3>)
DAX_FORWARD_1(DAXI_Convert_8u32f_C1R, uint8_t, float, dax::convert<uint8_t, float, 1>)
DAX_FORWARD_2(DAXI_Convert_8u32f_C1R_MT, uint8_t, float, dax::convert<uint8_t, float, 1>)
DAX_FORWARD_1(DAXI_Convert_8u32f_C3R, uint8_t, float, dax::convert<uint8_t, float, 3>)
DAX_FORWARD_2(DAXI_Convert_8u32f_C3R_MT, uint8_t, float, dax::convert<uint8_t, float, 3>)
DAX_FORWARD_1(DAXI_Convert_16u8u_C1R, uint16_t, uint8_t, dax::convert<uint16_t, uint8_t, 1>)
DAX_FORWARD_2(DAXI_Convert_16u8u_C1R_MT, uint16_t, uint8_t, dax::convert<uint16_t, uint8_t, 1>)
DAX_FORWARD_1(DAXI_Convert_16u8u_C3R, uint16_t, uint8_t, dax::convert<uint16_t, uint8_t, 3>)
DAX_FORWARD_2(DAXI_Convert_16u8u_C3R_MT, uint16_t, uint8_t, dax::convert<uint16_t, uint8_t, 3>)
DAX_FORWARD_1(DAXI_Convert_16u16s_C1R, uint16_t, int16_t, dax::convert<uint16_t, int16_t, 1>)
DAX_FORWARD_2(DAXI_Convert_16u16s_C1R_MT, uint16_t, int16_t, dax::convert<uint16_t, int16_t, 1>)
DAX_FORWARD_1(DAXI_Convert_16u16s_C3R, uint16_t, int16_t, dax::convert<uint16_t, int16_t, 3>)
DAX_FORWARD_2(DAXI_Convert_16u16s_C3R_MT, uint16_t, int16_t, dax::convert<uint16_t, int16_t, 3>)
DAX_FORWARD_1(DAXI_Convert_16u32f_C1R, uint16_t, float, dax::convert<uint16_t, float, 1>)
DAX_FORWARD_2(DAXI_Convert_16u32f_C1R_MT, uint16_t, float, dax::convert<uint16_t, float, 1>)
DAX_FORWARD_1(DAXI_Convert_16u32f_C3R, uint16_t, float, dax::convert<uint16_t, float, 3>)
DAX_FORWARD_2(DAXI_Convert_16u32f_C3R_MT, uint16_t, float, dax::convert<uint16_t, float, 3>)
DAX_FORWARD_1(DAXI_Convert_16s8u_C1R, int16_t, uint8_t, dax::convert<int16_t, uint8_t, 1>)
DAX_FORWARD_2(DAXI_Convert_16s8u_C1R_MT, int16_t, uint8_t, dax::convert<int16_t, uint8_t, 1>)
DAX_FORWARD_1(DAXI_Convert_16s8u_C3R, int16_t, uint8_t, dax::convert<int16_t, uint8_t, 3>)
DAX_FORWARD_2(DAXI_Convert_16s8u_C3R_MT, int16_t, uint8_t, dax::convert<int16_t, uint8_t, 3>)
DAX_FORWARD_1(DAXI_Convert_16s16u_C1R, int16_t, uint16_t, dax::convert<int16_t, uint16_t, 1>)
DAX_FORWARD_2(DAXI_Convert_16s16u_C1R_MT, int16_t, uint16_t, dax::convert<int16_t, uint16_t, 1>)
DAX_FORWARD_1(DAXI_Convert_16s16u_C3R, int16_t, uint16_t, dax::convert<int16_t, uint16_t, 3>)
DAX_FORWARD_2(DAXI_Convert_16s16u_C3R_MT, int16_t, uint16_t, dax::convert<int16_t, uint16_t, 3>)
DAX_FORWARD_1(DAXI_Convert_16s32f_C1R, int16_t, float, dax::convert<int16_t, float, 1>)
DAX_FORWARD_2(DAXI_Convert_16s32f_C1R_MT, int16_t, float, dax::convert<int16_t, float, 1>)
DAX_FORWARD_1(DAXI_Convert_16s32f_C3R, int16_t, float, dax::convert<int16_t, float, 3>)
DAX_FORWARD_2(DAXI_Convert_16s32f_C3R_MT, int16_t, float, dax::convert<int16_t, float, 3>)
DAX_FORWARD_1(DAXI_Convert_32f8u_C1R, float, uint8_t, dax::convert<float, uint8_t, 1>)
DAX_FORWARD_2(DAXI_Convert_32f8u_C1R_MT, float, uint8_t, dax::convert<float, uint8_t, 1>)
DAX_FORWARD_1(DAXI_Convert_32f8u_C3R, float, uint8_t, dax::convert<float, uint8_t, 3>)
DAX_FORWARD_2(DAXI_Convert_32f8u_C3R_MT, float, uint8_t, dax::convert<float, uint8_t, 3>)
DAX_FORWARD_1(DAXI_Convert_32f16u_C1R, float, uint16_t, dax::convert<float, uint16_t, 1>)
DAX_FORWARD_2(DAXI_Convert_32f16u_C1R_MT, float, uint16_t, dax::convert<float, uint16_t, 1>)
DAX_FORWARD_1(DAXI_Convert_32f16u_C3R, float, uint16_t, dax::convert<float, uint16_t, 3>)
DAX_FORWARD_2(DAXI_Convert_32f16u_C3R_MT, float, uint16_t, dax::convert<float, uint16_t, 3>)
DAX_FORWARD_1(DAXI_Convert_32f16s_C1R, float, int16_t, dax::convert<float, int16_t, 1>)
DAX_FORWARD_2(DAXI_Convert_32f16s_C1R_MT, float, int16_t, dax::convert<float, int16_t, 1>)
DAX_FORWARD_1(DAXI_Convert_32f16s_C3R, float, int16_t, dax::convert<float, int16_t, 3>)
DAX_FORWARD_2(DAXI_Convert_32f16s_C3R_MT, float, int16_t, dax::convert<float, int16_t, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_8u16u_C1R, uint8_t, uint16_t, dax::convertFullRange<uint8_t, uint16_t, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_8u16u_C1R_MT, uint8_t, uint16_t, dax::convertFullRange<uint8_t, uint16_t, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_8u16u_C3R, uint8_t, uint16_t, dax::convertFullRange<uint8_t, uint16_t, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_8u16u_C3R_MT, uint8_t, uint16_t, dax::convertFullRange<uint8_t, uint16_t, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_8u16s_C1R, uint8_t, int16_t, dax::convertFullRange<uint8_t, int16_t, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_8u16s_C1R_MT, uint8_t, int16_t, dax::convertFullRange<uint8_t, int16_t, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_8u16s_C3R, uint8_t, int16_t, dax::convertFullRange<uint8_t, int16_t, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_8u16s_C3R_MT, uint8_t, int16_t, dax::convertFullRange<uint8_t, int16_t, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_8u32f_C1R, uint8_t, float, dax::convertFullRange<uint8_t, float, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_8u32f_C1R_MT, uint8_t, float, dax::convertFullRange<uint8_t, float, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_8u32f_C3R, uint8_t, float, dax::convertFullRange<uint8_t, float, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_8u32f_C3R_MT, uint8_t, float, dax::convertFullRange<uint8_t, float, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16u8u_C1R, uint16_t, uint8_t, dax::convertFullRange<uint16_t, uint8_t, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16u8u_C1R_MT, uint16_t, uint8_t, dax::convertFullRange<uint16_t, uint8_t, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16u8u_C3R, uint16_t, uint8_t, dax::convertFullRange<uint16_t, uint8_t, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16u8u_C3R_MT, uint16_t, uint8_t, dax::convertFullRange<uint16_t, uint8_t, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16u16s_C1R, uint16_t, int16_t, dax::convertFullRange<uint16_t, int16_t, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16u16s_C1R_MT, uint16_t, int16_t, dax::convertFullRange<uint16_t, int16_t, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16u16s_C3R, uint16_t, int16_t, dax::convertFullRange<uint16_t, int16_t, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16u16s_C3R_MT, uint16_t, int16_t, dax::convertFullRange<uint16_t, int16_t, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16u32f_C1R, uint16_t, float, dax::convertFullRange<uint16_t, float, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16u32f_C1R_MT, uint16_t, float, dax::convertFullRange<uint16_t, float, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16u32f_C3R, uint16_t, float, dax::convertFullRange<uint16_t, float, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16u32f_C3R_MT, uint16_t, float, dax::convertFullRange<uint16_t, float, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16s8u_C1R, int16_t, uint8_t, dax::convertFullRange<int16_t, uint8_t, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16s8u_C1R_MT, int16_t, uint8_t, dax::convertFullRange<int16_t, uint8_t, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16s8u_C3R, int16_t, uint8_t, dax::convertFullRange<int16_t, uint8_t, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16s8u_C3R_MT, int16_t, uint8_t, dax::convertFullRange<int16_t, uint8_t, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16s16u_C1R, int16_t, uint16_t, dax::convertFullRange<int16_t, uint16_t, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16s16u_C1R_MT, int16_t, uint16_t, dax::convertFullRange<int16_t, uint16_t, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16s16u_C3R, int16_t, uint16_t, dax::convertFullRange<int16_t, uint16_t, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16s16u_C3R_MT, int16_t, uint16_t, dax::convertFullRange<int16_t, uint16_t, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16s32f_C1R, int16_t, float, dax::convertFullRange<int16_t, float, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16s32f_C1R_MT, int16_t, float, dax::convertFullRange<int16_t, float, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_16s32f_C3R, int16_t, float, dax::convertFullRange<int16_t, float, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_16s32f_C3R_MT, int16_t, float, dax::convertFullRange<int16_t, float, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_32f8u_C1R, float, uint8_t, dax::convertFullRange<float, uint8_t, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_32f8u_C1R_MT, float, uint8_t, dax::convertFullRange<float, uint8_t, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_32f8u_C3R, float, uint8_t, dax::convertFullRange<float, uint8_t, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_32f8u_C3R_MT, float, uint8_t, dax::convertFullRange<float, uint8_t, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_32f16u_C1R, float, uint16_t, dax::convertFullRange<float, uint16_t, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_32f16u_C1R_MT, float, uint16_t, dax::convertFullRange<float, uint16_t, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_32f16u_C3R, float, uint16_t, dax::convertFullRange<float, uint16_t, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_32f16u_C3R_MT, float, uint16_t, dax::convertFullRange<float, uint16_t, 3>)
DAX_FORWARD_3(DAXI_ConvertFullRange_32f16s_C1R, float, int16_t, dax::convertFullRange<float, int16_t, 1>)
DAX_FORWARD_4(DAXI_ConvertFullRange_32f16s_C1R_MT, float, int16_t, dax::convertFullRange<float, int16_t, 1>)
DAX_FORWARD_3(DAXI_ConvertFullRange_32f16s_C3R, float, int16_t, dax::convertFullRange<float, int16_t, 3>)
DAX_FORWARD_4(DAXI_ConvertFullRange_32f16s_C3R_MT, float, int16_t, dax::convertFullRange<float, int16_t, 3>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
