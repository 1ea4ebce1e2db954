// The column pass of the box filter: from d, in place, with running sums b(y) = b(y - 1) + d(y) down every column,
//   b(y + r)                   for y = 0..r
//   b(y + r) - b(y - r - 1)    for y = r + 1..h - r - 1
//   b(h - 1) - b(y - r - 1)    for the last r rows.
// Results overwrite d, so sums that are still needed are kept elsewhere, in one of two ways: the one that keeps fewer
// rows, which are never more than about sqrt(2 h).
#pragma once

#include <algorithm>
#include <cstdint>

#include "dax/types.h"
#include "frame/rows.h"

namespace dax {

// Room for `count` sums.
template <class Sum>
struct BoxSums {
  Sum* first;
  uint32_t count;
};

// Adjacent columns, as many as fit the buffer.
template <class Sum>
struct BoxStrip {
  Sum* first;
  int32_t step, height, width;
  Sum* row(int32_t y) const { return rowAt(first, step, y); }
};

template <class Sum>
struct BoxColumnKernels {
  void (*step)(const Sum* before, const Sum* enter, Sum* slot, Sum* dst, int32_t n);
  void (*addTo)(Sum* dst, const Sum* before, int32_t n);
  void (*subtractInto)(Sum* dst, const Sum* lead, const Sum* trail, int32_t n);
};

// A ring of the last 2 r + 1 sums, one pass.
template <class Sum>
class BoxRing {
 public:
  BoxRing(const BoxStrip<Sum>& strip, int32_t radius, Sum* ring) : strip_(strip), radius_(radius), ring_(ring) {}

  static int32_t rows(int32_t radius) { return 2 * radius + 1; }

  void run(const BoxColumnKernels<Sum>& kernels) const {
    const int32_t window = rows(radius_), height = strip_.height;
    for (int32_t y = 0; y < window; ++y) fill(y, kernels);
    int32_t slot = 0, newest = window - 1;
    const auto turn = [&] {
      newest = slot;
      slot = slot + 1 == window ? 0 : slot + 1;
    };
    for (int32_t y = window; y < height; ++y, turn()) {
      kernels.step(sums(newest), strip_.row(y), sums(slot), strip_.row(y - radius_), strip_.width);
    }
    const Sum* const total = sums(newest);
    for (int32_t y = height - radius_; y < height; ++y, turn()) {
      kernels.subtractInto(strip_.row(y), total, sums(slot), strip_.width);
    }
  }

 private:
  Sum* sums(int32_t slot) const { return ring_ + ptrdiff_t{slot} * strip_.width; }

  // One of the first sums, from which nothing is subtracted.
  void fill(int32_t y, const BoxColumnKernels<Sum>& kernels) const {
    std::copy_n(strip_.row(y), strip_.width, sums(y));
    if (y > 0) kernels.addTo(sums(y), sums(y - 1), strip_.width);
    if (y >= radius_) std::copy_n(sums(y), strip_.width, strip_.row(y - radius_));
  }

  BoxStrip<Sum> strip_;
  int32_t radius_;
  Sum* ring_;
};

// First all sums, in place. Then chain by chain, where chain c consists of the rows c, c + r + 1, c + 2 (r + 1), ...:
// each from its last row up, since a result needs the sum of the previous row of its chain; and from chain r down to
// chain 0, since a result of chain c needs a sum of chain c - 1. Chain 0 needs sums of chain r: these are kept, and the
// sum of the last row.
template <class Sum>
class BoxChains {
 public:
  BoxChains(const BoxStrip<Sum>& strip, int32_t radius, Sum* kept) : strip_(strip), radius_(radius), kept_(kept) {}

  static int32_t rows(int32_t height, int32_t radius) { return height / (radius + 1) + 1; }

  void run(const BoxColumnKernels<Sum>& kernels) const {
    const int32_t height = strip_.height, next = radius_ + 1;
    for (int32_t y = 1; y < height; ++y) kernels.addTo(strip_.row(y), strip_.row(y - 1), strip_.width);
    for (int32_t y = radius_; y < height; y += next) std::copy_n(strip_.row(y), strip_.width, keptRow(1 + y / next));
    std::copy_n(strip_.row(height - 1), strip_.width, keptRow(0));
    for (int32_t chain = radius_; chain >= 0; --chain) {
      for (int32_t y = lastOf(chain); y > radius_; y -= next) {
        kernels.subtractInto(strip_.row(y), lead(y, chain), strip_.row(y - next), strip_.width);
      }
      std::copy_n(lead(chain, chain), strip_.width, strip_.row(chain));
    }
  }

 private:
  Sum* keptRow(int32_t i) const { return kept_ + ptrdiff_t{i} * strip_.width; }
  int32_t lastOf(int32_t chain) const { return strip_.height - 1 - (strip_.height - 1 - chain) % (radius_ + 1); }

  // The sum up to row y + radius, of the chain before.
  const Sum* lead(int32_t y, int32_t chain) const {
    if (y >= strip_.height - radius_) return keptRow(0);
    return chain == 0 ? keptRow(1 + y / (radius_ + 1)) : strip_.row(y + radius_);
  }

  BoxStrip<Sum> strip_;
  int32_t radius_;
  Sum* kept_;
};

// The column pass of a whole image, strip by strip.
template <class Sum>
void boxColumns(Sum* dst, int32_t dstStep, DaxiSize size, int32_t radius, BoxSums<Sum> room,
                const BoxColumnKernels<Sum>& kernels) {
  const int32_t ringRows = BoxRing<Sum>::rows(radius), chainRows = BoxChains<Sum>::rows(size.height, radius);
  // At least 1, since a window is lower than the image.
  int32_t strip = static_cast<int32_t>(room.count) / std::min(ringRows, chainRows);
  if (strip > 16) strip -= strip % 16;
  for (int32_t x = 0; x < size.width;) {
    const BoxStrip<Sum> columns{dst + x, dstStep, size.height, std::min(strip, size.width - x)};
    if (ringRows <= chainRows) {
      BoxRing<Sum>(columns, radius, room.first).run(kernels);
    } else {
      BoxChains<Sum>(columns, radius, room.first).run(kernels);
    }
    x += columns.width;
  }
}

}  // namespace dax
