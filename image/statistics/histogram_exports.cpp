#include "daxi/histogram.h"
#include "image/statistics/histogram.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                     \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, int32_t bins, int32_t low, int32_t high, \
                 uint64_t* counts, DaxiHistogramOutside* outside) {                                     \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, bins, low, high, counts, outside, nullptr);      \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                 \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, int32_t bins, \
                 int32_t low, int32_t high, uint64_t* counts, DaxiHistogramOutside* outside) {                      \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, bins, low, high, counts, outside, nullptr);              \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                                     \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, int32_t bins, int32_t low, int32_t high, \
                 uint64_t* counts, DaxiHistogramOutside* outside, void* buffer) {                       \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, bins, low, high, counts, outside, buffer);       \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                                                 \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, int32_t bins, \
                 int32_t low, int32_t high, uint64_t* counts, DaxiHistogramOutside* outside, void* buffer) {        \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, bins, low, high, counts, outside, buffer);               \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                                   \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, int32_t bins, double low, double high, \
                 uint64_t* counts, DaxiHistogramOutside* outside, void* buffer) {                     \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, bins, low, high, counts, outside, buffer);     \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                                                                 \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, int32_t bins, \
                 double low, double high, uint64_t* counts, DaxiHistogramOutside* outside, void* buffer) {          \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, bins, low, high, counts, outside, buffer);               \
  }
#define DAX_FORWARD_7(NAME, T, ...)                                                                                  \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, const int32_t* edges, int32_t bins, uint64_t* counts, \
                 DaxiHistogramOutside* outside) {                                                                    \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, edges, bins, counts, outside, nullptr);                       \
  }
#define DAX_FORWARD_8(NAME, T, ...)                                                                     \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,   \
                 const int32_t* edges, int32_t bins, uint64_t* counts, DaxiHistogramOutside* outside) { \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, edges, bins, counts, outside, nullptr);      \
  }
#define DAX_FORWARD_9(NAME, T, ...)                                                                                  \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, const int32_t* edges, int32_t bins, uint64_t* counts, \
                 DaxiHistogramOutside* outside, void* buffer) {                                                      \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, edges, bins, counts, outside, buffer);                        \
  }
#define DAX_FORWARD_10(NAME, T, ...)                                                                                  \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,                 \
                 const int32_t* edges, int32_t bins, uint64_t* counts, DaxiHistogramOutside* outside, void* buffer) { \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, edges, bins, counts, outside, buffer);                     \
  }
#define DAX_FORWARD_11(NAME, T, ...)                                                                               \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, const float* edges, int32_t bins, uint64_t* counts, \
                 DaxiHistogramOutside* outside) {                                                                  \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, edges, bins, counts, outside, nullptr);                     \
  }
#define DAX_FORWARD_12(NAME, T, ...)                                                                  \
  DaxStatus NAME(const T* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size, \
                 const float* edges, int32_t bins, uint64_t* counts, DaxiHistogramOutside* outside) { \
    return __VA_ARGS__(src, srcStep, mask, maskStep, size, edges, bins, counts, outside, nullptr);    \
  }

DAX_FORWARD_1(DAXI_HistogramEven_8u_C1R, uint8_t, dax::histogramEven<uint8_t, false>)
DAX_FORWARD_2(DAXI_HistogramEven_8u_C1MR, uint8_t, dax::histogramEven<uint8_t, true>)
DAX_FORWARD_3(DAXI_HistogramEven_16u_C1R, uint16_t, dax::histogramEven<uint16_t, false>)
DAX_FORWARD_4(DAXI_HistogramEven_16u_C1MR, uint16_t, dax::histogramEven<uint16_t, true>)
DAX_FORWARD_5(DAXI_HistogramEven_32f_C1R, float, dax::histogramEven<float, false>)
DAX_FORWARD_6(DAXI_HistogramEven_32f_C1MR, float, dax::histogramEven<float, true>)
DAX_FORWARD_7(DAXI_HistogramRange_8u_C1R, uint8_t, dax::histogramRange<uint8_t, false>)
DAX_FORWARD_8(DAXI_HistogramRange_8u_C1MR, uint8_t, dax::histogramRange<uint8_t, true>)
DAX_FORWARD_9(DAXI_HistogramRange_16u_C1R, uint16_t, dax::histogramRange<uint16_t, false>)
DAX_FORWARD_10(DAXI_HistogramRange_16u_C1MR, uint16_t, dax::histogramRange<uint16_t, true>)
DAX_FORWARD_11(DAXI_HistogramRange_32f_C1R, float, dax::histogramRange<float, false>)
DAX_FORWARD_12(DAXI_HistogramRange_32f_C1MR, float, dax::histogramRange<float, true>)

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
