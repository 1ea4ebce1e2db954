// Products and transposes of sparse matrices inside the library.
#pragma once

#include "prmt/msp.h"

namespace dax {

// result = matrix vector, result = matrix^T vector.
void multiply(const PrmtMsp& matrix, const double* vector, double* result);
void multiplyTransposed(const PrmtMsp& matrix, const double* vector, double* result);

// transposed = matrix^T with ascending row numbers; the capacity suffices.
void transpose(const PrmtMsp& matrix, PrmtMsp& transposed);

}  // namespace dax
