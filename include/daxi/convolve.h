/* Correlation with kernels of up to 31 x 31 pixels, separable or any.
 *
 *   dst(x, y) = sum over i, j of w(i, j) src(x - ax + i, y - ay + j)
 * for a kernel of W x H weights, row by row, whose pixel (ax, ay), the anchor, lies on the pixel that is computed. It is
 * not turned: a convolution turns it by half a circle first. Of a separable kernel w(i, j) is weightsX(i) weightsY(j).
 *
 * Kernels of whole numbers: the sum is exact, times 2^-shift, rounded to the nearest integer, halves to the even one,
 * saturated. Kernels of floats: float products are added in floats, columns first, from top to bottom and from left to right,
 * of kernels that are not separable row by row.
 *
 * Borders: replicated, the default, mirrored, symmetric, circular, constant, or in memory, where the pixels that the
 * kernel reaches around the region must be there.
 *
 * Steps count elements. src and dst must not overlap. No work buffer. Forms ending in _MT run on the host's thread
 * pool, in bands of ceil(height / threads) rows, where pool is not null and threads > 1; else on the calling thread. The
 * result does not depend on it, and is the same bits on every machine. Thread-safe.
 *
 * Checks, in order:
 *   src, dst, weights or cfg null                      0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smaller step                       0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_CONVOLVE_H
#define DAXI_CONVOLVE_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

/* Configuration. 32 bytes. */
typedef struct DaxiConvolveCfg {
  DaxiSize kernel; /* 3 x 3 by default; sides 1..31 */
  int32_t anchorX; /* a column of the kernel, 0 to W - 1; default 1 */
  int32_t anchorY; /* a row of the kernel, 0 to H - 1; default 1 */
  int32_t shift;   /* 0..30, default 0; not used by kernels of floats */
  int32_t border;  /* 0..5: DAXI_BORDER_REPLICATE, the default, to ..._IN_MEMORY */
  double value;    /* of a constant border: 0; finite, taken to the nearest value of the type */
} DaxiConvolveCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_ConvolveDefaultCfg(DaxiConvolveCfg* cfg);

/* The kernel weightsX(i) weightsY(j); weightsX are kernel.width numbers, weightsY kernel.height. */
DAX_API DaxStatus DAXI_FilterSeparable_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size, const int16_t* weightsX, const int16_t* weightsY,
                                              const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_FilterSeparable_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                                 DaxiSize size, const int16_t* weightsX, const int16_t* weightsY,
                                                 const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_FilterSeparable_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                               DaxiSize size, const int16_t* weightsX, const int16_t* weightsY,
                                               const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_FilterSeparable_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                 DaxiSize size, const float* weightsX, const float* weightsY,
                                                 const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_FilterSeparable_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                                  DaxiSize size, const float* weightsX, const float* weightsY,
                                                  const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_FilterSeparable_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                               DaxiSize size, const float* weightsX, const float* weightsY,
                                               const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_FilterSeparable_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                 uint8_t* dst, int32_t dstStep, DaxiSize size, const int16_t* weightsX,
                                                 const int16_t* weightsY, const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_FilterSeparable_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                    int16_t* dst, int32_t dstStep, DaxiSize size,
                                                    const int16_t* weightsX, const int16_t* weightsY,
                                                    const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_FilterSeparable_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                  uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                  const int16_t* weightsX, const int16_t* weightsY,
                                                  const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_FilterSeparable_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                    float* dst, int32_t dstStep, DaxiSize size, const float* weightsX,
                                                    const float* weightsY, const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_FilterSeparable_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                     float* dst, int32_t dstStep, DaxiSize size, const float* weightsX,
                                                     const float* weightsY, const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_FilterSeparable_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                  float* dst, int32_t dstStep, DaxiSize size, const float* weightsX,
                                                  const float* weightsY, const DaxiConvolveCfg* cfg);

/* Any kernel; weights are kernel.width * kernel.height numbers, row by row. */
DAX_API DaxStatus DAXI_Filter_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                     const int16_t* weights, const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_Filter_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                        DaxiSize size, const int16_t* weights, const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_Filter_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                      DaxiSize size, const int16_t* weights, const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_Filter_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                        const float* weights, const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_Filter_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                         DaxiSize size, const float* weights, const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_Filter_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                      const float* weights, const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_Filter_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                        int32_t dstStep, DaxiSize size, const int16_t* weights,
                                        const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_Filter_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           int16_t* dst, int32_t dstStep, DaxiSize size, const int16_t* weights,
                                           const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_Filter_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                         uint16_t* dst, int32_t dstStep, DaxiSize size, const int16_t* weights,
                                         const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_Filter_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           float* dst, int32_t dstStep, DaxiSize size, const float* weights,
                                           const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_Filter_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            float* dst, int32_t dstStep, DaxiSize size, const float* weights,
                                            const DaxiConvolveCfg* cfg);
DAX_API DaxStatus DAXI_Filter_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                         int32_t dstStep, DaxiSize size, const float* weights,
                                         const DaxiConvolveCfg* cfg);

DAX_END_DECLS

#endif
