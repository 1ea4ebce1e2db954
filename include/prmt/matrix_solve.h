/* Linear equations, least squares, inverses and determinants of dense matrices.
 *
 * Matrices lie row by row; steps count elements from one row to the next. All is computed in double precision on copies that are
 * scaled by powers of two, so that their largest magnitudes lie in [0.5, 1): scaling an argument by 2^k changes no bit of the
 * results but their scale. The f32 forms round the results. Results may lie where sources did. Sides are at most 4096. The results
 * are the same bits on every machine. Thread-safe on distinct results and buffers.
 *
 * buffer: at least as many bytes as the query of the same name says, aligned as by malloc.
 *
 * Checks, in order:
 *   a pointer null                                       0x10000014
 *   m, n, k or p outside 1..4096                         0x1000001a
 *   a step smaller than a row of its matrix              0x1000001b
 *   an element that is read infinite or NaN              0x10000032
 * and what a function says of failures of its own. A failed call writes nothing but the buffer.
 *
 * Up to four rows inverses are formulas (cofactors) where the determinant is at least 2^-20 of the product of the rows' lengths,
 * else, as of more rows, Gaussian elimination. */
#ifndef PRMT_MATRIX_SOLVE_H
#define PRMT_MATRIX_SOLVE_H

#include "../dax/status.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer for the same sizes; of f32 as many as of f64.
 *
 * Checks, in order: bytes null -> 0x10000014; m, n, k or p outside 1..4096 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus PRMT_MAT_Solve_BufferSize_f64(int32_t n, int32_t k, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Solve_BufferSize_f32(int32_t n, int32_t k, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Inverse_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Inverse_BufferSize_f32(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Det_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Det_BufferSize_f32(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Rcond_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Rcond_BufferSize_f32(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_LeastSquares_BufferSize_f64(int32_t m, int32_t n, int32_t k, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_LeastSquares_BufferSize_f32(int32_t m, int32_t n, int32_t k, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_WeightedLS_BufferSize_f64(int32_t m, int32_t n, int32_t k, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_WeightedLS_BufferSize_f32(int32_t m, int32_t n, int32_t k, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_ConstrainedLS_BufferSize_f64(int32_t m, int32_t n, int32_t p, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_ConstrainedLS_BufferSize_f32(int32_t m, int32_t n, int32_t p, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_MinNorm_BufferSize_f64(int32_t m, int32_t n, int32_t k, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_MinNorm_BufferSize_f32(int32_t m, int32_t n, int32_t k, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_PInv_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_PInv_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Homogeneous_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Homogeneous_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_NullSpace_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_NullSpace_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_TotalLS_BufferSize_f64(int32_t m, int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_TotalLS_BufferSize_f32(int32_t m, int32_t n, uint64_t* bytes);

/* a x = b of a, n x n, and k right-hand sides in the columns of b. A pivot is exactly 0, or x would not be finite -> 0x10000039. */
DAX_API DaxStatus PRMT_MAT_Solve_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* x,
                                     int32_t xStep, int32_t n, int32_t k, void* buffer);
DAX_API DaxStatus PRMT_MAT_Solve_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* x,
                                     int32_t xStep, int32_t n, int32_t k, void* buffer);

/* The inverse of a, n x n. A pivot is exactly 0, or the inverse would not be finite -> 0x10000037. */
DAX_API DaxStatus PRMT_MAT_Inverse_f64(const double* a, int32_t aStep, double* inverse, int32_t inverseStep, int32_t n,
                                       void* buffer);
DAX_API DaxStatus PRMT_MAT_Inverse_f32(const float* a, int32_t aStep, float* inverse, int32_t inverseStep, int32_t n,
                                       void* buffer);

/* det(a) = mantissa 2^exponent of a, n x n, with 0.5 <= |mantissa| < 1 (f32: <= 1), or both 0. */
DAX_API DaxStatus PRMT_MAT_Det_f64(const double* a, int32_t aStep, double* mantissa, int32_t* exponent, int32_t n,
                                   void* buffer);
DAX_API DaxStatus PRMT_MAT_Det_f32(const float* a, int32_t aStep, float* mantissa, int32_t* exponent, int32_t n,
                                   void* buffer);

/* 1 / (|a| |a^-1|) of a, n x n, in the 1-norm: 1 to 0, the smaller the nearer a is to a singular matrix; x of a x = b has about
 * -log10(rcond) digits less than a and b. |a^-1| is estimated from below, mostly by its own value and hardly ever by less than a third
 * (Higham, FORTRAN codes for estimating the one-norm of a real or complex matrix, 1988). 0 where a pivot is exactly 0. */
DAX_API DaxStatus PRMT_MAT_Rcond_f64(const double* a, int32_t aStep, double* rcond, int32_t n, void* buffer);
DAX_API DaxStatus PRMT_MAT_Rcond_f32(const float* a, int32_t aStep, float* rcond, int32_t n, void* buffer);

/* x that minimises |a x - b| of a, m x n, for each of the k columns of b, by QR with column exchanges. m below n -> 0x1000001a, checked
 * behind the steps. A rank below n, as PRMT_MAT_QRPivot tells it -> 0x10000038. */
DAX_API DaxStatus PRMT_MAT_LeastSquares_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* x,
                                            int32_t xStep, int32_t m, int32_t n, int32_t k, void* buffer);
DAX_API DaxStatus PRMT_MAT_LeastSquares_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* x,
                                            int32_t xStep, int32_t m, int32_t n, int32_t k, void* buffer);

/* x that minimises the sum over the rows of weight_i (a x - b)_i^2 of a, m x n, for each of the k columns of b, by QR with exchanges of
 * columns and rows, which keep the digits of rows of very different weights (Powell and Reid 1969). m below n -> 0x1000001a, checked
 * behind the steps; a weight below 0 -> 0x10000019, checked last; a rank below n -> 0x10000038. */
DAX_API DaxStatus PRMT_MAT_WeightedLS_f64(const double* a, int32_t aStep, const double* weights, const double* b,
                                          int32_t bStep, double* x, int32_t xStep, int32_t m, int32_t n, int32_t k,
                                          void* buffer);
DAX_API DaxStatus PRMT_MAT_WeightedLS_f32(const float* a, int32_t aStep, const float* weights, const float* b,
                                          int32_t bStep, float* x, int32_t xStep, int32_t m, int32_t n, int32_t k,
                                          void* buffer);

/* x that minimises |a x - b| of a, m x n, among those with c x = d of c, p x n (Golub and Van Loan 2013, 6.2), by the null space of c.
 * p above n, or m + p below n -> 0x1000001a, checked behind the steps. Rows of c that are dependent, or a rank of both together below
 * n -> 0x10000038. */
DAX_API DaxStatus PRMT_MAT_ConstrainedLS_f64(const double* a, int32_t aStep, const double* b, const double* c,
                                             int32_t cStep, const double* d, double* x, int32_t m, int32_t n, int32_t p,
                                             void* buffer);
DAX_API DaxStatus PRMT_MAT_ConstrainedLS_f32(const float* a, int32_t aStep, const float* b, const float* c,
                                             int32_t cStep, const float* d, float* x, int32_t m, int32_t n, int32_t p,
                                             void* buffer);

/* The shortest x that minimises |a x - b| of a, m x n, whatever its rank, for each of the k columns of b, by singular values: those up
 * to max(m, n) 2^-52 of the largest count as 0, the others make the rank. Singular values were not found -> 0x10000000. */
DAX_API DaxStatus PRMT_MAT_MinNorm_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* x,
                                       int32_t xStep, int32_t* rank, int32_t m, int32_t n, int32_t k, void* buffer);
DAX_API DaxStatus PRMT_MAT_MinNorm_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* x,
                                       int32_t xStep, int32_t* rank, int32_t m, int32_t n, int32_t k, void* buffer);

/* The pseudo-inverse of a (Moore and Penrose), n x m for m x n, by singular values, as PRMT_MAT_MinNorm takes them. Singular values were
 * not found -> 0x10000000. */
DAX_API DaxStatus PRMT_MAT_PInv_f64(const double* a, int32_t aStep, double* inverse, int32_t inverseStep, int32_t* rank,
                                    int32_t m, int32_t n, void* buffer);
DAX_API DaxStatus PRMT_MAT_PInv_f32(const float* a, int32_t aStep, float* inverse, int32_t inverseStep, int32_t* rank,
                                    int32_t m, int32_t n, void* buffer);

/* x of length 1 that minimises |a x| of a, m x n: the right singular vector of the smallest value, its element of largest magnitude, the
 * first of equal ones, positive. residual: |a x|, that value. gap: that value over the one above it, 0 to 1: at 1 any vector of a plane
 * is as good. Singular values were not found -> 0x10000000. */
DAX_API DaxStatus PRMT_MAT_Homogeneous_f64(const double* a, int32_t aStep, double* x, double* residual, double* gap,
                                           int32_t m, int32_t n, void* buffer);
DAX_API DaxStatus PRMT_MAT_Homogeneous_f32(const float* a, int32_t aStep, float* x, float* residual, float* gap,
                                           int32_t m, int32_t n, void* buffer);

/* An orthonormal basis of the vectors x with a x = 0 of a, m x n, in the first columns of `basis`, n x n; the others are 0. dimension: how
 * many, the singular values up to max(m, n) 2^-52 of the largest. gap: the largest of these over the smallest other one, 0 where there is
 * none of either. Singular values were not found -> 0x10000000. */
DAX_API DaxStatus PRMT_MAT_NullSpace_f64(const double* a, int32_t aStep, double* basis, int32_t basisStep,
                                         int32_t* dimension, double* gap, int32_t m, int32_t n, void* buffer);
DAX_API DaxStatus PRMT_MAT_NullSpace_f32(const float* a, int32_t aStep, float* basis, int32_t basisStep,
                                         int32_t* dimension, float* gap, int32_t m, int32_t n, void* buffer);

/* x of (a + E) x = b + r with the smallest E and r together, of a, m x n (Golub and Van Loan 1980): by the right singular vector of the
 * smallest value of (a b). residual: that value, the size of E and r together. m below n, or n above 4095 -> 0x1000001a, checked behind the
 * steps. No unique x: the smallest value is no single one, or its vector has nothing of b -> 0x10000033. Singular values were not
 * found -> 0x10000000. */
DAX_API DaxStatus PRMT_MAT_TotalLS_f64(const double* a, int32_t aStep, const double* b, double* x, double* residual,
                                       int32_t m, int32_t n, void* buffer);
DAX_API DaxStatus PRMT_MAT_TotalLS_f32(const float* a, int32_t aStep, const float* b, float* x, float* residual,
                                       int32_t m, int32_t n, void* buffer);

DAX_END_DECLS

#endif
