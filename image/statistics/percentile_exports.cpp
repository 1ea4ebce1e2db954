#include "daxi/percentile.h"
#include "image/statistics/percentile.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                              \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, const double* shares, int32_t count, T* values) { \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, shares, count, values);                                   \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                   \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, \
                 const double* shares, int32_t count, T* values) {                                    \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, shares, count, values);                    \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                            \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, const double* shares, int32_t count, T* values, \
                 void* buffer) {                                                                               \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, nullptr, 0, size, shares, count, values, buffer);     \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                                \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, DaxiSize size, const double* shares, \
                 int32_t count, T* values, void* buffer) {                                                         \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, nullptr, 0, size, shares, count, values,     \
                       buffer);                                                                                    \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                                            \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,          \
                 const double* shares, int32_t count, T* values, void* buffer) {                               \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, mask, maskStep, size, shares, count, values, buffer); \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                                                                  \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, \
                 DaxiSize size, const double* shares, int32_t count, T* values, void* buffer) {                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, mask, maskStep, size, shares, count, values,   \
                       buffer);                                                                                      \
  }
#define DAX_FORWARD_7(NAME, T, ...)                                         \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, T* median) { \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, median);             \
  }
#define DAX_FORWARD_8(NAME, T, ...)                                                                                \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T* median) { \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, median);                                                \
  }
#define DAX_FORWARD_9(NAME, T, ...)                                                         \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, T* median, void* buffer) {   \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, nullptr, 0, size, median, buffer); \
  }
#define DAX_FORWARD_10(NAME, T, ...)                                                                     \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, DaxiSize size, T* median,  \
                 void* buffer) {                                                                         \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, nullptr, 0, size, median, buffer); \
  }
#define DAX_FORWARD_11(NAME, T, ...)                                                                             \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, T* median, \
                 void* buffer) {                                                                                 \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, mask, maskStep, size, median, buffer);                  \
  }
#define DAX_FORWARD_12(NAME, T, ...)                                                                                 \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, \
                 DaxiSize size, T* median, void* buffer) {                                                           \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, mask, maskStep, size, median, buffer);         \
  }

DAX_FORWARD_1(DAXI_Percentiles_8u_C1R, uint8_t, dax::percentilesOf<uint8_t, false>)
DAX_FORWARD_2(DAXI_Percentiles_8u_C1MR, uint8_t, dax::percentilesOf<uint8_t, true>)
DAX_FORWARD_3(DAXI_Percentiles_16u_C1R, uint16_t, dax::percentilesOf<uint16_t, false>)
DAX_FORWARD_4(DAXI_Percentiles_16u_C1R_MT, uint16_t, dax::percentilesOf<uint16_t, false>)
DAX_FORWARD_5(DAXI_Percentiles_16u_C1MR, uint16_t, dax::percentilesOf<uint16_t, true>)
DAX_FORWARD_6(DAXI_Percentiles_16u_C1MR_MT, uint16_t, dax::percentilesOf<uint16_t, true>)
DAX_FORWARD_3(DAXI_Percentiles_16s_C1R, int16_t, dax::percentilesOf<int16_t, false>)
DAX_FORWARD_4(DAXI_Percentiles_16s_C1R_MT, int16_t, dax::percentilesOf<int16_t, false>)
DAX_FORWARD_5(DAXI_Percentiles_16s_C1MR, int16_t, dax::percentilesOf<int16_t, true>)
DAX_FORWARD_6(DAXI_Percentiles_16s_C1MR_MT, int16_t, dax::percentilesOf<int16_t, true>)
DAX_FORWARD_3(DAXI_Percentiles_32f_C1R, float, dax::percentilesOf<float, false>)
DAX_FORWARD_4(DAXI_Percentiles_32f_C1R_MT, float, dax::percentilesOf<float, false>)
DAX_FORWARD_5(DAXI_Percentiles_32f_C1MR, float, dax::percentilesOf<float, true>)
DAX_FORWARD_6(DAXI_Percentiles_32f_C1MR_MT, float, dax::percentilesOf<float, true>)
DAX_FORWARD_7(DAXI_Median_8u_C1R, uint8_t, dax::medianOf<uint8_t, false>)
DAX_FORWARD_8(DAXI_Median_8u_C1MR, uint8_t, dax::medianOf<uint8_t, true>)
DAX_FORWARD_9(DAXI_Median_16u_C1R, uint16_t, dax::medianOf<uint16_t, false>)
DAX_FORWARD_10(DAXI_Median_16u_C1R_MT, uint16_t, dax::medianOf<uint16_t, false>)
DAX_FORWARD_11(DAXI_Median_16u_C1MR, uint16_t, dax::medianOf<uint16_t, true>)
DAX_FORWARD_12(DAXI_Median_16u_C1MR_MT, uint16_t, dax::medianOf<uint16_t, true>)
DAX_FORWARD_9(DAXI_Median_16s_C1R, int16_t, dax::medianOf<int16_t, false>)
DAX_FORWARD_10(DAXI_Median_16s_C1R_MT, int16_t, dax::medianOf<int16_t, false>)
DAX_FORWARD_11(DAXI_Median_16s_C1MR, int16_t, dax::medianOf<int16_t, true>)
DAX_FORWARD_12(DAXI_Median_16s_C1MR_MT, int16_t, dax::medianOf<int16_t, true>)
DAX_FORWARD_9(DAXI_Median_32f_C1R, float, dax::medianOf<float, false>)
DAX_FORWARD_10(DAXI_Median_32f_C1R_MT, float, dax::medianOf<float, false>)
DAX_FORWARD_11(DAXI_Median_32f_C1MR, float, dax::medianOf<float, true>)
DAX_FORWARD_12(DAXI_Median_32f_C1MR_MT, float, dax::medianOf<float, true>)

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
