#include "daxi/histogram.h"
#include "image/statistics/histogram.h"

DaxStatus DAXI_HistogramEven_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t bins, int32_t low,
                                    int32_t high, uint64_t* counts, DaxiHistogramOutside* outside) {
  return dax::histogramEven<uint8_t, false>(src, srcStep, nullptr, 0, size, bins, low, high, counts, outside, nullptr);
}

DaxStatus DAXI_HistogramEven_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                     DaxiSize size, int32_t bins, int32_t low, int32_t high, uint64_t* counts,
                                     DaxiHistogramOutside* outside) {
  return dax::histogramEven<uint8_t, true>(src, srcStep, mask, maskStep, size, bins, low, high, counts, outside,
                                           nullptr);
}

DaxStatus DAXI_HistogramEven_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, int32_t bins, int32_t low,
                                     int32_t high, uint64_t* counts, DaxiHistogramOutside* outside, void* buffer) {
  return dax::histogramEven<uint16_t, false>(src, srcStep, nullptr, 0, size, bins, low, high, counts, outside, buffer);
}

DaxStatus DAXI_HistogramEven_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                      DaxiSize size, int32_t bins, int32_t low, int32_t high, uint64_t* counts,
                                      DaxiHistogramOutside* outside, void* buffer) {
  return dax::histogramEven<uint16_t, true>(src, srcStep, mask, maskStep, size, bins, low, high, counts, outside,
                                            buffer);
}

DaxStatus DAXI_HistogramEven_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, int32_t bins, double low,
                                     double high, uint64_t* counts, DaxiHistogramOutside* outside, void* buffer) {
  return dax::histogramEven<float, false>(src, srcStep, nullptr, 0, size, bins, low, high, counts, outside, buffer);
}

DaxStatus DAXI_HistogramEven_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                      DaxiSize size, int32_t bins, double low, double high, uint64_t* counts,
                                      DaxiHistogramOutside* outside, void* buffer) {
  return dax::histogramEven<float, true>(src, srcStep, mask, maskStep, size, bins, low, high, counts, outside, buffer);
}

DaxStatus DAXI_HistogramRange_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, const int32_t* edges,
                                     int32_t bins, uint64_t* counts, DaxiHistogramOutside* outside) {
  return dax::histogramRange<uint8_t, false>(src, srcStep, nullptr, 0, size, edges, bins, counts, outside, nullptr);
}

DaxStatus DAXI_HistogramRange_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                      DaxiSize size, const int32_t* edges, int32_t bins, uint64_t* counts,
                                      DaxiHistogramOutside* outside) {
  return dax::histogramRange<uint8_t, true>(src, srcStep, mask, maskStep, size, edges, bins, counts, outside, nullptr);
}

DaxStatus DAXI_HistogramRange_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, const int32_t* edges,
                                      int32_t bins, uint64_t* counts, DaxiHistogramOutside* outside, void* buffer) {
  return dax::histogramRange<uint16_t, false>(src, srcStep, nullptr, 0, size, edges, bins, counts, outside, buffer);
}

DaxStatus DAXI_HistogramRange_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, const int32_t* edges, int32_t bins, uint64_t* counts,
                                       DaxiHistogramOutside* outside, void* buffer) {
  return dax::histogramRange<uint16_t, true>(src, srcStep, mask, maskStep, size, edges, bins, counts, outside, buffer);
}

DaxStatus DAXI_HistogramRange_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, const float* edges,
                                      int32_t bins, uint64_t* counts, DaxiHistogramOutside* outside) {
  return dax::histogramRange<float, false>(src, srcStep, nullptr, 0, size, edges, bins, counts, outside, nullptr);
}

DaxStatus DAXI_HistogramRange_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                       DaxiSize size, const float* edges, int32_t bins, uint64_t* counts,
                                       DaxiHistogramOutside* outside) {
  return dax::histogramRange<float, true>(src, srcStep, mask, maskStep, size, edges, bins, counts, outside, nullptr);
}
