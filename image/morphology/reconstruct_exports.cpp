#include "daxi/reconstruct.h"
#include "image/morphology/reconstruct.h"

#define DAX_FORWARD_1(NAME, T, ...)                                      \
  DaxStatus NAME(DaxiSize size, int32_t connectivity, uint64_t* bytes) { \
    return __VA_ARGS__(size, connectivity, bytes);                       \
  }
#define DAX_FORWARD_2(NAME, T, D, ...)                                   \
  DaxStatus NAME(DaxiSize size, int32_t connectivity, uint64_t* bytes) { \
    return __VA_ARGS__(size, connectivity, bytes);                       \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                                  \
  DaxStatus NAME(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t connectivity, void* buffer) {                                                               \
    return __VA_ARGS__(src1, step1, src2, step2, dst, dstStep, size, connectivity, buffer);                          \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                           \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t connectivity, \
                 void* buffer) {                                                                              \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, connectivity, buffer);                               \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                                                \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T h, int32_t connectivity, \
                 void* buffer) {                                                                                   \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, h, connectivity, buffer);                                 \
  }
#define DAX_FORWARD_6(NAME, T, D, ...)                                                                        \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, int32_t connectivity, \
                 void* buffer) {                                                                              \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, connectivity, buffer);                               \
  }

DAX_FORWARD_1(DAXI_ReconstructDilateBufferSize_8u, uint8_t, dax::reconstructionBufferSize<uint8_t>)
DAX_FORWARD_1(DAXI_ReconstructDilateBufferSize_16u, uint16_t, dax::reconstructionBufferSize<uint16_t>)
DAX_FORWARD_1(DAXI_ReconstructDilateBufferSize_32f, float, dax::reconstructionBufferSize<float>)
DAX_FORWARD_1(DAXI_ReconstructErodeBufferSize_8u, uint8_t, dax::reconstructionBufferSize<uint8_t>)
DAX_FORWARD_1(DAXI_ReconstructErodeBufferSize_16u, uint16_t, dax::reconstructionBufferSize<uint16_t>)
DAX_FORWARD_1(DAXI_ReconstructErodeBufferSize_32f, float, dax::reconstructionBufferSize<float>)
DAX_FORWARD_1(DAXI_FillHolesBufferSize_8u, uint8_t, dax::reconstructionBufferSize<uint8_t>)
DAX_FORWARD_1(DAXI_FillHolesBufferSize_16u, uint16_t, dax::reconstructionBufferSize<uint16_t>)
DAX_FORWARD_1(DAXI_FillHolesBufferSize_32f, float, dax::reconstructionBufferSize<float>)
DAX_FORWARD_1(DAXI_ClearBorderBufferSize_8u, uint8_t, dax::reconstructionBufferSize<uint8_t>)
DAX_FORWARD_1(DAXI_ClearBorderBufferSize_16u, uint16_t, dax::reconstructionBufferSize<uint16_t>)
DAX_FORWARD_1(DAXI_ClearBorderBufferSize_32f, float, dax::reconstructionBufferSize<float>)
DAX_FORWARD_1(DAXI_HMaximaBufferSize_8u, uint8_t, dax::reconstructionBufferSize<uint8_t>)
DAX_FORWARD_1(DAXI_HMaximaBufferSize_16u, uint16_t, dax::reconstructionBufferSize<uint16_t>)
DAX_FORWARD_1(DAXI_HMaximaBufferSize_32f, float, dax::reconstructionBufferSize<float>)
DAX_FORWARD_1(DAXI_HMinimaBufferSize_8u, uint8_t, dax::reconstructionBufferSize<uint8_t>)
DAX_FORWARD_1(DAXI_HMinimaBufferSize_16u, uint16_t, dax::reconstructionBufferSize<uint16_t>)
DAX_FORWARD_1(DAXI_HMinimaBufferSize_32f, float, dax::reconstructionBufferSize<float>)
DAX_FORWARD_1(DAXI_RegionalMaximaBufferSize_8u, uint8_t, dax::regionalBufferSize<uint8_t>)
DAX_FORWARD_2(DAXI_RegionalMaximaBufferSize_16u, uint16_t, uint8_t, dax::regionalBufferSize<uint16_t>)
DAX_FORWARD_2(DAXI_RegionalMaximaBufferSize_32f, float, uint8_t, dax::regionalBufferSize<float>)
DAX_FORWARD_1(DAXI_RegionalMinimaBufferSize_8u, uint8_t, dax::regionalBufferSize<uint8_t>)
DAX_FORWARD_2(DAXI_RegionalMinimaBufferSize_16u, uint16_t, uint8_t, dax::regionalBufferSize<uint16_t>)
DAX_FORWARD_2(DAXI_RegionalMinimaBufferSize_32f, float, uint8_t, dax::regionalBufferSize<float>)
DAX_FORWARD_3(DAXI_ReconstructDilate_8u_C1R, uint8_t, dax::reconstruct<false, uint8_t>)
DAX_FORWARD_3(DAXI_ReconstructDilate_16u_C1R, uint16_t, dax::reconstruct<false, uint16_t>)
DAX_FORWARD_3(DAXI_ReconstructDilate_32f_C1R, float, dax::reconstruct<false, float>)
DAX_FORWARD_3(DAXI_ReconstructErode_8u_C1R, uint8_t, dax::reconstruct<true, uint8_t>)
DAX_FORWARD_3(DAXI_ReconstructErode_16u_C1R, uint16_t, dax::reconstruct<true, uint16_t>)
DAX_FORWARD_3(DAXI_ReconstructErode_32f_C1R, float, dax::reconstruct<true, float>)
DAX_FORWARD_4(DAXI_FillHoles_8u_C1R, uint8_t, dax::fillHoles<uint8_t>)
DAX_FORWARD_4(DAXI_FillHoles_16u_C1R, uint16_t, dax::fillHoles<uint16_t>)
DAX_FORWARD_4(DAXI_FillHoles_32f_C1R, float, dax::fillHoles<float>)
DAX_FORWARD_4(DAXI_ClearBorder_8u_C1R, uint8_t, dax::clearBorder<uint8_t>)
DAX_FORWARD_4(DAXI_ClearBorder_16u_C1R, uint16_t, dax::clearBorder<uint16_t>)
DAX_FORWARD_4(DAXI_ClearBorder_32f_C1R, float, dax::clearBorder<float>)
DAX_FORWARD_5(DAXI_HMaxima_8u_C1R, uint8_t, dax::hExtrema<false, uint8_t>)
DAX_FORWARD_5(DAXI_HMaxima_16u_C1R, uint16_t, dax::hExtrema<false, uint16_t>)
DAX_FORWARD_5(DAXI_HMaxima_32f_C1R, float, dax::hExtrema<false, float>)
DAX_FORWARD_5(DAXI_HMinima_8u_C1R, uint8_t, dax::hExtrema<true, uint8_t>)
DAX_FORWARD_5(DAXI_HMinima_16u_C1R, uint16_t, dax::hExtrema<true, uint16_t>)
DAX_FORWARD_5(DAXI_HMinima_32f_C1R, float, dax::hExtrema<true, float>)
DAX_FORWARD_4(DAXI_RegionalMaxima_8u_C1R, uint8_t, dax::regionalExtrema<false, uint8_t>)
DAX_FORWARD_6(DAXI_RegionalMaxima_16u_C1R, uint16_t, uint8_t, dax::regionalExtrema<false, uint16_t>)
DAX_FORWARD_6(DAXI_RegionalMaxima_32f_C1R, float, uint8_t, dax::regionalExtrema<false, float>)
DAX_FORWARD_4(DAXI_RegionalMinima_8u_C1R, uint8_t, dax::regionalExtrema<true, uint8_t>)
DAX_FORWARD_6(DAXI_RegionalMinima_16u_C1R, uint16_t, uint8_t, dax::regionalExtrema<true, uint16_t>)
DAX_FORWARD_6(DAXI_RegionalMinima_32f_C1R, float, uint8_t, dax::regionalExtrema<true, float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
