// Running sums, any type, any instruction set. Integer sums are modulo the size of their type.
#pragma once

#include <algorithm>
#include <cstdint>

#include "image/window/window_reach.h"

namespace dax::portable {

template <class Column, class T>
void addRow(Column* columns, const T* enter, int32_t n) {
  for (int32_t x = 0; x < n; ++x) columns[x] = static_cast<Column>(columns[x] + static_cast<Column>(enter[x]));
}

template <class Column, class T>
void subtractRow(Column* columns, const T* leave, int32_t n) {
  for (int32_t x = 0; x < n; ++x) columns[x] = static_cast<Column>(columns[x] - static_cast<Column>(leave[x]));
}

// The row that enters is added first.
template <class Column, class T>
void moveRow(Column* columns, const T* enter, const T* leave, int32_t n) {
  for (int32_t x = 0; x < n; ++x) {
    const auto sum = static_cast<Column>(columns[x] + static_cast<Column>(enter[x]));
    columns[x] = static_cast<Column>(sum - static_cast<Column>(leave[x]));
  }
}

// Calls store(x, sum, inside) for x = 0..n - 1 with the sums of columns x - before..x + after; `inside` is set for most
// windows that lie in the row; outside(i) gives the sum of column i for the others. The column that enters is added
// first.
template <class Sum, class Column, class Outside, class Store>
void slide(const Column* columns, WindowReach reach, int32_t n, Outside outside, Store store) {
  const int64_t before = reach.before, after = reach.after;
  Sum sum{};
  for (int64_t i = -before; i <= after; ++i) sum += static_cast<Sum>(outside(i));
  store(0, sum, false);
  int64_t x = 1;
  const auto slideTo = [&](int64_t end, auto column, bool inside) {
    for (; x < end; ++x) {
      sum += static_cast<Sum>(column(x + after));
      sum -= static_cast<Sum>(column(x - 1 - before));
      store(static_cast<int32_t>(x), sum, inside);
    }
  };
  slideTo(std::min<int64_t>(before + 1, n), outside, false);
  slideTo(
      n - after, [columns](int64_t i) { return columns[i]; }, true);
  slideTo(n, outside, false);
}

}  // namespace dax::portable
