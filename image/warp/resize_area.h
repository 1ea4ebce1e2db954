// Resizes images of integers by exact areas: what a cell covers of each pixel, in parts of one, are whole numbers. Rows are
// added up by their shares of a row of cells, these sums by the shares of columns, and one division makes the mean.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>

#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/warp/resize_geometry.h"

namespace dax {

// sum / total to the nearest integer, halves to even.
class AreaMean {
 public:
  explicit AreaMean(uint64_t total) : total_(total), real_(static_cast<double>(total)) {}

  // Of sums below 2^52 and quotients whose distance from a half, at least 1 / (2 total), the rounded division keeps.
  uint64_t exactByReals(uint64_t sum) const {
    return static_cast<uint64_t>(std::rint(static_cast<double>(static_cast<int64_t>(sum)) / real_));
  }
  uint64_t of(uint64_t sum) const {
    const uint64_t whole = sum / total_, rest = sum - whole * total_;
    return whole + (2 * rest > total_ || (2 * rest == total_ && whole % 2 == 1));
  }
  // Means below 2^16.
  bool keepsHalves() const { return total_ <= uint64_t{1} << 36; }

 private:
  uint64_t total_;
  double real_;
};

// A cell of columns: pixels from `first` on of which it covers a part, `whole` ones, and another part.
struct AreaCell {
  AreaCell(const AreaAxis& axis, int32_t i, int32_t begin) : first(axis.first(i) - begin) {
    const int32_t last = axis.end(i) - 1;
    left = static_cast<uint32_t>(axis.overlap(i, axis.first(i)));
    whole = std::max(0, last - axis.first(i) - 1);
    right = last > axis.first(i) ? static_cast<uint32_t>(axis.overlap(i, last)) : 0;
  }
  int32_t first, whole;
  uint32_t left, right;
};

// Levels as unsigned numbers.
template <class T>
constexpr uint32_t kAreaBias = std::is_signed_v<T> ? 1u << 15 : 0;

// Sum holds what a column of a row of cells adds up to: a level times the reduced height of the source.
template <class T, class Sum, int kChannels>
class AreaResizer {
 public:
  struct Buffer {
    explicit Buffer(const ResizeGeometry& g)
        : x(g.x.src, g.x.dst),
          y(g.y.src, g.y.dst),
          begin(x.first(g.rect.x)),
          length((x.end(g.rect.x + g.rect.width - 1) - begin) * kChannels),
          cells(layout.add<AreaCell>(static_cast<uint64_t>(g.rect.width))),
          sums(layout.add<Sum>(g.tiles() * stride())) {}
    // Of the tiles' sums, apart from each other's lines of the cache.
    uint64_t stride() const { return static_cast<uint64_t>(length) / 32 * 32 + 64; }

    AreaAxis x, y;
    int32_t begin, length;  // of the source's columns; elements
    BufferLayout layout;
    BufferPiece<AreaCell> cells;
    BufferPiece<Sum> sums;
  };

  AreaResizer(const ResizedImage<T>& image, const ResizeGeometry& geometry, void* buffer, int32_t)
      : image_(image),
        g_(geometry),
        at_(geometry),
        buffer_(buffer),
        mean_(static_cast<uint64_t>(at_.x.src) * static_cast<uint64_t>(at_.y.src)) {
    for (int32_t i = 0; i < g_.rect.width; ++i) at_.cells.in(buffer)[i] = AreaCell(at_.x, g_.rect.x + i, at_.begin);
  }

  void run(int32_t first, int32_t end, uint32_t tile) const {
    Sum* const sums = at_.sums.in(buffer_) + tile * at_.stride();
    for (int32_t y = first; y < end; ++y) {
      addRows(g_.rect.y + y, sums);
      T* const dst = rowAt(image_.dst, image_.dstStep, y);
      if (mean_.keepsHalves() || sizeof(T) == 1) {
        storeMeans(sums, dst, [this](uint64_t sum) { return mean_.exactByReals(sum); });
      } else {
        storeMeans(sums, dst, [this](uint64_t sum) { return mean_.of(sum); });
      }
    }
  }

 private:
  void addRows(int32_t y, Sum* sums) const {
    const int32_t begin = at_.y.first(y), end = at_.y.end(y);
    for (int32_t j = begin; j < end; ++j) {
      const T* const row = rowAt(image_.src, image_.srcStep, j) + ptrdiff_t{at_.begin} * kChannels;
      const auto share = static_cast<Sum>(at_.y.overlap(y, j));
      if (j == begin) {
        for (int32_t i = 0; i < at_.length; ++i) sums[i] = share * level(row[i]);
      } else {
        for (int32_t i = 0; i < at_.length; ++i) sums[i] += share * level(row[i]);
      }
    }
  }

  static uint32_t level(T pixel) { return static_cast<uint32_t>(pixel + static_cast<int32_t>(kAreaBias<T>)); }

  template <class Mean>
  void storeMeans(const Sum* sums, T* dst, Mean mean) const {
    const AreaCell* const cells = at_.cells.in(buffer_);
    const auto whole = static_cast<uint64_t>(at_.x.dst);
    for (int32_t x = 0; x < g_.rect.width; ++x) {
      for (int c = 0; c < kChannels; ++c) {
        const Sum* at = sums + ptrdiff_t{cells[x].first} * kChannels + c;
        uint64_t sum = uint64_t{*at} * cells[x].left, inner = 0;
        at += kChannels;
        for (int32_t k = 0; k < cells[x].whole; ++k, at += kChannels) inner += *at;
        sum += inner * whole;
        if (cells[x].right) sum += uint64_t{*at} * cells[x].right;
        *dst++ = static_cast<T>(static_cast<int32_t>(mean(sum)) - static_cast<int32_t>(kAreaBias<T>));
      }
    }
  }

  ResizedImage<T> image_;
  const ResizeGeometry& g_;
  Buffer at_;
  void* buffer_;
  AreaMean mean_;
};

}  // namespace dax
