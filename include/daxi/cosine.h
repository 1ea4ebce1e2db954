/* Discrete cosine transforms of pictures and, as pictures of one row, of signals; orthonormal, so that the energy stays
 * the same and the backward transform is the transposed one.
 *
 * Forward (type II)    X(k) = s(k) sum over n of x(n) cos(pi (2n + 1) k / 2N),
 * backward (type III)  x(n) = sum over k of s(k) X(k) cos(pi (2n + 1) k / 2N),
 * with s(0) = sqrt(1 / N) and s(k) = sqrt(2 / N), along rows of N = W and columns of N = H.
 *
 * By complex transforms of N points for two lines at a time (Makhoul, A fast cosine transform in one and two dimensions,
 * 1980). Any sides from 1 to 2^26, fast where they have no prime factor above 7. A plan holds the tables for one size
 * and type, for both directions and any number of threads at once. It is a block of the caller's at a multiple of 8,
 * which may be moved, copied, written to a file and read again. A signal alone costs as much as 16 (32f) or 8 (64f)
 * rows of a picture, and as much work buffer: 128 bytes a number.
 *
 * Accuracy, in the L2 norm, relative: 3e-7 (32f) and 6e-16 (64f) to 2^20 points; 6e-7 and 1.2e-15 where a side has a
 * prime factor above 7. The results are the same bits on every machine, with any pool. Infinities and NaN spread over
 * all of the result.
 *
 * Steps count elements. dst may equal src with the same step; else they must not overlap. Forms ending in _MT run on the
 * host's pool, in at most 8 tiles; pool may be null. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, dst, model or buffer null                     0x10000014
 *   width or height outside 1..67108864                0x1000001a
 *   width above the smaller step                       0x1000001b
 *   a model of another kind, type or size, cut short, or at an address that is no multiple of 8 -> 0x10000019
 *   a model of another version                         0x10000020
 * A failed call writes nothing; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_COSINE_H
#define DAXI_COSINE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Bytes of the plan of a size.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height outside 1..67108864 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_DctPlanModelSize_32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_DctPlanModelSize_64f(DaxiSize size, uint64_t* bytes);

/* Makes a plan for both directions of a size.
 *
 * Checks, in order: model null -> 0x10000014; width or height outside 1..67108864 -> 0x1000001a; model at an address
 * that is no multiple of 8 -> 0x10000019. A failed call writes nothing. Thread-safe. */
DAX_API DaxStatus DAXI_DctPlan_32f(DaxiSize size, void* model);
DAX_API DaxStatus DAXI_DctPlan_64f(DaxiSize size, void* model);

/* Bytes of work buffer of both directions, forms ending in _MT too.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height outside 1..67108864 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_DctBufferSize_32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_DctBufferSize_64f(DaxiSize size, uint64_t* bytes);

/* Forward, type II. */
DAX_API DaxStatus DAXI_Dct_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                   const void* model, uint64_t modelBytes, void* buffer);
DAX_API DaxStatus DAXI_Dct_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                      int32_t dstStep, DaxiSize size, const void* model, uint64_t modelBytes,
                                      void* buffer);
DAX_API DaxStatus DAXI_Dct_64f_C1R(const double* src, int32_t srcStep, double* dst, int32_t dstStep, DaxiSize size,
                                   const void* model, uint64_t modelBytes, void* buffer);
DAX_API DaxStatus DAXI_Dct_64f_C1R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep, double* dst,
                                      int32_t dstStep, DaxiSize size, const void* model, uint64_t modelBytes,
                                      void* buffer);

/* Backward, type III. */
DAX_API DaxStatus DAXI_Idct_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                    const void* model, uint64_t modelBytes, void* buffer);
DAX_API DaxStatus DAXI_Idct_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                       int32_t dstStep, DaxiSize size, const void* model, uint64_t modelBytes,
                                       void* buffer);
DAX_API DaxStatus DAXI_Idct_64f_C1R(const double* src, int32_t srcStep, double* dst, int32_t dstStep, DaxiSize size,
                                    const void* model, uint64_t modelBytes, void* buffer);
DAX_API DaxStatus DAXI_Idct_64f_C1R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep, double* dst,
                                       int32_t dstStep, DaxiSize size, const void* model, uint64_t modelBytes,
                                       void* buffer);

DAX_END_DECLS

#endif
