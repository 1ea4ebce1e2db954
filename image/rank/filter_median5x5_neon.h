// Rows of the 5 x 5 median, two at a time, in blocks of two vectors: even and odd columns are apart, so that the windows
// around an even column and the odd one after it share the sorted rows of four columns; two rows share the sorted four
// pixels between them.
#pragma once

#include "frame/dispatch.h"
#include "image/rank/filter_median3x3_neon.h"
#include "image/rank/filter_median5x5_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Sorted columns: rank k of every second column in the lanes of rank[k].
template <class T>
struct Columns5 {
  typename Lanes<T>::Vector rank[5];
};

// Even columns a and odd columns b, as the upper and the lower row of the result see them.
template <class T>
struct Block5 {
  Columns5<T> a[2], b[2];
};

template <class T>
Block5<T> loadBlock5(const T* const (&rows)[6], ptrdiff_t x) {
  using L = Lanes<T>;
  using Network = Median25<L, typename L::Vector>;
  typename L::Pair p[6];
  for (int i = 0; i < 6; ++i) p[i] = L::loadPair(rows[i] + x);
  Block5<T> block;
  const auto a = Network::sorted(p[1].val[0], p[2].val[0], p[3].val[0], p[4].val[0]);
  const auto b = Network::sorted(p[1].val[1], p[2].val[1], p[3].val[1], p[4].val[1]);
  for (int row = 0; row < 2; ++row) {
    Network::insert(a, p[5 * row].val[0], block.a[row].rank);
    Network::insert(b, p[5 * row].val[1], block.b[row].rank);
  }
  return block;
}

// Medians around the columns two to the left of a block, of which the first four lanes belong to the block before.
template <class T>
class Medians5 {
 public:
  using L = Lanes<T>;
  using Vector = typename L::Vector;
  using Network = Median25<L, Vector>;

  Medians5(const Block5<T>& before, const Block5<T>& block, int row) {
    addRow<0>(before, block, row), addRow<1>(before, block, row), addRow<2>(before, block, row);
    addRow<3>(before, block, row), addRow<4>(before, block, row);
  }

  void store(T* dst) { L::storePair(dst, {{even_.median(), odd_.median()}}); }

 private:
  template <int k>
  void addRow(const Block5<T>& before, const Block5<T>& block, int row) {
    const Vector a0 = block.a[row].rank[k], b0 = block.b[row].rank[k];
    const Vector aBefore = before.a[row].rank[k], bBefore = before.b[row].rank[k];
    const Vector a1 = L::shift(aBefore, a0), b1 = L::shift(bBefore, b0);
    const Vector a2 = L::template shift<2>(aBefore, a0), b2 = L::template shift<2>(bBefore, b0);
    const auto shared = Network::sorted(b2, a1, b1, a0);
    Network::template addRow<k>(shared, a2, even_);
    Network::template addRow<k>(shared, b0, odd_);
  }

  typename Network::Window even_, odd_;
};

// Columns 2..width - 3 of two rows of the result. The last block overlaps the one before it.
template <class T>
void medianBlocks5(const T* const (&rows)[6], T* upper, T* lower, int32_t width) {
  constexpr ptrdiff_t kBlock = 2 * Lanes<T>::kCount;
  const ptrdiff_t last = width - kBlock;
  // Of the first block only the columns from 2 on have their neighbours in it.
  Block5<T> before = loadBlock5(rows, 0);
  for (int row = 0; row < 2; ++row) {
    T medians[kBlock];
    Medians5<T>(before, before, row).store(medians);
    std::copy(medians + 4, medians + kBlock, (row ? lower : upper) + 2);
  }
  for (ptrdiff_t x = kBlock;; x += kBlock) {
    if (x > last) before = loadBlock5(rows, last - kBlock), x = last;
    const Block5<T> block = loadBlock5(rows, x);
    Medians5<T>(before, block, 0).store(upper + x - 2);
    Medians5<T>(before, block, 1).store(lower + x - 2);
    if (x == last) break;
    before = block;
  }
}

// Two rows of the result, from the six source rows around them.
template <class T>
void medianRowPair5(const T* const (&rows)[6], T* upper, T* lower, int32_t width) {
  if constexpr (kHasMedian<T>) {
    if (width >= 4 * Lanes<T>::kCount) {
      medianBlocks5(rows, upper, lower, width);
      for (const int32_t x : {0, width - 2}) portable::medianRowPair5(rows, upper, lower, x, x + 2, width);
      if (holdsNan(upper, width) || holdsNan(lower, width)) portable::medianRowPair5(rows, upper, lower, width);
      return;
    }
  }
  portable::medianRowPair5(rows, upper, lower, width);
}

}  // namespace dax::neon
#endif
