// Orthogonal factors by Householder reflections. Matrices are transposed: row j holds column j of A, which has `cols` elements.
#pragma once

#include "optim/factor/view.h"

namespace dax {

// A = Q R in place: of column j of R the elements above j stand before those of the reflection I - tau v v^T, whose v_j is 1; the
// diagonal is in `diagonal`. tau and diagonal have min(rows, cols) elements, `work` kReflectionPanel (rows + 2 kReflectionPanel).
constexpr int32_t kReflectionPanel = 32;
void factorQr(const Rows& a, double* tau, double* diagonal, double* work);

// A P = Q R: pivots[j] is the column of A that became column j, at each step the one with the longest rest, the first of equal
// ones. `work` of 2 rows. With `order` rows of A are exchanged too, so that each step begins with the largest element of its
// column, and order[i] is the row that became row i: errors stay in proportion to rows of whatever scale (Powell and Reid 1969).
void factorQrPivoted(const Rows& a, double* tau, double* diagonal, int32_t* pivots, int32_t* order, double* work);

// x <- Q^T x and x <- Q x for each row x of b, with the first `count` reflections.
void applyTransposed(const Rows& a, const double* tau, int32_t count, const Rows& b);
void applyReflections(const Rows& a, const double* tau, int32_t count, const Rows& b);

// The first q.rows columns of Q as rows of q.
void formOrthogonal(const Rows& a, const double* tau, int32_t count, const Rows& q);

// R^-1 x in place for x of n elements; R^-T x.
void solveR(const Rows& a, const double* diagonal, int32_t n, double* x);
void solveRTransposed(const Rows& a, const double* diagonal, int32_t n, double* x);

// How many of the diagonal's elements, which never grow, are above `tolerance` times the first.
int32_t rankOf(const double* diagonal, int32_t count, double tolerance);

// max(m, n) 2^-52, below which a share of the largest counts as nothing.
inline double rankTolerance(int32_t m, int32_t n) {
  return std::max(m, n) * 0x1p-52;
}

// A reflection that maps v to (beta, 0, ..., 0): stores its vector in v, with v[0] = 1, and returns beta; tau is 0 where
// nothing is to be reflected. Magnitudes about 1, as those of scaled matrices; what is below 2^-500 counts as 0.
double makeReflection(double* v, int32_t n, double* tau);

}  // namespace dax
