/* Exponential and logarithm of square matrices.
 *
 * Matrices lie row by row; steps count elements from one row to the next. All is computed in double precision; the f32 forms round the
 * results. The result may lie where the source did. Sides are at most 4096. The results are the same bits on every machine.
 * Thread-safe on distinct results and buffers.
 *
 * buffer: at least as many bytes as the query of the same name says, aligned as by malloc.
 *
 * Checks, in order:
 *   a, result or buffer null                             0x10000014
 *   n outside 1..4096                                    0x1000001a
 *   a step smaller than a row of its matrix              0x1000001b
 *   an element infinite or NaN                           0x10000032
 * and what a function says of failures of its own. A failed call writes nothing but the buffer. */
#ifndef PRMT_MATRIX_FUNCTION_H
#define PRMT_MATRIX_FUNCTION_H

#include "../dax/status.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer for the same size; of f32 as many as of f64.
 *
 * Checks, in order: bytes null -> 0x10000014; n outside 1..4096 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus PRMT_MAT_Exp_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Exp_BufferSize_f32(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Log_BufferSize_f64(int32_t n, uint64_t* bytes);
DAX_API DaxStatus PRMT_MAT_Log_BufferSize_f32(int32_t n, uint64_t* bytes);

/* e^a = 1 + a + a^2 / 2 + ... by scaling and squaring with a rational function of degree 13 (Higham, The scaling and squaring method for the
 * matrix exponential revisited, 2005). The result would not be finite -> 0x10000000. */
DAX_API DaxStatus PRMT_MAT_Exp_f64(const double* a, int32_t aStep, double* result, int32_t resultStep, int32_t n,
                                   void* buffer);
DAX_API DaxStatus PRMT_MAT_Exp_f32(const float* a, int32_t aStep, float* result, int32_t resultStep, int32_t n,
                                   void* buffer);

/* The principal logarithm: e^result = a, with the imaginary parts of its eigenvalues between -pi and pi. By square roots (Denman and
 * Beavers 1976) until a rational function of degree 7 is right. Errors grow as an eigenvalue comes near to the negative axis: with the
 * angle pi - d about 2^-50 / d.
 *
 * An eigenvalue is 0 or lies on the negative axis -> 0x10000033. Square roots did not converge -> 0x10000000. */
DAX_API DaxStatus PRMT_MAT_Log_f64(const double* a, int32_t aStep, double* result, int32_t resultStep, int32_t n,
                                   void* buffer);
DAX_API DaxStatus PRMT_MAT_Log_f32(const float* a, int32_t aStep, float* result, int32_t resultStep, int32_t n,
                                   void* buffer);

DAX_END_DECLS

#endif
