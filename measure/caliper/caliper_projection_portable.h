// Sums of samples for any sample type and any instruction set; from column `first` on, or over all columns.
#pragma once

#include <cstdint>

#include "frame/rows.h"

namespace dax::portable {

template <class Sample, class Sum>
void addColumns(const Sample* patch, int32_t columns, int32_t rows, int32_t first, Sum* sums) {
  for (int32_t k = 0; k < rows; ++k) {
    for (int32_t j = first; j < columns; ++j) sums[j] += rowAt(patch, columns, k)[j];
  }
}

template <class Sample, class Sum>
void addColumns(const Sample* patch, int32_t columns, int32_t rows, Sum* sums) {
  addColumns(patch, columns, rows, 0, sums);
}

template <class Sample>
int64_t sumOf(const Sample* row, int32_t first, int32_t columns) {
  int64_t sum = 0;
  for (int32_t j = first; j < columns; ++j) sum += row[j];
  return sum;
}

template <class Sample>
int64_t sumOf(const Sample* row, int32_t columns) {
  return sumOf(row, 0, columns);
}

}  // namespace dax::portable
