// YCbCr and back: the coefficients, as real numbers and as whole ones for bytes.
#pragma once

#include <cstdint>

#include "daxi/colour.h"
#include "frame/check.h"
#include "image/colour/colour_matrix.h"
#include "image/colour/gray.h"

namespace dax {

inline DaxStatus checkYCbCr(int32_t standard, int32_t range) {
  DAX_REQUIRE(standard == DAXI_COLOUR_BT601 || standard == DAXI_COLOUR_BT709, DAX_STS_BAD_PARAM);
  DAX_REQUIRE(range == DAXI_COLOUR_VIDEO || range == DAXI_COLOUR_FULL, DAX_STS_BAD_PARAM);
  return DAX_STS_OK;
}

// Sums of bytes times whole numbers, of 2^-16: rounding them moves no result by more than 0.006.
constexpr int32_t kYCbCrBits = 16, kYCbCrHalf = 1 << (kYCbCrBits - 1);

// result[k] = (c[k][0] c0 + c[k][1] c1 + c[k][2] c2 + bias[k]) >> kYCbCrBits, with half a level in the bias.
struct YCbCrEncoder {
  YCbCrEncoder(int32_t standard, int32_t range);
  int32_t c[3][3], bias[3];
};

// R = y Y + redCr Cr + bias, G = y Y - greenCb Cb - greenCr Cr + bias, B = y Y + blueCb Cb + bias, with 128 less in Cb and Cr.
struct YCbCrDecoder {
  YCbCrDecoder(int32_t standard, int32_t range);
  int32_t y, redCr, greenCb, greenCr, blueCb, bias;
};

template <class Order, class T>
DaxStatus encodeYCbCr(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                      int32_t standard, int32_t range);

template <class Order, class T>
DaxStatus decodeYCbCr(PoolThreads on, const T* src, int32_t srcStep, T* dst, int32_t dstStep, DaxiSize size,
                      int32_t standard, int32_t range);

}  // namespace dax
