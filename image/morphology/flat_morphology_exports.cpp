#include "daxi/flat_morphology.h"
#include "image/morphology/flat_morphology.h"

#define DAX_FORWARD_1(NAME, T, ...)                                            \
  DaxStatus NAME(DaxiSize size, const DaxiFlatLineCfg* cfg, uint64_t* bytes) { \
    return __VA_ARGS__(size, cfg, bytes);                                      \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                \
  DaxStatus NAME(DaxiSize size, const uint8_t* element, int32_t elementStep, DaxiSize elementSize, \
                 const DaxiFlatMaskCfg* cfg, uint64_t* bytes) {                                    \
    return __VA_ARGS__(size, {element, elementStep, elementSize}, cfg, bytes);                     \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                         \
  DaxStatus NAME(DaxiSize size, const uint8_t* hit, int32_t hitStep, const uint8_t* miss, int32_t missStep, \
                 DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, uint64_t* bytes) {                       \
    return __VA_ARGS__(size, {hit, hitStep, elementSize}, {miss, missStep, elementSize}, cfg, bytes);       \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                                 \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const DaxiFlatLineCfg* cfg, \
                 void* buffer) {                                                                                    \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, cfg, buffer);                          \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 const DaxiFlatLineCfg* cfg, void* buffer) {                                                          \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, cfg, buffer);               \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                                                                    \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const uint8_t* element,        \
                 int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg, void* buffer) {                \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, {element, elementStep, elementSize}, cfg, \
                       buffer);                                                                                        \
  }
#define DAX_FORWARD_7(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 const uint8_t* element, int32_t elementStep, DaxiSize elementSize, const DaxiFlatMaskCfg* cfg,       \
                 void* buffer) {                                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,                             \
                       {element, elementStep, elementSize}, cfg, buffer);                                             \
  }
#define DAX_FORWARD_8(NAME, T, ...)                                                                         \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const uint8_t* hit, \
                 int32_t hitStep, const uint8_t* miss, int32_t missStep, DaxiSize elementSize,              \
                 const DaxiFlatMaskCfg* cfg, void* buffer) {                                                \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, {hit, hitStep, elementSize},   \
                       {miss, missStep, elementSize}, cfg, buffer);                                         \
  }
#define DAX_FORWARD_9(NAME, T, ...)                                                                                    \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,  \
                 const uint8_t* hit, int32_t hitStep, const uint8_t* miss, int32_t missStep, DaxiSize elementSize,     \
                 const DaxiFlatMaskCfg* cfg, void* buffer) {                                                           \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, {hit, hitStep, elementSize}, \
                       {miss, missStep, elementSize}, cfg, buffer);                                                    \
  }

