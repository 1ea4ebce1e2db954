// Rows of sums over windows.
#pragma once

#include <algorithm>
#include <cstdint>

#include "image/window/window_sums_neon.h"

namespace dax {

// Two images whose sums are wanted together: one vector holds both.
using FloatPair = float __attribute__((vector_size(8)));
using DoublePair = double __attribute__((vector_size(16)));

// Pixels as their sums hold them.
inline double wide(double v) {
  return v;
}
inline DoublePair wide(FloatPair v) {
  return __builtin_convertvector(v, DoublePair);
}

}  // namespace dax

namespace dax::portable {

// v^2 as the sums hold it; sums are modulo the size of their type.
template <class Squares, class T>
Squares squareOf(T v) {
  return static_cast<Squares>(static_cast<Squares>(v) * static_cast<Squares>(v));
}

template <class Column, class Squares, class T>
void includeRow(Column* __restrict sums, Squares* __restrict squares, const T* enter, int32_t n) {
  for (int32_t x = 0; x < n; ++x) sums[x] += enter[x];
  for (int32_t x = 0; squares && x < n; ++x) squares[x] += squareOf<Squares>(enter[x]);
}

template <class Column, class Squares, class T>
void excludeRow(Column* __restrict sums, Squares* __restrict squares, const T* leave, int32_t n) {
  for (int32_t x = 0; x < n; ++x) sums[x] -= leave[x];
  for (int32_t x = 0; squares && x < n; ++x) squares[x] -= squareOf<Squares>(leave[x]);
}

template <class Column, class Squares, class T>
void replaceRow(Column* __restrict sums, Squares* __restrict squares, const T* enter, const T* leave, int32_t n) {
  if (!squares) {
    for (int32_t x = 0; x < n; ++x) sums[x] += static_cast<Column>(enter[x]) - static_cast<Column>(leave[x]);
  } else if constexpr (sizeof(T) == 1) {
    // a^2 - b^2 = (a - b) (a + b), of factors that fit 16 bits.
    for (int32_t x = 0; x < n; ++x) {
      const auto difference = static_cast<int16_t>(enter[x] - leave[x]),
                 sum = static_cast<int16_t>(enter[x] + leave[x]);
      sums[x] += static_cast<Column>(difference);
      squares[x] += static_cast<Squares>(difference * sum);
    }
  } else {
    for (int32_t x = 0; x < n; ++x) {
      sums[x] += static_cast<Column>(enter[x]) - static_cast<Column>(leave[x]);
      squares[x] += squareOf<Squares>(enter[x]) - squareOf<Squares>(leave[x]);
    }
  }
}

template <class Column, class T, class Term>
void joinRow(const Column* from, const T* row, Column* to, int32_t n, Term term) {
  if (row) {
#pragma GCC unroll 4
    for (int32_t x = 0; x < n; ++x) to[x] = from[x] + term(wide(row[x]));
  } else if (to != from) {
    std::copy_n(from, n, to);
  }
}

// A row, which may be null, joins the prefix, and the prefix the suffix.
template <class Column, class T, class Term>
void joinBoth(Column* __restrict prefix, const T* row, Column* __restrict suffix, int32_t n, Term term) {
  if (row) {
#pragma GCC unroll 4
    for (int32_t x = 0; x < n; ++x) {
      const Column sum = prefix[x] + term(wide(row[x]));
      prefix[x] = sum;
      suffix[x] += sum;
    }
  } else {
    for (int32_t x = 0; x < n; ++x) suffix[x] += prefix[x];
  }
}

}  // namespace dax::portable

namespace dax {

// Sums of `window` columns from each of the first n on.
template <class Column, class Sum>
void slideAlong(const Column* columns, int32_t window, Sum* sums, int32_t n) {
  Sum sum = 0;
  for (int32_t i = 0; i < window; ++i) sum += columns[i];
  sums[0] = sum;
  for (int32_t x = 1; x < n; ++x) {
    sum += static_cast<Sum>(columns[x - 1 + window]) - columns[x - 1];
    sums[x] = sum;
  }
}

#if DAX_HAVE_NEON
struct PlainSums {
  uint32_t* sums;
  void block(int32_t x, const uint32x4x4_t& four) const { vst4q_u32(sums + x, four); }
  void pixel(int32_t x, uint32_t sum) const { sums[x] = sum; }
};

inline void slideAlong(const uint32_t* columns, int32_t window, uint32_t* sums, int32_t n) {
  uint32_t sum = 0;
  for (int32_t i = 0; i < window; ++i) sum += columns[i];
  sums[0] = sum;
  neon::slide(columns + window, columns, n - 1, sum, PlainSums{sums + 1});
}
#endif

// Of floats: each window is a suffix of a block of columns and a prefix of the next one. Columns become suffixes.
template <class Column>
void slideBlocks(Column* columns, int32_t window, Column* sums, int32_t n) {
  for (int32_t block = 0; block < n; block += window) {
    Column* const suffix = columns + block;
    Column sum = suffix[window - 1];
#pragma GCC unroll 4
    for (int32_t i = window - 2; i >= 0; --i) suffix[i] = sum = sum + suffix[i];
    const int32_t count = std::min(window, n - block);
    Column prefix{};
    sums[block] = suffix[0];
#pragma GCC unroll 4
    for (int32_t i = 1; i < count; ++i) {
      prefix += suffix[window + i - 1];
      sums[block + i] = suffix[i] + prefix;
    }
  }
}

inline void slideAlong(double* columns, int32_t window, double* sums, int32_t n) {
  slideBlocks(columns, window, sums, n);
}
inline void slideAlong(DoublePair* columns, int32_t window, DoublePair* sums, int32_t n) {
  slideBlocks(columns, window, sums, n);
}

}  // namespace dax
