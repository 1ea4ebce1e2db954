// Gaussian elimination with row exchanges.
#pragma once

#include "optim/factor/view.h"

namespace dax {

// P A = L U in place: L below the diagonal, of ones on it, U from there on. pivots[i] is the row of A that became row i. False
// at a pivot that is exactly 0; what lies right of it is not eliminated then.
bool factorLu(const Rows& a, int32_t* pivots);

// b <- U^-1 L^-1 b, and b <- L^-T U^-T b, for k columns of right-hand sides; rows of b are not exchanged.
void solveLu(const Rows& lu, const Rows& b);
void solveLuTransposed(const Rows& lu, double* b);

// 1 / (|A| |A^-1|) in the 1-norm, with |A| known; |A^-1| from below by Higham's estimate (1988), `work` of 2 n doubles.
double reciprocalCondition(const Rows& lu, double norm, double* work);

// The largest sum of magnitudes of a column; `sums` of a.cols doubles.
double norm1(const Rows& a, double* sums);

}  // namespace dax
