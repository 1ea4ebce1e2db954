#include "daxi/projection.h"
#include "image/statistics/projection.h"

DaxStatus DAXI_ProjectRows_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* sums) {
  return dax::projectRows<uint8_t>(src, srcStep, nullptr, 0, size, sums);
}

DaxStatus DAXI_ProjectRows_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* sums) {
  return dax::projectRows<uint16_t>(src, srcStep, nullptr, 0, size, sums);
}

DaxStatus DAXI_ProjectRows_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* sums) {
  return dax::projectRows<int16_t>(src, srcStep, nullptr, 0, size, sums);
}

DaxStatus DAXI_ProjectRows_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* sums) {
  return dax::projectRows<float>(src, srcStep, nullptr, 0, size, sums);
}

DaxStatus DAXI_ProjectColumns_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* sums) {
  return dax::projectColumns<uint8_t>(src, srcStep, nullptr, 0, size, sums);
}

DaxStatus DAXI_ProjectColumns_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* sums) {
  return dax::projectColumns<uint16_t>(src, srcStep, nullptr, 0, size, sums);
}

DaxStatus DAXI_ProjectColumns_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* sums) {
  return dax::projectColumns<int16_t>(src, srcStep, nullptr, 0, size, sums);
}

DaxStatus DAXI_ProjectColumns_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* sums) {
  return dax::projectColumns<float>(src, srcStep, nullptr, 0, size, sums);
}
