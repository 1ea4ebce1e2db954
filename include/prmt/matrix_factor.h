/* Factorisations of dense matrices.
 *
 * Matrices lie row by row; steps count elements from one row to the next. All is computed in double precision on a copy that is
 * scaled by a power of two, so that its largest magnitude lies in [0.5, 1): scaling a matrix by 2^k scales the results, and
 * changes no other bit where nothing overflows or is subnormal. The f32 forms round the results. Results may lie where sources
 * did, but must not overlap each other. Sides are at most 4096. The results are the same bits on every machine. Thread-safe on
 * distinct results and buffers.
 *
 * buffer: at least as many bytes as the query of the same name says, aligned as by malloc.
 *
 * Checks, in order:
 *   a pointer null but those that may be                 0x10000014
 *   m or n outside 1..4096                               0x1000001a
 *   a step smaller than a row of its matrix              0x1000001b
 *   accuracy outside 0..1                                0x10000019
 *   an element that is read infinite or NaN              0x10000032
 * and what a function says of failures of its own. A failed call writes nothing but the buffer. */
#ifndef PRMT_MATRIX_FACTOR_H
#define PRMT_MATRIX_FACTOR_H

#include "../dax/status.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer for the same sizes; of f32 as many as of f64.
 *
 * Checks, in order: bytes null -> 0x10000014; m or n outside 1..4096 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus PRMT_MAT_LU_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_LU_BufferSize_f32(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Cholesky_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Cholesky_BufferSize_f32(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_LDLT_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_LDLT_BufferSize_f32(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_QR_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_QR_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_QRPivot_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_QRPivot_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_SVD_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_SVD_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_EigSym_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_EigSym_BufferSize_f32(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_EigSymGen_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_EigSymGen_BufferSize_f32(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_EigGeneral_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_EigGeneral_BufferSize_f32(int32_t n, uint64_t* bytes);

/* P a = L U of a, n x n, with row exchanges (Golub and Van Loan 2013, 3.4). lu has L below the diagonal, of ones on it, and U from
 * the diagonal on; row i of P a is row pivots[i] of a. |L U - P a| is at most about n 2^-53 |L| |U|.
 *
 * A pivot is exactly 0 -> 0x10000039. How near a matrix is to a singular one PRMT_MAT_Rcond tells. */
DAX_API DaxStatus PRMT_MAT_LU_f64(const double* a, int32_t aStep, double* lu, int32_t luStep, int32_t* pivots,
                                  int32_t n, void* buffer);
DAX_API DaxStatus PRMT_MAT_LU_f32(const float* a, int32_t aStep, float* lu, int32_t luStep, int32_t* pivots, int32_t n,
                                  void* buffer);

/* a = L L^T of a symmetric positive definite matrix, n x n, of which what lies on and below the diagonal is read; l has zeros above
 * it.
 *
 * Not definite -> 0x10000000: when a diagonal element is not above 0, or a pivot below 2^-52 of the matrix whose rows and columns are
 * scaled by powers of two so that its diagonal lies in [0.5, 2). */
DAX_API DaxStatus PRMT_MAT_Cholesky_f64(const double* a, int32_t aStep, double* l, int32_t lStep, int32_t n,
                                        void* buffer);
DAX_API DaxStatus PRMT_MAT_Cholesky_f32(const float* a, int32_t aStep, float* l, int32_t lStep, int32_t n,
                                        void* buffer);

/* P a P^T = L D L^T of a symmetric matrix, n x n, definite or not, of which what lies on and below the diagonal is read, with pivots
 * of one row or two (Bunch and Kaufman, Some stable methods for calculating inertia and solving symmetric linear systems, 1977). l has
 * ones on the diagonal and zeros above it; d is the diagonal of D; e[i] is D's element in row i + 1 and column i, 0 but in blocks of
 * two rows. Row i of P a P^T is row pivots[i] of a. Singular matrices have zeros in d. */
DAX_API DaxStatus PRMT_MAT_LDLT_f64(const double* a, int32_t aStep, double* l, int32_t lStep, double* d, double* e,
                                    int32_t* pivots, int32_t n, void* buffer);
DAX_API DaxStatus PRMT_MAT_LDLT_f32(const float* a, int32_t aStep, float* l, int32_t lStep, float* d, float* e,
                                    int32_t* pivots, int32_t n, void* buffer);

/* a = Q R of a, m x n, by Householder reflections: q, m x min(m, n), has orthonormal columns; r, min(m, n) x n, is 0 below the
 * diagonal, which is not negative. q may be null. */
DAX_API DaxStatus PRMT_MAT_QR_f64(const double* a, int32_t aStep, double* q, int32_t qStep, double* r, int32_t rStep,
                                  int32_t m, int32_t n, void* buffer);
DAX_API DaxStatus PRMT_MAT_QR_f32(const float* a, int32_t aStep, float* q, int32_t qStep, float* r, int32_t rStep,
                                  int32_t m, int32_t n, void* buffer);

/* a P = Q R of a, m x n, with column exchanges: each step takes the column of the longest rest, the first of equal ones, and norms
 * are taken anew where updating has lost half of their digits (Drmac and Bujanovic, On the failure of rank-revealing QR factorization
 * software, 2008). Column j of a P is column pivots[j] of a. rank: how many diagonal elements of R are above max(m, n) 2^-52 times the
 * first. There are matrices that deceive it, such as Kahan's; singular values do not. q may be null. */
DAX_API DaxStatus PRMT_MAT_QRPivot_f64(const double* a, int32_t aStep, double* q, int32_t qStep, double* r,
                                       int32_t rStep, int32_t* pivots, int32_t* rank, int32_t m, int32_t n,
                                       void* buffer);
DAX_API DaxStatus PRMT_MAT_QRPivot_f32(const float* a, int32_t aStep, float* q, int32_t qStep, float* r, int32_t rStep,
                                       int32_t* pivots, int32_t* rank, int32_t m, int32_t n, void* buffer);

/* a = U S V^T of a, m x n: s has the singular values, descending; u and v, min(m, n) columns each, the left and the right singular
 * vectors in columns. The element of largest magnitude of each right vector, the first of equal ones, is positive. u and v may be null.
 *
 * By pivoted QR and one-sided Jacobi rotations (Drmac and Veselic, New fast and accurate Jacobi SVD algorithm, 2008): where a = D1 B D2
 * with diagonal matrices D1 and D2, each value has a relative error of the order of B's condition number times 2^-53, however different
 * the elements of D1 and D2 are; below 1e-150 of the largest values are 0.
 *
 * accuracy   0: as said; 1: errors of the order of 2^-53 of the largest value will do. Where both sides are above 64, reflections to
 *            a bidiagonal matrix and implicit QR then take less time (Golub and Kahan 1965, Demmel and Kahan 1990)
 *
 * Rotations or QR did not end after 60 rounds -> 0x10000000. */
DAX_API DaxStatus PRMT_MAT_SVD_f64(const double* a, int32_t aStep, double* u, int32_t uStep, double* s, double* v,
                                   int32_t vStep, int32_t m, int32_t n, int32_t accuracy, void* buffer);
DAX_API DaxStatus PRMT_MAT_SVD_f32(const float* a, int32_t aStep, float* u, int32_t uStep, float* s, float* v,
                                   int32_t vStep, int32_t m, int32_t n, int32_t accuracy, void* buffer);

/* a = V diag(values) V^T of a symmetric matrix, n x n, of which what lies on and below the diagonal is read: eigenvalues ascending,
 * unit eigenvectors in the columns of `vectors`, which may be null, the element of largest magnitude, the first of equal ones,
 * positive. Up to 8 rows by Jacobi rotations, with the relative accuracy of small eigenvalues of definite matrices (Demmel and
 * Veselic, Jacobi's method is more accurate than QR, 1992), else by reflections and implicit QL with errors of the order of 2^-53 of
 * the largest.
 *
 * Iterations did not end -> 0x10000000. */
DAX_API DaxStatus PRMT_MAT_EigSym_f64(const double* a, int32_t aStep, double* values, double* vectors,
                                      int32_t vectorsStep, int32_t n, void* buffer);
DAX_API DaxStatus PRMT_MAT_EigSym_f32(const float* a, int32_t aStep, float* values, float* vectors, int32_t vectorsStep,
                                      int32_t n, void* buffer);

/* a v = lambda b v of a symmetric and a positive definite matrix, n x n, of which what lies on and below the diagonal is read: values
 * ascending, vectors in columns with v^T b v = 1, the element of largest magnitude, the first of equal ones, positive; `vectors` may be
 * null. By b = L L^T and the symmetric problem of L^-1 a L^-T: errors grow with b's condition number.
 *
 * b is not definite, as PRMT_MAT_Cholesky tells it, the reduced problem is not finite, or iterations did not end -> 0x10000000. */
DAX_API DaxStatus PRMT_MAT_EigSymGen_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* values,
                                         double* vectors, int32_t vectorsStep, int32_t n, void* buffer);
DAX_API DaxStatus PRMT_MAT_EigSymGen_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* values,
                                         float* vectors, int32_t vectorsStep, int32_t n, void* buffer);

/* Eigenvalues of a, n x n: by descending real part, of equal ones by descending magnitude of the imaginary part, of a pair the one
 * above the axis first. Balanced by powers of two, reduced to Hessenberg form, then QR with double shifts and exceptional ones (Francis
 * 1961). Iterations did not end -> 0x10000000. */
DAX_API DaxStatus PRMT_MAT_EigGeneral_f64(const double* a, int32_t aStep, double* real, double* imaginary, int32_t n,
                                          void* buffer);
DAX_API DaxStatus PRMT_MAT_EigGeneral_f32(const float* a, int32_t aStep, float* real, float* imaginary, int32_t n,
                                          void* buffer);

DAX_END_DECLS

#endif
