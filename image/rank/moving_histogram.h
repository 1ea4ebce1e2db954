// Ranks of 16-bit and float pixels by one histogram of the window, which moves by a column in and a column out: forth
// along one row and back along the next (Huang, Yang and Tang, A fast two-dimensional median filtering algorithm, IEEE
// Transactions on Acoustics, Speech and Signal Processing 27, 1979). Each bin of a tier stands for 16 of the tier below,
// so that a search looks at few of them. Floats are replaced by their places in the order of all pixels of a tile.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "frame/memory/work_buffer.h"
#include "image/rank/rank_filter.h"

namespace dax {

// The number of tiers that 2^bits values need, and of bins of the tier `tier`, 0 the coarsest.
template <int32_t tierCount>
class TieredHistogram {
 public:
  static uint64_t bins(uint64_t values) {
    uint64_t sum = 0;
    for (int32_t tier = 0; tier < tierCount; ++tier) sum += binsOf(tier, values);
    return sum;
  }

  TieredHistogram(uint16_t* memory, uint64_t values) {
    std::fill_n(memory, bins(values), uint16_t{0});
    for (int32_t tier = 0; tier < tierCount; ++tier) {
      tiers_[tier] = memory;
      memory += binsOf(tier, values);
    }
  }

  void add(uint32_t value) {
    for (int32_t tier = 0; tier < tierCount; ++tier) ++tiers_[tier][value >> shiftOf(tier)];
  }
  void remove(uint32_t value) {
    for (int32_t tier = 0; tier < tierCount; ++tier) --tiers_[tier][value >> shiftOf(tier)];
  }

  // The value of that rank, below the number of values that it holds.
  uint32_t find(int32_t rank) const {
    uint32_t bin = 0;
    for (int32_t tier = 0; tier < tierCount; ++tier) {
      bin *= 16;
      while (rank >= tiers_[tier][bin]) rank -= tiers_[tier][bin++];
    }
    return bin;
  }

 private:
  static constexpr int32_t shiftOf(int32_t tier) { return 4 * (tierCount - 1 - tier); }
  static uint64_t binsOf(int32_t tier, uint64_t values) { return ((values - 1) >> shiftOf(tier)) + 1; }

  uint16_t* tiers_[tierCount];
};

// Tiles of an image with the pixels that their windows reach, as numbers of the same order.
template <class T>
struct TileBuffer {
  static constexpr bool kSorts = sizeof(T) > 2;
  static constexpr int32_t kTile = 128;
  static constexpr int32_t kTiers = kSorts ? 5 : 4;
  using Level = std::conditional_t<kSorts, uint32_t, uint16_t>;
  using Histogram = TieredHistogram<kTiers>;

  TileBuffer(DaxiSize size, DaxiSize window)
      : pixels(side(size.width, window.width) * side(size.height, window.height)),
        levels(layout.add<Level>(pixels)),
        sorted(layout.add<uint64_t>(kSorts ? pixels : 0)),
        bins(layout.add<uint16_t>(Histogram::bins(values()))) {}
  uint64_t values() const { return kSorts ? pixels : uint64_t{1} << 16; }

  uint64_t pixels;
  BufferLayout layout;
  BufferPiece<Level> levels;
  BufferPiece<uint64_t> sorted;
  BufferPiece<uint16_t> bins;

 private:
  static uint64_t side(int32_t length, int32_t window) {
    return static_cast<uint64_t>(std::min(length, kTile)) + static_cast<uint64_t>(window) - 1;
  }
};

template <class T>
class MovingHistogram {
 public:
  MovingHistogram(const RankFilter<T>& filter, void* buffer)
      : filter_(filter),
        at_(filter.size, filter.window),
        levels_(at_.levels.in(buffer)),
        sorted_(at_.sorted.in(buffer)),
        bins_(at_.bins.in(buffer)) {}

  void run(const DaxiRect& part) {
    constexpr int32_t kTile = Buffer::kTile;
    for (int32_t y = 0; y < part.height; y += std::min(kTile, part.height - y)) {
      for (int32_t x = 0; x < part.width; x += std::min(kTile, part.width - x)) {
        runTile({part.x + x, part.y + y, std::min(kTile, part.width - x), std::min(kTile, part.height - y)});
      }
    }
  }

