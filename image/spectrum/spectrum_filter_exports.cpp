#include "daxi/spectrum_filter.h"
#include "image/spectrum/spectrum_filter.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                          \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t width,       \
                 const DaxiNotch* notches, int32_t count, void* buffer) {                                    \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, width, notches, count, buffer); \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t width, const DaxiNotch* notches, int32_t count, void* buffer) {                              \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, width, notches, count,      \
                       buffer);                                                                                       \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                    \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t width, \
                 const DaxiBandCfg* cfg) {                                                             \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, width, cfg);              \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t width, const DaxiBandCfg* cfg) {                                                             \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, width, cfg);                \
  }

DAX_FORWARD_1(DAXI_SpectrumNotch_32fc_C1R, DaxComplex32f, dax::spectrumNotch<DaxComplex32f>)
DAX_FORWARD_2(DAXI_SpectrumNotch_32fc_C1R_MT, DaxComplex32f, dax::spectrumNotch<DaxComplex32f>)
DAX_FORWARD_1(DAXI_SpectrumNotch_64fc_C1R, DaxComplex64f, dax::spectrumNotch<DaxComplex64f>)
DAX_FORWARD_2(DAXI_SpectrumNotch_64fc_C1R_MT, DaxComplex64f, dax::spectrumNotch<DaxComplex64f>)
DAX_FORWARD_3(DAXI_SpectrumBand_32fc_C1R, DaxComplex32f, dax::spectrumBand<DaxComplex32f>)
DAX_FORWARD_4(DAXI_SpectrumBand_32fc_C1R_MT, DaxComplex32f, dax::spectrumBand<DaxComplex32f>)
DAX_FORWARD_3(DAXI_SpectrumBand_64fc_C1R, DaxComplex64f, dax::spectrumBand<DaxComplex64f>)
DAX_FORWARD_4(DAXI_SpectrumBand_64fc_C1R_MT, DaxComplex64f, dax::spectrumBand<DaxComplex64f>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
