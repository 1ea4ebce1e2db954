// Symmetric eigenproblems.
#pragma once

#include "optim/factor/view.h"

namespace dax {

// Eigenvalues, ascending, of a symmetric matrix, which is overwritten; its magnitudes are below 1. Row i of `vectors` is the unit
// eigenvector i, the element of largest magnitude positive; without data there is none. `work` of 3 n doubles. False where the
// iteration did not end.
bool eigenSymmetric(const Rows& a, double* values, const Rows& vectors, double* work);

}  // namespace dax
