#include "daxi/norm.h"
#include "image/statistics/norm.h"

DaxStatus DAXI_NormL1_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l1, uint8_t, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormL1_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                              double* norm) {
  return dax::normOf<dax::Norm::l1, uint8_t, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormL1_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l1, uint16_t, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormL1_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                               DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l1, uint16_t, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormL1_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l1, int16_t, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormL1_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                               DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l1, int16_t, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormL1_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l1, float, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormL1_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                               double* norm) {
  return dax::normOf<dax::Norm::l1, float, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffL1_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, DaxiSize size,
                                 double* norm) {
  return dax::normOfDifference<dax::Norm::l1, uint8_t, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffL1_8u_C1MR(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                  const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::l1, uint8_t, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffL1_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                  DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::l1, uint16_t, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffL1_16u_C1MR(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                   const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::l1, uint16_t, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffL1_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, DaxiSize size,
                                  double* norm) {
  return dax::normOfDifference<dax::Norm::l1, int16_t, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffL1_16s_C1MR(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                   const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::l1, int16_t, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffL1_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2, DaxiSize size,
                                  double* norm) {
  return dax::normOfDifference<dax::Norm::l1, float, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffL1_32f_C1MR(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                   const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::l1, float, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormL2_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l2, uint8_t, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormL2_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                              double* norm) {
  return dax::normOf<dax::Norm::l2, uint8_t, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormL2_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l2, uint16_t, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormL2_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                               DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l2, uint16_t, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormL2_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l2, int16_t, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormL2_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                               DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l2, int16_t, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormL2_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::l2, float, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormL2_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                               double* norm) {
  return dax::normOf<dax::Norm::l2, float, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffL2_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, DaxiSize size,
                                 double* norm) {
  return dax::normOfDifference<dax::Norm::l2, uint8_t, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffL2_8u_C1MR(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                  const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::l2, uint8_t, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffL2_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                  DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::l2, uint16_t, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffL2_16u_C1MR(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                   const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::l2, uint16_t, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffL2_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2, DaxiSize size,
                                  double* norm) {
  return dax::normOfDifference<dax::Norm::l2, int16_t, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffL2_16s_C1MR(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                   const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::l2, int16_t, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffL2_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2, DaxiSize size,
                                  double* norm) {
  return dax::normOfDifference<dax::Norm::l2, float, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffL2_32f_C1MR(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                   const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::l2, float, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormInf_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::inf, uint8_t, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormInf_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                               DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::inf, uint8_t, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormInf_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::inf, uint16_t, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormInf_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::inf, uint16_t, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormInf_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::inf, int16_t, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormInf_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::inf, int16_t, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormInf_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* norm) {
  return dax::normOf<dax::Norm::inf, float, false>(src, srcStep, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormInf_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                                double* norm) {
  return dax::normOf<dax::Norm::inf, float, true>(src, srcStep, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffInf_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2, DaxiSize size,
                                  double* norm) {
  return dax::normOfDifference<dax::Norm::inf, uint8_t, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffInf_8u_C1MR(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                   const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::inf, uint8_t, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffInf_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                   DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::inf, uint16_t, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffInf_16u_C1MR(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                    const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::inf, uint16_t, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffInf_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                   DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::inf, int16_t, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffInf_16s_C1MR(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                    const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::inf, int16_t, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}

DaxStatus DAXI_NormDiffInf_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2, DaxiSize size,
                                   double* norm) {
  return dax::normOfDifference<dax::Norm::inf, float, false>(src1, step1, src2, step2, nullptr, 0, size, norm);
}

DaxStatus DAXI_NormDiffInf_32f_C1MR(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                    const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) {
  return dax::normOfDifference<dax::Norm::inf, float, true>(src1, step1, src2, step2, mask, maskStep, size, norm);
}
