// Rows of the YUV formats, any instruction set.
#pragma once

#include "image/colour/ycbcr_portable.h"

namespace dax {

// Where the samples of a row begin, and how many bytes there are from one to the next.
struct YuvRow {
  const uint8_t *y, *u, *v;
};
template <int32_t kYDistance, int32_t kChromaDistance, bool kBeginsWithU>
struct YuvFormat {
  static constexpr int32_t kY = kYDistance, kChroma = kChromaDistance;
  static constexpr bool kUFirst = kBeginsWithU;  // of U and V
};
using I420 = YuvFormat<1, 1, true>;
using Nv12 = YuvFormat<1, 2, true>;
using Nv21 = YuvFormat<1, 2, false>;
using PackedYuv = YuvFormat<2, 4, true>;

namespace portable {

// Pixels first..count - 1; `first` is even.
template <class Format, class Order>
void decodeYuvRow(const YuvRow& src, uint8_t* dst, int32_t first, int32_t count, const YCbCrDecoder& by) {
  for (ptrdiff_t x = first; x < count; ++x) {
    const ptrdiff_t chroma = x / 2 * Format::kChroma;
    storeDecoded<Order>(src.y[x * Format::kY], src.u[chroma], src.v[chroma], dst + 3 * x, by);
  }
}

template <class Format, class Order>
void decodeYuvRow(const YuvRow& src, uint8_t* dst, int32_t count, const YCbCrDecoder& by) {
  decodeYuvRow<Format, Order>(src, dst, 0, count, by);
}

}  // namespace portable
}  // namespace dax
