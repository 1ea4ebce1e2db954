/* Products of dense matrices.
 *
 * Matrices lie row by row; steps count elements from one row to the next. Each element of a product is one sum in ascending
 * order of the inner index, in double precision, so it is the same bits on every machine and with any number of threads; f32
 * rounds it once. NaN and infinities go through as IEEE says. Results must not overlap what they are made of. Sides are at
 * most 4096. Thread-safe on distinct results.
 *
 * _MT: on the host's thread pool, in bands of ceil(rows / threads) rows, where pool is not null and threads > 1; else on the
 * calling thread. The result does not depend on it. Returns the status of the host's parallel-for, unchanged.
 *
 * Checks, in order:
 *   a, b or c null                                       0x10000014
 *   m, n or k outside 1..4096                            0x1000001a
 *   a step smaller than a row of its matrix              0x1000001b
 * A failed call writes nothing. */
#ifndef PRMT_MATRIX_PRODUCT_H
#define PRMT_MATRIX_PRODUCT_H

#include "../dax/status.h"

DAX_BEGIN_DECLS

/* c = a b of a, m x k, and b, k x n. */
DAX_API DaxStatus PRMT_MAT_Mul_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* c,
                                   int32_t cStep, int32_t m, int32_t n, int32_t k);
DAX_API DaxStatus PRMT_MAT_Mul_f64_MT(void* pool, uint32_t threads, const double* a, int32_t aStep, const double* b,
                                      int32_t bStep, double* c, int32_t cStep, int32_t m, int32_t n, int32_t k);
DAX_API DaxStatus PRMT_MAT_Mul_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* c,
                                   int32_t cStep, int32_t m, int32_t n, int32_t k);
DAX_API DaxStatus PRMT_MAT_Mul_f32_MT(void* pool, uint32_t threads, const float* a, int32_t aStep, const float* b,
                                      int32_t bStep, float* c, int32_t cStep, int32_t m, int32_t n, int32_t k);

/* c = a^T b of a, k x m, and b, k x n. */
DAX_API DaxStatus PRMT_MAT_MulAtB_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* c,
                                      int32_t cStep, int32_t m, int32_t n, int32_t k);
DAX_API DaxStatus PRMT_MAT_MulAtB_f64_MT(void* pool, uint32_t threads, const double* a, int32_t aStep, const double* b,
                                         int32_t bStep, double* c, int32_t cStep, int32_t m, int32_t n, int32_t k);
DAX_API DaxStatus PRMT_MAT_MulAtB_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* c,
                                      int32_t cStep, int32_t m, int32_t n, int32_t k);
DAX_API DaxStatus PRMT_MAT_MulAtB_f32_MT(void* pool, uint32_t threads, const float* a, int32_t aStep, const float* b,
                                         int32_t bStep, float* c, int32_t cStep, int32_t m, int32_t n, int32_t k);

/* c = a b^T of a, m x k, and b, n x k. */
DAX_API DaxStatus PRMT_MAT_MulABt_f64(const double* a, int32_t aStep, const double* b, int32_t bStep, double* c,
                                      int32_t cStep, int32_t m, int32_t n, int32_t k);
DAX_API DaxStatus PRMT_MAT_MulABt_f64_MT(void* pool, uint32_t threads, const double* a, int32_t aStep, const double* b,
                                         int32_t bStep, double* c, int32_t cStep, int32_t m, int32_t n, int32_t k);
DAX_API DaxStatus PRMT_MAT_MulABt_f32(const float* a, int32_t aStep, const float* b, int32_t bStep, float* c,
                                      int32_t cStep, int32_t m, int32_t n, int32_t k);
DAX_API DaxStatus PRMT_MAT_MulABt_f32_MT(void* pool, uint32_t threads, const float* a, int32_t aStep, const float* b,
                                         int32_t bStep, float* c, int32_t cStep, int32_t m, int32_t n, int32_t k);

/* c = a^T a of a, m x n: the bits of MulAtB, in about half of the time, and symmetric. */
DAX_API DaxStatus PRMT_MAT_Gram_f64(const double* a, int32_t aStep, double* c, int32_t cStep, int32_t m, int32_t n);
DAX_API DaxStatus PRMT_MAT_Gram_f64_MT(void* pool, uint32_t threads, const double* a, int32_t aStep, double* c,
                                       int32_t cStep, int32_t m, int32_t n);
DAX_API DaxStatus PRMT_MAT_Gram_f32(const float* a, int32_t aStep, float* c, int32_t cStep, int32_t m, int32_t n);
DAX_API DaxStatus PRMT_MAT_Gram_f32_MT(void* pool, uint32_t threads, const float* a, int32_t aStep, float* c,
                                       int32_t cStep, int32_t m, int32_t n);

DAX_END_DECLS

#endif
