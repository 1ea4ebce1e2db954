// Ranks of 8-bit pixels at a cost that does not depend on the window: every column has a histogram of its pixels in the
// rows of the window, which moves down by one pixel in and one out, and the histogram of the window moves to the right by
// one column in and one out (Perreault and Hebert, Median filtering in constant time, IEEE Transactions on Image Processing
// 16, 2007).
//
// Histograms have two tiers, 16 bins for the upper four bits and 16 for the lower ones of each. The fine ones of a window
// are brought up to its place only where its rank falls in them. Bins are cumulated: bin k counts the pixels below it. So a
// pixel adds a vector instead of a one, and what is searched for is found by one comparison of all bins.
#pragma once

#include <algorithm>
#include <cstdint>
#include <cstring>

#include "frame/memory/work_buffer.h"
#include "image/rank/rank_filter.h"

namespace dax {

using BinBytes = uint8_t __attribute__((vector_size(16)));
using HalfBytes = uint8_t __attribute__((vector_size(8)));
using CountVector = uint16_t __attribute__((vector_size(16)));

template <class Vector>
Vector loadVector(const void* from) {
  Vector v;
  std::memcpy(&v, from, sizeof v);
  return v;
}

// Row v: what a value v adds to 16 cumulated bins.
struct BinsAbove {
  static constexpr int32_t kBins = 16;
  alignas(16) uint8_t rows[kBins][kBins];
  constexpr BinsAbove() : rows() {
    for (int32_t v = 0; v < kBins; ++v) {
      for (int32_t k = v + 1; k < kBins; ++k) rows[v][k] = 1;
    }
  }
};
inline constexpr BinsAbove kBinsAbove;

// 16 cumulated bins of a window, even and odd ones apart: so they come out of the pairs of bytes of a column.
struct WindowBins {
  CountVector even{}, odd{};

  void add(const uint8_t* column) {
    const auto pairs = loadVector<CountVector>(column);
    even += pairs & 0xFF;
    odd += pairs >> 8;
  }
  void subtract(const uint8_t* column) {
    const auto pairs = loadVector<CountVector>(column);
    even -= pairs & 0xFF;
    odd -= pairs >> 8;
  }

  // The last bin with at most `rank` pixels below it, which the value of that rank lies in. Bin 0 has none below it.
  uint32_t find(int32_t rank) const {
    const CountVector limit = static_cast<uint16_t>(rank) - CountVector{};
    const CountVector reached = -((even <= limit) + (odd <= limit));
    const auto counts = __builtin_convertvector(reached, HalfBytes);
    uint64_t bytes;
    std::memcpy(&bytes, &counts, sizeof bytes);
    return static_cast<uint32_t>(bytes * 0x0101010101010101u >> 56) - 1;
  }

  int32_t below(uint32_t bin) const {
    uint16_t counts[2][8];
    std::memcpy(counts[0], &even, sizeof even);
    std::memcpy(counts[1], &odd, sizeof odd);
    return counts[bin % 2][bin / 2];
  }
};

// Columns of a strip of the image, those that its windows reach included.
struct ColumnBuffer {
  static constexpr int32_t kStrip = 512;
  static constexpr uint64_t kBins = BinsAbove::kBins;

  ColumnBuffer(DaxiSize size, DaxiSize window)
      : columns(static_cast<uint64_t>(std::min(size.width, kStrip)) + static_cast<uint64_t>(window.width) - 1),
        coarse(layout.add<uint8_t>(kBins * columns)),
        fine(layout.add<uint8_t>(kBins * kBins * columns)),
        line(layout.add<uint8_t>(columns)) {}
  uint64_t columns;
  BufferLayout layout;
  BufferPiece<uint8_t> coarse, fine, line;
};

class ColumnHistograms {
 public:
  ColumnHistograms(const RankFilter<uint8_t>& filter, void* buffer)
      : filter_(filter),
        at_(filter.size, filter.window),
        coarse_(at_.coarse.in(buffer)),
        fine_(at_.fine.in(buffer)),
        line_(at_.line.in(buffer)) {}

