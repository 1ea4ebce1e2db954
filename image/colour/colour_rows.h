// Conversions of interleaved channels, each pixel for itself: the checks that all have in common, and the loop over rows, on
// the host's pool where there is one.
#pragma once

#include <cstdint>
#include <limits>

#include "frame/check.h"
#include "frame/rows.h"
#include "frame/tiles.h"

namespace dax {

// An image of kChannels interleaved channels.
template <int kChannels, class T>
struct Interleaved {
  T* data;
  int32_t step;  // elements
};

template <int kFrom, int kTo, class S, class D>
DaxStatus checkConversion(Interleaved<kFrom, S> src, Interleaved<kTo, D> dst, DaxiSize size) {
  DAX_REQUIRE(src.data && dst.data, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, src.step, kFrom) && rowFits(size.width, dst.step, kTo), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

// Calls row(source, destination, pixels) for each row, or once for several that have no gap between them.
template <int kFrom, int kTo, class S, class D, class Row>
DaxStatus convertRows(PoolThreads on, Interleaved<kFrom, S> src, Interleaved<kTo, D> dst, DaxiSize size, Row&& row) {
  const bool packed = src.step == int64_t{size.width} * kFrom && dst.step == int64_t{size.width} * kTo;
  return runRows(on, size.height, [&](int32_t first, int32_t end) {
    const int64_t all = int64_t{size.width} * (end - first);
    if (packed && all <= std::numeric_limits<int32_t>::max()) {
      row(rowAt(src.data, src.step, first), rowAt(dst.data, dst.step, first), static_cast<int32_t>(all));
      return;
    }
    for (int32_t y = first; y < end; ++y) row(rowAt(src.data, src.step, y), rowAt(dst.data, dst.step, y), size.width);
  });
}

}  // namespace dax
