#include "daxi/divide.h"
#include "image/pixel/divide.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                                  \
  DaxStatus NAME(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t scaleFactor) {                                                                              \
    return __VA_ARGS__(dax::PoolThreads{}, src1, step1, src2, step2, dst, dstStep, size, scaleFactor);               \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                 \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst,  \
                 int32_t dstStep, DaxiSize size, int32_t scaleFactor) {                                             \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src1, step1, src2, step2, dst, dstStep, size, scaleFactor); \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                                  \
  DaxStatus NAME(const T* src, int32_t srcStep, T* srcDst, int32_t srcDstStep, DaxiSize size, int32_t scaleFactor) { \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size, scaleFactor); \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                                    \
  DaxStatus NAME(const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(dax::PoolThreads{}, src1, step1, src2, step2, dst, dstStep, size, dax::kNoScaleFactor);         \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src1, int32_t step1, const T* src2, int32_t step2, T* dst, \
                 int32_t dstStep, DaxiSize size) {                                                                 \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src1, step1, src2, step2, dst, dstStep, size,              \
                       dax::kNoScaleFactor);                                                                       \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                                                    \
  DaxStatus NAME(const T* src, int32_t srcStep, T* srcDst, int32_t srcDstStep, DaxiSize size) {        \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, srcDstStep, src, srcStep, srcDst, srcDstStep, size, \
                       dax::kNoScaleFactor);                                                           \
  }
#define DAX_FORWARD_7(NAME, T, ...)                                                                \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T value,   \
                 int32_t scaleFactor) {                                                            \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, &value, scaleFactor); \
  }
#define DAX_FORWARD_8(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 T value, int32_t scaleFactor) {                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, &value, scaleFactor);       \
  }
#define DAX_FORWARD_9(NAME, T, ...)                                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const T value[3], \
                 int32_t scaleFactor) {                                                                   \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, value, scaleFactor);         \
  }
#define DAX_FORWARD_10(NAME, T, ...)                                                                                  \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 const T value[3], int32_t scaleFactor) {                                                             \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, value, scaleFactor);        \
  }
#define DAX_FORWARD_11(NAME, T, ...)                                                               \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, T value, int32_t scaleFactor) {           \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size, &value, scaleFactor); \
  }
#define DAX_FORWARD_12(NAME, T, ...)                                                              \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, const T value[3], int32_t scaleFactor) { \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size, value, scaleFactor); \
  }
#define DAX_FORWARD_13(NAME, T, ...)                                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, T value) {         \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, &value, dax::kNoScaleFactor); \
  }
#define DAX_FORWARD_14(NAME, T, ...)                                                                                  \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 T value) {                                                                                           \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, &value,                     \
                       dax::kNoScaleFactor);                                                                          \
  }
#define DAX_FORWARD_15(NAME, T, ...)                                                                        \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const T value[3]) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, value, dax::kNoScaleFactor);   \
  }
#define DAX_FORWARD_16(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,  \
                 const T value[3]) {                                                                                   \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, value, dax::kNoScaleFactor); \
  }
#define DAX_FORWARD_17(NAME, T, ...)                                                                       \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, T value) {                                        \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size, &value, dax::kNoScaleFactor); \
  }
#define DAX_FORWARD_18(NAME, T, ...)                                                                      \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, const T value[3]) {                              \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size, value, dax::kNoScaleFactor); \
  }

