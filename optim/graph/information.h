// Square roots of information matrices.
#pragma once

#include <cstdint>

namespace dax {

// Root W of an information matrix of size n, given by the upper triangle by rows: W^T W = Omega, from its eigenvalues;
// those negative by rounding count as 0. False where the matrix has a really negative one.
bool informationRoot(const double* upper, int32_t n, double* root);

// The rank of what informationRoot() made.
int32_t rankOfRoot(const double* root, int32_t n);

}  // namespace dax
