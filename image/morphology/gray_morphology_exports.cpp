#include "daxi/gray_morphology.h"
#include "image/morphology/gray_morphology.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                  \
  DaxStatus NAME(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes) { \
    return __VA_ARGS__(size, cfg, bytes);                                            \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                        \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,    \
                 const DaxiGrayMorphologyCfg* cfg, void* buffer) {                         \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, cfg, buffer); \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 const DaxiGrayMorphologyCfg* cfg, void* buffer) {                                                    \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, cfg, buffer);               \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size);                                 \
  }

DAX_FORWARD_1(DAXI_GrayErodeRectBufferSize_8u, uint8_t, dax::grayBufferSize<uint8_t, false>)
DAX_FORWARD_1(DAXI_GrayErodeRectBufferSize_16u, uint16_t, dax::grayBufferSize<uint16_t, false>)
DAX_FORWARD_1(DAXI_GrayErodeRectBufferSize_16s, int16_t, dax::grayBufferSize<int16_t, false>)
DAX_FORWARD_1(DAXI_GrayErodeRectBufferSize_32f, float, dax::grayBufferSize<float, false>)
DAX_FORWARD_1(DAXI_GrayDilateRectBufferSize_8u, uint8_t, dax::grayBufferSize<uint8_t, false>)
DAX_FORWARD_1(DAXI_GrayDilateRectBufferSize_16u, uint16_t, dax::grayBufferSize<uint16_t, false>)
DAX_FORWARD_1(DAXI_GrayDilateRectBufferSize_16s, int16_t, dax::grayBufferSize<int16_t, false>)
DAX_FORWARD_1(DAXI_GrayDilateRectBufferSize_32f, float, dax::grayBufferSize<float, false>)
DAX_FORWARD_1(DAXI_GrayOpenBufferSize_8u, uint8_t, dax::grayBufferSize<uint8_t, true>)
DAX_FORWARD_1(DAXI_GrayOpenBufferSize_16u, uint16_t, dax::grayBufferSize<uint16_t, true>)
DAX_FORWARD_1(DAXI_GrayOpenBufferSize_16s, int16_t, dax::grayBufferSize<int16_t, true>)
DAX_FORWARD_1(DAXI_GrayOpenBufferSize_32f, float, dax::grayBufferSize<float, true>)
DAX_FORWARD_1(DAXI_GrayCloseBufferSize_8u, uint8_t, dax::grayBufferSize<uint8_t, true>)
DAX_FORWARD_1(DAXI_GrayCloseBufferSize_16u, uint16_t, dax::grayBufferSize<uint16_t, true>)
DAX_FORWARD_1(DAXI_GrayCloseBufferSize_16s, int16_t, dax::grayBufferSize<int16_t, true>)
DAX_FORWARD_1(DAXI_GrayCloseBufferSize_32f, float, dax::grayBufferSize<float, true>)
DAX_FORWARD_1(DAXI_GrayGradientBufferSize_8u, uint8_t, dax::grayBufferSize<uint8_t, true>)
DAX_FORWARD_1(DAXI_GrayGradientBufferSize_16u, uint16_t, dax::grayBufferSize<uint16_t, true>)
DAX_FORWARD_1(DAXI_GrayGradientBufferSize_16s, int16_t, dax::grayBufferSize<int16_t, true>)
DAX_FORWARD_1(DAXI_GrayGradientBufferSize_32f, float, dax::grayBufferSize<float, true>)
DAX_FORWARD_1(DAXI_GrayTopHatBufferSize_8u, uint8_t, dax::grayBufferSize<uint8_t, true>)
DAX_FORWARD_1(DAXI_GrayTopHatBufferSize_16u, uint16_t, dax::grayBufferSize<uint16_t, true>)
DAX_FORWARD_1(DAXI_GrayTopHatBufferSize_16s, int16_t, dax::grayBufferSize<int16_t, true>)
DAX_FORWARD_1(DAXI_GrayTopHatBufferSize_32f, float, dax::grayBufferSize<float, true>)
DAX_FORWARD_1(DAXI_GrayBlackHatBufferSize_8u, uint8_t, dax::grayBufferSize<uint8_t, true>)
DAX_FORWARD_1(DAXI_GrayBlackHatBufferSize_16u, uint16_t, dax::grayBufferSize<uint16_t, true>)
DAX_FORWARD_1(DAXI_GrayBlackHatBufferSize_16s, int16_t, dax::grayBufferSize<int16_t, true>)
DAX_FORWARD_1(DAXI_GrayBlackHatBufferSize_32f, float, dax::grayBufferSize<float, true>)
DAX_FORWARD_2(DAXI_GrayErodeRect_8u_C1R, uint8_t, dax::grayOperation<dax::GrayOperation::erode, uint8_t>)
DAX_FORWARD_3(DAXI_GrayErodeRect_8u_C1R_MT, uint8_t, dax::grayOperation<dax::GrayOperation::erode, uint8_t>)
DAX_FORWARD_2(DAXI_GrayErodeRect_16u_C1R, uint16_t, dax::grayOperation<dax::GrayOperation::erode, uint16_t>)
DAX_FORWARD_3(DAXI_GrayErodeRect_16u_C1R_MT, uint16_t, dax::grayOperation<dax::GrayOperation::erode, uint16_t>)
DAX_FORWARD_2(DAXI_GrayErodeRect_16s_C1R, int16_t, dax::grayOperation<dax::GrayOperation::erode, int16_t>)
DAX_FORWARD_3(DAXI_GrayErodeRect_16s_C1R_MT, int16_t, dax::grayOperation<dax::GrayOperation::erode, int16_t>)
DAX_FORWARD_2(DAXI_GrayErodeRect_32f_C1R, float, dax::grayOperation<dax::GrayOperation::erode, float>)
DAX_FORWARD_3(DAXI_GrayErodeRect_32f_C1R_MT, float, dax::grayOperation<dax::GrayOperation::erode, float>)
DAX_FORWARD_2(DAXI_GrayDilateRect_8u_C1R, uint8_t, dax::grayOperation<dax::GrayOperation::dilate, uint8_t>)
DAX_FORWARD_3(DAXI_GrayDilateRect_8u_C1R_MT, uint8_t, dax::grayOperation<dax::GrayOperation::dilate, uint8_t>)
DAX_FORWARD_2(DAXI_GrayDilateRect_16u_C1R, uint16_t, dax::grayOperation<dax::GrayOperation::dilate, uint16_t>)
DAX_FORWARD_3(DAXI_GrayDilateRect_16u_C1R_MT, uint16_t, dax::grayOperation<dax::GrayOperation::dilate, uint16_t>)
DAX_FORWARD_2(DAXI_GrayDilateRect_16s_C1R, int16_t, dax::grayOperation<dax::GrayOperation::dilate, int16_t>)
DAX_FORWARD_3(DAXI_GrayDilateRect_16s_C1R_MT, int16_t, dax::grayOperation<dax::GrayOperation::dilate, int16_t>)
DAX_FORWARD_2(DAXI_GrayDilateRect_32f_C1R, float, dax::grayOperation<dax::GrayOperation::dilate, float>)
DAX_FORWARD_3(DAXI_GrayDilateRect_32f_C1R_MT, float, dax::grayOperation<dax::GrayOperation::dilate, float>)
DAX_FORWARD_2(DAXI_GrayOpen_8u_C1R, uint8_t, dax::grayOperation<dax::GrayOperation::open, uint8_t>)
DAX_FORWARD_3(DAXI_GrayOpen_8u_C1R_MT, uint8_t, dax::grayOperation<dax::GrayOperation::open, uint8_t>)
DAX_FORWARD_2(DAXI_GrayOpen_16u_C1R, uint16_t, dax::grayOperation<dax::GrayOperation::open, uint16_t>)
DAX_FORWARD_3(DAXI_GrayOpen_16u_C1R_MT, uint16_t, dax::grayOperation<dax::GrayOperation::open, uint16_t>)
DAX_FORWARD_2(DAXI_GrayOpen_16s_C1R, int16_t, dax::grayOperation<dax::GrayOperation::open, int16_t>)
DAX_FORWARD_3(DAXI_GrayOpen_16s_C1R_MT, int16_t, dax::grayOperation<dax::GrayOperation::open, int16_t>)
DAX_FORWARD_2(DAXI_GrayOpen_32f_C1R, float, dax::grayOperation<dax::GrayOperation::open, float>)
DAX_FORWARD_3(DAXI_GrayOpen_32f_C1R_MT, float, dax::grayOperation<dax::GrayOperation::open, float>)
DAX_FORWARD_2(DAXI_GrayClose_8u_C1R, uint8_t, dax::grayOperation<dax::GrayOperation::close, uint8_t>)
DAX_FORWARD_3(DAXI_GrayClose_8u_C1R_MT, uint8_t, dax::grayOperation<dax::GrayOperation::close, uint8_t>)
DAX_FORWARD_2(DAXI_GrayClose_16u_C1R, uint16_t, dax::grayOperation<dax::GrayOperation::close, uint16_t>)
DAX_FORWARD_3(DAXI_GrayClose_16u_C1R_MT, uint16_t, dax::grayOperation<dax::GrayOperation::close, uint16_t>)
DAX_FORWARD_2(DAXI_GrayClose_16s_C1R, int16_t, dax::grayOperation<dax::GrayOperation::close, int16_t>)
DAX_FORWARD_3(DAXI_GrayClose_16s_C1R_MT, int16_t, dax::grayOperation<dax::GrayOperation::close, int16_t>)
DAX_FORWARD_2(DAXI_GrayClose_32f_C1R, float, dax::grayOperation<dax::GrayOperation::close, float>)
DAX_FORWARD_3(DAXI_GrayClose_32f_C1R_MT, float, dax::grayOperation<dax::GrayOperation::close, float>)
DAX_FORWARD_2(DAXI_GrayGradient_8u_C1R, uint8_t, dax::grayOperation<dax::GrayOperation::gradient, uint8_t>)
DAX_FORWARD_3(DAXI_GrayGradient_8u_C1R_MT, uint8_t, dax::grayOperation<dax::GrayOperation::gradient, uint8_t>)
DAX_FORWARD_2(DAXI_GrayGradient_16u_C1R, uint16_t, dax::grayOperation<dax::GrayOperation::gradient, uint16_t>)
DAX_FORWARD_3(DAXI_GrayGradient_16u_C1R_MT, uint16_t, dax::grayOperation<dax::GrayOperation::gradient, uint16_t>)
DAX_FORWARD_2(DAXI_GrayGradient_16s_C1R, int16_t, dax::grayOperation<dax::GrayOperation::gradient, int16_t>)
DAX_FORWARD_3(DAXI_GrayGradient_16s_C1R_MT, int16_t, dax::grayOperation<dax::GrayOperation::gradient, int16_t>)
DAX_FORWARD_2(DAXI_GrayGradient_32f_C1R, float, dax::grayOperation<dax::GrayOperation::gradient, float>)
DAX_FORWARD_3(DAXI_GrayGradient_32f_C1R_MT, float, dax::grayOperation<dax::GrayOperation::gradient, float>)
DAX_FORWARD_2(DAXI_GrayTopHat_8u_C1R, uint8_t, dax::grayOperation<dax::GrayOperation::topHat, uint8_t>)
DAX_FORWARD_3(DAXI_GrayTopHat_8u_C1R_MT, uint8_t, dax::grayOperation<dax::GrayOperation::topHat, uint8_t>)
DAX_FORWARD_2(DAXI_GrayTopHat_16u_C1R, uint16_t, dax::grayOperation<dax::GrayOperation::topHat, uint16_t>)
DAX_FORWARD_3(DAXI_GrayTopHat_16u_C1R_MT, uint16_t, dax::grayOperation<dax::GrayOperation::topHat, uint16_t>)
DAX_FORWARD_2(DAXI_GrayTopHat_16s_C1R, int16_t, dax::grayOperation<dax::GrayOperation::topHat, int16_t>)
DAX_FORWARD_3(DAXI_GrayTopHat_16s_C1R_MT, int16_t, dax::grayOperation<dax::GrayOperation::topHat, int16_t>)
DAX_FORWARD_2(DAXI_GrayTopHat_32f_C1R, float, dax::grayOperation<dax::GrayOperation::topHat, float>)
DAX_FORWARD_3(DAXI_GrayTopHat_32f_C1R_MT, float, dax::grayOperation<dax::GrayOperation::topHat, float>)
DAX_FORWARD_2(DAXI_GrayBlackHat_8u_C1R, uint8_t, dax::grayOperation<dax::GrayOperation::blackHat, uint8_t>)
DAX_FORWARD_3(DAXI_GrayBlackHat_8u_C1R_MT, uint8_t, dax::grayOperation<dax::GrayOperation::blackHat, uint8_t>)
DAX_FORWARD_2(DAXI_GrayBlackHat_16u_C1R, uint16_t, dax::grayOperation<dax::GrayOperation::blackHat, uint16_t>)
DAX_FORWARD_3(DAXI_GrayBlackHat_16u_C1R_MT, uint16_t, dax::grayOperation<dax::GrayOperation::blackHat, uint16_t>)
DAX_FORWARD_2(DAXI_GrayBlackHat_16s_C1R, int16_t, dax::grayOperation<dax::GrayOperation::blackHat, int16_t>)
DAX_FORWARD_3(DAXI_GrayBlackHat_16s_C1R_MT, int16_t, dax::grayOperation<dax::GrayOperation::blackHat, int16_t>)
DAX_FORWARD_2(DAXI_GrayBlackHat_32f_C1R, float, dax::grayOperation<dax::GrayOperation::blackHat, float>)
DAX_FORWARD_3(DAXI_GrayBlackHat_32f_C1R_MT, float, dax::grayOperation<dax::GrayOperation::blackHat, float>)
DAX_FORWARD_4(DAXI_GrayErode3x3_8u_C1R, uint8_t, dax::grayExtreme3x3<dax::Smaller, uint8_t>)
DAX_FORWARD_4(DAXI_GrayErode3x3_16u_C1R, uint16_t, dax::grayExtreme3x3<dax::Smaller, uint16_t>)
DAX_FORWARD_4(DAXI_GrayErode3x3_16s_C1R, int16_t, dax::grayExtreme3x3<dax::Smaller, int16_t>)
DAX_FORWARD_4(DAXI_GrayErode3x3_32f_C1R, float, dax::grayExtreme3x3<dax::Smaller, float>)
DAX_FORWARD_4(DAXI_GrayDilate3x3_8u_C1R, uint8_t, dax::grayExtreme3x3<dax::Larger, uint8_t>)
DAX_FORWARD_4(DAXI_GrayDilate3x3_16u_C1R, uint16_t, dax::grayExtreme3x3<dax::Larger, uint16_t>)
DAX_FORWARD_4(DAXI_GrayDilate3x3_16s_C1R, int16_t, dax::grayExtreme3x3<dax::Larger, int16_t>)
DAX_FORWARD_4(DAXI_GrayDilate3x3_32f_C1R, float, dax::grayExtreme3x3<dax::Larger, float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
