// What the transforms of pictures share: the tables of a plan, as its block holds them, and the work buffer.
#pragma once

#include <algorithm>
#include <cstdint>

#include "frame/memory/model_block.h"
#include "frame/memory/work_buffer.h"
#include "frame/slices.h"
#include "image/transform/dft_line.h"
#include "image/transform/dft_vector.h"

namespace dax {

constexpr uint32_t kDftTiles = 8;

enum class DftKind { fourier, cosine };

// A long picture of one row, as columns and rows of a matrix of `first` rows and `second` columns (Bailey, FFTs in external
// or hierarchical memory, 1990): then all lanes have a line of their own.
template <class T>
struct DftSplit {
  int32_t first = 0, second = 0;
  const T *firstTwiddles = nullptr, *secondTwiddles = nullptr;
  const DaxComplex64f* turns = nullptr;  // e^(-2 pi i k / (first second)): 2^bits of them, then every 2^bits-th one
  int bits = 0;
};

template <class T>
struct DftPlan {
  DaxiSize size;
  DftLine<T> along[2];  // rows, columns
  DftSplit<T> split;    // of rows; first is 0 where they are not split
  const T* cosines[2];  // pairs cos, sin of pi k / 2n; of cosine transforms
  bool isSplit() const { return split.first > 0; }
};

// The number of rows that a line of this length is split into, 0 for none.
int32_t splitOf(int32_t length);

template <class T>
DaxStatus planSize(DftKind kind, DaxiSize size, uint64_t* bytes);
template <class T>
DaxStatus makePlan(DftKind kind, DaxiSize size, void* memory);

// 0x10000019 for what is no plan of this kind and type, and 0x10000020 of another version. No contents can hurt the
// transforms.
template <class T>
DaxStatus openPlan(DftKind kind, const void* memory, uint64_t bytes, DftPlan<T>& plan);

// Two arrays of points for each tile, and complex numbers.
template <class T>
struct DftBuffer {
  DftBuffer(DaxiSize size, DftKind kind) {
    const int32_t rows = stagedLength(size.width);
    const int32_t split = kind == DftKind::fourier && size.height == 1 ? splitOf(rows) : 0;
    const int32_t across = split ? rows / split : rows, down = split ? split : stagedLength(size.height);
    points = static_cast<uint64_t>(std::max(across, down));
    const int32_t strips =
        split ? stripsOf(across, down) : std::max(stripsOf(size.height, size.width), stripsOf(size.width, size.height));
    tiles = static_cast<uint32_t>(std::min<int32_t>(kDftTiles, strips));
    lines = layout.add<T>(2 * points * kDftPoint<T> * tiles);
    const uint64_t halves = pixelsOf(halfSpectrum(size)), rowNumbers = 2 * static_cast<uint64_t>(rows);
    numbers = layout.add<ComplexOf<T>>(kind == DftKind::cosine ? 0 : split ? rowNumbers : halves);
  }
  BufferLayout layout;
  uint64_t points;
  uint32_t tiles;
  BufferPiece<T> lines;
  BufferPiece<ComplexOf<T>> numbers;

 private:
  // Lines of one point leave nothing to share.
  static int32_t stripsOf(int32_t lineCount, int32_t n) { return n > 1 ? lineCount / kDftLines<T> + 1 : 1; }
};

template <class T>
class DftWork {
 public:
  DftWork(PoolThreads on, DftKind kind, DaxiSize size, void* buffer) : on_(on), at_(size, kind), buffer_(buffer) {}

  ComplexOf<T>* numbers() const { return at_.numbers.in(buffer_); }

  // Calls body(first, count, x, y) for every `perStrip` of `total` rows or columns; x and y are arrays of points.
  template <class Body>
  DaxStatus strips(int32_t total, int32_t perStrip, const Body& body) const {
    return runSlices(on_, at_.tiles, (total - 1) / perStrip + 1, 1, [&](int32_t first, int32_t end, uint32_t tile) {
      T* const x = at_.lines.in(buffer_) + 2 * at_.points * kDftPoint<T> * tile;
      T* const y = x + at_.points * kDftPoint<T>;
      for (int32_t i = first; i < end; ++i) body(i * perStrip, std::min(perStrip, total - i * perStrip), x, y);
    });
  }

 private:
  PoolThreads on_;
  DftBuffer<T> at_;
  void* buffer_;
};

}  // namespace dax
