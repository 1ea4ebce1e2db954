#include "daxi/ycbcr.h"
#include "image/colour/ycbcr.h"

DaxStatus DAXI_RGBToYCbCr_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                 int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::RgbOrder, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard,
                                                  range);
}

DaxStatus DAXI_RGBToYCbCr_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                    int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::RgbOrder, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                  standard, range);
}

DaxStatus DAXI_RGBToYCbCr_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::RgbOrder, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard,
                                                  range);
}

DaxStatus DAXI_RGBToYCbCr_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                  int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::RgbOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard,
                                                   range);
}

DaxStatus DAXI_RGBToYCbCr_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                     int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::RgbOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                   standard, range);
}

DaxStatus DAXI_RGBToYCbCr_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::RgbOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard,
                                                   range);
}

DaxStatus DAXI_RGBToYCbCr_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                  int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::RgbOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard, range);
}

DaxStatus DAXI_RGBToYCbCr_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                     int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::RgbOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                standard, range);
}

DaxStatus DAXI_RGBToYCbCr_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::RgbOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard, range);
}

DaxStatus DAXI_BGRToYCbCr_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                 int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::BgrOrder, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard,
                                                  range);
}

DaxStatus DAXI_BGRToYCbCr_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                    int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::BgrOrder, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                  standard, range);
}

DaxStatus DAXI_BGRToYCbCr_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::BgrOrder, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard,
                                                  range);
}

DaxStatus DAXI_BGRToYCbCr_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                  int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::BgrOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard,
                                                   range);
}

DaxStatus DAXI_BGRToYCbCr_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                     int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::BgrOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                   standard, range);
}

DaxStatus DAXI_BGRToYCbCr_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::BgrOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard,
                                                   range);
}

DaxStatus DAXI_BGRToYCbCr_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                  int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::BgrOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard, range);
}

DaxStatus DAXI_BGRToYCbCr_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                     int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::BgrOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                standard, range);
}

DaxStatus DAXI_BGRToYCbCr_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::encodeYCbCr<dax::BgrOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard, range);
}

DaxStatus DAXI_YCbCrToRGB_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                 int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::RgbOrder, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard,
                                                  range);
}

DaxStatus DAXI_YCbCrToRGB_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                    int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::RgbOrder, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                  standard, range);
}

DaxStatus DAXI_YCbCrToRGB_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::RgbOrder, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard,
                                                  range);
}

DaxStatus DAXI_YCbCrToRGB_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                  int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::RgbOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard,
                                                   range);
}

DaxStatus DAXI_YCbCrToRGB_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                     int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::RgbOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                   standard, range);
}

DaxStatus DAXI_YCbCrToRGB_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::RgbOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard,
                                                   range);
}

DaxStatus DAXI_YCbCrToRGB_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                  int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::RgbOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard, range);
}

DaxStatus DAXI_YCbCrToRGB_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                     int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::RgbOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                standard, range);
}

DaxStatus DAXI_YCbCrToRGB_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::RgbOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard, range);
}

DaxStatus DAXI_YCbCrToBGR_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                 int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::BgrOrder, uint8_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard,
                                                  range);
}

DaxStatus DAXI_YCbCrToBGR_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                    int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::BgrOrder, uint8_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                  standard, range);
}

DaxStatus DAXI_YCbCrToBGR_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::BgrOrder, uint8_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard,
                                                  range);
}

DaxStatus DAXI_YCbCrToBGR_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                  int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::BgrOrder, uint16_t>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard,
                                                   range);
}

DaxStatus DAXI_YCbCrToBGR_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                     int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::BgrOrder, uint16_t>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                   standard, range);
}

DaxStatus DAXI_YCbCrToBGR_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::BgrOrder, uint16_t>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard,
                                                   range);
}

DaxStatus DAXI_YCbCrToBGR_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                  int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::BgrOrder, float>(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard, range);
}

DaxStatus DAXI_YCbCrToBGR_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                     int32_t dstStep, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::BgrOrder, float>(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size,
                                                standard, range);
}

DaxStatus DAXI_YCbCrToBGR_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {
  return dax::decodeYCbCr<dax::BgrOrder, float>(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard, range);
}
