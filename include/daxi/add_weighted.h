/* Weighted sums of two images, pixel by pixel: dst = (a src1 + b src2) + c in double precision, each operation
 * rounded. Integers are the nearest ones, halves the even one, saturated to the range of the type; where infinities
 * cancel each other they are 0. 32f: rounded to single precision.
 *
 * C1IR works in place: srcDst is the first operand. The destination may be one of the sources, with the same step;
 * else they must not overlap. Steps count elements. An image of three interleaved channels is one of three times the
 * width. No work buffer. Thread-safe. The results are the same bits on every machine (NaN payloads apart).
 *
 * _MT: on the host's thread pool, in bands of ceil(height / threads) rows, where pool is not null and threads > 1;
 * else on the calling thread. The result does not depend on it. Returns the status of the host's parallel-for,
 * unchanged.
 *
 * Checks, in order:
 *   an image or cfg null                       0x10000014
 *   width < 1 or height < 1                    0x1000001a
 *   width above the smallest step              0x1000001b
 *   a, b or c of cfg not finite                0x10000019
 * When a check fails, nothing is written. */
#ifndef DAXI_ADD_WEIGHTED_H
#define DAXI_ADD_WEIGHTED_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Configuration. 24 bytes. */
typedef struct DaxiAddWeightedCfg {
  double a; /* weight of the first image; finite, default 0.5 */
  double b; /* weight of the second one; finite, default 0.5 */
  double c; /* what is added; finite, default 0 */
} DaxiAddWeightedCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_AddWeightedDefaultCfg(DaxiAddWeightedCfg* cfg);

/* dst = (a src1 + b src2) + c. */
DAX_API DaxStatus DAXI_AddWeighted_8u_C1R(const uint8_t* src1, int32_t step1, const uint8_t* src2, int32_t step2,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiAddWeightedCfg* cfg);
DAX_API DaxStatus DAXI_AddWeighted_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src1, int32_t step1,
                                             const uint8_t* src2, int32_t step2, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiAddWeightedCfg* cfg);
DAX_API DaxStatus DAXI_AddWeighted_8u_C1IR(const uint8_t* src, int32_t srcStep, uint8_t* srcDst, int32_t srcDstStep,
                                           DaxiSize size, const DaxiAddWeightedCfg* cfg);
DAX_API DaxStatus DAXI_AddWeighted_16u_C1R(const uint16_t* src1, int32_t step1, const uint16_t* src2, int32_t step2,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size,
                                           const DaxiAddWeightedCfg* cfg);
DAX_API DaxStatus DAXI_AddWeighted_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src1, int32_t step1,
                                              const uint16_t* src2, int32_t step2, uint16_t* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiAddWeightedCfg* cfg);
DAX_API DaxStatus DAXI_AddWeighted_16u_C1IR(const uint16_t* src, int32_t srcStep, uint16_t* srcDst, int32_t srcDstStep,
                                            DaxiSize size, const DaxiAddWeightedCfg* cfg);
DAX_API DaxStatus DAXI_AddWeighted_16s_C1R(const int16_t* src1, int32_t step1, const int16_t* src2, int32_t step2,
                                           int16_t* dst, int32_t dstStep, DaxiSize size, const DaxiAddWeightedCfg* cfg);
DAX_API DaxStatus DAXI_AddWeighted_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src1, int32_t step1,
                                              const int16_t* src2, int32_t step2, int16_t* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiAddWeightedCfg* cfg);
DAX_API DaxStatus DAXI_AddWeighted_16s_C1IR(const int16_t* src, int32_t srcStep, int16_t* srcDst, int32_t srcDstStep,
                                            DaxiSize size, const DaxiAddWeightedCfg* cfg);
DAX_API DaxStatus DAXI_AddWeighted_32f_C1R(const float* src1, int32_t step1, const float* src2, int32_t step2,
                                           float* dst, int32_t dstStep, DaxiSize size, const DaxiAddWeightedCfg* cfg);
DAX_API DaxStatus DAXI_AddWeighted_32f_C1R_MT(void* pool, uint32_t threads, const float* src1, int32_t step1,
                                              const float* src2, int32_t step2, float* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiAddWeightedCfg* cfg);
DAX_API DaxStatus DAXI_AddWeighted_32f_C1IR(const float* src, int32_t srcStep, float* srcDst, int32_t srcDstStep,
                                            DaxiSize size, const DaxiAddWeightedCfg* cfg);

DAX_END_DECLS

#endif
