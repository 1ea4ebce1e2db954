#include "daxi/spectrum.h"
#include "image/spectrum/spectrum.h"

#define DAX_FORWARD_1(NAME, T, D, ...)                                                    \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);             \
  }
#define DAX_FORWARD_2(NAME, T, D, ...)                                                                 \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, D* dst, int32_t dstStep, \
                 DaxiSize size) {                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);             \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                                    \
  DaxStatus NAME(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(dax::PoolThreads{}, src1, step1, src2, step2, dst, dstStep, size);                              \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, \
                 int32_t dstStep, DaxiSize size) {                                                                 \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src1, step1, src2, step2, dst, dstStep, size);             \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                                     \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t back) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, back);                     \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t back) {                                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, back);                      \
  }

DAX_FORWARD_1(DAXI_Magnitude_32fc32f_C1R, DaxComplex32f, float, dax::ofSpectrum<dax::MagnitudeOp, DaxComplex32f>)
DAX_FORWARD_2(DAXI_Magnitude_32fc32f_C1R_MT, DaxComplex32f, float, dax::ofSpectrum<dax::MagnitudeOp, DaxComplex32f>)
DAX_FORWARD_1(DAXI_Magnitude_64fc64f_C1R, DaxComplex64f, double, dax::ofSpectrum<dax::MagnitudeOp, DaxComplex64f>)
DAX_FORWARD_2(DAXI_Magnitude_64fc64f_C1R_MT, DaxComplex64f, double, dax::ofSpectrum<dax::MagnitudeOp, DaxComplex64f>)
DAX_FORWARD_1(DAXI_Phase_32fc32f_C1R, DaxComplex32f, float, dax::ofSpectrum<dax::PhaseOp, DaxComplex32f>)
DAX_FORWARD_2(DAXI_Phase_32fc32f_C1R_MT, DaxComplex32f, float, dax::ofSpectrum<dax::PhaseOp, DaxComplex32f>)
DAX_FORWARD_1(DAXI_Phase_64fc64f_C1R, DaxComplex64f, double, dax::ofSpectrum<dax::PhaseOp, DaxComplex64f>)
DAX_FORWARD_2(DAXI_Phase_64fc64f_C1R_MT, DaxComplex64f, double, dax::ofSpectrum<dax::PhaseOp, DaxComplex64f>)
DAX_FORWARD_1(DAXI_LogSpectrum_32fc32f_C1R, DaxComplex32f, float, dax::ofSpectrum<dax::LogSpectrumOp, DaxComplex32f>)
DAX_FORWARD_2(DAXI_LogSpectrum_32fc32f_C1R_MT, DaxComplex32f, float, dax::ofSpectrum<dax::LogSpectrumOp, DaxComplex32f>)
DAX_FORWARD_1(DAXI_LogSpectrum_64fc64f_C1R, DaxComplex64f, double, dax::ofSpectrum<dax::LogSpectrumOp, DaxComplex64f>)
DAX_FORWARD_2(DAXI_LogSpectrum_64fc64f_C1R_MT, DaxComplex64f, double,
              dax::ofSpectrum<dax::LogSpectrumOp, DaxComplex64f>)
DAX_FORWARD_3(DAXI_MulSpectrum_32fc_C1R, DaxComplex32f, dax::productOfSpectra<false, DaxComplex32f>)
DAX_FORWARD_4(DAXI_MulSpectrum_32fc_C1R_MT, DaxComplex32f, dax::productOfSpectra<false, DaxComplex32f>)
DAX_FORWARD_3(DAXI_MulSpectrum_64fc_C1R, DaxComplex64f, dax::productOfSpectra<false, DaxComplex64f>)
DAX_FORWARD_4(DAXI_MulSpectrum_64fc_C1R_MT, DaxComplex64f, dax::productOfSpectra<false, DaxComplex64f>)
DAX_FORWARD_3(DAXI_MulConjSpectrum_32fc_C1R, DaxComplex32f, dax::productOfSpectra<true, DaxComplex32f>)
DAX_FORWARD_4(DAXI_MulConjSpectrum_32fc_C1R_MT, DaxComplex32f, dax::productOfSpectra<true, DaxComplex32f>)
DAX_FORWARD_3(DAXI_MulConjSpectrum_64fc_C1R, DaxComplex64f, dax::productOfSpectra<true, DaxComplex64f>)
DAX_FORWARD_4(DAXI_MulConjSpectrum_64fc_C1R_MT, DaxComplex64f, dax::productOfSpectra<true, DaxComplex64f>)
DAX_FORWARD_5(DAXI_ShiftQuadrants_8u_C1R, uint8_t, dax::shiftQuadrants<uint8_t>)
DAX_FORWARD_6(DAXI_ShiftQuadrants_8u_C1R_MT, uint8_t, dax::shiftQuadrants<uint8_t>)
DAX_FORWARD_5(DAXI_ShiftQuadrants_32f_C1R, float, dax::shiftQuadrants<float>)
DAX_FORWARD_6(DAXI_ShiftQuadrants_32f_C1R_MT, float, dax::shiftQuadrants<float>)
DAX_FORWARD_5(DAXI_ShiftQuadrants_64f_C1R, double, dax::shiftQuadrants<double>)
DAX_FORWARD_6(DAXI_ShiftQuadrants_64f_C1R_MT, double, dax::shiftQuadrants<double>)
DAX_FORWARD_5(DAXI_ShiftQuadrants_32fc_C1R, DaxComplex32f, dax::shiftQuadrants<DaxComplex32f>)
DAX_FORWARD_6(DAXI_ShiftQuadrants_32fc_C1R_MT, DaxComplex32f, dax::shiftQuadrants<DaxComplex32f>)
DAX_FORWARD_5(DAXI_ShiftQuadrants_64fc_C1R, DaxComplex64f, dax::shiftQuadrants<DaxComplex64f>)
DAX_FORWARD_6(DAXI_ShiftQuadrants_64fc_C1R_MT, DaxComplex64f, dax::shiftQuadrants<DaxComplex64f>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
