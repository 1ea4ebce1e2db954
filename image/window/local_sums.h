// Sums of pixels and of their squares over windows of any size, one row after the other, with any border. Integers: exact
// running sums. Floats: suffixes and prefixes of blocks as large as the window (van Herk's scheme with sums in place of
// extremes), in double precision: nothing is subtracted, so a NaN or a large value counts in its own windows only. Blocks
// lie at multiples of the window from the region's corner, so results do not depend on which rows a call computes.
#pragma once

#include <algorithm>
#include <cstdint>
#include <type_traits>

#include "dax/status.h"
#include "frame/memory/work_buffer.h"
#include "frame/tiles.h"
#include "image/window/local_sums_rows.h"
#include "image/window/windowed_rows.h"

namespace dax {

// The most pixels whose sums fit 32 bits, and whose n Q - S^2 fits 64 bits, with pixels of up to 16 bits.
constexpr int64_t kSmallWindow = 65536;

// Types of the sums of columns and of windows. isLarge: windows of more than kSmallWindow pixels.
template <class T>
constexpr bool kSumsBlocks = std::is_floating_point_v<T> || std::is_same_v<T, FloatPair>;

template <class T, bool isLarge, bool isFloat = kSumsBlocks<T>>
struct LocalSumTypes {
  using Column = std::conditional_t<sizeof(T) <= 2, uint32_t, uint64_t>;
  using Squares = std::conditional_t<sizeof(T) == 1, uint32_t, uint64_t>;
  using Sum = std::conditional_t<isLarge, uint64_t, Column>;
  using SquareSum = std::conditional_t<isLarge, uint64_t, Squares>;
};
template <class T, bool isLarge>
struct LocalSumTypes<T, isLarge, true> {
  using Column = std::conditional_t<std::is_same_v<T, FloatPair>, DoublePair, double>;
  using Squares = Column;
  using Sum = Column;
  using SquareSum = Column;
};

// What one thread needs.
template <class T, bool isLarge>
struct LocalSumsBuffer {
  using Types = LocalSumTypes<T, isLarge>;
  static constexpr bool kIsFloat = kSumsBlocks<T>;

  LocalSumsBuffer(const WindowedRegion& region, bool withSquares) {
    const auto extended = static_cast<uint64_t>(region.extendedWidth()),
               width = static_cast<uint64_t>(region.size.width);
    const uint64_t lines = kIsFloat ? static_cast<uint64_t>(bandRows(region)) + 1 : 1;
    const uint64_t squares = withSquares ? 1 : 0;
    constant = layout.add<T>(width);
    counts = layout.add<uint32_t>(width);
    columns = layout.add<typename Types::Column>(lines * extended);
    columnSquares = layout.add<typename Types::Squares>(lines * extended * squares);
    sums = layout.add<typename Types::Sum>(width);
    squareSums = layout.add<typename Types::SquareSum>(width * squares);
  }

  // Floats: rows of a band, which are computed together.
  static int32_t bandRows(const WindowedRegion& region) {
    return kIsFloat ? std::min(region.rows(), region.size.height) : 1;
  }

  BufferLayout layout;
  BufferPiece<T> constant;       // a row of the border's value
  BufferPiece<uint32_t> counts;  // columns of the window in the image
  BufferPiece<typename Types::Column> columns;
  BufferPiece<typename Types::Squares> columnSquares;
  BufferPiece<typename Types::Sum> sums;
  BufferPiece<typename Types::SquareSum> squareSums;
};

template <class T, bool isLarge, bool withSquares>
class LocalSums {
 public:
  using Types = LocalSumTypes<T, isLarge>;

  LocalSums(const T* src, int32_t step, const WindowedRegion& region, double value, void* buffer)
      : region_(region),
        at_(region, withSquares),
        buffer_(buffer),
        rows_{src, step, region, at_.constant.in(buffer)},
        value_(borderPixel<T>(value)) {}

  // Tiles start at multiples of as many rows.
  static int32_t bandRows(const WindowedRegion& region) { return LocalSumsBuffer<T, isLarge>::bandRows(region); }

  // Readies the rows first..end - 1, which are then computed one after the other.
  void start(int32_t first, int32_t end) {
    first_ = first, end_ = end;
    std::fill_n(at_.constant.in(buffer_), region_.size.width, value_);
    if constexpr (!kSumsBlocks<T>) {
      const auto extended = static_cast<uint64_t>(region_.extendedWidth());
      const bool isConstant = region_.border == DAXI_BORDER_CONSTANT;
      const auto side = isConstant ? static_cast<uint64_t>(value_) : 0, rows = static_cast<uint64_t>(region_.rows());
      using Column = typename Types::Column;
      using Squares = typename Types::Squares;
      std::fill_n(columns(0), extended, static_cast<Column>(side * rows));
      if (withSquares) std::fill_n(squares(0), extended, static_cast<Squares>(side * side * rows));
    }
  }

