/* Bilateral filter: the mean of the pixels around each pixel, weighted by how near they are in place and in grey (Tomasi,
 * Manduchi, Bilateral filtering for gray and color images, 1998).
 *
 * dst is the sum of w v by the sum of w over the pixels v at (dx, dy) with dx^2 + dy^2 <= radius^2, of
 *   w = exp(-(dx^2 + dy^2) / (2 sigmaSpace^2)) exp(-(v - centre)^2 / (2 sigmaGrey^2))
 *
 * Weights are rounded to single precision; those of greys of 32f come from a table with linear interpolation, within
 * 1e-6, and are 0 from 8 sigmaGrey on. Sums are in single precision, row by row from the top. 8u: rounded half to even.
 * 32f: a NaN or an infinity counts nowhere, and stays as it is.
 *
 * Borders: replicated, the default, mirrored, symmetric, circular, constant, in memory, or clipped, where pixels outside
 * do not count. In memory the pixels that the disc reaches must be there.
 *
 * Steps count elements. src and dst must not overlap. The cost of a pixel grows with the area of the disc. Forms ending
 * in _MT run on the host's pool, in at most `threads` tiles; any number works with any pool, results do not depend on
 * it, and pool may be null. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, dst, cfg or buffer null                       0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smaller step                       0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_FILTER_BILATERAL_H
#define DAXI_FILTER_BILATERAL_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

/* Configuration. 32 bytes. */
typedef struct DaxiFilterBilateralCfg {
  int32_t radius;    /* 1..15, default 5; each side of the image and 2 radius together at most 2^31 - 1 */
  int32_t border;    /* 0..6: DAXI_BORDER_REPLICATE, the default, to ..._CLIP */
  double sigmaSpace; /* at least 1e-3, finite: pixels, default 3 */
  double sigmaGrey;  /* at least 1e-30, at most 1e30: grey levels, default 25 */
  double value;      /* of a constant border: 0; finite, taken to the nearest value of the type */
} DaxiFilterBilateralCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_FilterBilateralDefaultCfg(DaxiFilterBilateralCfg* cfg);

/* Bytes of work buffer for the same arguments, for the forms ending in _MT too.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019; a need that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_FilterBilateralBufferSize_8u(DaxiSize size, const DaxiFilterBilateralCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterBilateralBufferSize_32f(DaxiSize size, const DaxiFilterBilateralCfg* cfg, uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_FilterBilateral_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiFilterBilateralCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterBilateral_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                               DaxiSize size, const DaxiFilterBilateralCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterBilateral_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                 uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                 const DaxiFilterBilateralCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterBilateral_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                  float* dst, int32_t dstStep, DaxiSize size,
                                                  const DaxiFilterBilateralCfg* cfg, void* buffer);

DAX_END_DECLS

#endif
