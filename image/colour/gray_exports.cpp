#include "daxi/gray.h"
#include "image/colour/gray.h"

DaxStatus DAXI_RGBToGray_8u_C3C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                  int32_t standard) {
  return dax::grayByStandard<dax::RgbOrder, uint8_t>(src, srcStep, dst, dstStep, size, standard);
}

DaxStatus DAXI_RGBToGray_16u_C3C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                   int32_t standard) {
  return dax::grayByStandard<dax::RgbOrder, uint16_t>(src, srcStep, dst, dstStep, size, standard);
}

DaxStatus DAXI_RGBToGray_32f_C3C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                   int32_t standard) {
  return dax::grayByStandard<dax::RgbOrder, float>(src, srcStep, dst, dstStep, size, standard);
}

DaxStatus DAXI_BGRToGray_8u_C3C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                  int32_t standard) {
  return dax::grayByStandard<dax::BgrOrder, uint8_t>(src, srcStep, dst, dstStep, size, standard);
}

DaxStatus DAXI_BGRToGray_16u_C3C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                   int32_t standard) {
  return dax::grayByStandard<dax::BgrOrder, uint16_t>(src, srcStep, dst, dstStep, size, standard);
}

DaxStatus DAXI_BGRToGray_32f_C3C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                   int32_t standard) {
  return dax::grayByStandard<dax::BgrOrder, float>(src, srcStep, dst, dstStep, size, standard);
}

DaxStatus DAXI_ColourToGray_8u_C3C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                     const double weights[3]) {
  return dax::grayByWeights<uint8_t>(src, srcStep, dst, dstStep, size, weights);
}

DaxStatus DAXI_ColourToGray_16u_C3C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                      DaxiSize size, const double weights[3]) {
  return dax::grayByWeights<uint16_t>(src, srcStep, dst, dstStep, size, weights);
}

DaxStatus DAXI_ColourToGray_32f_C3C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                      const double weights[3]) {
  return dax::grayByWeights<float>(src, srcStep, dst, dstStep, size, weights);
}

DaxStatus DAXI_GrayToRGB_8u_C1C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::grayToColour<uint8_t>(src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_GrayToRGB_16u_C1C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                   DaxiSize size) {
  return dax::grayToColour<uint16_t>(src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_GrayToRGB_32f_C1C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::grayToColour<float>(src, srcStep, dst, dstStep, size);
}
