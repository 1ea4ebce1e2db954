// Resizes images by taps: rows of the source, resized along x when they are first needed, are added up for each row of the
// result.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/border/border_index.h"
#include "image/warp/resize_geometry.h"
#include "image/warp/resize_taps.h"

namespace dax {

// The first and the last pixel of the source that a tap of the columns reads, which may lie outside.
struct TapSpan {
  TapSpan(const ResizeAxis& axis, int32_t first, int32_t count, double* weights) {
    const Taps left = tapsWithin(axis, first, weights), right = tapsWithin(axis, first + count - 1, weights);
    begin = left.first;
    end = right.first + right.count;
  }
  // Enough for any.
  static uint64_t maxLength(const ResizeAxis& axis, int32_t count) {
    return static_cast<uint64_t>((count + 1.0) * axis.shrinks()) + 2 * static_cast<uint64_t>(axis.maxTaps()) + 2;
  }
  int32_t begin, end;
};

// The taps of all columns; then, for each tile, a row of the source with its borders, the weights of a row of the result, and
// as many resized rows as one needs.
template <class T, class Arithmetic, int kChannels>
struct ResizeBuffer {
  // What vectors read and write beyond rows.
  static constexpr uint64_t kSlack = 64;

  explicit ResizeBuffer(const ResizeGeometry& g)
      : tapsX(static_cast<uint64_t>(g.x.maxTaps())),
        tapsY(static_cast<uint64_t>(g.y.maxTaps())),
        rowLength(static_cast<uint64_t>(g.rect.width) * kChannels + kSlack),
        real(layout.add<double>(tapsX)),
        columns(layout, g.rect.width, g.x.maxTaps()),
        source(tile.template add<T>(TapSpan::maxLength(g.x, g.rect.width) * kChannels + kSlack)),
        realY(tile.template add<double>(tapsY)),
        weightsY(tile.template add<typename Arithmetic::RowWeight>(tapsY)),
        rows(tile.template add<typename Arithmetic::Mid>(rowLength * tapsY)),
        needed(tile.template add<const typename Arithmetic::Mid*>(tapsY)),
        held(tile.template add<int64_t>(tapsY)),
        tiles(layout.addSlices(tile.total(), g.tiles())) {}

  void* ofTile(void* buffer, uint32_t index) const { return tiles.in(buffer) + index * tile.total(); }

  BufferLayout layout, tile;
  uint64_t tapsX, tapsY, rowLength;
  BufferPiece<double> real;
  typename Arithmetic::Columns columns;
  BufferPiece<T> source;
  BufferPiece<double> realY;
  BufferPiece<typename Arithmetic::RowWeight> weightsY;
  BufferPiece<typename Arithmetic::Mid> rows;
  BufferPiece<const typename Arithmetic::Mid*> needed;
  BufferPiece<int64_t> held;
  BufferPiece<uint8_t> tiles;
};

template <class T, class Arithmetic, int kChannels>
class Resizer {
 public:
  using Mid = typename Arithmetic::Mid;
  using Buffer = ResizeBuffer<T, Arithmetic, kChannels>;

  Resizer(const ResizedImage<T>& image, const ResizeGeometry& geometry, void* buffer, int32_t isa)
      : image_(image),
        g_(geometry),
        at_(geometry),
        buffer_(buffer),
        isa_(isa),
        span_(geometry.x, geometry.rect.x, geometry.rect.width, at_.real.in(buffer)) {
    double* const weights = at_.real.in(buffer);
    for (int32_t x = 0; x < g_.rect.width; ++x) {
      Taps taps = resizeTaps(g_.x, g_.rect.x + x, weights);
      taps.first -= span_.begin;
      at_.columns.set(buffer, x, taps, weights);
    }
    at_.columns.finish(buffer);
  }

  // Rows first..end - 1 of the part.
  void run(int32_t first, int32_t end, uint32_t tile) const {
    void* const own = at_.ofTile(buffer_, tile);
    std::fill_n(at_.held.in(own), at_.tapsY, kNone);
    typename Arithmetic::RowWeight* const weights = at_.weightsY.in(own);
    const Mid** const needed = at_.needed.in(own);
    for (int32_t y = first; y < end; ++y) {
      const Taps taps = resizeTaps(g_.y, g_.rect.y + y, at_.realY.in(own));
      Arithmetic::rowWeights(taps, at_.realY.in(own), weights);
      for (int32_t k = 0; k < taps.count; ++k) needed[k] = resizedRow(int64_t{taps.first} + k, own);
      Arithmetic::alongY(needed, weights, taps.count, rowAt(image_.dst, image_.dstStep, y), g_.rect.width * kChannels,
                         isa_);
    }
  }

 private:
  static constexpr int64_t kNone = INT64_MIN;

  // Row y of the source, which may lie outside it, resized along x. Rows that are needed together are consecutive, so
  // that each has a place of its own among as many.
  const Mid* resizedRow(int64_t y, void* own) const {
    const auto rows = static_cast<int64_t>(at_.tapsY);
    const auto place = static_cast<uint64_t>((y % rows + rows) % rows);
    Mid* const row = at_.rows.in(own) + place * at_.rowLength;
    int64_t& held = at_.held.in(own)[place];
    if (held == y) return row;
    held = y;
    if (g_.border == DAXI_BORDER_CONSTANT && (y < 0 || y >= g_.y.src)) {
      std::fill_n(row, g_.rect.width * kChannels, Arithmetic::midOf(borderValue<T>(g_.value)));
    } else {
      const auto from = static_cast<int32_t>(borderIndex(y, g_.y.src, g_.border));
      Arithmetic::alongX(at_.columns, buffer_, sourceRow(rowAt(image_.src, image_.srcStep, from), own), row, isa_);
    }
    return row;
  }

  // The pixels of a row that the taps read, with those outside.
  const T* sourceRow(const T* row, void* own) const {
    T* const copy = at_.source.in(own);
    const int32_t begin = std::clamp(0, span_.begin, span_.end), end = std::clamp(g_.x.src, begin, span_.end);
    for (int32_t x = span_.begin; x < begin; ++x) putPixel(copy, x, row);
    std::copy(row + ptrdiff_t{begin} * kChannels, row + ptrdiff_t{end} * kChannels,
              copy + ptrdiff_t{begin - span_.begin} * kChannels);
    for (int32_t x = end; x < span_.end; ++x) putPixel(copy, x, row);
    return copy;
  }

  void putPixel(T* copy, int32_t x, const T* row) const {
    T* const to = copy + ptrdiff_t{x - span_.begin} * kChannels;
    if (g_.border == DAXI_BORDER_CONSTANT && (x < 0 || x >= g_.x.src)) {
      std::fill_n(to, kChannels, borderValue<T>(g_.value));
    } else {
      std::copy_n(row + borderIndex(x, g_.x.src, g_.border) * kChannels, kChannels, to);
    }
  }

  ResizedImage<T> image_;
  const ResizeGeometry& g_;
  Buffer at_;
  void* buffer_;
  int32_t isa_;
  TapSpan span_;
};

}  // namespace dax
