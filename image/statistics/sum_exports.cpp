#include "daxi/sum.h"
#include "image/statistics/sum.h"

#define DAX_FORWARD_1(NAME, T, ...)                                           \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, double* sum) { \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, sum);                  \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                             \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, double sum[3]) { \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, sum);                    \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                                  \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double* sum) { \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, sum);                                                     \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                                    \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double sum[3]) { \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, sum);                                                       \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                            \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, double* mean) { \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, mean);                  \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                              \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, double mean[3]) { \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, mean);                    \
  }
#define DAX_FORWARD_7(NAME, T, ...)                                                                                   \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double* mean) { \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, mean);                                                     \
  }
#define DAX_FORWARD_8(NAME, T, ...)                                                                   \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, \
                 double mean[3]) {                                                                    \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, mean);                                     \
  }
#define DAX_FORWARD_9(NAME, T, ...)                                                            \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, double* mean, double* stdDev) { \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, mean, stdDev);                          \
  }
#define DAX_FORWARD_10(NAME, T, ...)                                                               \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, double mean[3], double stdDev[3]) { \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, mean, stdDev);                              \
  }
#define DAX_FORWARD_11(NAME, T, ...)                                                                                \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double* mean, \
                 double* stdDev) {                                                                                  \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, mean, stdDev);                                           \
  }
#define DAX_FORWARD_12(NAME, T, ...)                                                                                  \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, double mean[3], \
                 double stdDev[3]) {                                                                                  \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, mean, stdDev);                                             \
  }

