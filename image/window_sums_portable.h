// Running sums, any type, any instruction set. Integer sums are modulo the size of their type.
#pragma once

#include <cstdint>

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

// Calls store(x, sum) for x = 0..n - 1 with the sums of column(x - before)..column(x + after), which gives the sums of
// columns outside the row as well. The column that enters is added first.
template <class Sum, class Reach, class ColumnAt, class Store>
void slide(Reach reach, int32_t n, ColumnAt column, Store store) {
  Sum sum{};
  for (int64_t i = -int64_t{reach.before}; i <= reach.after; ++i) sum += static_cast<Sum>(column(i));
  store(0, sum);
  for (int64_t x = 1; x < n; ++x) {
    sum += static_cast<Sum>(column(x + reach.after));
    sum -= static_cast<Sum>(column(x - 1 - reach.before));
    store(static_cast<int32_t>(x), sum);
  }
}

}  // namespace dax::portable
