/* Exponential and natural logarithm, pixel by pixel.
 *
 * The error is at most 1 unit in the last place of the result, subnormal ones included. C1IR works in place; in the
 * other forms dst may equal src with the same step, else they must not overlap. Steps count elements. An image of
 * three interleaved channels is one of three times the width. No work buffer. Thread-safe. The results are the same
 * bits on every machine (NaN payloads apart).
 *
 * _MT: on the host's thread pool, in bands of ceil(height / threads) rows, where pool is not null and threads > 1;
 * else on the calling thread. The result does not depend on it. Returns the status of the host's parallel-for,
 * unchanged.
 *
 * Checks, in order:
 *   an image null                       0x10000014
 *   width < 1 or height < 1             0x1000001a
 *   width above the smallest step       0x1000001b
 * When a check fails, nothing is written. */
#ifndef DAXI_EXP_LN_H
#define DAXI_EXP_LN_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = e^src. 0 of -infinity and what is below -104, infinity of what is above 88.8, NaN of NaN. */
DAX_API DaxStatus DAXI_Exp_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Exp_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                      int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Exp_32f_C1IR(float* srcDst, int32_t step, DaxiSize size);

/* dst = ln(src): 0 of 1, -infinity of both zeros, infinity of infinity, NaN of what is below 0 and of NaN. */
DAX_API DaxStatus DAXI_Ln_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Ln_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                     int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Ln_32f_C1IR(float* srcDst, int32_t step, DaxiSize size);

DAX_END_DECLS

#endif
