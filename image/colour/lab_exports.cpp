#include "daxi/lab.h"
#include "image/colour/lab.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size) { \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);             \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                    \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, \
                 DaxiSize size) {                                                                      \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);             \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                           \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size) {                    \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size); \
  }

DAX_FORWARD_1(DAXI_RGBToXYZ_16u_C3R, uint16_t, dax::linearToXyz<dax::RgbOrder, uint16_t>)
DAX_FORWARD_2(DAXI_RGBToXYZ_16u_C3R_MT, uint16_t, dax::linearToXyz<dax::RgbOrder, uint16_t>)
DAX_FORWARD_3(DAXI_RGBToXYZ_16u_C3IR, uint16_t, dax::linearToXyz<dax::RgbOrder, uint16_t>)
DAX_FORWARD_1(DAXI_RGBToXYZ_32f_C3R, float, dax::linearToXyz<dax::RgbOrder, float>)
DAX_FORWARD_2(DAXI_RGBToXYZ_32f_C3R_MT, float, dax::linearToXyz<dax::RgbOrder, float>)
DAX_FORWARD_3(DAXI_RGBToXYZ_32f_C3IR, float, dax::linearToXyz<dax::RgbOrder, float>)
DAX_FORWARD_1(DAXI_XYZToRGB_16u_C3R, uint16_t, dax::xyzToLinear<dax::RgbOrder, uint16_t>)
DAX_FORWARD_2(DAXI_XYZToRGB_16u_C3R_MT, uint16_t, dax::xyzToLinear<dax::RgbOrder, uint16_t>)
DAX_FORWARD_3(DAXI_XYZToRGB_16u_C3IR, uint16_t, dax::xyzToLinear<dax::RgbOrder, uint16_t>)
DAX_FORWARD_1(DAXI_XYZToRGB_32f_C3R, float, dax::xyzToLinear<dax::RgbOrder, float>)
DAX_FORWARD_2(DAXI_XYZToRGB_32f_C3R_MT, float, dax::xyzToLinear<dax::RgbOrder, float>)
DAX_FORWARD_3(DAXI_XYZToRGB_32f_C3IR, float, dax::xyzToLinear<dax::RgbOrder, float>)
DAX_FORWARD_1(DAXI_SRGBToXYZ_16u_C3R, uint16_t, dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, uint16_t>)
DAX_FORWARD_2(DAXI_SRGBToXYZ_16u_C3R_MT, uint16_t, dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, uint16_t>)
DAX_FORWARD_3(DAXI_SRGBToXYZ_16u_C3IR, uint16_t, dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, uint16_t>)
DAX_FORWARD_1(DAXI_SRGBToXYZ_32f_C3R, float, dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, float>)
DAX_FORWARD_2(DAXI_SRGBToXYZ_32f_C3R_MT, float, dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, float>)
DAX_FORWARD_3(DAXI_SRGBToXYZ_32f_C3IR, float, dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, float>)
DAX_FORWARD_1(DAXI_XYZToSRGB_16u_C3R, uint16_t, dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, uint16_t>)
DAX_FORWARD_2(DAXI_XYZToSRGB_16u_C3R_MT, uint16_t, dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, uint16_t>)
DAX_FORWARD_3(DAXI_XYZToSRGB_16u_C3IR, uint16_t, dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, uint16_t>)
DAX_FORWARD_1(DAXI_XYZToSRGB_32f_C3R, float, dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, float>)
DAX_FORWARD_2(DAXI_XYZToSRGB_32f_C3R_MT, float, dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, float>)
DAX_FORWARD_3(DAXI_XYZToSRGB_32f_C3IR, float, dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, float>)
DAX_FORWARD_1(DAXI_RGBToLab_8u_C3R, uint8_t, dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint8_t>)
DAX_FORWARD_2(DAXI_RGBToLab_8u_C3R_MT, uint8_t, dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint8_t>)
DAX_FORWARD_3(DAXI_RGBToLab_8u_C3IR, uint8_t, dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint8_t>)
DAX_FORWARD_1(DAXI_RGBToLab_16u_C3R, uint16_t, dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint16_t>)
DAX_FORWARD_2(DAXI_RGBToLab_16u_C3R_MT, uint16_t, dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint16_t>)
DAX_FORWARD_3(DAXI_RGBToLab_16u_C3IR, uint16_t, dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint16_t>)
DAX_FORWARD_1(DAXI_RGBToLab_32f_C3R, float, dax::convertLab<dax::SrgbToLab, dax::RgbOrder, float>)
DAX_FORWARD_2(DAXI_RGBToLab_32f_C3R_MT, float, dax::convertLab<dax::SrgbToLab, dax::RgbOrder, float>)
DAX_FORWARD_3(DAXI_RGBToLab_32f_C3IR, float, dax::convertLab<dax::SrgbToLab, dax::RgbOrder, float>)
DAX_FORWARD_1(DAXI_LabToRGB_8u_C3R, uint8_t, dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint8_t>)
DAX_FORWARD_2(DAXI_LabToRGB_8u_C3R_MT, uint8_t, dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint8_t>)
DAX_FORWARD_3(DAXI_LabToRGB_8u_C3IR, uint8_t, dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint8_t>)
DAX_FORWARD_1(DAXI_LabToRGB_16u_C3R, uint16_t, dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint16_t>)
DAX_FORWARD_2(DAXI_LabToRGB_16u_C3R_MT, uint16_t, dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint16_t>)
DAX_FORWARD_3(DAXI_LabToRGB_16u_C3IR, uint16_t, dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint16_t>)
DAX_FORWARD_1(DAXI_LabToRGB_32f_C3R, float, dax::convertLab<dax::LabToSrgb, dax::RgbOrder, float>)
DAX_FORWARD_2(DAXI_LabToRGB_32f_C3R_MT, float, dax::convertLab<dax::LabToSrgb, dax::RgbOrder, float>)
DAX_FORWARD_3(DAXI_LabToRGB_32f_C3IR, float, dax::convertLab<dax::LabToSrgb, dax::RgbOrder, float>)
DAX_FORWARD_1(DAXI_BGRToXYZ_16u_C3R, uint16_t, dax::linearToXyz<dax::BgrOrder, uint16_t>)
DAX_FORWARD_2(DAXI_BGRToXYZ_16u_C3R_MT, uint16_t, dax::linearToXyz<dax::BgrOrder, uint16_t>)
DAX_FORWARD_3(DAXI_BGRToXYZ_16u_C3IR, uint16_t, dax::linearToXyz<dax::BgrOrder, uint16_t>)
DAX_FORWARD_1(DAXI_BGRToXYZ_32f_C3R, float, dax::linearToXyz<dax::BgrOrder, float>)
DAX_FORWARD_2(DAXI_BGRToXYZ_32f_C3R_MT, float, dax::linearToXyz<dax::BgrOrder, float>)
DAX_FORWARD_3(DAXI_BGRToXYZ_32f_C3IR, float, dax::linearToXyz<dax::BgrOrder, float>)
DAX_FORWARD_1(DAXI_XYZToBGR_16u_C3R, uint16_t, dax::xyzToLinear<dax::BgrOrder, uint16_t>)
DAX_FORWARD_2(DAXI_XYZToBGR_16u_C3R_MT, uint16_t, dax::xyzToLinear<dax::BgrOrder, uint16_t>)
DAX_FORWARD_3(DAXI_XYZToBGR_16u_C3IR, uint16_t, dax::xyzToLinear<dax::BgrOrder, uint16_t>)
DAX_FORWARD_1(DAXI_XYZToBGR_32f_C3R, float, dax::xyzToLinear<dax::BgrOrder, float>)
DAX_FORWARD_2(DAXI_XYZToBGR_32f_C3R_MT, float, dax::xyzToLinear<dax::BgrOrder, float>)
DAX_FORWARD_3(DAXI_XYZToBGR_32f_C3IR, float, dax::xyzToLinear<dax::BgrOrder, float>)
DAX_FORWARD_1(DAXI_SBGRToXYZ_16u_C3R, uint16_t, dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, uint16_t>)
DAX_FORWARD_2(DAXI_SBGRToXYZ_16u_C3R_MT, uint16_t, dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, uint16_t>)
DAX_FORWARD_3(DAXI_SBGRToXYZ_16u_C3IR, uint16_t, dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, uint16_t>)
DAX_FORWARD_1(DAXI_SBGRToXYZ_32f_C3R, float, dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, float>)
DAX_FORWARD_2(DAXI_SBGRToXYZ_32f_C3R_MT, float, dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, float>)
DAX_FORWARD_3(DAXI_SBGRToXYZ_32f_C3IR, float, dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, float>)
DAX_FORWARD_1(DAXI_XYZToSBGR_16u_C3R, uint16_t, dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, uint16_t>)
DAX_FORWARD_2(DAXI_XYZToSBGR_16u_C3R_MT, uint16_t, dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, uint16_t>)
DAX_FORWARD_3(DAXI_XYZToSBGR_16u_C3IR, uint16_t, dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, uint16_t>)
DAX_FORWARD_1(DAXI_XYZToSBGR_32f_C3R, float, dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, float>)
DAX_FORWARD_2(DAXI_XYZToSBGR_32f_C3R_MT, float, dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, float>)
DAX_FORWARD_3(DAXI_XYZToSBGR_32f_C3IR, float, dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, float>)
DAX_FORWARD_1(DAXI_BGRToLab_8u_C3R, uint8_t, dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint8_t>)
DAX_FORWARD_2(DAXI_BGRToLab_8u_C3R_MT, uint8_t, dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint8_t>)
DAX_FORWARD_3(DAXI_BGRToLab_8u_C3IR, uint8_t, dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint8_t>)
DAX_FORWARD_1(DAXI_BGRToLab_16u_C3R, uint16_t, dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint16_t>)
DAX_FORWARD_2(DAXI_BGRToLab_16u_C3R_MT, uint16_t, dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint16_t>)
DAX_FORWARD_3(DAXI_BGRToLab_16u_C3IR, uint16_t, dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint16_t>)
DAX_FORWARD_1(DAXI_BGRToLab_32f_C3R, float, dax::convertLab<dax::SrgbToLab, dax::BgrOrder, float>)
DAX_FORWARD_2(DAXI_BGRToLab_32f_C3R_MT, float, dax::convertLab<dax::SrgbToLab, dax::BgrOrder, float>)
DAX_FORWARD_3(DAXI_BGRToLab_32f_C3IR, float, dax::convertLab<dax::SrgbToLab, dax::BgrOrder, float>)
DAX_FORWARD_1(DAXI_LabToBGR_8u_C3R, uint8_t, dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint8_t>)
DAX_FORWARD_2(DAXI_LabToBGR_8u_C3R_MT, uint8_t, dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint8_t>)
DAX_FORWARD_3(DAXI_LabToBGR_8u_C3IR, uint8_t, dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint8_t>)
DAX_FORWARD_1(DAXI_LabToBGR_16u_C3R, uint16_t, dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint16_t>)
DAX_FORWARD_2(DAXI_LabToBGR_16u_C3R_MT, uint16_t, dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint16_t>)
DAX_FORWARD_3(DAXI_LabToBGR_16u_C3IR, uint16_t, dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint16_t>)
DAX_FORWARD_1(DAXI_LabToBGR_32f_C3R, float, dax::convertLab<dax::LabToSrgb, dax::BgrOrder, float>)
DAX_FORWARD_2(DAXI_LabToBGR_32f_C3R_MT, float, dax::convertLab<dax::LabToSrgb, dax::BgrOrder, float>)
DAX_FORWARD_3(DAXI_LabToBGR_32f_C3IR, float, dax::convertLab<dax::LabToSrgb, dax::BgrOrder, float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