  void compute(int32_t y) const {
    if constexpr (kSumsBlocks<T>) {
      const int32_t band = bandRows(region_), line = (y - first_) % band;
      if (line == 0) startBand(y, std::min(band, end_ - y));
      if (line > 0) addBelow(y, line);
      alongRow(line);
    } else {
      slideDown(y);
      alongRow(0);
    }
  }

  // Of the row that was computed last.
  const typename Types::Sum* sums() const { return at_.sums.in(buffer_); }
  const typename Types::SquareSum* squareSums() const { return at_.squareSums.in(buffer_); }

 private:
  typename Types::Column* columns(int32_t line) const {
    return at_.columns.in(buffer_) + static_cast<uint64_t>(line) * static_cast<uint64_t>(region_.extendedWidth());
  }
  typename Types::Squares* squares(int32_t line) const {
    return at_.columnSquares.in(buffer_) + static_cast<uint64_t>(line) * static_cast<uint64_t>(region_.extendedWidth());
  }

  // --- Integers ---

  void slideDown(int32_t y) const {
    const int32_t held = region_.firstHeld(), count = region_.heldWidth();
    auto* const sums = columns(0) + held;
    auto* const squareSums = withSquares ? squares(0) + held : nullptr;
    const int64_t before = region_.y.before, after = region_.y.after;
    const auto move = [&](const T* enter, const T* leave) {
      if (enter && leave) {
        portable::replaceRow(sums, squareSums, enter, leave, count);
      } else if (enter) {
        portable::includeRow(sums, squareSums, enter, count);
      } else if (leave) {
        portable::excludeRow(sums, squareSums, leave, count);
      }
    };
    if (y == first_) {
      std::fill_n(sums, count, 0);
      if (withSquares) std::fill_n(squareSums, count, 0);
      for (int64_t line = y - before; line <= y + after; ++line) move(rows_(line), nullptr);
    } else {
      move(rows_(y + after), rows_(y - 1 - before));
    }
  }

  // --- Floats ---

  // What window i of a band shares with the first one are the rows from i on, whose sums are suffixes.
  void startBand(int32_t first, int32_t count) const {
    const int64_t top = int64_t{first} - region_.y.before;
    const int32_t rows = region_.rows(), spare = bandRows(region_);
    clearLine(spare);
    for (int32_t i = rows - 1; i >= count; --i) joinLine(rows_(top + i), spare, spare);
    for (int32_t i = count - 1, below = spare; i >= 0; below = i--) joinLine(rows_(top + i), below, i);
    clearLine(spare);
  }

  // The rows below the first window are added as they come.
  void addBelow(int32_t y, int32_t line) const {
    const T* const row = rows_(int64_t{y} + region_.y.after);
    join(row, [&](auto of, auto value, auto term) { joinParts(of(bandRows(region_)), of(line), row, value, term); });
  }

  void clearLine(int32_t line) const {
    using Column = typename Types::Column;
    std::fill_n(columns(line), region_.extendedWidth(), Column{});
    if (withSquares) std::fill_n(squares(line), region_.extendedWidth(), Column{});
  }

  // Calls use(columns of a line, what a row adds beside the region, what a pixel adds) for sums, and for squares.
  template <class Use>
  void join(const T* row, Use use) const {
    using Column = typename Types::Column;
    const Column side = row && region_.border == DAXI_BORDER_CONSTANT ? wide(value_) : Column{};
    use([this](int32_t line) { return columns(line); }, side, [](const Column& v) { return v; });
    if (withSquares)
      use([this](int32_t line) { return squares(line); }, side * side, [](const Column& v) { return v * v; });
  }

  // Line `to` = line `from` and a row, which may be null.
  void joinLine(const T* row, int32_t from, int32_t to) const {
    const int32_t held = region_.firstHeld(), count = region_.heldWidth();
    join(row, [&](auto of, auto side, auto term) {
      const auto* const a = of(from);
      auto* const b = of(to);
      forSides([=](int32_t i) { b[i] = a[i] + side; });
      portable::joinRow(a + held, row, b + held, count, term);
    });
  }

  template <class Column, class Term>
  void joinParts(Column* prefix, Column* suffix, const T* row, Column side, Term term) const {
    const int32_t held = region_.firstHeld();
    forSides([=](int32_t i) {
      prefix[i] += side;
      suffix[i] += prefix[i];
    });
    portable::joinBoth(prefix + held, row, suffix + held, region_.heldWidth(), term);
  }

  // The columns of a line that rows do not hold.
  template <class Use>
  void forSides(Use use) const {
    for (int32_t i = 0; i < region_.firstHeld(); ++i) use(i);
    for (int32_t i = region_.firstHeld() + region_.heldWidth(); i < region_.extendedWidth(); ++i) use(i);
  }

  void alongRow(int32_t line) const {
    const int32_t window = region_.columns(), width = region_.size.width;
    region_.extend(columns(line));
    slideAlong(columns(line), window, at_.sums.in(buffer_), width);
    if constexpr (withSquares) {
      region_.extend(squares(line));
      slideAlong(squares(line), window, at_.squareSums.in(buffer_), width);
    }
  }

