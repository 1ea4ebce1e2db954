#include "daxi/min_max.h"
#include "image/pixel/min_max.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                                    \
  DaxStatus NAME(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(src1, step1, src2, step2, dst, dstStep, size);                                                  \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                             \
  DaxStatus NAME(const T* src, int32_t srcStep, T* srcDst, int32_t srcDstStep, DaxiSize size) { \
    return __VA_ARGS__(srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size);             \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T value) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, value);                                   \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                 \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, T value) { \
    return __VA_ARGS__(srcDst, step, srcDst, step, size, value);    \
  }

DAX_FORWARD_1(DAXI_Min_8u_C1R, uint8_t, dax::extremeOfImages<dax::MinOp, uint8_t>)
DAX_FORWARD_2(DAXI_Min_8u_C1IR, uint8_t, dax::extremeOfImages<dax::MinOp, uint8_t>)
DAX_FORWARD_1(DAXI_Min_16u_C1R, uint16_t, dax::extremeOfImages<dax::MinOp, uint16_t>)
DAX_FORWARD_2(DAXI_Min_16u_C1IR, uint16_t, dax::extremeOfImages<dax::MinOp, uint16_t>)
DAX_FORWARD_1(DAXI_Min_16s_C1R, int16_t, dax::extremeOfImages<dax::MinOp, int16_t>)
DAX_FORWARD_2(DAXI_Min_16s_C1IR, int16_t, dax::extremeOfImages<dax::MinOp, int16_t>)
DAX_FORWARD_1(DAXI_Min_32f_C1R, float, dax::extremeOfImages<dax::MinOp, float>)
DAX_FORWARD_2(DAXI_Min_32f_C1IR, float, dax::extremeOfImages<dax::MinOp, float>)
DAX_FORWARD_1(DAXI_Max_8u_C1R, uint8_t, dax::extremeOfImages<dax::MaxOp, uint8_t>)
DAX_FORWARD_2(DAXI_Max_8u_C1IR, uint8_t, dax::extremeOfImages<dax::MaxOp, uint8_t>)
DAX_FORWARD_1(DAXI_Max_16u_C1R, uint16_t, dax::extremeOfImages<dax::MaxOp, uint16_t>)
DAX_FORWARD_2(DAXI_Max_16u_C1IR, uint16_t, dax::extremeOfImages<dax::MaxOp, uint16_t>)
DAX_FORWARD_1(DAXI_Max_16s_C1R, int16_t, dax::extremeOfImages<dax::MaxOp, int16_t>)
DAX_FORWARD_2(DAXI_Max_16s_C1IR, int16_t, dax::extremeOfImages<dax::MaxOp, int16_t>)
DAX_FORWARD_1(DAXI_Max_32f_C1R, float, dax::extremeOfImages<dax::MaxOp, float>)
DAX_FORWARD_2(DAXI_Max_32f_C1IR, float, dax::extremeOfImages<dax::MaxOp, float>)
DAX_FORWARD_3(DAXI_MinC_8u_C1R, uint8_t, dax::extremeOfConstant<dax::MinOp, uint8_t>)
DAX_FORWARD_4(DAXI_MinC_8u_C1IR, uint8_t, dax::extremeOfConstant<dax::MinOp, uint8_t>)
DAX_FORWARD_3(DAXI_MinC_16u_C1R, uint16_t, dax::extremeOfConstant<dax::MinOp, uint16_t>)
DAX_FORWARD_4(DAXI_MinC_16u_C1IR, uint16_t, dax::extremeOfConstant<dax::MinOp, uint16_t>)
DAX_FORWARD_3(DAXI_MinC_16s_C1R, int16_t, dax::extremeOfConstant<dax::MinOp, int16_t>)
DAX_FORWARD_4(DAXI_MinC_16s_C1IR, int16_t, dax::extremeOfConstant<dax::MinOp, int16_t>)
DAX_FORWARD_3(DAXI_MinC_32f_C1R, float, dax::extremeOfConstant<dax::MinOp, float>)
DAX_FORWARD_4(DAXI_MinC_32f_C1IR, float, dax::extremeOfConstant<dax::MinOp, float>)
DAX_FORWARD_3(DAXI_MaxC_8u_C1R, uint8_t, dax::extremeOfConstant<dax::MaxOp, uint8_t>)
DAX_FORWARD_4(DAXI_MaxC_8u_C1IR, uint8_t, dax::extremeOfConstant<dax::MaxOp, uint8_t>)
DAX_FORWARD_3(DAXI_MaxC_16u_C1R, uint16_t, dax::extremeOfConstant<dax::MaxOp, uint16_t>)
DAX_FORWARD_4(DAXI_MaxC_16u_C1IR, uint16_t, dax::extremeOfConstant<dax::MaxOp, uint16_t>)
DAX_FORWARD_3(DAXI_MaxC_16s_C1R, int16_t, dax::extremeOfConstant<dax::MaxOp, int16_t>)
DAX_FORWARD_4(DAXI_MaxC_16s_C1IR, int16_t, dax::extremeOfConstant<dax::MaxOp, int16_t>)
DAX_FORWARD_3(DAXI_MaxC_32f_C1R, float, dax::extremeOfConstant<dax::MaxOp, float>)
DAX_FORWARD_4(DAXI_MaxC_32f_C1IR, float, dax::extremeOfConstant<dax::MaxOp, float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
