// Rows of the 3 x 3 median, two at a time, in blocks of two vectors. Even and odd columns are apart, so that an odd
// column and the even one after it share the comparisons of the pair; two rows share those of the pair of rows between.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>

#include "frame/simd.h"
#include "image/rank/filter_median3x3_portable.h"

namespace dax::neon {

// Vectors of keys (see MedianKey) of one type of pixels.
template <class T>
struct MedianLanes;

#define DAX_MEDIAN_LANES(T, VECTOR, PAIR, SUFFIX)                                                  \
  template <>                                                                                      \
  struct MedianLanes<T> {                                                                          \
    using Vector = VECTOR;                                                                         \
    static constexpr int kCount = 16 / sizeof(T);                                                  \
    static PAIR load(const T* from) { return vld2q_##SUFFIX(from); }                               \
    static void store(T* to, Vector even, Vector odd) { vst2q_##SUFFIX(to, (PAIR{{even, odd}})); } \
    static Vector all(const T* from) { return vld1q_dup_##SUFFIX(from); }                          \
    static Vector min(Vector a, Vector b) { return vminq_##SUFFIX(a, b); }                         \
    static Vector max(Vector a, Vector b) { return vmaxq_##SUFFIX(a, b); }                         \
    static Vector shift(Vector before, Vector v) { return vextq_##SUFFIX(before, v, kCount - 1); } \
  };
DAX_MEDIAN_LANES(uint8_t, uint8x16_t, uint8x16x2_t, u8)
DAX_MEDIAN_LANES(uint16_t, uint16x8_t, uint16x8x2_t, u16)
DAX_MEDIAN_LANES(int16_t, int16x8_t, int16x8x2_t, s16)

// Whether a row of the result is to be done again, in the order of the keys.
template <class T>
bool holdsNan(const T*, int32_t) {
  return false;
}

#if defined(__aarch64__)
// The instructions order -0 before +0. What they make of a NaN is a NaN in every output that it belongs to. (Elsewhere
// minima of floats have other rules, and the portable rows are as fast.)
DAX_MEDIAN_LANES(float, float32x4_t, float32x4x2_t, f32)

inline bool holdsNan(const float* row, int32_t width) {
  float32x4_t greatest = vdupq_n_f32(row[width - 1]);
  for (int32_t x = 0; x <= width - 4; x += 4) greatest = vmaxq_f32(greatest, vld1q_f32(row + x));
  for (int32_t x = width & ~3; x < width; ++x) greatest = vmaxq_f32(greatest, vdupq_n_f32(row[x]));
  return std::isnan(vmaxvq_f32(greatest));
}
#endif
#undef DAX_MEDIAN_LANES

// Types with a twin. There are no minima of 64-bit lanes.
template <class T>
constexpr bool kHasMedian = requires {
  MedianLanes<T>::kCount;
};

// Columns in ascending order of their three pixels, lane by lane.
template <class T>
struct SortedColumns {
  using Lanes = MedianLanes<T>;
  using Vector = typename Lanes::Vector;
  Vector low, mid, high;

  SortedColumns shiftedIn(const SortedColumns& before) const {
    return {Lanes::shift(before.low, low), Lanes::shift(before.mid, mid), Lanes::shift(before.high, high)};
  }
};

// The same columns as two adjacent rows of the result see them: without the last, without the first of four pixels.
template <class T>
struct ColumnPair {
  SortedColumns<T> upper, lower;
};

template <class T, class Vector>
ColumnPair<T> sortColumns(Vector p0, Vector p1, Vector p2, Vector p3) {
  using Lanes = MedianLanes<T>;
  const Vector low = Lanes::min(p1, p2), high = Lanes::max(p1, p2);
  const auto insert = [&](Vector p) -> SortedColumns<T> {
    return {Lanes::min(low, p), Lanes::min(high, Lanes::max(low, p)), Lanes::max(high, p)};
  };
  return {insert(p0), insert(p3)};
}

template <class T>
struct FourRows {
  const T *row0, *row1, *row2, *row3;
};

// Column x in all lanes.
template <class T>
ColumnPair<T> columnEverywhere(const FourRows<T>& rows, ptrdiff_t x) {
  using Lanes = MedianLanes<T>;
  return sortColumns<T>(Lanes::all(rows.row0 + x), Lanes::all(rows.row1 + x), Lanes::all(rows.row2 + x),
                        Lanes::all(rows.row3 + x));
}

// Alternate columns a0 b0 a1 b1 ...
template <class T>
struct ColumnBlock {
  ColumnPair<T> a, b;
};

template <class T>
ColumnBlock<T> loadBlock(const FourRows<T>& rows, ptrdiff_t x) {
  using Lanes = MedianLanes<T>;
  const auto p0 = Lanes::load(rows.row0 + x), p1 = Lanes::load(rows.row1 + x);
  const auto p2 = Lanes::load(rows.row2 + x), p3 = Lanes::load(rows.row3 + x);
  return {sortColumns<T>(p0.val[0], p1.val[0], p2.val[0], p3.val[0]),
          sortColumns<T>(p0.val[1], p1.val[1], p2.val[1], p3.val[1])};
}

// Writes the medians around the columns before a0, a0, b0, a1 ... up to the last a: the first needs the two columns
// before a0, which are the last of the block before.
template <class T>
void storeMedians(const SortedColumns<T>& aBefore, const SortedColumns<T>& bBefore, const SortedColumns<T>& a,
                  const SortedColumns<T>& b, T* dst) {
  using Lanes = MedianLanes<T>;
  const SortedColumns<T> outer = a.shiftedIn(aBefore), inner = b.shiftedIn(bBefore);
  const auto maxLow = Lanes::max(inner.low, a.low);
  const auto minHigh = Lanes::min(inner.high, a.high);
  const auto lowMid = Lanes::min(inner.mid, a.mid), highMid = Lanes::max(inner.mid, a.mid);
  const auto medianWith = [&](const SortedColumns<T>& third) {
    const auto low = Lanes::max(maxLow, third.low);
    const auto mid = Lanes::max(lowMid, Lanes::min(highMid, third.mid));
    const auto high = Lanes::min(minHigh, third.high);
    return Lanes::max(Lanes::min(low, mid), Lanes::min(Lanes::max(low, mid), high));
  };
  Lanes::store(dst, medianWith(outer), medianWith(b));
}

// Two rows of the result from the four source rows around them. The last block of a row overlaps the one before it.
template <class T>
void medianRowPair(const FourRows<T>& rows, T* upper, T* lower, int32_t width) {
  constexpr ptrdiff_t kBlock = 2 * MedianLanes<T>::kCount;
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

}  // namespace dax::neon
