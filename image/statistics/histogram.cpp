#include "image/statistics/histogram.h"

#include "frame/rows.h"

namespace dax {
namespace {

using Table = std::array<uint32_t, 256>;

void flush(Table& table, Histogram& counts) {
  for (size_t i = 0; i < counts.size(); ++i) counts[i] += table[i];
  table = {};
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

Histogram histogram(const uint8_t* src, int32_t srcStep, DaxiSize size) {
  Histogram counts = {};
  Table even = {}, odd = {};
  // 32-bit counters are flushed before they can overflow.
  constexpr int64_t kMaxPixels = int64_t{1} << 31;
  int64_t pixels = 0;
  for (int32_t y = 0; y < size.height; ++y) {
    pixels += size.width;
    if (pixels > kMaxPixels) {
      flush(even, counts);
      flush(odd, counts);
      pixels = size.width;
    }
    countRow(rowAt(src, srcStep, y), size.width, even, odd);
  }
  flush(even, counts);
  flush(odd, counts);
  return counts;
}

}  // namespace dax
