// Operations on the elements of images of one size, each element for itself: the checks that all have in common and the
// loop over rows. Interleaved channels are elements of a row.
#pragma once

#include <algorithm>
#include <cstdint>
#include <limits>

#include "frame/check.h"
#include "frame/rows.h"
#include "frame/tiles.h"

namespace dax {

template <class T>
struct Plane {
  T* data;
  int32_t step;  // elements
};
template <class T>
Plane(T*, int32_t) -> Plane<T>;

// Null pointers, then the size, then the smallest step.
template <class... T>
DaxStatus checkPlanes(DaxiSize size, int32_t channels, Plane<T>... planes) {
  DAX_REQUIRE((... && planes.data), DAX_STS_NULL_POINTER);
  DAX_REQUIRE(atLeast(size, 1), DAX_STS_BAD_SIZE);
  DAX_REQUIRE(rowFits(size.width, std::min({planes.step...}), channels), DAX_STS_BAD_STEP);
  return DAX_STS_OK;
}

// Calls row(elements of the first plane, ..., count) from top to bottom; once for all rows where no plane has a gap
// between its rows, which spares small images the start and end of every row.
template <class Row, class... T>
void forEachRow(DaxiSize size, int32_t channels, Row&& row, Plane<T>... planes) {
  const int64_t width = int64_t{size.width} * channels, all = width * size.height;
  if ((... && (planes.step == width)) && all <= std::numeric_limits<int32_t>::max()) {
    row(planes.data..., static_cast<int32_t>(all));
    return;
  }
  for (int32_t y = 0; y < size.height; ++y) row(rowAt(planes.data, planes.step, y)..., static_cast<int32_t>(width));
}

// The same in bands of rows on the host's pool, where there is one.
template <class Row, class... T>
DaxStatus forEachRow(PoolThreads on, DaxiSize size, int32_t channels, const Row& row, Plane<T>... planes) {
  return runRows(on, size.height, [&](int32_t first, int32_t end) {
    forEachRow({size.width, end - first}, channels, row,
               Plane<T>{rowAt(planes.data, planes.step, first), planes.step}...);
  });
}

}  // namespace dax
