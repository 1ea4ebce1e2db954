#include "daxi/sum.h"
#include "image/statistics/sum.h"

DaxStatus DAXI_Sum_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* sum) {
  return dax::sumOf<uint8_t, 1, false>(src, srcStep, nullptr, 0, size, sum);
}

DaxStatus DAXI_Sum_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize size, double sum[3]) {
  return dax::sumOf<uint8_t, 3, false>(src, srcStep, nullptr, 0, size, sum);
}

DaxStatus DAXI_Sum_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                           double* sum) {
  return dax::sumOf<uint8_t, 1, true>(src, srcStep, mask, maskStep, size, sum);
}

DaxStatus DAXI_Sum_8u_C3MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                           double sum[3]) {
  return dax::sumOf<uint8_t, 3, true>(src, srcStep, mask, maskStep, size, sum);
}

DaxStatus DAXI_Sum_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* sum) {
  return dax::sumOf<uint16_t, 1, false>(src, srcStep, nullptr, 0, size, sum);
}

DaxStatus DAXI_Sum_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize size, double sum[3]) {
  return dax::sumOf<uint16_t, 3, false>(src, srcStep, nullptr, 0, size, sum);
}

DaxStatus DAXI_Sum_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                            double* sum) {
  return dax::sumOf<uint16_t, 1, true>(src, srcStep, mask, maskStep, size, sum);
}

DaxStatus DAXI_Sum_16u_C3MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                            double sum[3]) {
  return dax::sumOf<uint16_t, 3, true>(src, srcStep, mask, maskStep, size, sum);
}

DaxStatus DAXI_Sum_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* sum) {
  return dax::sumOf<int16_t, 1, false>(src, srcStep, nullptr, 0, size, sum);
}

DaxStatus DAXI_Sum_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize size, double sum[3]) {
  return dax::sumOf<int16_t, 3, false>(src, srcStep, nullptr, 0, size, sum);
}

DaxStatus DAXI_Sum_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                            double* sum) {
  return dax::sumOf<int16_t, 1, true>(src, srcStep, mask, maskStep, size, sum);
}

DaxStatus DAXI_Sum_16s_C3MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                            double sum[3]) {
  return dax::sumOf<int16_t, 3, true>(src, srcStep, mask, maskStep, size, sum);
}

DaxStatus DAXI_Sum_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* sum) {
  return dax::sumOf<float, 1, false>(src, srcStep, nullptr, 0, size, sum);
}

DaxStatus DAXI_Sum_32f_C3R(const float* src, int32_t srcStep, DaxiSize size, double sum[3]) {
  return dax::sumOf<float, 3, false>(src, srcStep, nullptr, 0, size, sum);
}

DaxStatus DAXI_Sum_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                            double* sum) {
  return dax::sumOf<float, 1, true>(src, srcStep, mask, maskStep, size, sum);
}

DaxStatus DAXI_Sum_32f_C3MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                            double sum[3]) {
  return dax::sumOf<float, 3, true>(src, srcStep, mask, maskStep, size, sum);
}

DaxStatus DAXI_Mean_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* mean) {
  return dax::meanOf<uint8_t, 1, false>(src, srcStep, nullptr, 0, size, mean);
}

DaxStatus DAXI_Mean_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize size, double mean[3]) {
  return dax::meanOf<uint8_t, 3, false>(src, srcStep, nullptr, 0, size, mean);
}

DaxStatus DAXI_Mean_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                            double* mean) {
  return dax::meanOf<uint8_t, 1, true>(src, srcStep, mask, maskStep, size, mean);
}

DaxStatus DAXI_Mean_8u_C3MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                            double mean[3]) {
  return dax::meanOf<uint8_t, 3, true>(src, srcStep, mask, maskStep, size, mean);
}

DaxStatus DAXI_Mean_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* mean) {
  return dax::meanOf<uint16_t, 1, false>(src, srcStep, nullptr, 0, size, mean);
}

DaxStatus DAXI_Mean_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize size, double mean[3]) {
  return dax::meanOf<uint16_t, 3, false>(src, srcStep, nullptr, 0, size, mean);
}

DaxStatus DAXI_Mean_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                             double* mean) {
  return dax::meanOf<uint16_t, 1, true>(src, srcStep, mask, maskStep, size, mean);
}

DaxStatus DAXI_Mean_16u_C3MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                             double mean[3]) {
  return dax::meanOf<uint16_t, 3, true>(src, srcStep, mask, maskStep, size, mean);
}