  WindowedRegion region_;
  LocalSumsBuffer<T, isLarge> at_;
  void* buffer_;
  WindowedRows<T> rows_;
  T value_;
  int32_t first_ = 0, end_ = 0;
};

// Pixels of windows: as many for all of a run, or fewer where windows end at the image.
struct SameCount {
  uint32_t n;
  uint32_t operator()(int32_t) const { return n; }
};
struct CountPerColumn {
  const uint32_t* columns;
  uint32_t rows;
  uint32_t operator()(int32_t x) const { return columns[x] * rows; }
};

// Calls use(first column, number of columns, count) for the runs of a row.
template <class Use>
void forCountedRuns(const WindowedRegion& region, int32_t y, const uint32_t* counts, Use use) {
  const int32_t width = region.size.width;
  const auto rows = static_cast<uint32_t>(region.rowsAt(y));
  const SameCount same = {rows * static_cast<uint32_t>(region.columns())};
  if (!region.isClipped()) return use(0, width, same);
  const int32_t left = std::min(region.x.before, width), right = std::max(left, width - region.x.after);
  use(0, left, CountPerColumn{counts, rows});
  use(left, right - left, same);
  use(right, width - right, CountPerColumn{counts + right, rows});
}

// n Q - S^2, which is n^2 times the variance.
inline double spreadOf(uint32_t n, uint32_t sum, uint32_t squares) {
  return static_cast<double>(static_cast<int64_t>(uint64_t{n} * squares - uint64_t{sum} * sum));
}
inline double spreadOf(uint32_t n, uint32_t sum, uint64_t squares) {
  // n squares in halves, since vectors multiply 32 bits: both factors of the upper one are below 2^16.
  const uint64_t upper = uint64_t{n * static_cast<uint32_t>(squares >> 32)} << 32;
  return static_cast<double>(upper + uint64_t{n} * static_cast<uint32_t>(squares) - uint64_t{sum} * sum);
}
inline double spreadOf(uint32_t n, uint64_t sum, uint64_t squares) {
  using Wide = unsigned __int128;
  return static_cast<double>(Wide{n} * squares - Wide{sum} * sum);
}
inline double spreadOf(uint32_t n, double sum, double squares) {
  const double spread = n * squares - sum * sum;
  return spread < 0 ? 0 : spread;
}

// Slices of a work buffer, one for each tile.
template <class T, bool isLarge>
struct LocalSumsSlices {
  LocalSumsSlices(const WindowedRegion& region, bool withSquares, uint32_t threads)
      : bytes(LocalSumsBuffer<T, isLarge>(region, withSquares).layout.total()),
        count(std::clamp<uint32_t>(threads, 1, static_cast<uint32_t>(region.size.height))) {}
  uint64_t bytes;
  uint32_t count;
};

// Calls use(first, end, own) for tiles of rows, on the pool where there is one; `own` is a tile's part of the buffer, of
// so many bytes. Sums of floats need tiles of whole bands.
template <class Use>
DaxStatus runWindowTiles(PoolThreads on, const WindowedRegion& region, int32_t bandRows, void* buffer, uint64_t bytes,
                         Use use) {
  const int32_t height = region.size.height;
  const auto run = [&](int32_t first, int32_t end, uint32_t slice) -> DaxStatus {
    const auto last = static_cast<int32_t>(std::min<int64_t>(int64_t{end} * bandRows, height));
    use(first * bandRows, last, static_cast<void*>(static_cast<char*>(buffer) + slice * bytes));
    return DAX_STS_OK;
  };
  const auto bands = static_cast<int32_t>((int64_t{height} + bandRows - 1) / bandRows);
  if (!hasPool(on.pool, on.threads)) return run(0, bands, 0);
  // A tile adds up the rows of its first window, which is to be little beside its own.
  return runTiles(on.pool, on.threads, bands, bandRows > 1 ? 1 : 1 + region.rows() / 4, run);
}

inline void countColumns(const WindowedRegion& region, uint32_t* counts) {
  for (int32_t x = 0; x < region.size.width; ++x) counts[x] = static_cast<uint32_t>(region.columnsAt(x));
}

// Calls use(y, sums, squares, counts) for all rows; `buffer` holds the slices.
template <class T, bool isLarge, bool withSquares, class Use>
DaxStatus runLocalSums(PoolThreads on, const T* src, int32_t step, const WindowedRegion& region, double value,
                       void* buffer, Use use) {
  using Sums = LocalSums<T, isLarge, withSquares>;
  const uint64_t bytes = LocalSumsSlices<T, isLarge>(region, withSquares, 1).bytes;
  return runWindowTiles(on, region, Sums::bandRows(region), buffer, bytes, [&](int32_t first, int32_t end, void* own) {
    uint32_t* const counts = LocalSumsBuffer<T, isLarge>(region, withSquares).counts.in(own);
    countColumns(region, counts);
    Sums sums(src, step, region, value, own);
    sums.start(first, end);
    for (int32_t y = first; y < end; ++y) {
      sums.compute(y);
      use(y, sums.sums(), sums.squareSums(), counts);
    }
  });
}

}  // namespace dax
