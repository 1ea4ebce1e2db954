#include "daxi/hsv.h"
#include "image/colour/hsv.h"

DaxStatus DAXI_RGBToHSV_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                               int32_t hue180) {
  return dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                             hue180);
}

DaxStatus DAXI_RGBToHSV_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                             dstStep, size, hue180);
}

DaxStatus DAXI_RGBToHSV_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                             hue180);
}

DaxStatus DAXI_RGBToHSV_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_RGBToHSV_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                              dstStep, size, 0);
}

DaxStatus DAXI_RGBToHSV_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::RgbOrder>, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}

DaxStatus DAXI_RGBToHSV_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::RgbOrder>, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_RGBToHSV_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::RgbOrder>, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep,
                                                           size, 0);
}

DaxStatus DAXI_RGBToHSV_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::RgbOrder>, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}

DaxStatus DAXI_HSVToRGB_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                               int32_t hue180) {
  return dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                               hue180);
}

DaxStatus DAXI_HSVToRGB_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size, hue180);
}

DaxStatus DAXI_HSVToRGB_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                               hue180);
}

DaxStatus DAXI_HSVToRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                                0);
}

DaxStatus DAXI_HSVToRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                dstStep, size, 0);
}

DaxStatus DAXI_HSVToRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::RgbOrder>, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                                0);
}

DaxStatus DAXI_HSVToRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::RgbOrder>, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_HSVToRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::RgbOrder>, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                             dstStep, size, 0);
}

DaxStatus DAXI_HSVToRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::RgbOrder>, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}

DaxStatus DAXI_BGRToHSV_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                               int32_t hue180) {
  return dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                             hue180);
}

DaxStatus DAXI_BGRToHSV_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                             dstStep, size, hue180);
}

DaxStatus DAXI_BGRToHSV_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                             hue180);
}

DaxStatus DAXI_BGRToHSV_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_BGRToHSV_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                              dstStep, size, 0);
}

DaxStatus DAXI_BGRToHSV_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::BgrOrder>, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}

DaxStatus DAXI_BGRToHSV_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::BgrOrder>, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_BGRToHSV_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::BgrOrder>, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep,
                                                           size, 0);
}

DaxStatus DAXI_BGRToHSV_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::ToHsv<dax::BgrOrder>, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}

DaxStatus DAXI_HSVToBGR_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                               int32_t hue180) {
  return dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                               hue180);
}

DaxStatus DAXI_HSVToBGR_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size, hue180);
}

DaxStatus DAXI_HSVToBGR_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                               hue180);
}

DaxStatus DAXI_HSVToBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                                0);
}

DaxStatus DAXI_HSVToBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                dstStep, size, 0);
}

DaxStatus DAXI_HSVToBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::BgrOrder>, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                                0);
}

DaxStatus DAXI_HSVToBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::BgrOrder>, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_HSVToBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::BgrOrder>, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                             dstStep, size, 0);
}

DaxStatus DAXI_HSVToBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::FromHsv<dax::BgrOrder>, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}

DaxStatus DAXI_RGBToHLS_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                               int32_t hue180) {
  return dax::convertHue<dax::ToHls<dax::RgbOrder>, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                             hue180);
}

DaxStatus DAXI_RGBToHLS_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::ToHls<dax::RgbOrder>, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                             dstStep, size, hue180);
}

DaxStatus DAXI_RGBToHLS_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::ToHls<dax::RgbOrder>, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                             hue180);
}

DaxStatus DAXI_RGBToHLS_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::RgbOrder>, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_RGBToHLS_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::RgbOrder>, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                              dstStep, size, 0);
}

DaxStatus DAXI_RGBToHLS_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::RgbOrder>, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}

DaxStatus DAXI_RGBToHLS_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::RgbOrder>, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_RGBToHLS_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::RgbOrder>, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep,
                                                           size, 0);
}

DaxStatus DAXI_RGBToHLS_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::RgbOrder>, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}

DaxStatus DAXI_HLSToRGB_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                               int32_t hue180) {
  return dax::convertHue<dax::FromHls<dax::RgbOrder>, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                               hue180);
}

DaxStatus DAXI_HLSToRGB_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::FromHls<dax::RgbOrder>, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size, hue180);
}

DaxStatus DAXI_HLSToRGB_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::FromHls<dax::RgbOrder>, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                               hue180);
}

DaxStatus DAXI_HLSToRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::RgbOrder>, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                                0);
}

DaxStatus DAXI_HLSToRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::RgbOrder>, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                dstStep, size, 0);
}

DaxStatus DAXI_HLSToRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::RgbOrder>, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                                0);
}

DaxStatus DAXI_HLSToRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::RgbOrder>, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_HLSToRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::RgbOrder>, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                             dstStep, size, 0);
}

DaxStatus DAXI_HLSToRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::RgbOrder>, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}

DaxStatus DAXI_BGRToHLS_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                               int32_t hue180) {
  return dax::convertHue<dax::ToHls<dax::BgrOrder>, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                             hue180);
}

DaxStatus DAXI_BGRToHLS_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::ToHls<dax::BgrOrder>, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                             dstStep, size, hue180);
}

DaxStatus DAXI_BGRToHLS_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::ToHls<dax::BgrOrder>, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                             hue180);
}

DaxStatus DAXI_BGRToHLS_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::BgrOrder>, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_BGRToHLS_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::BgrOrder>, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                              dstStep, size, 0);
}

DaxStatus DAXI_BGRToHLS_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::BgrOrder>, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}

DaxStatus DAXI_BGRToHLS_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::BgrOrder>, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_BGRToHLS_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::BgrOrder>, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep,
                                                           size, 0);
}

DaxStatus DAXI_BGRToHLS_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::ToHls<dax::BgrOrder>, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}

DaxStatus DAXI_HLSToBGR_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                               int32_t hue180) {
  return dax::convertHue<dax::FromHls<dax::BgrOrder>, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                               hue180);
}

DaxStatus DAXI_HLSToBGR_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                  int32_t dstStep, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::FromHls<dax::BgrOrder>, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                               dstStep, size, hue180);
}

DaxStatus DAXI_HLSToBGR_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t hue180) {
  return dax::convertHue<dax::FromHls<dax::BgrOrder>, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                               hue180);
}

DaxStatus DAXI_HLSToBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::BgrOrder>, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size,
                                                                0);
}

DaxStatus DAXI_HLSToBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::BgrOrder>, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                                dstStep, size, 0);
}

DaxStatus DAXI_HLSToBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::BgrOrder>, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size,
                                                                0);
}

DaxStatus DAXI_HLSToBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::BgrOrder>, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, 0);
}

DaxStatus DAXI_HLSToBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                   int32_t dstStep, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::BgrOrder>, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst,
                                                             dstStep, size, 0);
}

DaxStatus DAXI_HLSToBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size) {
  return dax::convertHue<dax::FromHls<dax::BgrOrder>, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, 0);
}