DaxStatus DAXI_Mean_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* mean) {
  return dax::meanOf<int16_t, 1, false>(src, srcStep, nullptr, 0, size, mean);
}

DaxStatus DAXI_Mean_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize size, double mean[3]) {
  return dax::meanOf<int16_t, 3, false>(src, srcStep, nullptr, 0, size, mean);
}

DaxStatus DAXI_Mean_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                             double* mean) {
  return dax::meanOf<int16_t, 1, true>(src, srcStep, mask, maskStep, size, mean);
}

DaxStatus DAXI_Mean_16s_C3MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                             double mean[3]) {
  return dax::meanOf<int16_t, 3, true>(src, srcStep, mask, maskStep, size, mean);
}

DaxStatus DAXI_Mean_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* mean) {
  return dax::meanOf<float, 1, false>(src, srcStep, nullptr, 0, size, mean);
}

DaxStatus DAXI_Mean_32f_C3R(const float* src, int32_t srcStep, DaxiSize size, double mean[3]) {
  return dax::meanOf<float, 3, false>(src, srcStep, nullptr, 0, size, mean);
}

DaxStatus DAXI_Mean_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                             double* mean) {
  return dax::meanOf<float, 1, true>(src, srcStep, mask, maskStep, size, mean);
}

DaxStatus DAXI_Mean_32f_C3MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep, DaxiSize size,
                             double mean[3]) {
  return dax::meanOf<float, 3, true>(src, srcStep, mask, maskStep, size, mean);
}

DaxStatus DAXI_MeanStdDev_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* mean, double* stdDev) {
  return dax::meanStdDevOf<uint8_t, 1, false>(src, srcStep, nullptr, 0, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize size, double mean[3], double stdDev[3]) {
  return dax::meanStdDevOf<uint8_t, 3, false>(src, srcStep, nullptr, 0, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                  DaxiSize size, double* mean, double* stdDev) {
  return dax::meanStdDevOf<uint8_t, 1, true>(src, srcStep, mask, maskStep, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_8u_C3MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                  DaxiSize size, double mean[3], double stdDev[3]) {
  return dax::meanStdDevOf<uint8_t, 3, true>(src, srcStep, mask, maskStep, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* mean, double* stdDev) {
  return dax::meanStdDevOf<uint16_t, 1, false>(src, srcStep, nullptr, 0, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize size, double mean[3],
                                  double stdDev[3]) {
  return dax::meanStdDevOf<uint16_t, 3, false>(src, srcStep, nullptr, 0, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                   DaxiSize size, double* mean, double* stdDev) {
  return dax::meanStdDevOf<uint16_t, 1, true>(src, srcStep, mask, maskStep, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_16u_C3MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                   DaxiSize size, double mean[3], double stdDev[3]) {
  return dax::meanStdDevOf<uint16_t, 3, true>(src, srcStep, mask, maskStep, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* mean, double* stdDev) {
  return dax::meanStdDevOf<int16_t, 1, false>(src, srcStep, nullptr, 0, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize size, double mean[3],
                                  double stdDev[3]) {
  return dax::meanStdDevOf<int16_t, 3, false>(src, srcStep, nullptr, 0, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_16s_C1MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                   DaxiSize size, double* mean, double* stdDev) {
  return dax::meanStdDevOf<int16_t, 1, true>(src, srcStep, mask, maskStep, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_16s_C3MR(const int16_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                   DaxiSize size, double mean[3], double stdDev[3]) {
  return dax::meanStdDevOf<int16_t, 3, true>(src, srcStep, mask, maskStep, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* mean, double* stdDev) {
  return dax::meanStdDevOf<float, 1, false>(src, srcStep, nullptr, 0, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_32f_C3R(const float* src, int32_t srcStep, DaxiSize size, double mean[3], double stdDev[3]) {
  return dax::meanStdDevOf<float, 3, false>(src, srcStep, nullptr, 0, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                   DaxiSize size, double* mean, double* stdDev) {
  return dax::meanStdDevOf<float, 1, true>(src, srcStep, mask, maskStep, size, mean, stdDev);
}

DaxStatus DAXI_MeanStdDev_32f_C3MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                   DaxiSize size, double mean[3], double stdDev[3]) {
  return dax::meanStdDevOf<float, 3, true>(src, srcStep, mask, maskStep, size, mean, stdDev);
}
