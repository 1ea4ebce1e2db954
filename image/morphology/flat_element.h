// Minima or maxima over windows of any shape. A window is cut into chords along rows. The extremes of 1, 2, 4, ...
// adjacent pixels of each row are kept for as many rows as the window has, and a chord is one or two of them (after
// Urbach and Wilkinson, Efficient 2-D grayscale morphological transformations with arbitrary flat structuring elements,
// IEEE Transactions on Image Processing 17, 2008).
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>

#include "frame/memory/work_buffer.h"
#include "frame/rows.h"
#include "image/morphology/reach.h"

namespace dax {

// 2^level pixels of a row, the first of which lies x columns and y rows from the pixel that is computed.
struct ChordPart {
  int32_t x, y, level;
};

// A window. Without memory for its parts it only counts them.
class FlatElement {
 public:
  explicit FlatElement(ChordPart* parts) : parts_(parts) {}

  // Pixels x..end - 1 of a row; turned by half a circle for dilations.
  void addChord(int32_t x, int32_t end, int32_t y, bool isTurned) {
    if (isTurned) {
      const int32_t first = 1 - end;
      end = 1 - x, x = first, y = -y;
    }
    const int32_t length = end - x, level = static_cast<int32_t>(std::bit_width(static_cast<uint32_t>(length))) - 1;
    addPart({x, y, level});
    if (length > 1 << level) addPart({end - (1 << level), y, level});
    levels_ = std::max(levels_, level + 1);
    const Reach& r = reach_;
    reach_ = {std::max(r.left, -x), std::max(r.right, end - 1), std::max(r.up, -y), std::max(r.down, y)};
  }

  const ChordPart* begin() const { return parts_; }
  const ChordPart* end() const { return parts_ + count_; }
  uint64_t count() const { return count_; }
  int32_t levels() const { return levels_; }
  const Reach& reach() const { return reach_; }

 private:
  void addPart(const ChordPart& part) {
    if (parts_) parts_[count_] = part;
    ++count_;
  }

  ChordPart* parts_;
  uint64_t count_ = 0;
  int32_t levels_ = 1;
  Reach reach_ = {0, 0, 0, 0};
};

// The rows that one tile keeps: for each row of the window one of each level.
struct ChordRows {
  ChordRows(DaxiSize size, const FlatElement& element)
      : length(static_cast<uint64_t>(size.width) + static_cast<uint64_t>(element.reach().columns()) - 1),
        count(static_cast<uint64_t>(element.reach().rows()) * static_cast<uint64_t>(element.levels())) {}
  uint64_t length, count;
};

// PixelKey: how pixels become what is compared, as OrderKey.
template <class Order, class PixelKey, class T>
class FlatExtreme {
 public:
  using Key = typename PixelKey::Key;

  FlatExtreme(const BorderedImage<T>& image, const FlatElement& element, Key* rows)
      : image_(image),
        element_(element),
        rows_(rows),
        length_(ChordRows(image.size, element).length),
        missing_(image.border == DAXI_BORDER_CLIP ? Order::template kNeutral<Key> : PixelKey::of(image.value)) {}

  // Rows first..end - 1. isJoined: with what dst holds, of keys that are pixels.
  void run(int32_t first, int32_t end, T* dst, int32_t dstStep, bool isJoined) const {
    const Reach& reach = element_.reach();
    int64_t known = int64_t{first} - reach.up;
    for (int32_t y = first; y < end; ++y) {
      for (; known <= int64_t{y} + reach.down; ++known) findRow(known);
      T* const row = rowAt(dst, dstStep, y);
      for (int32_t x = 0, columns; x < image_.size.width; x += columns) {
        columns = std::min(kStrip, image_.size.width - x);
        joinParts(x, y, columns, row + x, isJoined);
      }
    }
  }

 private:
  static constexpr int32_t kStrip = 512 / sizeof(Key);

  // Column -left of source row y, in which each pixel stands for the 2^level from it on.
  Key* levelRow(int64_t y, int32_t level) const {
    const int64_t count = element_.reach().rows(), place = (y % count + count) % count;
    return rows_ + static_cast<uint64_t>(place * element_.levels() + level) * length_;
  }

  void findRow(int64_t y) const {
    Key* const row = levelRow(y, 0);
    copyRow(y, row);
    const Key* from = row;
    auto count = static_cast<int64_t>(length_);
    for (int32_t level = 1; level < element_.levels(); ++level) {
      Key* __restrict const to = levelRow(y, level);
      const int64_t ahead = int64_t{1} << (level - 1);
      count -= ahead;
      for (int64_t x = 0; x < count; ++x) to[x] = Order::of(from[x], from[x + ahead]);
      from = to;
    }
  }

  void copyRow(int64_t y, Key* __restrict row) const {
    const T* const pixels = image_.row(y);
    if (!pixels) {
      std::fill_n(row, length_, missing_);
      return;
    }
    const int32_t left = element_.reach().left, right = element_.reach().right;
    const int64_t width = image_.size.width;
    const int64_t first = image_.isInMemory() ? -left : 0, end = image_.isInMemory() ? width + right : width;
    for (int64_t x = first; x < end; ++x) row[left + x] = PixelKey::of(pixels[x]);
    extendRow(row + left, width, left, right, image_.border, missing_);
  }

  const Key* partRow(const ChordPart& part, int32_t x, int32_t y) const {
    return levelRow(int64_t{y} + part.y, part.level) + element_.reach().left + x + part.x;
  }

  void joinParts(int32_t x, int32_t y, int32_t columns, T* __restrict dst, bool isJoined) const {
    Key joined[kStrip];
    std::fill_n(joined, columns, Order::template kNeutral<Key>);
    const ChordPart* part = element_.begin();
    for (; element_.end() - part >= 2; part += 2) {
      const Key *const one = partRow(part[0], x, y), *const two = partRow(part[1], x, y);
      for (int32_t i = 0; i < columns; ++i) joined[i] = Order::of(joined[i], Order::of(one[i], two[i]));
    }
    if (part != element_.end()) {
      const Key* const one = partRow(*part, x, y);
      for (int32_t i = 0; i < columns; ++i) joined[i] = Order::of(joined[i], one[i]);
    }
    if (isJoined) {
      for (int32_t i = 0; i < columns; ++i) dst[i] = PixelKey::pixel(Order::of(joined[i], static_cast<Key>(dst[i])));
    } else {
      for (int32_t i = 0; i < columns; ++i) dst[i] = PixelKey::pixel(joined[i]);
    }
  }

  const BorderedImage<T>& image_;
  const FlatElement& element_;
  Key* rows_;
  uint64_t length_;
  Key missing_;
};

}  // namespace dax
