// Sums of samples for any sample type and any instruction set.
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

template <class Sample>
int64_t sumOf(const Sample* row, int32_t first, int32_t columns) {
  int64_t sum = 0;
  for (int32_t j = first; j < columns; ++j) sum += row[j];
  return sum;
}

}  // namespace dax::portable