DAX_FORWARD_1(DAXI_Sum_8u_C1R, uint8_t, dax::sumOf<uint8_t, 1, false>)
DAX_FORWARD_2(DAXI_Sum_8u_C3R, uint8_t, dax::sumOf<uint8_t, 3, false>)
DAX_FORWARD_3(DAXI_Sum_8u_C1MR, uint8_t, dax::sumOf<uint8_t, 1, true>)
DAX_FORWARD_4(DAXI_Sum_8u_C3MR, uint8_t, dax::sumOf<uint8_t, 3, true>)
DAX_FORWARD_1(DAXI_Sum_16u_C1R, uint16_t, dax::sumOf<uint16_t, 1, false>)
DAX_FORWARD_2(DAXI_Sum_16u_C3R, uint16_t, dax::sumOf<uint16_t, 3, false>)
DAX_FORWARD_3(DAXI_Sum_16u_C1MR, uint16_t, dax::sumOf<uint16_t, 1, true>)
DAX_FORWARD_4(DAXI_Sum_16u_C3MR, uint16_t, dax::sumOf<uint16_t, 3, true>)
DAX_FORWARD_1(DAXI_Sum_16s_C1R, int16_t, dax::sumOf<int16_t, 1, false>)
DAX_FORWARD_2(DAXI_Sum_16s_C3R, int16_t, dax::sumOf<int16_t, 3, false>)
DAX_FORWARD_3(DAXI_Sum_16s_C1MR, int16_t, dax::sumOf<int16_t, 1, true>)
DAX_FORWARD_4(DAXI_Sum_16s_C3MR, int16_t, dax::sumOf<int16_t, 3, true>)
DAX_FORWARD_1(DAXI_Sum_32f_C1R, float, dax::sumOf<float, 1, false>)
DAX_FORWARD_2(DAXI_Sum_32f_C3R, float, dax::sumOf<float, 3, false>)
DAX_FORWARD_3(DAXI_Sum_32f_C1MR, float, dax::sumOf<float, 1, true>)
DAX_FORWARD_4(DAXI_Sum_32f_C3MR, float, dax::sumOf<float, 3, true>)
DAX_FORWARD_5(DAXI_Mean_8u_C1R, uint8_t, dax::meanOf<uint8_t, 1, false>)
DAX_FORWARD_6(DAXI_Mean_8u_C3R, uint8_t, dax::meanOf<uint8_t, 3, false>)
DAX_FORWARD_7(DAXI_Mean_8u_C1MR, uint8_t, dax::meanOf<uint8_t, 1, true>)
DAX_FORWARD_8(DAXI_Mean_8u_C3MR, uint8_t, dax::meanOf<uint8_t, 3, true>)
DAX_FORWARD_5(DAXI_Mean_16u_C1R, uint16_t, dax::meanOf<uint16_t, 1, false>)
DAX_FORWARD_6(DAXI_Mean_16u_C3R, uint16_t, dax::meanOf<uint16_t, 3, false>)
DAX_FORWARD_7(DAXI_Mean_16u_C1MR, uint16_t, dax::meanOf<uint16_t, 1, true>)
DAX_FORWARD_8(DAXI_Mean_16u_C3MR, uint16_t, dax::meanOf<uint16_t, 3, true>)
DAX_FORWARD_5(DAXI_Mean_16s_C1R, int16_t, dax::meanOf<int16_t, 1, false>)
DAX_FORWARD_6(DAXI_Mean_16s_C3R, int16_t, dax::meanOf<int16_t, 3, false>)
DAX_FORWARD_7(DAXI_Mean_16s_C1MR, int16_t, dax::meanOf<int16_t, 1, true>)
DAX_FORWARD_8(DAXI_Mean_16s_C3MR, int16_t, dax::meanOf<int16_t, 3, true>)
DAX_FORWARD_5(DAXI_Mean_32f_C1R, float, dax::meanOf<float, 1, false>)
DAX_FORWARD_6(DAXI_Mean_32f_C3R, float, dax::meanOf<float, 3, false>)
DAX_FORWARD_7(DAXI_Mean_32f_C1MR, float, dax::meanOf<float, 1, true>)
DAX_FORWARD_8(DAXI_Mean_32f_C3MR, float, dax::meanOf<float, 3, true>)
DAX_FORWARD_9(DAXI_MeanStdDev_8u_C1R, uint8_t, dax::meanStdDevOf<uint8_t, 1, false>)
DAX_FORWARD_10(DAXI_MeanStdDev_8u_C3R, uint8_t, dax::meanStdDevOf<uint8_t, 3, false>)
DAX_FORWARD_11(DAXI_MeanStdDev_8u_C1MR, uint8_t, dax::meanStdDevOf<uint8_t, 1, true>)
DAX_FORWARD_12(DAXI_MeanStdDev_8u_C3MR, uint8_t, dax::meanStdDevOf<uint8_t, 3, true>)
DAX_FORWARD_9(DAXI_MeanStdDev_16u_C1R, uint16_t, dax::meanStdDevOf<uint16_t, 1, false>)
DAX_FORWARD_10(DAXI_MeanStdDev_16u_C3R, uint16_t, dax::meanStdDevOf<uint16_t, 3, false>)
DAX_FORWARD_11(DAXI_MeanStdDev_16u_C1MR, uint16_t, dax::meanStdDevOf<uint16_t, 1, true>)
DAX_FORWARD_12(DAXI_MeanStdDev_16u_C3MR, uint16_t, dax::meanStdDevOf<uint16_t, 3, true>)
DAX_FORWARD_9(DAXI_MeanStdDev_16s_C1R, int16_t, dax::meanStdDevOf<int16_t, 1, false>)
DAX_FORWARD_10(DAXI_MeanStdDev_16s_C3R, int16_t, dax::meanStdDevOf<int16_t, 3, false>)
DAX_FORWARD_11(DAXI_MeanStdDev_16s_C1MR, int16_t, dax::meanStdDevOf<int16_t, 1, true>)
DAX_FORWARD_12(DAXI_MeanStdDev_16s_C3MR, int16_t, dax::meanStdDevOf<int16_t, 3, true>)
DAX_FORWARD_9(DAXI_MeanStdDev_32f_C1R, float, dax::meanStdDevOf<float, 1, false>)
DAX_FORWARD_10(DAXI_MeanStdDev_32f_C3R, float, dax::meanStdDevOf<float, 3, false>)
DAX_FORWARD_11(DAXI_MeanStdDev_32f_C1MR, float, dax::meanStdDevOf<float, 1, true>)
DAX_FORWARD_12(DAXI_MeanStdDev_32f_C3MR, float, dax::meanStdDevOf<float, 3, true>)

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
