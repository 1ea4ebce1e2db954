// Eigenvalues of general matrices.
#pragma once

#include "optim/factor/view.h"

namespace dax {

// Eigenvalues of a square matrix, which is overwritten: real parts, and imaginary ones, of pairs the positive one first; not
// sorted. Balanced by powers of two (Parlett and Reinsch 1969), reduced by reflections, then Francis' double-shift QR. False where
// that did not end. `work` of 2 a.rows doubles.
bool eigenGeneral(const Rows& a, double* real, double* imaginary, double* work);

}  // namespace dax
