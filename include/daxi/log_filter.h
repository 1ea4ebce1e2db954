/* The Laplacian of a Gaussian: blobs of a radius of sqrt(2) sigma stand out, dark ones positive, bright ones negative, and
 * edges lie where it changes its sign.
 *
 * dst is the correlation of src with g(x) l(y) + l(x) g(y), where g is the kernel of DAXI_FilterGauss_* and l(i) =
 * (i^2 - sigma^2) / sigma^4 g(i), less a constant, so that its sum is 0. All in floats, columns first, in the order of
 * DAXI_FilterGauss_32f_C1R: the error is at most 1e-5 / sigma^2 of the largest pixel. The same bits on every machine.
 *
 * Steps count elements. src and dst must not overlap. The cost of a pixel grows with r. Forms ending in _MT run on the
 * host's pool, in at most `threads` tiles and at most 64; any number works with any pool, results do not depend on it,
 * and pool may be null. Thread-safe for distinct destinations and buffers. Configuration, borders and checks are those
 * of DAXI_FilterGauss_*.
 *
 * Checks, in order:
 *   src, dst, cfg or buffer null                       0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smaller step                       0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_LOG_FILTER_H
#define DAXI_LOG_FILTER_H

#include "gauss.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer for the same arguments, for the forms ending in _MT too.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_LoGBufferSize_8u32f(DaxiSize size, const DaxiGaussCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LoGBufferSize_16u32f(DaxiSize size, const DaxiGaussCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LoGBufferSize_32f(DaxiSize size, const DaxiGaussCfg* cfg, uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_LoG_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                     const DaxiGaussCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LoG_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                      const DaxiGaussCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LoG_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                   const DaxiGaussCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LoG_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, float* dst,
                                        int32_t dstStep, DaxiSize size, const DaxiGaussCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LoG_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep, float* dst,
                                         int32_t dstStep, DaxiSize size, const DaxiGaussCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LoG_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                      int32_t dstStep, DaxiSize size, const DaxiGaussCfg* cfg, void* buffer);

DAX_END_DECLS

#endif
