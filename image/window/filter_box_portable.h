// The passes of the box filter, any type, any instruction set.
#pragma once

#include <cstdint>

#include "dax/types.h"
#include "frame/rows.h"
#include "image/window/filter_box_columns.h"

namespace dax {

// Source and destination of a box filter.
template <class T, class Sum>
struct BoxImages {
  const T* src;
  int32_t srcStep;
  Sum* dst;
  int32_t dstStep;
  DaxiSize size;
  int32_t radius;

  const T* srcRow(int32_t y) const { return rowAt(src, srcStep, y); }
  Sum* dstRow(int32_t y) const { return rowAt(dst, dstStep, y); }
};

}  // namespace dax

namespace dax::portable {

// One row, from running sums in `sums` (width elements). dst may be src.
template <class T, class Sum>
void boxRow(const T* src, Sum* dst, int32_t width, int32_t radius, Sum* sums) {
  sums[0] = static_cast<Sum>(src[0]);
  for (int32_t x = 1; x < width; ++x) sums[x] = sums[x - 1] + static_cast<Sum>(src[x]);

  const int32_t right = width - radius;
  for (int32_t x = 0; x <= radius; ++x) dst[x] = sums[x + radius];
  for (int32_t x = radius + 1; x < right; ++x) dst[x] = sums[x + radius] - sums[x - radius - 1];
  for (int32_t x = right; x < width; ++x) dst[x] = sums[width - 1] - sums[x - radius - 1];
}

// A step down n columns: the running sum `before` plus the row that enters takes the place of the oldest sum in `slot`,
// and their difference is the result.
template <class Sum>
void boxStep(const Sum* before, const Sum* enter, Sum* slot, Sum* dst, int32_t n) {
  for (int32_t x = 0; x < n; ++x) {
    const Sum sum = before[x] + enter[x];
    dst[x] = sum - slot[x];
    slot[x] = sum;
  }
}

template <class Sum>
void addTo(Sum* dst, const Sum* before, int32_t n) {
  for (int32_t x = 0; x < n; ++x) dst[x] = before[x] + dst[x];
}

template <class Sum>
void subtractInto(Sum* dst, const Sum* lead, const Sum* trail, int32_t n) {
  for (int32_t x = 0; x < n; ++x) dst[x] = lead[x] - trail[x];
}

// Rows first.. of the row pass.
template <class T, class Sum>
void boxRows(const BoxImages<T, Sum>& images, int32_t first, Sum* sums) {
  for (int32_t y = first; y < images.size.height; ++y) {
    boxRow(images.srcRow(y), images.dstRow(y), images.size.width, images.radius, sums);
  }
}

// The whole filter.
template <class T, class Sum>
void box(const BoxImages<T, Sum>& images, BoxSums<Sum> room) {
  boxRows(images, 0, room.first);
  boxColumns(images.dst, images.dstStep, images.size, images.radius, room,
             {boxStep<Sum>, addTo<Sum>, subtractInto<Sum>});
}

}  // namespace dax::portable
