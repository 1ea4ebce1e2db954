#include "daxi/ycbcr.h"
#include "image/colour/ycbcr.h"

#define DAX_FORWARD_1(NAME, T, ...)                                                                       \
  DaxStatus NAME(const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, int32_t standard, \
                 int32_t range) {                                                                         \
    return __VA_ARGS__(dax::PoolThreads{}, src, srcStep, dst, dstStep, size, standard, range);            \
  }
#define DAX_FORWARD_2(NAME, T, ...)                                                                                   \
  DaxStatus NAME(void* pool, uint32_t threads, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size, \
                 int32_t standard, int32_t range) {                                                                   \
    return __VA_ARGS__(dax::PoolThreads{pool, threads}, src, srcStep, dst, dstStep, size, standard, range);           \
  }
#define DAX_FORWARD_3(NAME, T, ...)                                                            \
  DaxStatus NAME(T* srcDst, int32_t step, DaxiSize size, int32_t standard, int32_t range) {    \
    return __VA_ARGS__(dax::PoolThreads{}, srcDst, step, srcDst, step, size, standard, range); \
  }

DAX_FORWARD_1(DAXI_RGBToYCbCr_8u_C3R, uint8_t, dax::encodeYCbCr<dax::RgbOrder, uint8_t>)
DAX_FORWARD_2(DAXI_RGBToYCbCr_8u_C3R_MT, uint8_t, dax::encodeYCbCr<dax::RgbOrder, uint8_t>)
DAX_FORWARD_3(DAXI_RGBToYCbCr_8u_C3IR, uint8_t, dax::encodeYCbCr<dax::RgbOrder, uint8_t>)
DAX_FORWARD_1(DAXI_RGBToYCbCr_16u_C3R, uint16_t, dax::encodeYCbCr<dax::RgbOrder, uint16_t>)
DAX_FORWARD_2(DAXI_RGBToYCbCr_16u_C3R_MT, uint16_t, dax::encodeYCbCr<dax::RgbOrder, uint16_t>)
DAX_FORWARD_3(DAXI_RGBToYCbCr_16u_C3IR, uint16_t, dax::encodeYCbCr<dax::RgbOrder, uint16_t>)
DAX_FORWARD_1(DAXI_RGBToYCbCr_32f_C3R, float, dax::encodeYCbCr<dax::RgbOrder, float>)
DAX_FORWARD_2(DAXI_RGBToYCbCr_32f_C3R_MT, float, dax::encodeYCbCr<dax::RgbOrder, float>)
DAX_FORWARD_3(DAXI_RGBToYCbCr_32f_C3IR, float, dax::encodeYCbCr<dax::RgbOrder, float>)
DAX_FORWARD_1(DAXI_BGRToYCbCr_8u_C3R, uint8_t, dax::encodeYCbCr<dax::BgrOrder, uint8_t>)
DAX_FORWARD_2(DAXI_BGRToYCbCr_8u_C3R_MT, uint8_t, dax::encodeYCbCr<dax::BgrOrder, uint8_t>)
DAX_FORWARD_3(DAXI_BGRToYCbCr_8u_C3IR, uint8_t, dax::encodeYCbCr<dax::BgrOrder, uint8_t>)
DAX_FORWARD_1(DAXI_BGRToYCbCr_16u_C3R, uint16_t, dax::encodeYCbCr<dax::BgrOrder, uint16_t>)
DAX_FORWARD_2(DAXI_BGRToYCbCr_16u_C3R_MT, uint16_t, dax::encodeYCbCr<dax::BgrOrder, uint16_t>)
DAX_FORWARD_3(DAXI_BGRToYCbCr_16u_C3IR, uint16_t, dax::encodeYCbCr<dax::BgrOrder, uint16_t>)
DAX_FORWARD_1(DAXI_BGRToYCbCr_32f_C3R, float, dax::encodeYCbCr<dax::BgrOrder, float>)
DAX_FORWARD_2(DAXI_BGRToYCbCr_32f_C3R_MT, float, dax::encodeYCbCr<dax::BgrOrder, float>)
DAX_FORWARD_3(DAXI_BGRToYCbCr_32f_C3IR, float, dax::encodeYCbCr<dax::BgrOrder, float>)
DAX_FORWARD_1(DAXI_YCbCrToRGB_8u_C3R, uint8_t, dax::decodeYCbCr<dax::RgbOrder, uint8_t>)
DAX_FORWARD_2(DAXI_YCbCrToRGB_8u_C3R_MT, uint8_t, dax::decodeYCbCr<dax::RgbOrder, uint8_t>)
DAX_FORWARD_3(DAXI_YCbCrToRGB_8u_C3IR, uint8_t, dax::decodeYCbCr<dax::RgbOrder, uint8_t>)
DAX_FORWARD_1(DAXI_YCbCrToRGB_16u_C3R, uint16_t, dax::decodeYCbCr<dax::RgbOrder, uint16_t>)
DAX_FORWARD_2(DAXI_YCbCrToRGB_16u_C3R_MT, uint16_t, dax::decodeYCbCr<dax::RgbOrder, uint16_t>)
DAX_FORWARD_3(DAXI_YCbCrToRGB_16u_C3IR, uint16_t, dax::decodeYCbCr<dax::RgbOrder, uint16_t>)
DAX_FORWARD_1(DAXI_YCbCrToRGB_32f_C3R, float, dax::decodeYCbCr<dax::RgbOrder, float>)
DAX_FORWARD_2(DAXI_YCbCrToRGB_32f_C3R_MT, float, dax::decodeYCbCr<dax::RgbOrder, float>)
DAX_FORWARD_3(DAXI_YCbCrToRGB_32f_C3IR, float, dax::decodeYCbCr<dax::RgbOrder, float>)
DAX_FORWARD_1(DAXI_YCbCrToBGR_8u_C3R, uint8_t, dax::decodeYCbCr<dax::BgrOrder, uint8_t>)
DAX_FORWARD_2(DAXI_YCbCrToBGR_8u_C3R_MT, uint8_t, dax::decodeYCbCr<dax::BgrOrder, uint8_t>)
DAX_FORWARD_3(DAXI_YCbCrToBGR_8u_C3IR, uint8_t, dax::decodeYCbCr<dax::BgrOrder, uint8_t>)
DAX_FORWARD_1(DAXI_YCbCrToBGR_16u_C3R, uint16_t, dax::decodeYCbCr<dax::BgrOrder, uint16_t>)
DAX_FORWARD_2(DAXI_YCbCrToBGR_16u_C3R_MT, uint16_t, dax::decodeYCbCr<dax::BgrOrder, uint16_t>)
DAX_FORWARD_3(DAXI_YCbCrToBGR_16u_C3IR, uint16_t, dax::decodeYCbCr<dax::BgrOrder, uint16_t>)
DAX_FORWARD_1(DAXI_YCbCrToBGR_32f_C3R, float, dax::decodeYCbCr<dax::BgrOrder, float>)
DAX_FORWARD_2(DAXI_YCbCrToBGR_32f_C3R_MT, float, dax::decodeYCbCr<dax::BgrOrder, float>)
DAX_FORWARD_3(DAXI_YCbCrToBGR_32f_C3IR, float, dax::decodeYCbCr<dax::BgrOrder, float>)

#undef DAX_FORWARD_1
#undef DAX_FORWARD_2
#undef DAX_FORWARD_3
