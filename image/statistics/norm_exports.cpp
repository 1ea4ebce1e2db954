#include "daxi/norm.h"
#include "image/statistics/norm.h"

#define DAX_FORWARD_1(NAME, T, ...)                                            \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, double* norm) { \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, norm);                  \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                   \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double* norm) { \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, norm);                                                     \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                         \
  DaxStatus NAME(const T* src1, int32_t step1, const T* src2, int32_t step2, DaxiSize size, double* norm) { \
    return __VA_ARGS__(src1, step1, src2, step2, nullptr, 0, size, norm);                                   \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                                 \
  DaxStatus NAME(const T* src1, int32_t step1, const T* src2, int32_t step2, const uint8_t* mask, int32_t maskStep, \
                 DaxiSize size, double* norm) {                                                                     \
    return __VA_ARGS__(src1, step1, src2, step2, mask, maskStep, size, norm);                                       \
  }

DAX_FORWARD_1(DAXI_NormL1_8u_C1R, uint8_t, dax::normOf<dax::Norm::l1, uint8_t, false>)
DAX_FORWARD_2(DAXI_NormL1_8u_C1MR, uint8_t, dax::normOf<dax::Norm::l1, uint8_t, true>)
DAX_FORWARD_1(DAXI_NormL1_16u_C1R, uint16_t, dax::normOf<dax::Norm::l1, uint16_t, false>)
DAX_FORWARD_2(DAXI_NormL1_16u_C1MR, uint16_t, dax::normOf<dax::Norm::l1, uint16_t, true>)
DAX_FORWARD_1(DAXI_NormL1_16s_C1R, int16_t, dax::normOf<dax::Norm::l1, int16_t, false>)
DAX_FORWARD_2(DAXI_NormL1_16s_C1MR, int16_t, dax::normOf<dax::Norm::l1, int16_t, true>)
DAX_FORWARD_1(DAXI_NormL1_32f_C1R, float, dax::normOf<dax::Norm::l1, float, false>)
DAX_FORWARD_2(DAXI_NormL1_32f_C1MR, float, dax::normOf<dax::Norm::l1, float, true>)
DAX_FORWARD_3(DAXI_NormDiffL1_8u_C1R, uint8_t, dax::normOfDifference<dax::Norm::l1, uint8_t, false>)
DAX_FORWARD_4(DAXI_NormDiffL1_8u_C1MR, uint8_t, dax::normOfDifference<dax::Norm::l1, uint8_t, true>)
DAX_FORWARD_3(DAXI_NormDiffL1_16u_C1R, uint16_t, dax::normOfDifference<dax::Norm::l1, uint16_t, false>)
DAX_FORWARD_4(DAXI_NormDiffL1_16u_C1MR, uint16_t, dax::normOfDifference<dax::Norm::l1, uint16_t, true>)
DAX_FORWARD_3(DAXI_NormDiffL1_16s_C1R, int16_t, dax::normOfDifference<dax::Norm::l1, int16_t, false>)
DAX_FORWARD_4(DAXI_NormDiffL1_16s_C1MR, int16_t, dax::normOfDifference<dax::Norm::l1, int16_t, true>)
DAX_FORWARD_3(DAXI_NormDiffL1_32f_C1R, float, dax::normOfDifference<dax::Norm::l1, float, false>)
DAX_FORWARD_4(DAXI_NormDiffL1_32f_C1MR, float, dax::normOfDifference<dax::Norm::l1, float, true>)
DAX_FORWARD_1(DAXI_NormL2_8u_C1R, uint8_t, dax::normOf<dax::Norm::l2, uint8_t, false>)
DAX_FORWARD_2(DAXI_NormL2_8u_C1MR, uint8_t, dax::normOf<dax::Norm::l2, uint8_t, true>)
DAX_FORWARD_1(DAXI_NormL2_16u_C1R, uint16_t, dax::normOf<dax::Norm::l2, uint16_t, false>)
DAX_FORWARD_2(DAXI_NormL2_16u_C1MR, uint16_t, dax::normOf<dax::Norm::l2, uint16_t, true>)
DAX_FORWARD_1(DAXI_NormL2_16s_C1R, int16_t, dax::normOf<dax::Norm::l2, int16_t, false>)
DAX_FORWARD_2(DAXI_NormL2_16s_C1MR, int16_t, dax::normOf<dax::Norm::l2, int16_t, true>)
DAX_FORWARD_1(DAXI_NormL2_32f_C1R, float, dax::normOf<dax::Norm::l2, float, false>)
DAX_FORWARD_2(DAXI_NormL2_32f_C1MR, float, dax::normOf<dax::Norm::l2, float, true>)
DAX_FORWARD_3(DAXI_NormDiffL2_8u_C1R, uint8_t, dax::normOfDifference<dax::Norm::l2, uint8_t, false>)
DAX_FORWARD_4(DAXI_NormDiffL2_8u_C1MR, uint8_t, dax::normOfDifference<dax::Norm::l2, uint8_t, true>)
DAX_FORWARD_3(DAXI_NormDiffL2_16u_C1R, uint16_t, dax::normOfDifference<dax::Norm::l2, uint16_t, false>)
DAX_FORWARD_4(DAXI_NormDiffL2_16u_C1MR, uint16_t, dax::normOfDifference<dax::Norm::l2, uint16_t, true>)
DAX_FORWARD_3(DAXI_NormDiffL2_16s_C1R, int16_t, dax::normOfDifference<dax::Norm::l2, int16_t, false>)
DAX_FORWARD_4(DAXI_NormDiffL2_16s_C1MR, int16_t, dax::normOfDifference<dax::Norm::l2, int16_t, true>)
DAX_FORWARD_3(DAXI_NormDiffL2_32f_C1R, float, dax::normOfDifference<dax::Norm::l2, float, false>)
DAX_FORWARD_4(DAXI_NormDiffL2_32f_C1MR, float, dax::normOfDifference<dax::Norm::l2, float, true>)
DAX_FORWARD_1(DAXI_NormInf_8u_C1R, uint8_t, dax::normOf<dax::Norm::inf, uint8_t, false>)
DAX_FORWARD_2(DAXI_NormInf_8u_C1MR, uint8_t, dax::normOf<dax::Norm::inf, uint8_t, true>)
DAX_FORWARD_1(DAXI_NormInf_16u_C1R, uint16_t, dax::normOf<dax::Norm::inf, uint16_t, false>)
DAX_FORWARD_2(DAXI_NormInf_16u_C1MR, uint16_t, dax::normOf<dax::Norm::inf, uint16_t, true>)
DAX_FORWARD_1(DAXI_NormInf_16s_C1R, int16_t, dax::normOf<dax::Norm::inf, int16_t, false>)
DAX_FORWARD_2(DAXI_NormInf_16s_C1MR, int16_t, dax::normOf<dax::Norm::inf, int16_t, true>)
DAX_FORWARD_1(DAXI_NormInf_32f_C1R, float, dax::normOf<dax::Norm::inf, float, false>)
DAX_FORWARD_2(DAXI_NormInf_32f_C1MR, float, dax::normOf<dax::Norm::inf, float, true>)
DAX_FORWARD_3(DAXI_NormDiffInf_8u_C1R, uint8_t, dax::normOfDifference<dax::Norm::inf, uint8_t, false>)
DAX_FORWARD_4(DAXI_NormDiffInf_8u_C1MR, uint8_t, dax::normOfDifference<dax::Norm::inf, uint8_t, true>)
DAX_FORWARD_3(DAXI_NormDiffInf_16u_C1R, uint16_t, dax::normOfDifference<dax::Norm::inf, uint16_t, false>)
DAX_FORWARD_4(DAXI_NormDiffInf_16u_C1MR, uint16_t, dax::normOfDifference<dax::Norm::inf, uint16_t, true>)
DAX_FORWARD_3(DAXI_NormDiffInf_16s_C1R, int16_t, dax::normOfDifference<dax::Norm::inf, int16_t, false>)
DAX_FORWARD_4(DAXI_NormDiffInf_16s_C1MR, int16_t, dax::normOfDifference<dax::Norm::inf, int16_t, true>)
DAX_FORWARD_3(DAXI_NormDiffInf_32f_C1R, float, dax::normOfDifference<dax::Norm::inf, float, false>)
DAX_FORWARD_4(DAXI_NormDiffInf_32f_C1MR, float, dax::normOfDifference<dax::Norm::inf, float, true>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
