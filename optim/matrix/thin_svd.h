// Singular values and vectors of the caller's matrix, of whatever shape.
#pragma once

#include "frame/check.h"
#include "optim/factor/bidiagonal_svd.h"
#include "optim/factor/jacobi_svd.h"

namespace dax {

// a = left^T diag(values) right 2^exponent: row i of `left` and of `right` is the singular vector i.
struct ThinSvd {
  int32_t count;  // the smaller side
  double* values;
  Rows left, right;
  int exponent;
};

// Columns up to which small values are found to their own digits, whatever is asked for.
constexpr int32_t kMaxJacobiSvd = 64;

// Of a's rows and columns, and `moreRows` rows of zeros below them. Vectors of a side that is not needed may be missing.
template <class T>
DaxStatus findThinSvd(MatrixIn<T> a, int32_t moreRows, bool needsLeft, bool needsRight, WorkSpace& work, ThinSvd& svd,
                      bool isFast = false) {
  const int32_t rows = a.rows + moreRows;
  const bool isWide = rows < a.cols;
  svd.count = std::min(rows, a.cols);
  const int32_t other = std::max(rows, a.cols);
  Magnitude magnitude;
  magnitude.add(a);
  DAX_REQUIRE(magnitude.isFinite(), DAX_STS_DATA_RANGE);
  svd.exponent = magnitude.exponent();
  const Rows copy = work.take(svd.count, other), wide = work.take(svd.count, other),
             narrow = work.take(svd.count, svd.count);
  svd.values = work.take(svd.count);
  const PowerOfTwo scale(-svd.exponent);
  if (isWide) {
    loadRows(a, scale, copy);
  } else {
    for (int32_t j = 0; j < a.cols; ++j) std::fill(copy.row(j) + a.rows, copy.row(j) + rows, 0.0);
    loadColumns(a, scale, copy);
  }
  // The vectors of the longer side cost the most.
  const bool needsWide = isWide ? needsRight : needsLeft;
  const Rows none{nullptr, 0, 0, 0};
  double* const rest = work.take(0);
  const bool isFound =
      isFast && svd.count > kMaxJacobiSvd
          ? bidiagonalSvd(copy, svd.values, needsWide ? wide : none, needsLeft || needsRight ? narrow : none, rest)
          : jacobiSvd(copy, svd.values, needsWide ? wide : none, narrow, rest);
  DAX_REQUIRE(isFound, DAX_STS_FAILURE);
  svd.left = isWide ? narrow : wide, svd.right = isWide ? wide : narrow;
  return DAX_STS_OK;
}

// How many values are above max(m, n) 2^-52 of the first.
inline int32_t rankOf(const ThinSvd& svd, int32_t m, int32_t n) {
  int32_t rank = 0;
  while (rank < svd.count && svd.values[rank] > std::max(m, n) * 0x1p-52 * svd.values[0]) ++rank;
  return rank;
}

}  // namespace dax