  void run(const DaxiRect& part) {
    for (int32_t done = 0; done < part.width; done += count_) {
      x_ = part.x + done;
      count_ = std::min(ColumnBuffer::kStrip, part.width - done);
      runStrip(part.y, part.y + part.height);
    }
  }

 private:
  static constexpr int32_t kBins = BinsAbove::kBins;

  // Columns of one bin lie side by side.
  const uint8_t* fine(uint32_t bin) const { return fine_ + kBins * (bin * at_.columns); }

  void runStrip(int32_t first, int32_t end) {
    std::fill_n(coarse_, kBins * at_.columns, uint8_t{0});
    std::fill_n(fine_, kBins * kBins * at_.columns, uint8_t{0});
    IndexRange rows = filter_.down(first);
    for (int32_t y = rows.first; y < rows.end; ++y) countRow<1>(y);
    for (int32_t y = first; y < end; ++y) {
      const IndexRange next = filter_.down(y);
      slideWindow(
          rows, next, [&](int32_t row) { countRow<-1>(row); }, [&](int32_t row) { countRow<1>(row); });
      rows = next;
      findRow(rows.count(), rowAt(filter_.dst, filter_.dstStep, y) + x_);
    }
  }

  // Puts the pixels of a row into the histograms of their columns, or takes them out.
  template <int32_t sign>
  void countRow(int32_t y) {
    const int32_t left = x_ - filter_.window.width / 2;
    const int32_t begin = filter_.across(x_).first - left, end = filter_.across(x_ + count_ - 1).end - left;
    filter_.readRow(y, left + begin, end - begin, line_);
    const uint8_t* const line = line_ - begin;
    uint8_t *const coarse = coarse_, *const fine = fine_;
    const auto columns = static_cast<ptrdiff_t>(at_.columns);
    for (int32_t i = begin; i < end; ++i) {
      const int32_t v = line[i];
      countValue<sign>(coarse + kBins * i, v >> 4);
      countValue<sign>(fine + kBins * ((v >> 4) * columns + i), v & 15);
    }
  }

  template <int32_t sign>
  static void countValue(uint8_t* bins, int32_t v) {
    const auto above = loadVector<BinBytes>(kBinsAbove.rows[v]);
    auto counts = loadVector<BinBytes>(bins);
    counts = sign > 0 ? counts + above : counts - above;
    std::memcpy(bins, &counts, sizeof counts);
  }

  void findRow(int32_t rows, uint8_t* dst) const {
    const int32_t width = filter_.window.width, count = count_;
    const bool clips = filter_.clips();
    const uint8_t* const coarse = coarse_;
    int32_t rank = filter_.rank;
    WindowBins top, parts[kBins];
    int32_t places[kBins];
    std::fill_n(places, kBins, -width);
    for (int32_t i = 0; i < width - 1; ++i) top.add(coarse + kBins * i);
    for (int32_t i = 0; i < count; ++i) {
      top.add(coarse + kBins * (i + width - 1));
      if (clips) rank = filter_.rankOf(rows * filter_.across(x_ + i).count());
      const uint32_t bin = top.find(rank);
      bring(parts[bin], places[bin], i, width, fine(bin));
      dst[i] = static_cast<uint8_t>(kBins * bin + parts[bin].find(rank - top.below(bin)));
      top.subtract(coarse + kBins * i);
    }
  }

  // Moves the bins of a window from one place to another, or counts anew where that is less.
  static void bring(WindowBins& bins, int32_t& place, int32_t to, int32_t width, const uint8_t* columns) {
    WindowBins moved = bins;
    if (to - place > width / 2) {
      moved = {};
      for (int32_t i = to; i < to + width; ++i) moved.add(columns + kBins * i);
    } else {
      for (int32_t i = place; i < to; ++i) {
        moved.subtract(columns + kBins * i);
        moved.add(columns + kBins * (i + width));
      }
    }
    bins = moved;
    place = to;
  }

  const RankFilter<uint8_t>& filter_;
  ColumnBuffer at_;
  uint8_t *coarse_, *fine_, *line_;
  int32_t x_ = 0, count_ = 0;  // the strip
};

}  // namespace dax
