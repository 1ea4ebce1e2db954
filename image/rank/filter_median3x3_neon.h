// Rows of the 3 x 3 median, two at a time, in blocks of two vectors. Even and odd columns are in separate vectors, so
// that an odd column and the even one after it share the comparisons of the pair; two result rows share those of the
// two source rows between them.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <type_traits>

#include "frame/dispatch.h"
#include "frame/lanes.h"
#include "image/rank/filter_median3x3_portable.h"

#if DAX_HAVE_NEON
namespace dax::neon {

// Types with vector rows: there are no minima of 64-bit lanes. AArch64 minima of floats order -0 before +0, and a NaN
// gives a NaN in every output whose window it lies in. Elsewhere they have other rules, and the portable rows are as
// fast.
template <class T>
constexpr bool kHasMedian = std::is_integral_v<T>;
#if defined(__aarch64__)
template <>
inline constexpr bool kHasMedian<float> = true;
#endif

// Whether a row of the result must be computed again, in the order of the keys.
template <class T>
bool holdsNan(const T*, int32_t) {
  return false;
}

inline bool holdsNan(const float* row, int32_t width) {
  float32x4_t largest = vdupq_n_f32(row[width - 1]);
  for (int32_t x = 0; x <= width - 4; x += 4) largest = vmaxq_f32(largest, vld1q_f32(row + x));
  for (int32_t x = width & ~3; x < width; ++x) largest = vmaxq_f32(largest, vdupq_n_f32(row[x]));
  return std::isnan(vmaxvq_f32(largest));
}

// Columns in ascending order of their three pixels, lane by lane.
template <class T>
struct SortedColumns {
  using L = Lanes<T>;
  using Vector = typename L::Vector;
  Vector low, mid, high;

  SortedColumns shiftedIn(const SortedColumns& before) const {
    return {L::shift(before.low, low), L::shift(before.mid, mid), L::shift(before.high, high)};
  }
};

// Columns of four pixels as two adjacent result rows use them: without the last pixel, without the first.
template <class T>
struct ColumnPair {
  SortedColumns<T> upper, lower;
};

template <class T, class Vector>
ColumnPair<T> sortColumns(Vector p0, Vector p1, Vector p2, Vector p3) {
  using L = Lanes<T>;
  const Vector low = L::min(p1, p2), high = L::max(p1, p2);
  const auto insert = [&](Vector p) -> SortedColumns<T> {
    return {L::min(low, p), L::min(high, L::max(low, p)), L::max(high, p)};
  };
  return {insert(p0), insert(p3)};
}

template <class T>
struct FourRows {
  const T *row0, *row1, *row2, *row3;
};

// Column x in every lane.
template <class T>
ColumnPair<T> columnEverywhere(const FourRows<T>& rows, ptrdiff_t x) {
  using L = Lanes<T>;
  return sortColumns<T>(L::all(rows.row0[x]), L::all(rows.row1[x]), L::all(rows.row2[x]), L::all(rows.row3[x]));
}

// Alternate columns a0 b0 a1 b1 ...
template <class T>
struct ColumnBlock {
  ColumnPair<T> a, b;
};

template <class T>
ColumnBlock<T> loadBlock(const FourRows<T>& rows, ptrdiff_t x) {
  using L = Lanes<T>;
  const auto p0 = L::loadPair(rows.row0 + x), p1 = L::loadPair(rows.row1 + x);
  const auto p2 = L::loadPair(rows.row2 + x), p3 = L::loadPair(rows.row3 + x);
  return {sortColumns<T>(p0.val[0], p1.val[0], p2.val[0], p3.val[0]),
          sortColumns<T>(p0.val[1], p1.val[1], p2.val[1], p3.val[1])};
}

// Writes the medians around the columns before a0, a0, b0, a1 ... up to the last a: the first needs the two columns
// before a0, which are the last of the block before.
template <class T>
void storeMedians(const SortedColumns<T>& aBefore, const SortedColumns<T>& bBefore, const SortedColumns<T>& a,
                  const SortedColumns<T>& b, T* dst) {
  using L = Lanes<T>;
  const SortedColumns<T> outer = a.shiftedIn(aBefore), inner = b.shiftedIn(bBefore);
  const auto maxLow = L::max(inner.low, a.low);
  const auto minHigh = L::min(inner.high, a.high);
  const auto lowMid = L::min(inner.mid, a.mid), highMid = L::max(inner.mid, a.mid);
  const auto medianWith = [&](const SortedColumns<T>& third) {
    const auto low = L::max(maxLow, third.low);
    const auto mid = L::max(lowMid, L::min(highMid, third.mid));
    const auto high = L::min(minHigh, third.high);
    return L::max(L::min(low, mid), L::min(L::max(low, mid), high));
  };
  L::storePair(dst, {{medianWith(outer), medianWith(b)}});
}

// Two rows of the result from the four source rows around them. The last block of a row overlaps the one before it.
template <class T>
void medianRowPair(const FourRows<T>& rows, T* upper, T* lower, int32_t width) {
  constexpr ptrdiff_t kBlock = 2 * Lanes<T>::kCount;
  int32_t done = 0;
  if (width > kBlock) {
    const ptrdiff_t last = width - kBlock;
    ColumnBlock<T> before{columnEverywhere(rows, 0), columnEverywhere(rows, 0)};
    for (ptrdiff_t x = 1;;) {
      const ColumnBlock<T> block = loadBlock(rows, x);
      storeMedians(before.a.upper, before.b.upper, block.a.upper, block.b.upper, upper + x - 1);
      storeMedians(before.a.lower, before.b.lower, block.a.lower, block.b.lower, lower + x - 1);
      if (x == last) break;
      if (x + kBlock <= last) {
        x += kBlock;
        before = block;
      } else {
        x = last;
        before = {columnEverywhere(rows, x - 2), columnEverywhere(rows, x - 1)};
      }
    }
    done = width - 1;
  }
  portable::medianRow<T>({rows.row0, rows.row1, rows.row2}, upper, done, width);
  portable::medianRow<T>({rows.row1, rows.row2, rows.row3}, lower, done, width);
}

// Rows y and y + 1.
template <class T>
void medianRowPair(const MedianImages<T>& images, int32_t y) {
  medianRowPair<T>({images.srcRow(y - 1), images.srcRow(y), images.srcRow(y + 1), images.srcRow(y + 2)},
                   images.dstRow(y), images.dstRow(y + 1), images.size.width);
  for (int32_t i = y; i < y + 2; ++i) {
    if (holdsNan(images.dstRow(i), images.size.width)) portable::medianRow(images, i);
  }
}

template <class T>
void medianRows(const MedianImages<T>& images, int32_t first, int32_t end) {
  if constexpr (kHasMedian<T>) {
    if (end - first >= 2) {
      for (int32_t y = first; y < end; y += 2)
        medianRowPair(images, std::min(y, end - 2));  // the last pairs may overlap
      return;
    }
  }
  portable::medianRows(images, first, end);
}

}  // namespace dax::neon
#endif
