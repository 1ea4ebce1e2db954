// Factors of symmetric matrices.
#pragma once

#include "optim/factor/view.h"

namespace dax {

// L L^T of a positive definite matrix in place. Element (i, j) of L, i >= j, lies in row j, column i: rows are columns of L.
// Before, rows and columns are scaled by powers of two, so that the diagonal lies in [0.5, 2): false at an element of it that is
// not above 0, and at a pivot below 2^-52. `exponents` of n integers.
bool factorDefinite(const Rows& l, int32_t* exponents);

// P A P^T = L D L^T in place, with pivots of one row or two (Bunch and Kaufman 1977): L below the diagonal, of ones on it; D's
// diagonal; `beside` has what stands beside it in a block of two, at its first row, else 0. pivots[i] is the row of A that became
// row i. Magnitudes of A are below 1. A pivot that is 0 leaves zeros in L.
void factorIndefinite(const Rows& a, double* beside, int32_t* pivots);

}  // namespace dax
