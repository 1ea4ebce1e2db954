#include "daxi/cosine.h"
#include "image/transform/cosine.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                        \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const void* model, \
                 uint64_t modelBytes, void* buffer) {                                                      \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, model, modelBytes, buffer);   \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 const void* model, uint64_t modelBytes, void* buffer) {                                              \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, model, modelBytes, buffer); \
  }

DAX_FORWARD_1(DAXI_Dct_32f_C1R, float, dax::dct<float>)
DAX_FORWARD_2(DAXI_Dct_32f_C1R_MT, float, dax::dct<float>)
DAX_FORWARD_1(DAXI_Dct_64f_C1R, double, dax::dct<double>)
DAX_FORWARD_2(DAXI_Dct_64f_C1R_MT, double, dax::dct<double>)
DAX_FORWARD_1(DAXI_Idct_32f_C1R, float, dax::idct<float>)
DAX_FORWARD_2(DAXI_Idct_32f_C1R_MT, float, dax::idct<float>)
DAX_FORWARD_1(DAXI_Idct_64f_C1R, double, dax::idct<double>)
DAX_FORWARD_2(DAXI_Idct_64f_C1R_MT, double, dax::idct<double>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
