#include "daxi/hsv.h"
#include "image/colour/hsv.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t hue180) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, hue180);                     \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t hue180) {                                                                                    \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, hue180);                    \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                   \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, int32_t hue180) {            \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size, hue180); \
  }
#define DAX_FORWARD_4(NAME, T, ...)                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);          \
  }
#define DAX_FORWARD_5(NAME, T, ...)                                                                    \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, \
                 DaxiSize size) {                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, 0);          \
  }
#define DAX_FORWARD_6(NAME, T, ...)                                              \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size) {                       \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0); \
  }

DAX_FORWARD_1(DAXI_RGBToHSV_8u_C3R, uint8_t, dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_2(DAXI_RGBToHSV_8u_C3R_MT, uint8_t, dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_3(DAXI_RGBToHSV_8u_C3IR, uint8_t, dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_4(DAXI_RGBToHSV_16u_C3R, uint16_t, dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_5(DAXI_RGBToHSV_16u_C3R_MT, uint16_t, dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_6(DAXI_RGBToHSV_16u_C3IR, uint16_t, dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_4(DAXI_RGBToHSV_32f_C3R, float, dax::convertHue<dax::ToHsv<dax::RgbOrder>, float>)
DAX_FORWARD_5(DAXI_RGBToHSV_32f_C3R_MT, float, dax::convertHue<dax::ToHsv<dax::RgbOrder>, float>)
DAX_FORWARD_6(DAXI_RGBToHSV_32f_C3IR, float, dax::convertHue<dax::ToHsv<dax::RgbOrder>, float>)
DAX_FORWARD_1(DAXI_HSVToRGB_8u_C3R, uint8_t, dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_2(DAXI_HSVToRGB_8u_C3R_MT, uint8_t, dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_3(DAXI_HSVToRGB_8u_C3IR, uint8_t, dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_4(DAXI_HSVToRGB_16u_C3R, uint16_t, dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_5(DAXI_HSVToRGB_16u_C3R_MT, uint16_t, dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_6(DAXI_HSVToRGB_16u_C3IR, uint16_t, dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_4(DAXI_HSVToRGB_32f_C3R, float, dax::convertHue<dax::FromHsv<dax::RgbOrder>, float>)
DAX_FORWARD_5(DAXI_HSVToRGB_32f_C3R_MT, float, dax::convertHue<dax::FromHsv<dax::RgbOrder>, float>)
DAX_FORWARD_6(DAXI_HSVToRGB_32f_C3IR, float, dax::convertHue<dax::FromHsv<dax::RgbOrder>, float>)
DAX_FORWARD_1(DAXI_BGRToHSV_8u_C3R, uint8_t, dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_2(DAXI_BGRToHSV_8u_C3R_MT, uint8_t, dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_3(DAXI_BGRToHSV_8u_C3IR, uint8_t, dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_4(DAXI_BGRToHSV_16u_C3R, uint16_t, dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_5(DAXI_BGRToHSV_16u_C3R_MT, uint16_t, dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_6(DAXI_BGRToHSV_16u_C3IR, uint16_t, dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_4(DAXI_BGRToHSV_32f_C3R, float, dax::convertHue<dax::ToHsv<dax::BgrOrder>, float>)
DAX_FORWARD_5(DAXI_BGRToHSV_32f_C3R_MT, float, dax::convertHue<dax::ToHsv<dax::BgrOrder>, float>)
DAX_FORWARD_6(DAXI_BGRToHSV_32f_C3IR, float, dax::convertHue<dax::ToHsv<dax::BgrOrder>, float>)
DAX_FORWARD_1(DAXI_HSVToBGR_8u_C3R, uint8_t, dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_2(DAXI_HSVToBGR_8u_C3R_MT, uint8_t, dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_3(DAXI_HSVToBGR_8u_C3IR, uint8_t, dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_4(DAXI_HSVToBGR_16u_C3R, uint16_t, dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_5(DAXI_HSVToBGR_16u_C3R_MT, uint16_t, dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_6(DAXI_HSVToBGR_16u_C3IR, uint16_t, dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_4(DAXI_HSVToBGR_32f_C3R, float, dax::convertHue<dax::FromHsv<dax::BgrOrder>, float>)
DAX_FORWARD_5(DAXI_HSVToBGR_32f_C3R_MT, float, dax::convertHue<dax::FromHsv<dax::BgrOrder>, float>)
DAX_FORWARD_6(DAXI_HSVToBGR_32f_C3IR, float, dax::convertHue<dax::FromHsv<dax::BgrOrder>, float>)
DAX_FORWARD_1(DAXI_RGBToHLS_8u_C3R, uint8_t, dax::convertHue<dax::ToHls<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_2(DAXI_RGBToHLS_8u_C3R_MT, uint8_t, dax::convertHue<dax::ToHls<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_3(DAXI_RGBToHLS_8u_C3IR, uint8_t, dax::convertHue<dax::ToHls<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_4(DAXI_RGBToHLS_16u_C3R, uint16_t, dax::convertHue<dax::ToHls<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_5(DAXI_RGBToHLS_16u_C3R_MT, uint16_t, dax::convertHue<dax::ToHls<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_6(DAXI_RGBToHLS_16u_C3IR, uint16_t, dax::convertHue<dax::ToHls<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_4(DAXI_RGBToHLS_32f_C3R, float, dax::convertHue<dax::ToHls<dax::RgbOrder>, float>)
DAX_FORWARD_5(DAXI_RGBToHLS_32f_C3R_MT, float, dax::convertHue<dax::ToHls<dax::RgbOrder>, float>)
DAX_FORWARD_6(DAXI_RGBToHLS_32f_C3IR, float, dax::convertHue<dax::ToHls<dax::RgbOrder>, float>)
DAX_FORWARD_1(DAXI_HLSToRGB_8u_C3R, uint8_t, dax::convertHue<dax::FromHls<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_2(DAXI_HLSToRGB_8u_C3R_MT, uint8_t, dax::convertHue<dax::FromHls<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_3(DAXI_HLSToRGB_8u_C3IR, uint8_t, dax::convertHue<dax::FromHls<dax::RgbOrder>, uint8_t>)
DAX_FORWARD_4(DAXI_HLSToRGB_16u_C3R, uint16_t, dax::convertHue<dax::FromHls<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_5(DAXI_HLSToRGB_16u_C3R_MT, uint16_t, dax::convertHue<dax::FromHls<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_6(DAXI_HLSToRGB_16u_C3IR, uint16_t, dax::convertHue<dax::FromHls<dax::RgbOrder>, uint16_t>)
DAX_FORWARD_4(DAXI_HLSToRGB_32f_C3R, float, dax::convertHue<dax::FromHls<dax::RgbOrder>, float>)
DAX_FORWARD_5(DAXI_HLSToRGB_32f_C3R_MT, float, dax::convertHue<dax::FromHls<dax::RgbOrder>, float>)
DAX_FORWARD_6(DAXI_HLSToRGB_32f_C3IR, float, dax::convertHue<dax::FromHls<dax::RgbOrder>, float>)
DAX_FORWARD_1(DAXI_BGRToHLS_8u_C3R, uint8_t, dax::convertHue<dax::ToHls<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_2(DAXI_BGRToHLS_8u_C3R_MT, uint8_t, dax::convertHue<dax::ToHls<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_3(DAXI_BGRToHLS_8u_C3IR, uint8_t, dax::convertHue<dax::ToHls<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_4(DAXI_BGRToHLS_16u_C3R, uint16_t, dax::convertHue<dax::ToHls<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_5(DAXI_BGRToHLS_16u_C3R_MT, uint16_t, dax::convertHue<dax::ToHls<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_6(DAXI_BGRToHLS_16u_C3IR, uint16_t, dax::convertHue<dax::ToHls<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_4(DAXI_BGRToHLS_32f_C3R, float, dax::convertHue<dax::ToHls<dax::BgrOrder>, float>)
DAX_FORWARD_5(DAXI_BGRToHLS_32f_C3R_MT, float, dax::convertHue<dax::ToHls<dax::BgrOrder>, float>)
DAX_FORWARD_6(DAXI_BGRToHLS_32f_C3IR, float, dax::convertHue<dax::ToHls<dax::BgrOrder>, float>)
DAX_FORWARD_1(DAXI_HLSToBGR_8u_C3R, uint8_t, dax::convertHue<dax::FromHls<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_2(DAXI_HLSToBGR_8u_C3R_MT, uint8_t, dax::convertHue<dax::FromHls<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_3(DAXI_HLSToBGR_8u_C3IR, uint8_t, dax::convertHue<dax::FromHls<dax::BgrOrder>, uint8_t>)
DAX_FORWARD_4(DAXI_HLSToBGR_16u_C3R, uint16_t, dax::convertHue<dax::FromHls<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_5(DAXI_HLSToBGR_16u_C3R_MT, uint16_t, dax::convertHue<dax::FromHls<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_6(DAXI_HLSToBGR_16u_C3IR, uint16_t, dax::convertHue<dax::FromHls<dax::BgrOrder>, uint16_t>)
DAX_FORWARD_4(DAXI_HLSToBGR_32f_C3R, float, dax::convertHue<dax::FromHls<dax::BgrOrder>, float>)
DAX_FORWARD_5(DAXI_HLSToBGR_32f_C3R_MT, float, dax::convertHue<dax::FromHls<dax::BgrOrder>, float>)
DAX_FORWARD_6(DAXI_HLSToBGR_32f_C3IR, float, dax::convertHue<dax::FromHls<dax::BgrOrder>, float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
#undef DAX_FORWARD_4
#undef DAX_FORWARD_5
#undef DAX_FORWARD_6
