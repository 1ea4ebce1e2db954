// Dense kernels. Matrices lie column by column, `ld` doubles from one column to the next.
#pragma once

#include <cfloat>
#include <cstddef>
#include <cstdint>

namespace dax {

// Smallest pivot of a matrix that counts as positive definite.
constexpr double kLeastPivot = DBL_EPSILON;

// C -= A B^T with A of m x k, B of n x k, C of m x n. With `lower` only elements on and below the diagonal of C count; some
// above are written too. Each element is reduced by one sum over k, formed from the first term on.
void subtractProduct(int32_t m, int32_t n, int32_t k, const double* a, ptrdiff_t lda, const double* b, ptrdiff_t ldb,
                     double* c, ptrdiff_t ldc, bool lower);

// Factors the first n of `rows` rows into L L^T and multiplies the others by L^-T from the right, in place. Elements above
// the diagonal are not read. False at a pivot below kLeastPivot.
bool factorPanel(int32_t n, int32_t rows, double* a, ptrdiff_t ld);

// x <- L^-1 x, x <- L^-T x.
void solveLower(int32_t n, const double* l, ptrdiff_t ld, double* x);
void solveLowerTransposed(int32_t n, const double* l, ptrdiff_t ld, double* x);

// Scalar product in four partial sums, of the indices that are equal modulo 4.
double dot(const double* a, const double* b, int64_t n);

// Scalar products of v with `count` columns, each as dot() forms it.
void dots(const double* v, const double* columns, ptrdiff_t ld, int32_t count, int64_t n, double* products);

inline double sumOfSquares(const double* v, int64_t n) {
  return dot(v, v, n);
}

}  // namespace dax

// Euclidean norm.
extern "C" double PRM_MATRIX_VectorNorm_64f(const double* vector, int32_t n);

// Least squares: the x of least |A x - b| for A of m x n, m >= n, column by column, by Householder reflections with column
// pivoting. A and b are overwritten; scratch has n doubles and `pivots` n numbers. 1, or 0 when a column has a norm below
// 2.220446049250313e-16 left, or one that is no number.
extern "C" int32_t PRM_EQUA_LSM_Process_64f(double* a, int32_t m, int32_t n, double* b, double* x, double* scratch,
                                            int32_t* pivots);
