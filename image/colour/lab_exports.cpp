#include "daxi/lab.h"
#include "image/colour/lab.h"

DaxStatus DAXI_RGBToXYZ_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::linearToXyz<dax::RgbOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_RGBToXYZ_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::linearToXyz<dax::RgbOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_RGBToXYZ_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::linearToXyz<dax::RgbOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_RGBToXYZ_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::linearToXyz<dax::RgbOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_RGBToXYZ_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::linearToXyz<dax::RgbOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_RGBToXYZ_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::linearToXyz<dax::RgbOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_XYZToRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::xyzToLinear<dax::RgbOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::xyzToLinear<dax::RgbOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::xyzToLinear<dax::RgbOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_XYZToRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::xyzToLinear<dax::RgbOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::xyzToLinear<dax::RgbOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::xyzToLinear<dax::RgbOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_SRGBToXYZ_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_SRGBToXYZ_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                    int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                  dstStep, size);
}

DaxStatus DAXI_SRGBToXYZ_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_SRGBToXYZ_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_SRGBToXYZ_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                    int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size);
}

DaxStatus DAXI_SRGBToXYZ_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::RgbOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_XYZToSRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToSRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                    int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                  dstStep, size);
}

DaxStatus DAXI_XYZToSRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_XYZToSRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToSRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                    int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size);
}

DaxStatus DAXI_XYZToSRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::RgbOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_RGBToLab_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_RGBToLab_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                 dstStep, size);
}

DaxStatus DAXI_RGBToLab_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_RGBToLab_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_RGBToLab_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                  dstStep, size);
}

DaxStatus DAXI_RGBToLab_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::RgbOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_RGBToLab_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::RgbOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_RGBToLab_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::RgbOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size);
}

DaxStatus DAXI_RGBToLab_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::RgbOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_LabToRGB_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_LabToRGB_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                 dstStep, size);
}

DaxStatus DAXI_LabToRGB_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_LabToRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_LabToRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                  dstStep, size);
}

DaxStatus DAXI_LabToRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::RgbOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_LabToRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::RgbOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_LabToRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::RgbOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size);
}

DaxStatus DAXI_LabToRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::RgbOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_BGRToXYZ_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::linearToXyz<dax::BgrOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_BGRToXYZ_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::linearToXyz<dax::BgrOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_BGRToXYZ_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::linearToXyz<dax::BgrOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_BGRToXYZ_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::linearToXyz<dax::BgrOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_BGRToXYZ_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::linearToXyz<dax::BgrOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_BGRToXYZ_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::linearToXyz<dax::BgrOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_XYZToBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::xyzToLinear<dax::BgrOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::xyzToLinear<dax::BgrOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::xyzToLinear<dax::BgrOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_XYZToBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::xyzToLinear<dax::BgrOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::xyzToLinear<dax::BgrOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::xyzToLinear<dax::BgrOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_SBGRToXYZ_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_SBGRToXYZ_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                    int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                  dstStep, size);
}

DaxStatus DAXI_SBGRToXYZ_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_SBGRToXYZ_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_SBGRToXYZ_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                    int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size);
}

DaxStatus DAXI_SBGRToXYZ_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::SrgbToXyz, dax::BgrOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_XYZToSBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToSBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                    int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                  dstStep, size);
}

DaxStatus DAXI_XYZToSBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_XYZToSBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_XYZToSBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                    int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size);
}

DaxStatus DAXI_XYZToSBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::XyzToSrgb, dax::BgrOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_BGRToLab_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_BGRToLab_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                 dstStep, size);
}

DaxStatus DAXI_BGRToLab_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_BGRToLab_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_BGRToLab_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                  dstStep, size);
}

DaxStatus DAXI_BGRToLab_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::BgrOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_BGRToLab_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::BgrOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_BGRToLab_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::BgrOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size);
}

DaxStatus DAXI_BGRToLab_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::SrgbToLab, dax::BgrOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_LabToBGR_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_LabToBGR_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                 dstStep, size);
}

DaxStatus DAXI_LabToBGR_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_LabToBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_LabToBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                  dstStep, size);
}

DaxStatus DAXI_LabToBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::BgrOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}

DaxStatus DAXI_LabToBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::BgrOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size);
}

DaxStatus DAXI_LabToBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::BgrOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size);
}

DaxStatus DAXI_LabToBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertLab<dax::LabToSrgb, dax::BgrOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size);
}
