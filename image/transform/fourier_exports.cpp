#include "daxi/fourier.h"
#include "image/transform/fourier.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                             \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t scale,          \
                 const void* model, uint64_t modelBytes, void* buffer) {                                        \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, scale, model, modelBytes, buffer); \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t scale, const void* model, uint64_t modelBytes, void* buffer) {                               \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, scale, model, modelBytes,   \
                       buffer);                                                                                       \
  }
#define DAX_FORWARD_3(NAME, T, D, ...)                                                                          \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, int32_t scale,          \
                 const void* model, uint64_t modelBytes, void* buffer) {                                        \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, scale, model, modelBytes, buffer); \
  }
#define DAX_FORWARD_4(NAME, T, D, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, \
                 int32_t scale, const void* model, uint64_t modelBytes, void* buffer) {                               \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, scale, model, modelBytes,   \
                       buffer);                                                                                       \
  }
#define DAX_FORWARD_5(NAME, T, D, ...)                                                                          \
  DaxStatus NAME(const D* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t scale,          \
                 const void* model, uint64_t modelBytes, void* buffer) {                                        \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, scale, model, modelBytes, buffer); \
  }
#define DAX_FORWARD_6(NAME, T, D, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const D* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t scale, const void* model, uint64_t modelBytes, void* buffer) {                               \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, scale, model, modelBytes,   \
                       buffer);                                                                                       \
  }

DAX_FORWARD_1(DAXI_Dft_32fc_C1R, DaxComplex32f, dax::dft<DaxComplex32f>)
DAX_FORWARD_2(DAXI_Dft_32fc_C1R_MT, DaxComplex32f, dax::dft<DaxComplex32f>)
DAX_FORWARD_1(DAXI_Dft_64fc_C1R, DaxComplex64f, dax::dft<DaxComplex64f>)
DAX_FORWARD_2(DAXI_Dft_64fc_C1R_MT, DaxComplex64f, dax::dft<DaxComplex64f>)
DAX_FORWARD_1(DAXI_Idft_32fc_C1R, DaxComplex32f, dax::idft<DaxComplex32f>)
DAX_FORWARD_2(DAXI_Idft_32fc_C1R_MT, DaxComplex32f, dax::idft<DaxComplex32f>)
DAX_FORWARD_1(DAXI_Idft_64fc_C1R, DaxComplex64f, dax::idft<DaxComplex64f>)
DAX_FORWARD_2(DAXI_Idft_64fc_C1R_MT, DaxComplex64f, dax::idft<DaxComplex64f>)
DAX_FORWARD_3(DAXI_DftReal_32f_C1R, float, DaxComplex32f, dax::dftReal<float>)
DAX_FORWARD_4(DAXI_DftReal_32f_C1R_MT, float, DaxComplex32f, dax::dftReal<float>)
DAX_FORWARD_3(DAXI_DftReal_64f_C1R, double, DaxComplex64f, dax::dftReal<double>)
DAX_FORWARD_4(DAXI_DftReal_64f_C1R_MT, double, DaxComplex64f, dax::dftReal<double>)
DAX_FORWARD_5(DAXI_IdftReal_32f_C1R, float, DaxComplex32f, dax::idftReal<float>)
DAX_FORWARD_6(DAXI_IdftReal_32f_C1R_MT, float, DaxComplex32f, dax::idftReal<float>)
DAX_FORWARD_5(DAXI_IdftReal_64f_C1R, double, DaxComplex64f, dax::idftReal<double>)
DAX_FORWARD_6(DAXI_IdftReal_64f_C1R_MT, double, DaxComplex64f, dax::idftReal<double>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
