// Means over the part of a window that lies inside the image, any type, any instruction set.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "dax/types.h"
#include "frame/rows.h"
#include "image/window/mean_pixel_portable.h"
#include "image/window/window_sums.h"

namespace dax {

// How many of the pixels around i lie in 0..n - 1.
inline int32_t countInside(int64_t i, WindowReach reach, int32_t n) {
  const int64_t first = std::max<int64_t>(i - reach.before, 0), last = std::min<int64_t>(i + reach.after, n - 1);
  return static_cast<int32_t>(last - first + 1);
}

template <class T>
struct ClippedMean {
  ClippedRows<T> rows;
  T* dst;
  int32_t dstStep;
  DaxiSize size, mask;

  WindowReach reachX() const { return WindowReach(mask.width); }
  WindowReach reachY() const { return WindowReach(mask.height); }
  T* dstRow(int32_t y) const { return rowAt(dst, dstStep, y); }
  int32_t rowsInside(int32_t y) const { return countInside(y, reachY(), size.height); }
};

}  // namespace dax

namespace dax::portable {

// 64-bit sums hold every window of an image that the query accepts, and a row of them fits its buffer. Means of floats
// are divided in double precision.
template <class T>
using WideSum = std::conditional_t<std::is_floating_point_v<T>, double, int64_t>;
template <class T>
using Quotient = std::conditional_t<std::is_floating_point_v<T>, double, float>;

template <class T>
void storeMeanIntRow(const ClippedMean<T>& mean, int32_t y, const WideSum<T>* columns) {
  using Sum = WideSum<T>;
  using Real = Quotient<T>;
  T* const dst = mean.dstRow(y);
  const int32_t width = mean.size.width;
  const WindowReach reach = mean.reachX();
  const int64_t rowsInside = mean.rowsInside(y);
  const auto whole = static_cast<Real>(rowsInside * mean.mask.width);
  slide<Sum>(
      columns, reach, width, [&](int64_t i) { return i >= 0 && i < width ? columns[i] : Sum{}; },
      [&](int32_t x, Sum sum, bool inside) {
        const Real count = inside ? whole : static_cast<Real>(rowsInside * countInside(x, reach, width));
        dst[x] = pixelFromMean<T>(static_cast<Real>(sum) / count);
      });
}

template <class T>
void meanInt(const ClippedMean<T>& mean, void* buffer) {
  auto* const columns = static_cast<WideSum<T>*>(buffer);
  forEachWindowRow(mean.rows, mean.reachY(), 0, mean.size.height, columns, mean.size.width, moveRow<WideSum<T>, T>,
                   [&](int32_t y) { storeMeanIntRow(mean, y, columns); });
}

}  // namespace dax::portable
