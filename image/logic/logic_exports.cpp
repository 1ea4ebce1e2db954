#include "daxi/logic.h"
#include "image/logic/logic.h"

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
#define DAX_FORWARD_5(NAME, T, ...)                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size);                                 \
  }
#define DAX_FORWARD_6(NAME, T, ...)                        \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size) { \
    return __VA_ARGS__(srcDst, step, srcDst, step, size);  \
  }
#define DAX_FORWARD_7(NAME, T, ...)                                                                      \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t count) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, count);                                         \
  }
#define DAX_FORWARD_8(NAME, T, ...)                                       \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, int32_t count) { \
    return __VA_ARGS__(srcDst, step, srcDst, step, size, count);          \
  }

DAX_FORWARD_1(DAXI_And_8u_C1R, uint8_t, dax::bitsOfImages<dax::AndOp, uint8_t>)
DAX_FORWARD_2(DAXI_And_8u_C1IR, uint8_t, dax::bitsOfImages<dax::AndOp, uint8_t>)
DAX_FORWARD_1(DAXI_And_16u_C1R, uint16_t, dax::bitsOfImages<dax::AndOp, uint16_t>)
DAX_FORWARD_2(DAXI_And_16u_C1IR, uint16_t, dax::bitsOfImages<dax::AndOp, uint16_t>)
DAX_FORWARD_1(DAXI_And_16s_C1R, int16_t, dax::bitsOfImages<dax::AndOp, int16_t>)
DAX_FORWARD_2(DAXI_And_16s_C1IR, int16_t, dax::bitsOfImages<dax::AndOp, int16_t>)
DAX_FORWARD_1(DAXI_Or_8u_C1R, uint8_t, dax::bitsOfImages<dax::OrOp, uint8_t>)
DAX_FORWARD_2(DAXI_Or_8u_C1IR, uint8_t, dax::bitsOfImages<dax::OrOp, uint8_t>)
DAX_FORWARD_1(DAXI_Or_16u_C1R, uint16_t, dax::bitsOfImages<dax::OrOp, uint16_t>)
DAX_FORWARD_2(DAXI_Or_16u_C1IR, uint16_t, dax::bitsOfImages<dax::OrOp, uint16_t>)
DAX_FORWARD_1(DAXI_Or_16s_C1R, int16_t, dax::bitsOfImages<dax::OrOp, int16_t>)
DAX_FORWARD_2(DAXI_Or_16s_C1IR, int16_t, dax::bitsOfImages<dax::OrOp, int16_t>)
DAX_FORWARD_1(DAXI_Xor_8u_C1R, uint8_t, dax::bitsOfImages<dax::XorOp, uint8_t>)
DAX_FORWARD_2(DAXI_Xor_8u_C1IR, uint8_t, dax::bitsOfImages<dax::XorOp, uint8_t>)
DAX_FORWARD_1(DAXI_Xor_16u_C1R, uint16_t, dax::bitsOfImages<dax::XorOp, uint16_t>)
DAX_FORWARD_2(DAXI_Xor_16u_C1IR, uint16_t, dax::bitsOfImages<dax::XorOp, uint16_t>)
DAX_FORWARD_1(DAXI_Xor_16s_C1R, int16_t, dax::bitsOfImages<dax::XorOp, int16_t>)
DAX_FORWARD_2(DAXI_Xor_16s_C1IR, int16_t, dax::bitsOfImages<dax::XorOp, int16_t>)
DAX_FORWARD_3(DAXI_AndC_8u_C1R, uint8_t, dax::bitsOfConstant<dax::AndOp, uint8_t>)
DAX_FORWARD_4(DAXI_AndC_8u_C1IR, uint8_t, dax::bitsOfConstant<dax::AndOp, uint8_t>)
DAX_FORWARD_3(DAXI_AndC_16u_C1R, uint16_t, dax::bitsOfConstant<dax::AndOp, uint16_t>)
DAX_FORWARD_4(DAXI_AndC_16u_C1IR, uint16_t, dax::bitsOfConstant<dax::AndOp, uint16_t>)
DAX_FORWARD_3(DAXI_AndC_16s_C1R, int16_t, dax::bitsOfConstant<dax::AndOp, int16_t>)
DAX_FORWARD_4(DAXI_AndC_16s_C1IR, int16_t, dax::bitsOfConstant<dax::AndOp, int16_t>)
DAX_FORWARD_3(DAXI_OrC_8u_C1R, uint8_t, dax::bitsOfConstant<dax::OrOp, uint8_t>)
DAX_FORWARD_4(DAXI_OrC_8u_C1IR, uint8_t, dax::bitsOfConstant<dax::OrOp, uint8_t>)
DAX_FORWARD_3(DAXI_OrC_16u_C1R, uint16_t, dax::bitsOfConstant<dax::OrOp, uint16_t>)
DAX_FORWARD_4(DAXI_OrC_16u_C1IR, uint16_t, dax::bitsOfConstant<dax::OrOp, uint16_t>)
DAX_FORWARD_3(DAXI_OrC_16s_C1R, int16_t, dax::bitsOfConstant<dax::OrOp, int16_t>)
DAX_FORWARD_4(DAXI_OrC_16s_C1IR, int16_t, dax::bitsOfConstant<dax::OrOp, int16_t>)
DAX_FORWARD_3(DAXI_XorC_8u_C1R, uint8_t, dax::bitsOfConstant<dax::XorOp, uint8_t>)
DAX_FORWARD_4(DAXI_XorC_8u_C1IR, uint8_t, dax::bitsOfConstant<dax::XorOp, uint8_t>)
DAX_FORWARD_3(DAXI_XorC_16u_C1R, uint16_t, dax::bitsOfConstant<dax::XorOp, uint16_t>)
DAX_FORWARD_4(DAXI_XorC_16u_C1IR, uint16_t, dax::bitsOfConstant<dax::XorOp, uint16_t>)
DAX_FORWARD_3(DAXI_XorC_16s_C1R, int16_t, dax::bitsOfConstant<dax::XorOp, int16_t>)
DAX_FORWARD_4(DAXI_XorC_16s_C1IR, int16_t, dax::bitsOfConstant<dax::XorOp, int16_t>)
DAX_FORWARD_5(DAXI_Not_8u_C1R, uint8_t, dax::invertBits<uint8_t>)
DAX_FORWARD_6(DAXI_Not_8u_C1IR, uint8_t, dax::invertBits<uint8_t>)
DAX_FORWARD_5(DAXI_Not_16u_C1R, uint16_t, dax::invertBits<uint16_t>)
DAX_FORWARD_6(DAXI_Not_16u_C1IR, uint16_t, dax::invertBits<uint16_t>)
DAX_FORWARD_5(DAXI_Not_16s_C1R, int16_t, dax::invertBits<int16_t>)
DAX_FORWARD_6(DAXI_Not_16s_C1IR, int16_t, dax::invertBits<int16_t>)
DAX_FORWARD_7(DAXI_LShiftC_8u_C1R, uint8_t, dax::shiftBits<dax::LeftShiftOp, uint8_t>)
DAX_FORWARD_8(DAXI_LShiftC_8u_C1IR, uint8_t, dax::shiftBits<dax::LeftShiftOp, uint8_t>)
DAX_FORWARD_7(DAXI_LShiftC_16u_C1R, uint16_t, dax::shiftBits<dax::LeftShiftOp, uint16_t>)
DAX_FORWARD_8(DAXI_LShiftC_16u_C1IR, uint16_t, dax::shiftBits<dax::LeftShiftOp, uint16_t>)
DAX_FORWARD_7(DAXI_LShiftC_16s_C1R, int16_t, dax::shiftBits<dax::LeftShiftOp, int16_t>)
DAX_FORWARD_8(DAXI_LShiftC_16s_C1IR, int16_t, dax::shiftBits<dax::LeftShiftOp, int16_t>)
DAX_FORWARD_7(DAXI_RShiftC_8u_C1R, uint8_t, dax::shiftBits<dax::RightShiftOp, uint8_t>)
DAX_FORWARD_8(DAXI_RShiftC_8u_C1IR, uint8_t, dax::shiftBits<dax::RightShiftOp, uint8_t>)
DAX_FORWARD_7(DAXI_RShiftC_16u_C1R, uint16_t, dax::shiftBits<dax::RightShiftOp, uint16_t>)
DAX_FORWARD_8(DAXI_RShiftC_16u_C1IR, uint16_t, dax::shiftBits<dax::RightShiftOp, uint16_t>)
DAX_FORWARD_7(DAXI_RShiftC_16s_C1R, int16_t, dax::shiftBits<dax::RightShiftOp, int16_t>)
DAX_FORWARD_8(DAXI_RShiftC_16s_C1IR, int16_t, dax::shiftBits<dax::RightShiftOp, int16_t>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
#undef DAX_FORWARD_7
#undef DAX_FORWARD_8
