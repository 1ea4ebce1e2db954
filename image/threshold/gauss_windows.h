// Sums of pixels weighted by a Gaussian, over windows of any size, one row after the other, with any border. Weights are
// whole numbers, so sums of integers are exact: those of windows in doubles, which hold 53 bits.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "daxi/threshold_local.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/elementary.h"
#include "image/window/windowed_rows.h"

namespace dax {

// What columns are summed up in: weights of an axis sum to 2^18, but for their rounding.
template <class T>
using GaussColumn = std::conditional_t<sizeof(T) == 1, uint32_t, double>;

// exp(-i^2 / (2 sigma^2)) of the pixels of a window's side.
inline void makeGaussWeights(double sigma, WindowReach reach, uint32_t* weights) {
  constexpr double kParts = 1 << 18;
  const auto weightAt = [sigma](int32_t i) {
    const double t = i / sigma;
    return elementary::exp(-0.5 * (t * t));
  };
  double sum = 0;
  for (int32_t i = -reach.before; i <= reach.after; ++i) sum += weightAt(i);
  for (int32_t i = -reach.before; i <= reach.after; ++i) {
    weights[reach.before + i] = roundTo<uint32_t>(weightAt(i) / sum * kParts);
  }
}

// A window's side: its weights, and the sums of the first 0, 1, ... of them.
struct GaussSide {
  WindowReach reach;
  uint32_t *weights, *sums;
  int32_t first, end;  // of the weights that are not 0

  GaussSide(WindowReach side, double k, uint32_t* weightsAt, uint32_t* sumsAt)
      : reach(side), weights(weightsAt), sums(sumsAt), first(0), end(side.before + 1 + side.after) {
    constexpr double kUsual = 1.0 / 6;
    makeGaussWeights((k == 0 ? kUsual : k) * end, reach, weights);
    sums[0] = 0;
    for (int32_t i = 0; i < end; ++i) sums[i + 1] = sums[i] + weights[i];
    while (weights[first] == 0) ++first;
    while (weights[end - 1] == 0) --end;
  }

  // The weights that count at place i of a line of n pixels.
  uint32_t counted(int32_t i, int32_t n, bool isClipped) const {
    const int32_t all = reach.before + 1 + reach.after;
    if (!isClipped) return sums[all];
    return sums[reach.before + 1 + std::min(reach.after, n - 1 - i)] - sums[std::max(reach.before - i, 0)];
  }
};

// What one thread needs.
template <class T>
struct GaussWindowsBuffer {
  explicit GaussWindowsBuffer(const WindowedRegion& region) {
    const auto columns = static_cast<uint64_t>(region.columns()), lines = static_cast<uint64_t>(region.rows());
    const auto width = static_cast<uint64_t>(region.size.width);
    sides = layout.add<uint32_t>(2 * (columns + lines + 1));
    outside = layout.add<T>(width);
    rows = layout.add<const T*>(lines);
    totals = layout.add<uint32_t>(width);
    extended = layout.add<double>(static_cast<uint64_t>(region.extendedWidth()));
    sums = layout.add<double>(width);
  }
  BufferLayout layout;
  BufferPiece<uint32_t> sides;
  BufferPiece<T> outside;      // a row of the border's value, or of nothing
  BufferPiece<const T*> rows;  // of a window
  BufferPiece<uint32_t> totals;
  BufferPiece<double> extended, sums;
};

namespace portable {

// sums += the weighted lines at(0)..at(taps - 1), one after the other.
template <class Sum, class At>
void addWeighted(At at, const uint32_t* weights, int32_t taps, Sum* __restrict sums, int32_t n) {
  const auto product = [](uint32_t weight, auto value) { return static_cast<Sum>(weight) * static_cast<Sum>(value); };
  int32_t k = 0;
  for (; k + 4 <= taps; k += 4) {
    const auto *a = at(k), *b = at(k + 1), *c = at(k + 2), *d = at(k + 3);
    const uint32_t u = weights[k], v = weights[k + 1], w = weights[k + 2], z = weights[k + 3];
    for (int32_t x = 0; x < n; ++x) {
      const Sum sum = sums[x] + product(u, a[x]) + product(v, b[x]);
      sums[x] = sum + product(w, c[x]) + product(z, d[x]);
    }
  }
  for (; k < taps; ++k) {
    const auto* const a = at(k);
    const uint32_t u = weights[k];
    for (int32_t x = 0; x < n; ++x) sums[x] += product(u, a[x]);
  }
}

}  // namespace portable

template <class T>
class GaussWindows {
 public:
  GaussWindows(const T* src, int32_t step, const WindowedRegion& region, const DaxiThresholdLocalCfg& cfg, void* buffer)
      : region_(region),
        at_(region),
        buffer_(buffer),
        rows_{src, step, region_, at_.outside.in(buffer)},
        x_(region.x, cfg.k, at_.sides.in(buffer), at_.sides.in(buffer) + region.columns()),
        y_(region.y, cfg.k, x_.sums + region.columns() + 1, x_.sums + region.columns() + 1 + region.rows()),
        value_(region.isClipped() ? T{} : borderPixel<T>(cfg.value)) {
    const int32_t width = region.size.width;
    std::fill_n(at_.outside.in(buffer), width, value_);
    for (int32_t x = 0; x < width; ++x) at_.totals.in(buffer)[x] = x_.counted(x, width, region.isClipped());
  }

  // The weighted sums of row y.
  const double* compute(int32_t y) const {
    sumColumns(y);
    const int32_t width = region_.size.width;
    const double* const columns = at_.extended.in(buffer_) + x_.first;
    double* const sums = at_.sums.in(buffer_);
    forStrips(width, [&](int32_t x, int32_t count) {
      std::fill_n(sums + x, count, 0.0);
      portable::addWeighted([&](int32_t k) { return columns + k + x; }, x_.weights + x_.first, x_.end - x_.first,
                            sums + x, count);
    });
    return sums;
  }

  // The weights of a pixel's window are the product of both.
  double rowTotal(int32_t y) const { return y_.counted(y, region_.size.height, region_.isClipped()); }
  const uint32_t* columnTotals() const { return at_.totals.in(buffer_); }

 private:
  static constexpr int32_t kStrip = 256;

  template <class Strip>
  static void forStrips(int32_t n, Strip strip) {
    for (int64_t x = 0; x < n; x += kStrip) {
      strip(static_cast<int32_t>(x), static_cast<int32_t>(std::min<int64_t>(kStrip, n - x)));
    }
  }

  void sumColumns(int32_t y) const {
    const T** const rows = at_.rows.in(buffer_);
    const int32_t taps = y_.end - y_.first;
    for (int32_t k = 0; k < taps; ++k) {
      const T* const row = rows_(int64_t{y} - region_.y.before + y_.first + k);
      rows[k] = row ? row : rows_.constant;
    }
    double* const columns = at_.extended.in(buffer_);
    double* const held = columns + region_.firstHeld();
    std::fill_n(columns, region_.extendedWidth(), y_.sums[region_.rows()] * static_cast<double>(value_));
    forStrips(region_.heldWidth(), [&](int32_t x, int32_t count) {
      GaussColumn<T> strip[kStrip] = {};
      portable::addWeighted([&](int32_t k) { return rows[k] + x; }, y_.weights + y_.first, taps, strip, count);
      std::copy_n(strip, count, held + x);
    });
    region_.extend(columns);
  }

  WindowedRegion region_;
  GaussWindowsBuffer<T> at_;
  void* buffer_;
  WindowedRows<T> rows_;
  GaussSide x_, y_;
  T value_;
};

}  // namespace dax
