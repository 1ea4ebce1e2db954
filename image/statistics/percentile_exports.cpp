#include "daxi/percentile.h"
#include "image/statistics/percentile.h"

DaxStatus DAXI_Percentiles_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, const double* shares,
                                  int32_t count, uint8_t* values) {
  return dax::percentilesOf<uint8_t, false>(src, srcStep, nullptr, 0, size, shares, count, values, nullptr);
}

DaxStatus DAXI_Percentiles_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                   DaxiSize size, const double* shares, int32_t count, uint8_t* values) {
  return dax::percentilesOf<uint8_t, true>(src, srcStep, mask, maskStep, size, shares, count, values, nullptr);
}

DaxStatus DAXI_Percentiles_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, const double* shares,
                                   int32_t count, uint16_t* values, void* buffer) {
  return dax::percentilesOf<uint16_t, false>(src, srcStep, nullptr, 0, size, shares, count, values, buffer);
}

DaxStatus DAXI_Percentiles_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, const double* shares, int32_t count, uint16_t* values,
                                    void* buffer) {
  return dax::percentilesOf<uint16_t, true>(src, srcStep, mask, maskStep, size, shares, count, values, buffer);
}

DaxStatus DAXI_Percentiles_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, const double* shares,
                                   int32_t count, int16_t* values, void* buffer) {
  return dax::percentilesOf<int16_t, false>(src, srcStep, nullptr, 0, size, shares, count, values, buffer);
}

DaxStatus DAXI_Percentiles_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, const double* shares, int32_t count, int16_t* values, void* buffer) {
  return dax::percentilesOf<int16_t, true>(src, srcStep, mask, maskStep, size, shares, count, values, buffer);
}

DaxStatus DAXI_Percentiles_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, const double* shares,
                                   int32_t count, float* values, void* buffer) {
  return dax::percentilesOf<float, false>(src, srcStep, nullptr, 0, size, shares, count, values, buffer);
}

DaxStatus DAXI_Percentiles_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                    DaxiSize size, const double* shares, int32_t count, float* values, void* buffer) {
  return dax::percentilesOf<float, true>(src, srcStep, mask, maskStep, size, shares, count, values, buffer);
}

DaxStatus DAXI_Median_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, uint8_t* median) {
  return dax::medianOf<uint8_t, false>(src, srcStep, nullptr, 0, size, median, nullptr);
}

DaxStatus DAXI_Median_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                              uint8_t* median) {
  return dax::medianOf<uint8_t, true>(src, srcStep, mask, maskStep, size, median, nullptr);
}

DaxStatus DAXI_Median_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, uint16_t* median, void* buffer) {
  return dax::medianOf<uint16_t, false>(src, srcStep, nullptr, 0, size, median, buffer);
}

DaxStatus DAXI_Median_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                               DaxiSize size, uint16_t* median, void* buffer) {
  return dax::medianOf<uint16_t, true>(src, srcStep, mask, maskStep, size, median, buffer);
}

DaxStatus DAXI_Median_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, int16_t* median, void* buffer) {
  return dax::medianOf<int16_t, false>(src, srcStep, nullptr, 0, size, median, buffer);
}

DaxStatus DAXI_Median_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                               DaxiSize size, int16_t* median, void* buffer) {
  return dax::medianOf<int16_t, true>(src, srcStep, mask, maskStep, size, median, buffer);
}

DaxStatus DAXI_Median_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, float* median, void* buffer) {
  return dax::medianOf<float, false>(src, srcStep, nullptr, 0, size, median, buffer);
}

DaxStatus DAXI_Median_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                               float* median, void* buffer) {
  return dax::medianOf<float, true>(src, srcStep, mask, maskStep, size, median, buffer);
}
