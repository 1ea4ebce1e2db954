#include "daxi/gray.h"
#include "image/colour/gray.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                         \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t standard) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, standard);                                         \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, const double weights[3]) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size, weights);                                                 \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(src, srcStep, dst, dstStep, size);                                 \
  }

DAX_FORWARD_1(DAXI_RGBToGray_8u_C3C1R, uint8_t, dax::grayByStandard<dax::RgbOrder, uint8_t>)
DAX_FORWARD_1(DAXI_RGBToGray_16u_C3C1R, uint16_t, dax::grayByStandard<dax::RgbOrder, uint16_t>)
DAX_FORWARD_1(DAXI_RGBToGray_32f_C3C1R, float, dax::grayByStandard<dax::RgbOrder, float>)
DAX_FORWARD_1(DAXI_BGRToGray_8u_C3C1R, uint8_t, dax::grayByStandard<dax::BgrOrder, uint8_t>)
DAX_FORWARD_1(DAXI_BGRToGray_16u_C3C1R, uint16_t, dax::grayByStandard<dax::BgrOrder, uint16_t>)
DAX_FORWARD_1(DAXI_BGRToGray_32f_C3C1R, float, dax::grayByStandard<dax::BgrOrder, float>)
DAX_FORWARD_2(DAXI_ColourToGray_8u_C3C1R, uint8_t, dax::grayByWeights<uint8_t>)
DAX_FORWARD_2(DAXI_ColourToGray_16u_C3C1R, uint16_t, dax::grayByWeights<uint16_t>)
DAX_FORWARD_2(DAXI_ColourToGray_32f_C3C1R, float, dax::grayByWeights<float>)
DAX_FORWARD_3(DAXI_GrayToRGB_8u_C1C3R, uint8_t, dax::grayToColour<uint8_t>)
DAX_FORWARD_3(DAXI_GrayToRGB_16u_C1C3R, uint16_t, dax::grayToColour<uint16_t>)
DAX_FORWARD_3(DAXI_GrayToRGB_32f_C1C3R, float, dax::grayToColour<float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
