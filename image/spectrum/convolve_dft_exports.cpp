#include "daxi/convolve_dft.h"
#include "image/spectrum/convolve_dft.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                                   \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize srcSize, const T* kernel, int32_t kernelStep,                \
                 DaxiSize kernelSize, T* dst, int32_t dstStep, int32_t part, void* buffer) {                          \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, srcSize, kernel, kernelStep, kernelSize, dst, dstStep, part, \
                       buffer);                                                                                       \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                 \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, DaxiSize srcSize, const T* kernel,    \
                 int32_t kernelStep, DaxiSize kernelSize, T* dst, int32_t dstStep, int32_t part, void* buffer) {    \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, srcSize, kernel, kernelStep, kernelSize, dst, \
                       dstStep, part, buffer);                                                                      \
  }

DAX_FORWARD_1(DAXI_ConvolveDft_32f_C1R, float, dax::convolveDft<false, float>)
DAX_FORWARD_2(DAXI_ConvolveDft_32f_C1R_MT, float, dax::convolveDft<false, float>)
DAX_FORWARD_1(DAXI_ConvolveDft_64f_C1R, double, dax::convolveDft<false, double>)
DAX_FORWARD_2(DAXI_ConvolveDft_64f_C1R_MT, double, dax::convolveDft<false, double>)
DAX_FORWARD_1(DAXI_CorrelateDft_32f_C1R, float, dax::convolveDft<true, float>)
DAX_FORWARD_2(DAXI_CorrelateDft_32f_C1R_MT, float, dax::convolveDft<true, float>)
DAX_FORWARD_1(DAXI_CorrelateDft_64f_C1R, double, dax::convolveDft<true, double>)
DAX_FORWARD_2(DAXI_CorrelateDft_64f_C1R_MT, double, dax::convolveDft<true, double>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
