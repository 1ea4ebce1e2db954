/* Gaussian smoothing whose cost hardly depends on sigma: only the 8 sigma around each line are followed besides.
 *
 * A recursive filter of the fourth order along columns, then along rows (Deriche, Recursively implementing the Gaussian and
 * its derivatives, 1993), computed in double precision; between the two a float. What is outside the image is followed
 * over 8 sigma, by the rule of the border. Results differ from the real-valued, untruncated Gaussian by at most 1e-3 of
 * the range of pixels (the errors of all weights sum up to 6e-4 at sigma 2, and to less above), and integers are rounded
 * then. A flat image stays flat.
 *
 * Borders: replicated, the default, mirrored, symmetric, circular or constant.
 *
 * Steps count elements. src and dst must not overlap. Forms ending in _MT run on the host's pool, in at most `threads`
 * tiles and at most 8; any number works with any pool, results do not depend on it, and pool may be null. The results
 * are the same bits on every machine. 32f: an infinity or a NaN spoils its row and column. Thread-safe for distinct
 * destinations and buffers.
 *
 * Checks, in order:
 *   src, dst, cfg or buffer null                       0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smaller step                       0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_GAUSS_RECURSIVE_H
#define DAXI_GAUSS_RECURSIVE_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

/* Configuration. 24 bytes. */
typedef struct DaxiGaussRecursiveCfg {
  double sigma;     /* pixels; 2..100, default 10 */
  int32_t border;   /* 0..4: DAXI_BORDER_REPLICATE, the default, to ..._CONSTANT */
  int32_t reserved; /* not read */
  double value;     /* of a constant border: 0; finite, taken to the nearest value of the type */
} DaxiGaussRecursiveCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_GaussRecursiveDefaultCfg(DaxiGaussRecursiveCfg* cfg);

/* Bytes of work buffer for the same arguments, for the forms ending in _MT too.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019; a need that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_FilterGaussRecursiveBufferSize_8u(DaxiSize size, const DaxiGaussRecursiveCfg* cfg,
                                                         uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterGaussRecursiveBufferSize_16u(DaxiSize size, const DaxiGaussRecursiveCfg* cfg,
                                                          uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterGaussRecursiveBufferSize_32f(DaxiSize size, const DaxiGaussRecursiveCfg* cfg,
                                                          uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_FilterGaussRecursive_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                   DaxiSize size, const DaxiGaussRecursiveCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterGaussRecursive_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst,
                                                    int32_t dstStep, DaxiSize size, const DaxiGaussRecursiveCfg* cfg,
                                                    void* buffer);
DAX_API DaxStatus DAXI_FilterGaussRecursive_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                    DaxiSize size, const DaxiGaussRecursiveCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterGaussRecursive_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                      uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                      const DaxiGaussRecursiveCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterGaussRecursive_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src,
                                                       int32_t srcStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                       const DaxiGaussRecursiveCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterGaussRecursive_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                       float* dst, int32_t dstStep, DaxiSize size,
                                                       const DaxiGaussRecursiveCfg* cfg, void* buffer);

DAX_END_DECLS

#endif
