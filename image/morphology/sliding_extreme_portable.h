// Extremes of windows along a row, from those of windows of doubled width.
#pragma once

#include <cstdint>

#include "frame/numeric/total_order.h"

namespace dax::portable {

// Each pixel is read before it is replaced, so vectors may be.
template <class Order, class Key>
void joinAhead(Key* row, int32_t ahead, int64_t count) {
#if !defined(__clang__)
#pragma GCC ivdep
#endif
  for (int64_t x = 0; x < count; ++x) row[x] = Order::of(row[x], row[x + ahead]);
}

// Pixel x of dst is the extreme of row[x..x + window - 1]; row holds `length` keys, which are used up.
template <class Order, class T, class Key>
void slideRow(Key* row, int64_t length, int32_t window, T* __restrict dst, int32_t width) {
  int32_t covered = 1;
  for (int64_t count = length; covered <= window / 2; covered *= 2) {
    count -= covered;
    joinAhead<Order>(row, covered, count);
  }
  const int32_t ahead = window - covered;
  for (int64_t x = 0; x < width; ++x) dst[x] = OrderKey<T>::pixel(Order::of(row[x], row[x + ahead]));
}

}  // namespace dax::portable
