#include "daxi/magnitude.h"
#include "image/pixel/magnitude.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);             \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                    \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, \
                 DaxiSize size) {                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);             \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                           \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size) {                    \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size); \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                            \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t scaleFactor) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, scaleFactor);                                         \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                             \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, int32_t scaleFactor) { \
    return __VA_ARGS__(srcDst, step, srcDst, step, size, scaleFactor);          \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, dax::kNoScaleFactor);            \
  }
#define DAX_FORWARD_7(NAME, T, ...)                                            \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size) {                     \
    return __VA_ARGS__(srcDst, step, srcDst, step, size, dax::kNoScaleFactor); \
  }

DAX_FORWARD_1(DAXI_Abs_16s_C1R, int16_t, dax::magnitude<dax::AbsOp, int16_t>)
DAX_FORWARD_2(DAXI_Abs_16s_C1R_MT, int16_t, dax::magnitude<dax::AbsOp, int16_t>)
DAX_FORWARD_3(DAXI_Abs_16s_C1IR, int16_t, dax::magnitude<dax::AbsOp, int16_t>)
DAX_FORWARD_1(DAXI_Abs_32f_C1R, float, dax::magnitude<dax::AbsOp, float>)
DAX_FORWARD_2(DAXI_Abs_32f_C1R_MT, float, dax::magnitude<dax::AbsOp, float>)
DAX_FORWARD_3(DAXI_Abs_32f_C1IR, float, dax::magnitude<dax::AbsOp, float>)
DAX_FORWARD_4(DAXI_Sqr_8u_C1RSfs, uint8_t, dax::square<uint8_t>)
DAX_FORWARD_5(DAXI_Sqr_8u_C1IRSfs, uint8_t, dax::square<uint8_t>)
DAX_FORWARD_4(DAXI_Sqr_16u_C1RSfs, uint16_t, dax::square<uint16_t>)
DAX_FORWARD_5(DAXI_Sqr_16u_C1IRSfs, uint16_t, dax::square<uint16_t>)
DAX_FORWARD_4(DAXI_Sqr_16s_C1RSfs, int16_t, dax::square<int16_t>)
DAX_FORWARD_5(DAXI_Sqr_16s_C1IRSfs, int16_t, dax::square<int16_t>)
DAX_FORWARD_6(DAXI_Sqr_32f_C1R, float, dax::square<float>)
DAX_FORWARD_7(DAXI_Sqr_32f_C1IR, float, dax::square<float>)
DAX_FORWARD_1(DAXI_Sqrt_8u_C1R, uint8_t, dax::magnitude<dax::SqrtOp, uint8_t>)
DAX_FORWARD_2(DAXI_Sqrt_8u_C1R_MT, uint8_t, dax::magnitude<dax::SqrtOp, uint8_t>)
DAX_FORWARD_3(DAXI_Sqrt_8u_C1IR, uint8_t, dax::magnitude<dax::SqrtOp, uint8_t>)
DAX_FORWARD_1(DAXI_Sqrt_16u_C1R, uint16_t, dax::magnitude<dax::SqrtOp, uint16_t>)
DAX_FORWARD_2(DAXI_Sqrt_16u_C1R_MT, uint16_t, dax::magnitude<dax::SqrtOp, uint16_t>)
DAX_FORWARD_3(DAXI_Sqrt_16u_C1IR, uint16_t, dax::magnitude<dax::SqrtOp, uint16_t>)
DAX_FORWARD_1(DAXI_Sqrt_16s_C1R, int16_t, dax::magnitude<dax::SqrtOp, int16_t>)
DAX_FORWARD_2(DAXI_Sqrt_16s_C1R_MT, int16_t, dax::magnitude<dax::SqrtOp, int16_t>)
DAX_FORWARD_3(DAXI_Sqrt_16s_C1IR, int16_t, dax::magnitude<dax::SqrtOp, int16_t>)
DAX_FORWARD_1(DAXI_Sqrt_32f_C1R, float, dax::magnitude<dax::SqrtOp, float>)
DAX_FORWARD_2(DAXI_Sqrt_32f_C1R_MT, float, dax::magnitude<dax::SqrtOp, float>)
DAX_FORWARD_3(DAXI_Sqrt_32f_C1IR, float, dax::magnitude<dax::SqrtOp, float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
#undef DAX_FORWARD_7
