// Inverses of 2 x 2 to 4 x 4 by cofactors.
#pragma once

#include <cmath>

#include "optim/factor/view.h"

namespace dax {

// Adjugate, row by row, and determinant of a matrix of n <= 4 rows.
double adjugate(const Rows& a, double* adjugate);

// Whether the rows are far enough from dependent for the cofactors: |det| >= 2^-20 times the product of their norms, so that
// cancellation takes some 20 bits and no more.
bool isFarFromSingular(const Rows& a, double determinant);

}  // namespace dax