DAX_FORWARD_1(DAXI_GrayErodeLineBufferSize_8u, uint8_t, dax::lineBufferSize<uint8_t>)
DAX_FORWARD_1(DAXI_GrayErodeLineBufferSize_16u, uint16_t, dax::lineBufferSize<uint16_t>)
DAX_FORWARD_1(DAXI_GrayErodeLineBufferSize_16s, int16_t, dax::lineBufferSize<int16_t>)
DAX_FORWARD_1(DAXI_GrayErodeLineBufferSize_32f, float, dax::lineBufferSize<float>)
DAX_FORWARD_1(DAXI_GrayDilateLineBufferSize_8u, uint8_t, dax::lineBufferSize<uint8_t>)
DAX_FORWARD_1(DAXI_GrayDilateLineBufferSize_16u, uint16_t, dax::lineBufferSize<uint16_t>)
DAX_FORWARD_1(DAXI_GrayDilateLineBufferSize_16s, int16_t, dax::lineBufferSize<int16_t>)
DAX_FORWARD_1(DAXI_GrayDilateLineBufferSize_32f, float, dax::lineBufferSize<float>)
DAX_FORWARD_2(DAXI_GrayErodeMaskBufferSize_8u, uint8_t, dax::maskBufferSize<uint8_t>)
DAX_FORWARD_2(DAXI_GrayErodeMaskBufferSize_16u, uint16_t, dax::maskBufferSize<uint16_t>)
DAX_FORWARD_2(DAXI_GrayErodeMaskBufferSize_16s, int16_t, dax::maskBufferSize<int16_t>)
DAX_FORWARD_2(DAXI_GrayErodeMaskBufferSize_32f, float, dax::maskBufferSize<float>)
DAX_FORWARD_2(DAXI_GrayDilateMaskBufferSize_8u, uint8_t, dax::maskBufferSize<uint8_t>)
DAX_FORWARD_2(DAXI_GrayDilateMaskBufferSize_16u, uint16_t, dax::maskBufferSize<uint16_t>)
DAX_FORWARD_2(DAXI_GrayDilateMaskBufferSize_16s, int16_t, dax::maskBufferSize<int16_t>)
DAX_FORWARD_2(DAXI_GrayDilateMaskBufferSize_32f, float, dax::maskBufferSize<float>)
DAX_FORWARD_2(DAXI_ErodeMaskBufferSize_8u, uint8_t, dax::maskBufferSize<uint8_t>)
DAX_FORWARD_2(DAXI_DilateMaskBufferSize_8u, uint8_t, dax::maskBufferSize<uint8_t>)
DAX_FORWARD_3(DAXI_HitOrMissBufferSize_8u, uint8_t, dax::hitOrMissBufferSize)
DAX_FORWARD_4(DAXI_GrayErodeLine_8u_C1R, uint8_t, dax::lineExtreme<true, uint8_t>)
DAX_FORWARD_5(DAXI_GrayErodeLine_8u_C1R_MT, uint8_t, dax::lineExtreme<true, uint8_t>)
DAX_FORWARD_4(DAXI_GrayErodeLine_16u_C1R, uint16_t, dax::lineExtreme<true, uint16_t>)
DAX_FORWARD_5(DAXI_GrayErodeLine_16u_C1R_MT, uint16_t, dax::lineExtreme<true, uint16_t>)
DAX_FORWARD_4(DAXI_GrayErodeLine_16s_C1R, int16_t, dax::lineExtreme<true, int16_t>)
DAX_FORWARD_5(DAXI_GrayErodeLine_16s_C1R_MT, int16_t, dax::lineExtreme<true, int16_t>)
DAX_FORWARD_4(DAXI_GrayErodeLine_32f_C1R, float, dax::lineExtreme<true, float>)
DAX_FORWARD_5(DAXI_GrayErodeLine_32f_C1R_MT, float, dax::lineExtreme<true, float>)
DAX_FORWARD_4(DAXI_GrayDilateLine_8u_C1R, uint8_t, dax::lineExtreme<false, uint8_t>)
DAX_FORWARD_5(DAXI_GrayDilateLine_8u_C1R_MT, uint8_t, dax::lineExtreme<false, uint8_t>)
DAX_FORWARD_4(DAXI_GrayDilateLine_16u_C1R, uint16_t, dax::lineExtreme<false, uint16_t>)
DAX_FORWARD_5(DAXI_GrayDilateLine_16u_C1R_MT, uint16_t, dax::lineExtreme<false, uint16_t>)
DAX_FORWARD_4(DAXI_GrayDilateLine_16s_C1R, int16_t, dax::lineExtreme<false, int16_t>)
DAX_FORWARD_5(DAXI_GrayDilateLine_16s_C1R_MT, int16_t, dax::lineExtreme<false, int16_t>)
DAX_FORWARD_4(DAXI_GrayDilateLine_32f_C1R, float, dax::lineExtreme<false, float>)
DAX_FORWARD_5(DAXI_GrayDilateLine_32f_C1R_MT, float, dax::lineExtreme<false, float>)
DAX_FORWARD_6(DAXI_GrayErodeMask_8u_C1R, uint8_t, dax::maskExtreme<dax::PixelSense::grey, true, uint8_t>)
DAX_FORWARD_7(DAXI_GrayErodeMask_8u_C1R_MT, uint8_t, dax::maskExtreme<dax::PixelSense::grey, true, uint8_t>)
DAX_FORWARD_6(DAXI_GrayErodeMask_16u_C1R, uint16_t, dax::maskExtreme<dax::PixelSense::grey, true, uint16_t>)
DAX_FORWARD_7(DAXI_GrayErodeMask_16u_C1R_MT, uint16_t, dax::maskExtreme<dax::PixelSense::grey, true, uint16_t>)
DAX_FORWARD_6(DAXI_GrayErodeMask_16s_C1R, int16_t, dax::maskExtreme<dax::PixelSense::grey, true, int16_t>)
DAX_FORWARD_7(DAXI_GrayErodeMask_16s_C1R_MT, int16_t, dax::maskExtreme<dax::PixelSense::grey, true, int16_t>)
DAX_FORWARD_6(DAXI_GrayErodeMask_32f_C1R, float, dax::maskExtreme<dax::PixelSense::grey, true, float>)
DAX_FORWARD_7(DAXI_GrayErodeMask_32f_C1R_MT, float, dax::maskExtreme<dax::PixelSense::grey, true, float>)
DAX_FORWARD_6(DAXI_GrayDilateMask_8u_C1R, uint8_t, dax::maskExtreme<dax::PixelSense::grey, false, uint8_t>)
DAX_FORWARD_7(DAXI_GrayDilateMask_8u_C1R_MT, uint8_t, dax::maskExtreme<dax::PixelSense::grey, false, uint8_t>)
DAX_FORWARD_6(DAXI_GrayDilateMask_16u_C1R, uint16_t, dax::maskExtreme<dax::PixelSense::grey, false, uint16_t>)
DAX_FORWARD_7(DAXI_GrayDilateMask_16u_C1R_MT, uint16_t, dax::maskExtreme<dax::PixelSense::grey, false, uint16_t>)
DAX_FORWARD_6(DAXI_GrayDilateMask_16s_C1R, int16_t, dax::maskExtreme<dax::PixelSense::grey, false, int16_t>)
DAX_FORWARD_7(DAXI_GrayDilateMask_16s_C1R_MT, int16_t, dax::maskExtreme<dax::PixelSense::grey, false, int16_t>)
DAX_FORWARD_6(DAXI_GrayDilateMask_32f_C1R, float, dax::maskExtreme<dax::PixelSense::grey, false, float>)
DAX_FORWARD_7(DAXI_GrayDilateMask_32f_C1R_MT, float, dax::maskExtreme<dax::PixelSense::grey, false, float>)
DAX_FORWARD_6(DAXI_ErodeMask_8u_C1R, uint8_t, dax::maskExtreme<dax::PixelSense::binary, true, uint8_t>)
DAX_FORWARD_7(DAXI_ErodeMask_8u_C1R_MT, uint8_t, dax::maskExtreme<dax::PixelSense::binary, true, uint8_t>)
DAX_FORWARD_6(DAXI_DilateMask_8u_C1R, uint8_t, dax::maskExtreme<dax::PixelSense::binary, false, uint8_t>)
DAX_FORWARD_7(DAXI_DilateMask_8u_C1R_MT, uint8_t, dax::maskExtreme<dax::PixelSense::binary, false, uint8_t>)
DAX_FORWARD_8(DAXI_HitOrMiss_8u_C1R, uint8_t, dax::hitOrMiss)
DAX_FORWARD_9(DAXI_HitOrMiss_8u_C1R_MT, uint8_t, dax::hitOrMiss)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
#undef DAX_FORWARD_7
#undef DAX_FORWARD_8
#undef DAX_FORWARD_9
