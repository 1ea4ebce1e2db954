/* Unsharp masking: details are made stronger by what a Gaussian takes away.
 *
 *   dst = src + amount (src - g), where |src - g| > threshold, else src
 * with g = DAXI_FilterGauss_* of src by the same sigma, size and border. Integers: g is rounded to the type, the rest
 * computed in floats, rounded to the nearest integer, halves to the even one, and saturated. An amount below 0 smoothes.
 *
 * Steps count elements. src and dst must not overlap. Forms ending in _MT run on the host's pool, in at most `threads`
 * tiles and at most 64; any number works with any pool, results do not depend on it, and pool may be null. The results
 * are the same bits on every machine. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, dst, cfg or buffer null                       0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smaller step                       0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_UNSHARP_H
#define DAXI_UNSHARP_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

/* Configuration. 48 bytes. */
typedef struct DaxiUnsharpCfg {
  double sigma;     /* pixels; 0.3..100, default 1 */
  DaxiSize size;    /* of the kernel: sides 0..801, odd, or 0, the default: 2 ceil(4 sigma) + 1 */
  int32_t border;   /* 0..5: DAXI_BORDER_REPLICATE, the default, to ..._IN_MEMORY */
  int32_t reserved; /* not read */
  double value;     /* of a constant border: 0; finite, taken to the nearest value of the type */
  double amount;    /* -1..100, default 1 */
  double threshold; /* >= 0, default 0; grey levels */
} DaxiUnsharpCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_UnsharpDefaultCfg(DaxiUnsharpCfg* cfg);

/* Bytes of work buffer for the same arguments, for the forms ending in _MT too.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_UnsharpBufferSize_8u(DaxiSize size, const DaxiUnsharpCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_UnsharpBufferSize_16u(DaxiSize size, const DaxiUnsharpCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_UnsharpBufferSize_32f(DaxiSize size, const DaxiUnsharpCfg* cfg, uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_Unsharp_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                      const DaxiUnsharpCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Unsharp_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                       DaxiSize size, const DaxiUnsharpCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Unsharp_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                       const DaxiUnsharpCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Unsharp_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                         uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiUnsharpCfg* cfg,
                                         void* buffer);
DAX_API DaxStatus DAXI_Unsharp_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                          uint16_t* dst, int32_t dstStep, DaxiSize size, const DaxiUnsharpCfg* cfg,
                                          void* buffer);
DAX_API DaxStatus DAXI_Unsharp_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                          int32_t dstStep, DaxiSize size, const DaxiUnsharpCfg* cfg, void* buffer);

DAX_END_DECLS

#endif
