// Singular values by one-sided Jacobi rotations.
#pragma once

#include "optim/factor/view.h"

namespace dax {

// A = U S V^T of a matrix with at least as many rows as columns, whose columns are the rows of `a` here, magnitudes below 1. It is
// overwritten. `values`, n of them, descending. Row i of `u` and of `v` is the singular vector i; u may be without data. False
// where the rotations did not end. `work` of svdWork(m, n) doubles.
//
// QR with column and row exchanges, then rotations of R's rows until all angles are right to the rounding (Drmac
// and Veselic 2008): of A = D1 B D2 with diagonals D1, D2 the relative error of each value is of the order of B's condition number
// times 2^-53, above 1e-140 of the largest; below 1e-150 of it they are 0.
bool jacobiSvd(const Rows& a, double* values, const Rows& u, const Rows& v, double* work);

inline int64_t svdWork(int64_t m, int64_t n) {
  return 2 * n * n + 5 * n + 2 * m + 2;
}

}  // namespace dax
