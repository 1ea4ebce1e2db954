#include "image/statistics/histogram.h"

#include <algorithm>
#include <functional>

#include "frame/rows.h"

namespace dax {
namespace {

using Table = std::array<uint32_t, 256>;

void add(const Table& table, Histogram& counts) {
  std::transform(table.begin(), table.end(), counts.begin(), counts.begin(), std::plus<>());
}

// Two tables in turn, so that equal neighbours do not wait for each other's store. They are separate objects: a base
// register for each saves an addition per pixel.
void countRow(const uint8_t* row, int32_t width, Table& even, Table& odd) {
  int32_t x = 0;
  for (; x <= width - 16; x += 16) {
    for (int32_t i = 0; i < 16; i += 2) {
      ++even[row[x + i]];
      ++odd[row[x + i + 1]];
    }
  }
  for (; x < width; ++x) ++even[row[x]];
}

}  // namespace

Histogram histogram(const uint8_t* src, int32_t srcStep, DaxiSize size, int64_t maxPixels) {
  Histogram counts = {};
  const int64_t rows = std::max<int64_t>(maxPixels / size.width, 1);
  for (int64_t first = 0; first < size.height; first += rows) {
    Table even = {}, odd = {};
    const int64_t end = std::min(first + rows, int64_t{size.height});
    for (int64_t y = first; y < end; ++y) {
      countRow(rowAt(src, srcStep, static_cast<int32_t>(y)), size.width, even, odd);
    }
    add(even, counts);
    add(odd, counts);
  }
  return counts;
}

}  // namespace dax
