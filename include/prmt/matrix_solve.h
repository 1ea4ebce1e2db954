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
 *   m, n or k outside 1..4096                            0x1000001a
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
 * Checks, in order: bytes null -> 0x10000014; m, n or k outside 1..4096 -> 0x10000019. Thread-safe. */
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
 * with the sizes. A rank below n, as PRMT_MAT_QRPivot tells it -> 0x10000038. */
DAX_API DaxStatus PRMT_MAT_LeastSquares_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* x,
                                            int32_t xStep, int32_t m, int32_t n, int32_t k, void* buffer);
DAX_API DaxStatus PRMT_MAT_LeastSquares_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* x,
                                            int32_t xStep, int32_t m, int32_t n, int32_t k, void* buffer);

DAX_END_DECLS

#endif
