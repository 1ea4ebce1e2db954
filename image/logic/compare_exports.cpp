#include "daxi/compare.h"
#include "image/logic/compare.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                                  \
  DaxStatus NAME(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t op) {                                                                                       \
    return __VA_ARGS__(src1, step1, src2, step2, dst, dstStep, size, op);                                            \
  }
#define DAX_FORWARD_2(NAME, T, D, ...)                                                                               \
  DaxStatus NAME(const T* src1, int32_t step1, const T* src2, int32_t step2, D* dst, int32_t dstStep, DaxiSize size, \
                 int32_t op) {                                                                                       \
    return __VA_ARGS__(src1, step1, src2, step2, dst, dstStep, size, op);                                            \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                            \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T value, int32_t op) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, value, op);                                           \
  }
#define DAX_FORWARD_4(NAME, T, D, ...)                                                                         \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, T value, int32_t op) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, value, op);                                           \
  }
#define DAX_FORWARD_5(NAME, T, D, ...)                                                                               \
  DaxStatus NAME(const T* src1, int32_t step1, const T* src2, int32_t step2, D* dst, int32_t dstStep, DaxiSize size, \
                 double eps) {                                                                                       \
    return __VA_ARGS__(src1, step1, src2, step2, dst, dstStep, size, eps);                                           \
  }
#define DAX_FORWARD_6(NAME, T, D, ...)                                                                             \
  DaxStatus NAME(const T* src, int32_t srcStep, D* dst, int32_t dstStep, DaxiSize size, float value, double eps) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, value, eps);                                              \
  }

DAX_FORWARD_1(DAXI_Compare_8u_C1R, uint8_t, dax::compareImages<uint8_t>)
DAX_FORWARD_2(DAXI_Compare_16u_C1R, uint16_t, uint8_t, dax::compareImages<uint16_t>)
DAX_FORWARD_2(DAXI_Compare_16s_C1R, int16_t, uint8_t, dax::compareImages<int16_t>)
DAX_FORWARD_2(DAXI_Compare_32f_C1R, float, uint8_t, dax::compareImages<float>)
DAX_FORWARD_3(DAXI_CompareC_8u_C1R, uint8_t, dax::compareConstant<uint8_t>)
DAX_FORWARD_4(DAXI_CompareC_16u_C1R, uint16_t, uint8_t, dax::compareConstant<uint16_t>)
DAX_FORWARD_4(DAXI_CompareC_16s_C1R, int16_t, uint8_t, dax::compareConstant<int16_t>)
DAX_FORWARD_4(DAXI_CompareC_32f_C1R, float, uint8_t, dax::compareConstant<float>)
DAX_FORWARD_5(DAXI_CompareEqualEps_32f_C1R, float, uint8_t, dax::compareImagesEps)
DAX_FORWARD_6(DAXI_CompareEqualEpsC_32f_C1R, float, uint8_t, dax::compareConstantEps)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
