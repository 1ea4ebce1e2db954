// Bands of rows of the mean filters, any type, any instruction set.
#pragma once

#include <cstdint>
#include <type_traits>

#include "dax/types.h"
#include "frame/rows.h"
#include "image/window/mean_pixel_portable.h"
#include "image/window/window_sums.h"

namespace dax {

// Rows first..end - 1 of a mean filter.
template <class T>
struct MeanBand {
  MirroredRows<T> rows;
  T* dst;
  int32_t dstStep;
  int32_t width;
  DaxiSize mask;
  int32_t first, end;

  WindowReach reachX() const { return WindowReach(mask.width); }
  WindowReach reachY() const { return WindowReach(mask.height); }
  T* dstRow(int32_t y) const { return rowAt(dst, dstStep, y); }
  auto reciprocal() const {
    using Real = portable::MeanReal<T>;
    return Real(1) / static_cast<Real>(int64_t{mask.width} * mask.height);
  }
};

}  // namespace dax

namespace dax::portable {

template <class Sum, class T, class Column>
void storeMeanRow(const MeanBand<T>& band, int32_t y, const Column* columns) {
  T* const dst = band.dstRow(y);
  const auto reciprocal = band.reciprocal();
  slide<Sum>(
      columns, band.reachX(), band.width, [&](int64_t i) { return columns[mirrored(i, band.width)]; },
      [&](int32_t x, Sum sum, bool) { dst[x] = pixelFromMean<T>(static_cast<MeanReal<T>>(sum) * reciprocal); });
}

template <class Sum, class Column, class T>
void meanWith(const MeanBand<T>& band, void* buffer) {
  auto* const columns = static_cast<Column*>(buffer);
  forEachWindowRow(band.rows, band.reachY(), band.first, band.end, columns, band.width, moveRow<Column, T>,
                   [&](int32_t y) { storeMeanRow<Sum>(band, y, columns); });
}

// 16-bit pixels: sums over 2^16 rows and the one that enters need wider columns; the buffer of an image that high has
// room for them.
template <class T>
void mean(const MeanBand<T>& band, void* buffer) {
  if constexpr (std::is_floating_point_v<T>) {
    meanWith<T, T>(band, buffer);
  } else if constexpr (sizeof(T) == 1) {
    meanWith<uint32_t, uint16_t>(band, buffer);
  } else if (band.mask.height >= 1 << 16) {
    meanWith<int64_t, int64_t>(band, buffer);
  } else if constexpr (std::is_signed_v<T>) {
    meanWith<int64_t, int32_t>(band, buffer);
  } else {
    meanWith<int64_t, uint32_t>(band, buffer);
  }
}

// A band of one of several workers, with its slice of the buffer.
inline void meanOfSlice(const MeanBand<uint8_t>& band, uint16_t* slice) {
  mean(band, slice);
}

}  // namespace dax::portable
