// Singular values by way of a bidiagonal matrix.
#pragma once

#include "optim/factor/view.h"

namespace dax {

// What jacobiSvd does, in less time, with errors of the order of 2^-53 of the largest value instead of each: reflections from both
// sides, then implicit QR steps with shifts, or with none where that keeps small values (Golub and Kahan 1965, Demmel and Kahan
// 1990). v may be without data too. At least kReflectionPanel rows; `work` of svdWork(m, n) doubles.
bool bidiagonalSvd(const Rows& a, double* values, const Rows& u, const Rows& v, double* work);

}  // namespace dax
