#include "daxi/rotate.h"
#include "image/warp/rotate.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                     \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t axis) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, axis);                     \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t axis) {                                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, axis);                      \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                       \
  DaxStatus NAME(const T* const src[3], int32_t srcStep, T* const dst[3], int32_t dstStep, DaxiSize size, \
                 int32_t axis) {                                                                          \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, axis);                       \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                     \
  DaxStatus NAME(void* pool, uint32_t threads, const T* const src[3], int32_t srcStep, T* const dst[3], \
                 int32_t dstStep, DaxiSize size, int32_t axis) {                                        \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, axis);        \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                      \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, int32_t axis) { \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, size, axis);    \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                               \
  DaxStatus NAME(T* const srcDst[3], int32_t step, DaxiSize size, int32_t axis) { \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, size, axis);             \
  }
#define DAX_FORWARD_7(NAME, T, ...)                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);             \
  }
#define DAX_FORWARD_8(NAME, T, ...)                                                                    \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, \
                 DaxiSize size) {                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);             \
  }
#define DAX_FORWARD_9(NAME, T, ...)                                                                         \
  DaxStatus NAME(const T* const src[3], int32_t srcStep, T* const dst[3], int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);                               \
  }
#define DAX_FORWARD_10(NAME, T, ...)                                                                    \
  DaxStatus NAME(void* pool, uint32_t threads, const T* const src[3], int32_t srcStep, T* const dst[3], \
                 int32_t dstStep, DaxiSize size) {                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);              \
  }
#define DAX_FORWARD_11(NAME, T, ...)                            \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size) {      \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, size); \
  }
#define DAX_FORWARD_12(NAME, T, ...)                                \
  DaxStatus NAME(T* const srcDst[3], int32_t step, DaxiSize size) { \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, size);     \
  }
#define DAX_FORWARD_13(NAME, T, ...)                                                                        \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t quarters) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, quarters);                     \
  }
#define DAX_FORWARD_14(NAME, T, ...)                                                                                  \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t quarters) {                                                                                  \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, quarters);                  \
  }
#define DAX_FORWARD_15(NAME, T, ...)                                                                      \
  DaxStatus NAME(const T* const src[3], int32_t srcStep, T* const dst[3], int32_t dstStep, DaxiSize size, \
                 int32_t quarters) {                                                                      \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, quarters);                   \
  }
#define DAX_FORWARD_16(NAME, T, ...)                                                                    \
  DaxStatus NAME(void* pool, uint32_t threads, const T* const src[3], int32_t srcStep, T* const dst[3], \
                 int32_t dstStep, DaxiSize size, int32_t quarters) {                                    \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, quarters);    \
  }
#define DAX_FORWARD_17(NAME, T, ...)                                         \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, int32_t quarters) { \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, size, quarters);    \
  }
#define DAX_FORWARD_18(NAME, T, ...)                                                  \
  DaxStatus NAME(T* const srcDst[3], int32_t step, DaxiSize size, int32_t quarters) { \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, size, quarters);             \
  }