 private:
  using Buffer = TileBuffer<T>;
  using Level = typename Buffer::Level;
  using Key = typename OrderKey<T>::Key;
  using Bits = std::make_unsigned_t<Key>;
  // Added to a signed key it makes an unsigned number of the same order.
  static constexpr Bits kLowest = static_cast<Bits>(std::numeric_limits<Key>::lowest());

  void runTile(const DaxiRect& tile) {
    const int32_t right = tile.x + tile.width - 1, bottom = tile.y + tile.height - 1;
    columns_ = {filter_.across(tile.x).first, filter_.across(right).end};
    rows_ = {filter_.down(tile.y).first, filter_.down(bottom).end};
    readLevels();
    typename Buffer::Histogram histogram(bins_, at_.values());
    IndexRange columns = filter_.across(tile.x), rows{rows_.first, rows_.first};
    int32_t x = tile.x, step = 1;
    for (int32_t y = tile.y; y <= bottom; ++y, step = -step) {
      moveDown(histogram, rows, filter_.down(y), columns);
      for (int32_t i = 0;; x += step) {
        filter_.dst[ptrdiff_t{y} * filter_.dstStep + x] = pixelOf(histogram.find(rankIn(rows, columns)));
        if (++i == tile.width) break;
        moveAcross(histogram, columns, filter_.across(x + step), rows);
      }
    }
  }

  int32_t rankIn(IndexRange rows, IndexRange columns) const {
    return filter_.clips() ? filter_.rankOf(rows.count() * columns.count()) : filter_.rank;
  }

  void moveDown(typename Buffer::Histogram& histogram, IndexRange& rows, IndexRange to, IndexRange columns) const {
    const auto each = [&](int32_t y, auto change) {
      const Level* const row = levelsOf(y);
      for (int32_t x = columns.first; x < columns.end; ++x) change(row[x - columns_.first]);
    };
    slideWindow(
        rows, to, [&](int32_t y) { each(y, [&](Level v) { histogram.remove(v); }); },
        [&](int32_t y) { each(y, [&](Level v) { histogram.add(v); }); });
    rows = to;
  }

  void moveAcross(typename Buffer::Histogram& histogram, IndexRange& columns, IndexRange to, IndexRange rows) const {
    const auto each = [&](int32_t x, auto change) {
      const Level* level = levelsOf(rows.first) + (x - columns_.first);
      for (int32_t i = rows.count(); i > 0; --i, level += columns_.count()) change(*level);
    };
    slideWindow(
        columns, to, [&](int32_t x) { each(x, [&](Level v) { histogram.remove(v); }); },
        [&](int32_t x) { each(x, [&](Level v) { histogram.add(v); }); });
    columns = to;
  }

  Level* levelsOf(int32_t y) const { return levels_ + ptrdiff_t{y - rows_.first} * columns_.count(); }

  void readLevels() const {
    Key line[Buffer::kTile + 254];
    uint64_t count = 0;
    for (int32_t y = rows_.first; y < rows_.end; ++y) {
      filter_.readRow(y, columns_.first, columns_.count(), line);
      for (int32_t i = 0; i < columns_.count(); ++i, ++count) {
        const auto bits = static_cast<Bits>(static_cast<Bits>(line[i]) ^ kLowest);
        if constexpr (Buffer::kSorts) {
          sorted_[count] = uint64_t{bits} << 32 | count;
        } else {
          levels_[count] = bits;
        }
      }
    }
    if constexpr (Buffer::kSorts) {
      std::sort(sorted_, sorted_ + count);
      for (uint64_t i = 0; i < count; ++i) levels_[static_cast<uint32_t>(sorted_[i])] = static_cast<Level>(i);
    }
  }

  T pixelOf(uint32_t level) const {
    const auto bits = static_cast<Bits>(Buffer::kSorts ? sorted_[level] >> 32 : level);
    return OrderKey<T>::pixel(static_cast<Key>(static_cast<Bits>(bits ^ kLowest)));
  }

  const RankFilter<T>& filter_;
  Buffer at_;
  Level* levels_;
  uint64_t* sorted_;
  uint16_t* bins_;
  IndexRange columns_{}, rows_{};  // of the tile and what its windows reach
};

}  // namespace dax
