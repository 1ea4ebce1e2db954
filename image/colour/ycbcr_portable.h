// Rows of bytes to YCbCr and back, any instruction set.
#pragma once

#include <algorithm>
#include <cstddef>

#include "image/colour/ycbcr.h"

namespace dax::portable {

inline uint8_t byteOfYCbCr(int32_t sum) {
  return static_cast<uint8_t>(std::clamp(sum >> kYCbCrBits, 0, 255));
}

template <class Order>
void encodeYCbCrRow(const uint8_t* src, uint8_t* dst, int32_t count, const YCbCrEncoder& by) {
  for (ptrdiff_t x = 0; x < 3 * ptrdiff_t{count}; x += 3) {
    const int32_t red = src[x + Order::kRed], green = src[x + 1], blue = src[x + Order::kBlue];
    for (int k = 0; k < 3; ++k) {
      dst[x + k] = byteOfYCbCr(by.c[k][0] * red + by.c[k][1] * green + by.c[k][2] * blue + by.bias[k]);
    }
  }
}

template <class Order>
void storeDecoded(int32_t y, int32_t cb, int32_t cr, uint8_t* to, const YCbCrDecoder& by) {
  const int32_t luma = y * by.y + by.bias, blue = cb - 128, red = cr - 128;
  to[Order::kRed] = byteOfYCbCr(luma + by.redCr * red);
  to[1] = byteOfYCbCr(luma - by.greenCb * blue - by.greenCr * red);
  to[Order::kBlue] = byteOfYCbCr(luma + by.blueCb * blue);
}

template <class Order>
void decodeYCbCrRow(const uint8_t* src, uint8_t* dst, int32_t count, const YCbCrDecoder& by) {
  for (ptrdiff_t x = 0; x < 3 * ptrdiff_t{count}; x += 3) {
    storeDecoded<Order>(src[x], src[x + 1], src[x + 2], dst + x, by);
  }
}

}  // namespace dax::portable