DAX_FORWARD_1(DAXI_Mirror_8u_C1R, uint8_t, dax::mirror<uint8_t, 1>)
DAX_FORWARD_2(DAXI_Mirror_8u_C1R_MT, uint8_t, dax::mirror<uint8_t, 1>)
DAX_FORWARD_1(DAXI_Mirror_8u_C3R, uint8_t, dax::mirror<uint8_t, 3>)
DAX_FORWARD_2(DAXI_Mirror_8u_C3R_MT, uint8_t, dax::mirror<uint8_t, 3>)
DAX_FORWARD_3(DAXI_Mirror_8u_P3R, uint8_t, dax::mirror<uint8_t, 3>)
DAX_FORWARD_4(DAXI_Mirror_8u_P3R_MT, uint8_t, dax::mirror<uint8_t, 3>)
DAX_FORWARD_5(DAXI_Mirror_8u_C1IR, uint8_t, dax::mirrorInPlace<uint8_t, 1>)
DAX_FORWARD_5(DAXI_Mirror_8u_C3IR, uint8_t, dax::mirrorInPlace<uint8_t, 3>)
DAX_FORWARD_6(DAXI_Mirror_8u_P3IR, uint8_t, dax::mirrorInPlace<uint8_t, 3>)
DAX_FORWARD_1(DAXI_Mirror_16u_C1R, uint16_t, dax::mirror<uint16_t, 1>)
DAX_FORWARD_2(DAXI_Mirror_16u_C1R_MT, uint16_t, dax::mirror<uint16_t, 1>)
DAX_FORWARD_1(DAXI_Mirror_16u_C3R, uint16_t, dax::mirror<uint16_t, 3>)
DAX_FORWARD_2(DAXI_Mirror_16u_C3R_MT, uint16_t, dax::mirror<uint16_t, 3>)
DAX_FORWARD_3(DAXI_Mirror_16u_P3R, uint16_t, dax::mirror<uint16_t, 3>)
DAX_FORWARD_4(DAXI_Mirror_16u_P3R_MT, uint16_t, dax::mirror<uint16_t, 3>)
DAX_FORWARD_5(DAXI_Mirror_16u_C1IR, uint16_t, dax::mirrorInPlace<uint16_t, 1>)
DAX_FORWARD_5(DAXI_Mirror_16u_C3IR, uint16_t, dax::mirrorInPlace<uint16_t, 3>)
DAX_FORWARD_6(DAXI_Mirror_16u_P3IR, uint16_t, dax::mirrorInPlace<uint16_t, 3>)
DAX_FORWARD_1(DAXI_Mirror_16s_C1R, int16_t, dax::mirror<int16_t, 1>)
DAX_FORWARD_2(DAXI_Mirror_16s_C1R_MT, int16_t, dax::mirror<int16_t, 1>)
DAX_FORWARD_1(DAXI_Mirror_16s_C3R, int16_t, dax::mirror<int16_t, 3>)
DAX_FORWARD_2(DAXI_Mirror_16s_C3R_MT, int16_t, dax::mirror<int16_t, 3>)
DAX_FORWARD_3(DAXI_Mirror_16s_P3R, int16_t, dax::mirror<int16_t, 3>)
DAX_FORWARD_4(DAXI_Mirror_16s_P3R_MT, int16_t, dax::mirror<int16_t, 3>)
DAX_FORWARD_5(DAXI_Mirror_16s_C1IR, int16_t, dax::mirrorInPlace<int16_t, 1>)
DAX_FORWARD_5(DAXI_Mirror_16s_C3IR, int16_t, dax::mirrorInPlace<int16_t, 3>)
DAX_FORWARD_6(DAXI_Mirror_16s_P3IR, int16_t, dax::mirrorInPlace<int16_t, 3>)
DAX_FORWARD_1(DAXI_Mirror_32s_C1R, int32_t, dax::mirror<int32_t, 1>)
DAX_FORWARD_2(DAXI_Mirror_32s_C1R_MT, int32_t, dax::mirror<int32_t, 1>)
DAX_FORWARD_1(DAXI_Mirror_32s_C3R, int32_t, dax::mirror<int32_t, 3>)
DAX_FORWARD_2(DAXI_Mirror_32s_C3R_MT, int32_t, dax::mirror<int32_t, 3>)
DAX_FORWARD_3(DAXI_Mirror_32s_P3R, int32_t, dax::mirror<int32_t, 3>)
DAX_FORWARD_4(DAXI_Mirror_32s_P3R_MT, int32_t, dax::mirror<int32_t, 3>)
DAX_FORWARD_5(DAXI_Mirror_32s_C1IR, int32_t, dax::mirrorInPlace<int32_t, 1>)
DAX_FORWARD_5(DAXI_Mirror_32s_C3IR, int32_t, dax::mirrorInPlace<int32_t, 3>)
DAX_FORWARD_6(DAXI_Mirror_32s_P3IR, int32_t, dax::mirrorInPlace<int32_t, 3>)
DAX_FORWARD_1(DAXI_Mirror_32f_C1R, float, dax::mirror<float, 1>)
DAX_FORWARD_2(DAXI_Mirror_32f_C1R_MT, float, dax::mirror<float, 1>)
DAX_FORWARD_1(DAXI_Mirror_32f_C3R, float, dax::mirror<float, 3>)
DAX_FORWARD_2(DAXI_Mirror_32f_C3R_MT, float, dax::mirror<float, 3>)
DAX_FORWARD_3(DAXI_Mirror_32f_P3R, float, dax::mirror<float, 3>)
DAX_FORWARD_4(DAXI_Mirror_32f_P3R_MT, float, dax::mirror<float, 3>)
DAX_FORWARD_5(DAXI_Mirror_32f_C1IR, float, dax::mirrorInPlace<float, 1>)
DAX_FORWARD_5(DAXI_Mirror_32f_C3IR, float, dax::mirrorInPlace<float, 3>)
DAX_FORWARD_6(DAXI_Mirror_32f_P3IR, float, dax::mirrorInPlace<float, 3>)
DAX_FORWARD_1(DAXI_Mirror_64f_C1R, double, dax::mirror<double, 1>)
DAX_FORWARD_2(DAXI_Mirror_64f_C1R_MT, double, dax::mirror<double, 1>)
DAX_FORWARD_1(DAXI_Mirror_64f_C3R, double, dax::mirror<double, 3>)
DAX_FORWARD_2(DAXI_Mirror_64f_C3R_MT, double, dax::mirror<double, 3>)
DAX_FORWARD_3(DAXI_Mirror_64f_P3R, double, dax::mirror<double, 3>)
DAX_FORWARD_4(DAXI_Mirror_64f_P3R_MT, double, dax::mirror<double, 3>)
DAX_FORWARD_5(DAXI_Mirror_64f_C1IR, double, dax::mirrorInPlace<double, 1>)
DAX_FORWARD_5(DAXI_Mirror_64f_C3IR, double, dax::mirrorInPlace<double, 3>)
DAX_FORWARD_6(DAXI_Mirror_64f_P3IR, double, dax::mirrorInPlace<double, 3>)
DAX_FORWARD_7(DAXI_Transpose_8u_C1R, uint8_t, dax::transpose<uint8_t, 1>)
DAX_FORWARD_8(DAXI_Transpose_8u_C1R_MT, uint8_t, dax::transpose<uint8_t, 1>)
DAX_FORWARD_7(DAXI_Transpose_8u_C3R, uint8_t, dax::transpose<uint8_t, 3>)
DAX_FORWARD_8(DAXI_Transpose_8u_C3R_MT, uint8_t, dax::transpose<uint8_t, 3>)
DAX_FORWARD_9(DAXI_Transpose_8u_P3R, uint8_t, dax::transpose<uint8_t, 3>)
DAX_FORWARD_10(DAXI_Transpose_8u_P3R_MT, uint8_t, dax::transpose<uint8_t, 3>)
DAX_FORWARD_11(DAXI_Transpose_8u_C1IR, uint8_t, dax::transposeInPlace<uint8_t, 1>)
DAX_FORWARD_11(DAXI_Transpose_8u_C3IR, uint8_t, dax::transposeInPlace<uint8_t, 3>)
DAX_FORWARD_12(DAXI_Transpose_8u_P3IR, uint8_t, dax::transposeInPlace<uint8_t, 3>)
DAX_FORWARD_7(DAXI_Transpose_16u_C1R, uint16_t, dax::transpose<uint16_t, 1>)
DAX_FORWARD_8(DAXI_Transpose_16u_C1R_MT, uint16_t, dax::transpose<uint16_t, 1>)
DAX_FORWARD_7(DAXI_Transpose_16u_C3R, uint16_t, dax::transpose<uint16_t, 3>)
DAX_FORWARD_8(DAXI_Transpose_16u_C3R_MT, uint16_t, dax::transpose<uint16_t, 3>)
DAX_FORWARD_9(DAXI_Transpose_16u_P3R, uint16_t, dax::transpose<uint16_t, 3>)
DAX_FORWARD_10(DAXI_Transpose_16u_P3R_MT, uint16_t, dax::transpose<uint16_t, 3>)
DAX_FORWARD_11(DAXI_Transpose_16u_C1IR, uint16_t, dax::transposeInPlace<uint16_t, 1>)
DAX_FORWARD_11(DAXI_Transpose_16u_C3IR, uint16_t, dax::transposeInPlace<uint16_t, 3>)
DAX_FORWARD_12(DAXI_Transpose_16u_P3IR, uint16_t, dax::transposeInPlace<uint16_t, 3>)
DAX_FORWARD_7(DAXI_Transpose_16s_C1R, int16_t, dax::transpose<int16_t, 1>)
DAX_FORWARD_8(DAXI_Transpose_16s_C1R_MT, int16_t, dax::transpose<int16_t, 1>)
DAX_FORWARD_7(DAXI_Transpose_16s_C3R, int16_t, dax::transpose<int16_t, 3>)
DAX_FORWARD_8(DAXI_Transpose_16s_C3R_MT, int16_t, dax::transpose<int16_t, 3>)
DAX_FORWARD_9(DAXI_Transpose_16s_P3R, int16_t, dax::transpose<int16_t, 3>)
DAX_FORWARD_10(DAXI_Transpose_16s_P3R_MT, int16_t, dax::transpose<int16_t, 3>)
DAX_FORWARD_11(DAXI_Transpose_16s_C1IR, int16_t, dax::transposeInPlace<int16_t, 1>)
DAX_FORWARD_11(DAXI_Transpose_16s_C3IR, int16_t, dax::transposeInPlace<int16_t, 3>)
DAX_FORWARD_12(DAXI_Transpose_16s_P3IR, int16_t, dax::transposeInPlace<int16_t, 3>)
DAX_FORWARD_7(DAXI_Transpose_32s_C1R, int32_t, dax::transpose<int32_t, 1>)
DAX_FORWARD_8(DAXI_Transpose_32s_C1R_MT, int32_t, dax::transpose<int32_t, 1>)
DAX_FORWARD_7(DAXI_Transpose_32s_C3R, int32_t, dax::transpose<int32_t, 3>)
DAX_FORWARD_8(DAXI_Transpose_32s_C3R_MT, int32_t, dax::transpose<int32_t, 3>)
DAX_FORWARD_9(DAXI_Transpose_32s_P3R, int32_t, dax::transpose<int32_t, 3>)
DAX_FORWARD_10(DAXI_Transpose_32s_P3R_MT, int32_t, dax::transpose<int32_t, 3>)
DAX_FORWARD_11(DAXI_Transpose_32s_C1IR, int32_t, dax::transposeInPlace<int32_t, 1>)
DAX_FORWARD_11(DAXI_Transpose_32s_C3IR, int32_t, dax::transposeInPlace<int32_t, 3>)
DAX_FORWARD_12(DAXI_Transpose_32s_P3IR, int32_t, dax::transposeInPlace<int32_t, 3>)
DAX_FORWARD_7(DAXI_Transpose_32f_C1R, float, dax::transpose<float, 1>)
DAX_FORWARD_8(DAXI_Transpose_32f_C1R_MT, float, dax::transpose<float, 1>)
DAX_FORWARD_7(DAXI_Transpose_32f_C3R, float, dax::transpose<float, 3>)
DAX_FORWARD_8(DAXI_Transpose_32f_C3R_MT, float, dax::transpose<float, 3>)
DAX_FORWARD_9(DAXI_Transpose_32f_P3R, float, dax::transpose<float, 3>)
DAX_FORWARD_10(DAXI_Transpose_32f_P3R_MT, float, dax::transpose<float, 3>)
DAX_FORWARD_11(DAXI_Transpose_32f_C1IR, float, dax::transposeInPlace<float, 1>)
DAX_FORWARD_11(DAXI_Transpose_32f_C3IR, float, dax::transposeInPlace<float, 3>)
DAX_FORWARD_12(DAXI_Transpose_32f_P3IR, float, dax::transposeInPlace<float, 3>)
DAX_FORWARD_7(DAXI_Transpose_64f_C1R, double, dax::transpose<double, 1>)
DAX_FORWARD_8(DAXI_Transpose_64f_C1R_MT, double, dax::transpose<double, 1>)
DAX_FORWARD_7(DAXI_Transpose_64f_C3R, double, dax::transpose<double, 3>)
DAX_FORWARD_8(DAXI_Transpose_64f_C3R_MT, double, dax::transpose<double, 3>)
DAX_FORWARD_9(DAXI_Transpose_64f_P3R, double, dax::transpose<double, 3>)
DAX_FORWARD_10(DAXI_Transpose_64f_P3R_MT, double, dax::transpose<double, 3>)
DAX_FORWARD_11(DAXI_Transpose_64f_C1IR, double, dax::transposeInPlace<double, 1>)
DAX_FORWARD_11(DAXI_Transpose_64f_C3IR, double, dax::transposeInPlace<double, 3>)
DAX_FORWARD_12(DAXI_Transpose_64f_P3IR, double, dax::transposeInPlace<double, 3>)
DAX_FORWARD_13(DAXI_Rotate90_8u_C1R, uint8_t, dax::rotateQuarters<uint8_t, 1>)
DAX_FORWARD_14(DAXI_Rotate90_8u_C1R_MT, uint8_t, dax::rotateQuarters<uint8_t, 1>)
DAX_FORWARD_13(DAXI_Rotate90_8u_C3R, uint8_t, dax::rotateQuarters<uint8_t, 3>)
DAX_FORWARD_14(DAXI_Rotate90_8u_C3R_MT, uint8_t, dax::rotateQuarters<uint8_t, 3>)
DAX_FORWARD_15(DAXI_Rotate90_8u_P3R, uint8_t, dax::rotateQuarters<uint8_t, 3>)
DAX_FORWARD_16(DAXI_Rotate90_8u_P3R_MT, uint8_t, dax::rotateQuarters<uint8_t, 3>)
DAX_FORWARD_17(DAXI_Rotate90_8u_C1IR, uint8_t, dax::rotateQuartersInPlace<uint8_t, 1>)
DAX_FORWARD_17(DAXI_Rotate90_8u_C3IR, uint8_t, dax::rotateQuartersInPlace<uint8_t, 3>)
DAX_FORWARD_18(DAXI_Rotate90_8u_P3IR, uint8_t, dax::rotateQuartersInPlace<uint8_t, 3>)
DAX_FORWARD_13(DAXI_Rotate90_16u_C1R, uint16_t, dax::rotateQuarters<uint16_t, 1>)
DAX_FORWARD_14(DAXI_Rotate90_16u_C1R_MT, uint16_t, dax::rotateQuarters<uint16_t, 1>)
DAX_FORWARD_13(DAXI_Rotate90_16u_C3R, uint16_t, dax::rotateQuarters<uint16_t, 3>)
DAX_FORWARD_14(DAXI_Rotate90_16u_C3R_MT, uint16_t, dax::rotateQuarters<uint16_t, 3>)
DAX_FORWARD_15(DAXI_Rotate90_16u_P3R, uint16_t, dax::rotateQuarters<uint16_t, 3>)
DAX_FORWARD_16(DAXI_Rotate90_16u_P3R_MT, uint16_t, dax::rotateQuarters<uint16_t, 3>)
DAX_FORWARD_17(DAXI_Rotate90_16u_C1IR, uint16_t, dax::rotateQuartersInPlace<uint16_t, 1>)
DAX_FORWARD_17(DAXI_Rotate90_16u_C3IR, uint16_t, dax::rotateQuartersInPlace<uint16_t, 3>)
DAX_FORWARD_18(DAXI_Rotate90_16u_P3IR, uint16_t, dax::rotateQuartersInPlace<uint16_t, 3>)
DAX_FORWARD_13(DAXI_Rotate90_16s_C1R, int16_t, dax::rotateQuarters<int16_t, 1>)
DAX_FORWARD_14(DAXI_Rotate90_16s_C1R_MT, int16_t, dax::rotateQuarters<int16_t, 1>)
DAX_FORWARD_13(DAXI_Rotate90_16s_C3R, int16_t, dax::rotateQuarters<int16_t, 3>)
DAX_FORWARD_14(DAXI_Rotate90_16s_C3R_MT, int16_t, dax::rotateQuarters<int16_t, 3>)
DAX_FORWARD_15(DAXI_Rotate90_16s_P3R, int16_t, dax::rotateQuarters<int16_t, 3>)
DAX_FORWARD_16(DAXI_Rotate90_16s_P3R_MT, int16_t, dax::rotateQuarters<int16_t, 3>)
DAX_FORWARD_17(DAXI_Rotate90_16s_C1IR, int16_t, dax::rotateQuartersInPlace<int16_t, 1>)
DAX_FORWARD_17(DAXI_Rotate90_16s_C3IR, int16_t, dax::rotateQuartersInPlace<int16_t, 3>)
DAX_FORWARD_18(DAXI_Rotate90_16s_P3IR, int16_t, dax::rotateQuartersInPlace<int16_t, 3>)
DAX_FORWARD_13(DAXI_Rotate90_32s_C1R, int32_t, dax::rotateQuarters<int32_t, 1>)
DAX_FORWARD_14(DAXI_Rotate90_32s_C1R_MT, int32_t, dax::rotateQuarters<int32_t, 1>)
DAX_FORWARD_13(DAXI_Rotate90_32s_C3R, int32_t, dax::rotateQuarters<int32_t, 3>)
DAX_FORWARD_14(DAXI_Rotate90_32s_C3R_MT, int32_t, dax::rotateQuarters<int32_t, 3>)
DAX_FORWARD_15(DAXI_Rotate90_32s_P3R, int32_t, dax::rotateQuarters<int32_t, 3>)
DAX_FORWARD_16(DAXI_Rotate90_32s_P3R_MT, int32_t, dax::rotateQuarters<int32_t, 3>)
DAX_FORWARD_17(DAXI_Rotate90_32s_C1IR, int32_t, dax::rotateQuartersInPlace<int32_t, 1>)
DAX_FORWARD_17(DAXI_Rotate90_32s_C3IR, int32_t, dax::rotateQuartersInPlace<int32_t, 3>)
DAX_FORWARD_18(DAXI_Rotate90_32s_P3IR, int32_t, dax::rotateQuartersInPlace<int32_t, 3>)
DAX_FORWARD_13(DAXI_Rotate90_32f_C1R, float, dax::rotateQuarters<float, 1>)
DAX_FORWARD_14(DAXI_Rotate90_32f_C1R_MT, float, dax::rotateQuarters<float, 1>)
DAX_FORWARD_13(DAXI_Rotate90_32f_C3R, float, dax::rotateQuarters<float, 3>)
DAX_FORWARD_14(DAXI_Rotate90_32f_C3R_MT, float, dax::rotateQuarters<float, 3>)
DAX_FORWARD_15(DAXI_Rotate90_32f_P3R, float, dax::rotateQuarters<float, 3>)
DAX_FORWARD_16(DAXI_Rotate90_32f_P3R_MT, float, dax::rotateQuarters<float, 3>)
DAX_FORWARD_17(DAXI_Rotate90_32f_C1IR, float, dax::rotateQuartersInPlace<float, 1>)
DAX_FORWARD_17(DAXI_Rotate90_32f_C3IR, float, dax::rotateQuartersInPlace<float, 3>)
DAX_FORWARD_18(DAXI_Rotate90_32f_P3IR, float, dax::rotateQuartersInPlace<float, 3>)
DAX_FORWARD_13(DAXI_Rotate90_64f_C1R, double, dax::rotateQuarters<double, 1>)
DAX_FORWARD_14(DAXI_Rotate90_64f_C1R_MT, double, dax::rotateQuarters<double, 1>)
DAX_FORWARD_13(DAXI_Rotate90_64f_C3R, double, dax::rotateQuarters<double, 3>)
DAX_FORWARD_14(DAXI_Rotate90_64f_C3R_MT, double, dax::rotateQuarters<double, 3>)
DAX_FORWARD_15(DAXI_Rotate90_64f_P3R, double, dax::rotateQuarters<double, 3>)
DAX_FORWARD_16(DAXI_Rotate90_64f_P3R_MT, double, dax::rotateQuarters<double, 3>)
DAX_FORWARD_17(DAXI_Rotate90_64f_C1IR, double, dax::rotateQuartersInPlace<double, 1>)
DAX_FORWARD_17(DAXI_Rotate90_64f_C3IR, double, dax::rotateQuartersInPlace<double, 3>)
DAX_FORWARD_18(DAXI_Rotate90_64f_P3IR, double, dax::rotateQuartersInPlace<double, 3>)

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
