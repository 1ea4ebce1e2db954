/* Gaussian smoothing of any width.
 *
 * dst is the correlation of src with the kernel w(x) w(y), where w(i) = c exp(-i^2 / (2 sigma^2)) for i in -r..r and c is
 * such that the weights sum to 1. The kernel has `size` pixels, 2 r + 1 each way; a side of 0 stands for
 * 2 ceil(4 sigma) + 1, beyond which less than 1e-4 of the weight lies.
 *
 * 8u, 16u and 16s are computed in integers: weights in whole parts of a power of two, which they sum to exactly, so that
 * a flat image stays flat. Results are within 0.51 levels of the real-valued formula, whatever the image is; they are its
 * nearest integer unless it lies that close to a half. 32f are floats throughout, columns first: w(0) p(0), then
 * + w(i) (p(-i) + p(i)) for i from 1 to r, with weights rounded to floats; pixels beyond 1.7e38 make infinities. The same
 * bits on every machine.
 *
 * Borders: replicated, the default, mirrored, symmetric, circular, constant, or in memory, where r pixels around the
 * region must be there.
 *
 * Steps count elements. src and dst must not overlap. The cost of a pixel grows with r. Forms ending in _MT run on the
 * host's pool, in at most `threads` tiles and at most 64; any number works with any pool, results do not depend on it,
 * and pool may be null. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, dst, cfg or buffer null                       0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smaller step                       0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_GAUSS_H
#define DAXI_GAUSS_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

/* Configuration. 32 bytes. */
typedef struct DaxiGaussCfg {
  double sigma;     /* pixels; 0.3..100, default 1 */
  DaxiSize size;    /* of the kernel: sides 0..801, odd, or 0, the default: 2 ceil(4 sigma) + 1 */
  int32_t border;   /* 0..5: DAXI_BORDER_REPLICATE, the default, to ..._IN_MEMORY */
  int32_t reserved; /* not read */
  double value;     /* of a constant border: 0; finite, taken to the nearest value of the type */
} DaxiGaussCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_GaussDefaultCfg(DaxiGaussCfg* cfg);

/* Bytes of work buffer for the same arguments, for the forms ending in _MT too.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_FilterGaussBufferSize_8u(DaxiSize size, const DaxiGaussCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterGaussBufferSize_16u(DaxiSize size, const DaxiGaussCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterGaussBufferSize_16s(DaxiSize size, const DaxiGaussCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterGaussBufferSize_32f(DaxiSize size, const DaxiGaussCfg* cfg, uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_FilterGauss_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiGaussCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterGauss_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiGaussCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterGauss_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiGaussCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterGauss_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiGaussCfg* cfg, void* buffer);

DAX_API DaxStatus DAXI_FilterGauss_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                             uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiGaussCfg* cfg,
                                             void* buffer);
DAX_API DaxStatus DAXI_FilterGauss_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                              uint16_t* dst, int32_t dstStep, DaxiSize size, const DaxiGaussCfg* cfg,
                                              void* buffer);
DAX_API DaxStatus DAXI_FilterGauss_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                              int16_t* dst, int32_t dstStep, DaxiSize size, const DaxiGaussCfg* cfg,
                                              void* buffer);
DAX_API DaxStatus DAXI_FilterGauss_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                              float* dst, int32_t dstStep, DaxiSize size, const DaxiGaussCfg* cfg,
                                              void* buffer);

DAX_END_DECLS

#endif
