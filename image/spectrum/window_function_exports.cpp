#include "daxi/window_function.h"
#include "image/spectrum/window_function.h"

#define DAX_FORWARD_1(NAME, T, D, ...)             \
  DaxStatus NAME(DaxiSize size, uint64_t* bytes) { \
    return __VA_ARGS__(size, bytes);               \
  }
#define DAX_FORWARD_2(NAME, T, ...)                \
  DaxStatus NAME(DaxiSize size, uint64_t* bytes) { \
    return __VA_ARGS__(size, bytes);               \
  }
#define DAX_FORWARD_3(NAME, T, D, ...)                                                                            \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, const DaxiWindowCfg* cfg, \
                 void* buffer) {                                                                                  \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, cfg, buffer);                        \
  }
#define DAX_FORWARD_4(NAME, T, D, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, \
                 const DaxiWindowCfg* cfg, void* buffer) {                                                            \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, cfg, buffer);               \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                                               \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const DaxiWindowCfg* cfg, \
                 void* buffer) {                                                                                  \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, cfg, buffer);                        \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 const DaxiWindowCfg* cfg, void* buffer) {                                                            \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, cfg, buffer);               \
  }

DAX_FORWARD_1(DAXI_ApplyWindowBufferSize_8u32f, uint8_t, float, dax::applyWindowBufferSize)
DAX_FORWARD_1(DAXI_ApplyWindowBufferSize_16u32f, uint16_t, float, dax::applyWindowBufferSize)
DAX_FORWARD_2(DAXI_ApplyWindowBufferSize_32f, float, dax::applyWindowBufferSize)
DAX_FORWARD_2(DAXI_ApplyWindowBufferSize_64f, double, dax::applyWindowBufferSize)
DAX_FORWARD_3(DAXI_ApplyWindow_8u32f_C1R, uint8_t, float, dax::applyWindow<uint8_t, float>)
DAX_FORWARD_4(DAXI_ApplyWindow_8u32f_C1R_MT, uint8_t, float, dax::applyWindow<uint8_t, float>)
DAX_FORWARD_3(DAXI_ApplyWindow_16u32f_C1R, uint16_t, float, dax::applyWindow<uint16_t, float>)
DAX_FORWARD_4(DAXI_ApplyWindow_16u32f_C1R_MT, uint16_t, float, dax::applyWindow<uint16_t, float>)
DAX_FORWARD_5(DAXI_ApplyWindow_32f_C1R, float, dax::applyWindow<float, float>)
DAX_FORWARD_6(DAXI_ApplyWindow_32f_C1R_MT, float, dax::applyWindow<float, float>)
DAX_FORWARD_5(DAXI_ApplyWindow_64f_C1R, double, dax::applyWindow<double, double>)
DAX_FORWARD_6(DAXI_ApplyWindow_64f_C1R_MT, double, dax::applyWindow<double, double>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