DAX_FORWARD_1(DAXI_Div_8u_C1RSfs, uint8_t, dax::divideByImage<uint8_t, 1>)
DAX_FORWARD_2(DAXI_Div_8u_C1RSfs_MT, uint8_t, dax::divideByImage<uint8_t, 1>)
DAX_FORWARD_1(DAXI_Div_8u_C3RSfs, uint8_t, dax::divideByImage<uint8_t, 3>)
DAX_FORWARD_2(DAXI_Div_8u_C3RSfs_MT, uint8_t, dax::divideByImage<uint8_t, 3>)
DAX_FORWARD_3(DAXI_Div_8u_C1IRSfs, uint8_t, dax::divideByImage<uint8_t, 1>)
DAX_FORWARD_3(DAXI_Div_8u_C3IRSfs, uint8_t, dax::divideByImage<uint8_t, 3>)
DAX_FORWARD_1(DAXI_Div_16u_C1RSfs, uint16_t, dax::divideByImage<uint16_t, 1>)
DAX_FORWARD_2(DAXI_Div_16u_C1RSfs_MT, uint16_t, dax::divideByImage<uint16_t, 1>)
DAX_FORWARD_1(DAXI_Div_16u_C3RSfs, uint16_t, dax::divideByImage<uint16_t, 3>)
DAX_FORWARD_2(DAXI_Div_16u_C3RSfs_MT, uint16_t, dax::divideByImage<uint16_t, 3>)
DAX_FORWARD_3(DAXI_Div_16u_C1IRSfs, uint16_t, dax::divideByImage<uint16_t, 1>)
DAX_FORWARD_3(DAXI_Div_16u_C3IRSfs, uint16_t, dax::divideByImage<uint16_t, 3>)
DAX_FORWARD_1(DAXI_Div_16s_C1RSfs, int16_t, dax::divideByImage<int16_t, 1>)
DAX_FORWARD_2(DAXI_Div_16s_C1RSfs_MT, int16_t, dax::divideByImage<int16_t, 1>)
DAX_FORWARD_1(DAXI_Div_16s_C3RSfs, int16_t, dax::divideByImage<int16_t, 3>)
DAX_FORWARD_2(DAXI_Div_16s_C3RSfs_MT, int16_t, dax::divideByImage<int16_t, 3>)
DAX_FORWARD_3(DAXI_Div_16s_C1IRSfs, int16_t, dax::divideByImage<int16_t, 1>)
DAX_FORWARD_3(DAXI_Div_16s_C3IRSfs, int16_t, dax::divideByImage<int16_t, 3>)
DAX_FORWARD_4(DAXI_Div_32f_C1R, float, dax::divideByImage<float, 1>)
DAX_FORWARD_5(DAXI_Div_32f_C1R_MT, float, dax::divideByImage<float, 1>)
DAX_FORWARD_4(DAXI_Div_32f_C3R, float, dax::divideByImage<float, 3>)
DAX_FORWARD_5(DAXI_Div_32f_C3R_MT, float, dax::divideByImage<float, 3>)
DAX_FORWARD_6(DAXI_Div_32f_C1IR, float, dax::divideByImage<float, 1>)
DAX_FORWARD_6(DAXI_Div_32f_C3IR, float, dax::divideByImage<float, 3>)
DAX_FORWARD_7(DAXI_DivC_8u_C1RSfs, uint8_t, dax::divideByConstant<uint8_t, 1>)
DAX_FORWARD_8(DAXI_DivC_8u_C1RSfs_MT, uint8_t, dax::divideByConstant<uint8_t, 1>)
DAX_FORWARD_9(DAXI_DivC_8u_C3RSfs, uint8_t, dax::divideByConstant<uint8_t, 3>)
DAX_FORWARD_10(DAXI_DivC_8u_C3RSfs_MT, uint8_t, dax::divideByConstant<uint8_t, 3>)
DAX_FORWARD_11(DAXI_DivC_8u_C1IRSfs, uint8_t, dax::divideByConstant<uint8_t, 1>)
DAX_FORWARD_12(DAXI_DivC_8u_C3IRSfs, uint8_t, dax::divideByConstant<uint8_t, 3>)
DAX_FORWARD_7(DAXI_DivC_16u_C1RSfs, uint16_t, dax::divideByConstant<uint16_t, 1>)
DAX_FORWARD_8(DAXI_DivC_16u_C1RSfs_MT, uint16_t, dax::divideByConstant<uint16_t, 1>)
DAX_FORWARD_9(DAXI_DivC_16u_C3RSfs, uint16_t, dax::divideByConstant<uint16_t, 3>)
DAX_FORWARD_10(DAXI_DivC_16u_C3RSfs_MT, uint16_t, dax::divideByConstant<uint16_t, 3>)
DAX_FORWARD_11(DAXI_DivC_16u_C1IRSfs, uint16_t, dax::divideByConstant<uint16_t, 1>)
DAX_FORWARD_12(DAXI_DivC_16u_C3IRSfs, uint16_t, dax::divideByConstant<uint16_t, 3>)
DAX_FORWARD_7(DAXI_DivC_16s_C1RSfs, int16_t, dax::divideByConstant<int16_t, 1>)
DAX_FORWARD_8(DAXI_DivC_16s_C1RSfs_MT, int16_t, dax::divideByConstant<int16_t, 1>)
DAX_FORWARD_9(DAXI_DivC_16s_C3RSfs, int16_t, dax::divideByConstant<int16_t, 3>)
DAX_FORWARD_10(DAXI_DivC_16s_C3RSfs_MT, int16_t, dax::divideByConstant<int16_t, 3>)
DAX_FORWARD_11(DAXI_DivC_16s_C1IRSfs, int16_t, dax::divideByConstant<int16_t, 1>)
DAX_FORWARD_12(DAXI_DivC_16s_C3IRSfs, int16_t, dax::divideByConstant<int16_t, 3>)
DAX_FORWARD_13(DAXI_DivC_32f_C1R, float, dax::divideByConstant<float, 1>)
DAX_FORWARD_14(DAXI_DivC_32f_C1R_MT, float, dax::divideByConstant<float, 1>)
DAX_FORWARD_15(DAXI_DivC_32f_C3R, float, dax::divideByConstant<float, 3>)
DAX_FORWARD_16(DAXI_DivC_32f_C3R_MT, float, dax::divideByConstant<float, 3>)
DAX_FORWARD_17(DAXI_DivC_32f_C1IR, float, dax::divideByConstant<float, 1>)
DAX_FORWARD_18(DAXI_DivC_32f_C3IR, float, dax::divideByConstant<float, 3>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
#undef DAX_FORWARD_7
#undef DAX_FORWARD_8
#undef DAX_FORWARD_9
#undef DAX_FORWARD_10
#undef DAX_FORWARD_11
#undef DAX_FORWARD_12
#undef DAX_FORWARD_13
#undef DAX_FORWARD_14
#undef DAX_FORWARD_15
#undef DAX_FORWARD_16
#undef DAX_FORWARD_17
#undef DAX_FORWARD_18
