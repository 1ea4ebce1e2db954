#include "daxi/projection.h"
#include "image/statistics/projection.h"

#define DAX_FORWARD_1(NAME, T, ...)                                            \
  DaxStatus NAME(const T* src, int32_t srcStep, DaxiSize size, double* sums) { \
    return __VA_ARGS__(src, srcStep, nullptr, 0, size, sums);                  \
  }

DAX_FORWARD_1(DAXI_ProjectRows_8u_C1R, uint8_t, dax::projectRows<uint8_t>)
DAX_FORWARD_1(DAXI_ProjectRows_16u_C1R, uint16_t, dax::projectRows<uint16_t>)
DAX_FORWARD_1(DAXI_ProjectRows_16s_C1R, int16_t, dax::projectRows<int16_t>)
DAX_FORWARD_1(DAXI_ProjectRows_32f_C1R, float, dax::projectRows<float>)
DAX_FORWARD_1(DAXI_ProjectColumns_8u_C1R, uint8_t, dax::projectColumns<uint8_t>)
DAX_FORWARD_1(DAXI_ProjectColumns_16u_C1R, uint16_t, dax::projectColumns<uint16_t>)
DAX_FORWARD_1(DAXI_ProjectColumns_16s_C1R, int16_t, dax::projectColumns<int16_t>)
DAX_FORWARD_1(DAXI_ProjectColumns_32f_C1R, float, dax::projectColumns<float>)

#undef DAX_FORWARD_1
