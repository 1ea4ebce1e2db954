// Dense kernels. Matrices are column-major, with `ld` doubles from one column to the next.
#pragma once

#include <cfloat>
#include <cstddef>
#include <cstdint>

namespace dax {

// Smallest pivot of a matrix that is treated as positive definite.
constexpr double kMinPivot = DBL_EPSILON;

// C -= A B^T with A m x k, B n x k, C m x n. With `lower` only elements on and below the diagonal of C are defined;
// some above are overwritten. Each element is reduced by one sum over k, added in ascending order.
void subtractProduct(int32_t m, int32_t n, int32_t k, const double* a, ptrdiff_t lda, const double* b, ptrdiff_t ldb,
                     double* c, ptrdiff_t ldc, bool lower);

// Factors the first n of `rows` rows into L L^T and multiplies the remaining rows by L^-T from the right, in place.
// Elements above the diagonal are not read. False at a pivot below kMinPivot.
// Sums over the columns to the left are formed per panel of 16 columns, in ascending order, then subtracted.
bool factorPanel(int32_t n, int32_t rows, double* a, ptrdiff_t ld);

// x <- L^-1 x, x <- L^-T x.
void solveLower(int32_t n, const double* l, ptrdiff_t ld, double* x);
void solveLowerTransposed(int32_t n, const double* l, ptrdiff_t ld, double* x);

// Scalar product, as four partial sums over the indices that are equal modulo 4.
double dot(const double* a, const double* b, int64_t n);

// Scalar products of v with `count` columns, each as dot() forms it.
void dots(const double* v, const double* columns, ptrdiff_t ld, int32_t count, int64_t n, double* products);

inline double sumOfSquares(const double* v, int64_t n) {
  return dot(v, v, n);
}

}  // namespace dax

// Euclidean norm.
extern "C" double PRM_MATRIX_VectorNorm_64f(const double* vector, int32_t n);

// Least squares: minimises |A x - b| for a column-major m x n matrix A, m >= n, by Householder QR with column pivoting.
// A and b are overwritten; `scratch` has n doubles, `pivots` n integers. Returns 1, or 0 when the norm of a remaining
// column is below 2.220446049250313e-16 (DBL_EPSILON) or not finite.
extern "C" int32_t PRM_EQUA_LSM_Process_64f(double* a, int32_t m, int32_t n, double* b, double* x, double* scratch,
                                            int32_t* pivots);
