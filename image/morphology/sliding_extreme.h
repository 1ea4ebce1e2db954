// Minima or maxima over rectangular windows, band by band: along columns first, by suffixes and prefixes of blocks of
// the window's height (van Herk, A fast algorithm for local minimum and maximum filters on rectangular and octagonal
// kernels, Pattern Recognition Letters 13, 1992), then along rows. Four vectors in a turn of the plain loops: a turn of
// one spends three of seven instructions on itself.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/dispatch.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/total_order.h"
#include "frame/rows.h"
#include "image/morphology/reach.h"
#include "image/morphology/sliding_extreme_neon.h"

namespace dax {

// Rows, extended by the columns that windows reach.
template <class T>
struct SlidingBuffer {
  using Key = typename OrderKey<T>::Key;

  SlidingBuffer(DaxiSize size, const Reach& reach)
      : length(static_cast<uint64_t>(size.width) + static_cast<uint64_t>(reach.columns()) - 1),
        pitch((length + 2 * kLanes - 1) / kLanes * kLanes),
        rows(layout.add<Key>(pitch * static_cast<uint64_t>(size.height))) {}
  static constexpr uint64_t kLanes = 16 / sizeof(Key);
  uint64_t length;
  uint64_t pitch;  // with the vector after the one of the last pixel
  BufferLayout layout;
  BufferPiece<Key> rows;
};

template <class Order, class T>
class SlidingExtreme {
 public:
  SlidingExtreme(const BorderedImage<T>& image, const Reach& reach, void* buffer)
      : image_(image),
        reach_(reach),
        at_(image.size, reach),
        buffer_(buffer),
        bandRows_(std::min(reach.rows(), image.size.height)),
        usesNeon_(usesNeon(currentIsa())),
        missing_(image.border == DAXI_BORDER_CLIP ? Order::template kNeutral<Key> : OrderKey<T>::of(image.value)) {}

  // Bands of as many rows as the window has.
  int32_t bands() const { return static_cast<int32_t>((int64_t{image_.size.height} + bandRows_ - 1) / bandRows_); }

  void runBand(int32_t band, T* dst, int32_t dstStep) const {
    const int32_t first = band * bandRows_, count = std::min(bandRows_, image_.size.height - first);
    const int64_t begin = image_.isInMemory() ? -reach_.left : 0;
    const int64_t end = int64_t{image_.size.width} + (image_.isInMemory() ? reach_.right : 0);
    for (int64_t x = begin; x < end; x += kStrip) {
      alongColumns(first, count, x, static_cast<int32_t>(std::min<int64_t>(kStrip, end - x)));
    }
    for (int32_t y = first; y < first + count; ++y) alongRow(extendedRow(y), rowAt(dst, dstStep, y));
  }

 private:
  using Key = typename OrderKey<T>::Key;
  static constexpr int32_t kStrip = 1024 / sizeof(Key);

  Key* extendedRow(int32_t y) const { return at_.rows.in(buffer_) + at_.pitch * static_cast<uint64_t>(y); }

  // Calls use(key), where key(i) is pixel x + i of source row y.
  template <class Use>
  void withRow(int64_t y, int64_t x, Use use) const {
    if (const T* const row = image_.row(y)) {
      use([pixels = row + x](int32_t i) { return OrderKey<T>::of(pixels[i]); });
    } else {
      use([missing = missing_](int32_t) { return missing; });
    }
  }

  void joinRow(int64_t y, int64_t x, int32_t columns, const Key* with, Key* __restrict to) const {
    withRow(y, x, [=](auto key) {
#pragma GCC unroll 4
      for (int32_t i = 0; i < columns; ++i) to[i] = Order::of(key(i), with[i]);
    });
  }

  // What window i of the band shares with the first one are the rows from i on, of which the extremes are suffixes; the
  // rows below the first window are joined as they come.
  void alongColumns(int32_t first, int32_t count, int64_t x, int32_t columns) const {
    const int64_t top = int64_t{first} - reach_.up;
    const int32_t rows = reach_.rows();
    const auto place = [&](int32_t i) { return extendedRow(first + i) + reach_.left + x; };
    Key held[kStrip], next[kStrip];
    withRow(top + rows - 1, x, [&](auto key) {
      for (int32_t i = 0; i < columns; ++i) held[i] = key(i);
    });
    for (int32_t i = rows - 2; i >= count; --i) {
      joinRow(top + i, x, columns, held, next);
      std::copy_n(next, columns, held);
    }
    const Key* below = held;
    if (count == rows) std::copy_n(held, columns, place(rows - 1));
    for (int32_t i = std::min(count, rows - 1) - 1; i >= 0; --i) {
      joinRow(top + i, x, columns, below, place(i));
      below = place(i);
    }
    std::fill_n(held, columns, Order::template kNeutral<Key>);
    for (int32_t i = 1; i < count; ++i) addBelow(top + rows - 1 + i, x, columns, held, place(i));
  }

  void addBelow(int64_t y, int64_t x, int32_t columns, Key* __restrict held, Key* __restrict to) const {
    withRow(y, x, [=](auto key) {
#pragma GCC unroll 4
      for (int32_t i = 0; i < columns; ++i) {
        const Key joined = Order::of(key(i), held[i]);
        held[i] = joined;
        to[i] = Order::of(to[i], joined);
      }
    });
  }

  void alongRow(Key* row, T* __restrict dst) const {
    extendRow(row + reach_.left, image_.size.width, reach_.left, reach_.right, image_.border, missing_);
    const auto length = static_cast<int64_t>(at_.length);
    std::fill(row + length, row + at_.pitch, Order::template kNeutral<Key>);
    usesNeon_ ? neon::slideRow<Order>(row, length, reach_.columns(), dst, image_.size.width)
              : portable::slideRow<Order>(row, length, reach_.columns(), dst, image_.size.width);
  }

  const BorderedImage<T>& image_;
  const Reach& reach_;
  SlidingBuffer<T> at_;
  void* buffer_;
  int32_t bandRows_;
  bool usesNeon_;
  Key missing_;
};

}  // namespace dax
