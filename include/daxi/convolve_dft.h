/* Convolution and correlation with kernels of any size, by Fourier transforms: the cost hardly depends on the kernel.
 *
 * Outside of the source there is 0. Of a source of W x H and a kernel of w x h the result is W + w - 1 columns and H + h
 * - 1 rows (full), or of these the W x H from ((w - 1) / 2, (h - 1) / 2) on (same), or the (W - w + 1) x (H - h + 1)
 * that need nothing from outside (valid).
 *
 * Both are transformed without their means, whose parts of the result are sums over rectangles and are added back in
 * double precision; the sides are padded to the next ones without a prime factor above 7. So the error is about 1e-6
 * (32f) or 1e-15 (64f) times the L2 norms of source and kernel about their means, multiplied: with grey levels of 100
 * to 155 some 80 times less than if the means were left in. The results are the same bits on every machine. An infinity
 * or a NaN spoils all of the result.
 *
 * Steps count elements. Images must not overlap. Forms ending in _MT run on the host's pool, in at most 8 tiles; pool
 * may be null, and the result does not depend on it. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, kernel, dst or buffer null                                                              0x10000014
 *   srcSize or kernelSize outside 1..1048576                                                     0x1000001a
 *   part outside 0..2                                                                            0x10000019
 *   of the part `valid`: kernelSize larger than srcSize                                          0x1000001a
 *   srcStep below a row of the source, kernelStep of the kernel, dstStep of the result           0x1000001b
 * A failed call writes nothing; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_CONVOLVE_DFT_H
#define DAXI_CONVOLVE_DFT_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* What of a result is wanted. */
typedef enum DaxiConvolvePart {
  DAXI_CONVOLVE_FULL = 0,
  DAXI_CONVOLVE_SAME = 1,
  DAXI_CONVOLVE_VALID = 2
} DaxiConvolvePart;

/* The size of a result.
 *
 * Checks, in order: dstSize null -> 0x10000014; srcSize or kernelSize outside 1..1048576 -> 0x10000019; part
 * outside 0..2 -> 0x10000019; of the part `valid`: kernelSize larger than srcSize -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_ConvolveDftSize(DaxiSize srcSize, DaxiSize kernelSize, int32_t part, DaxiSize* dstSize);

/* Bytes of work buffer of both operations, forms ending in _MT too.
 *
 * Checks, in order: bytes null -> 0x10000014; srcSize or kernelSize outside 1..1048576 -> 0x10000019; a need that does
 * not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_ConvolveDftBufferSize_32f(DaxiSize srcSize, DaxiSize kernelSize, uint64_t* bytes);
DAX_API DaxStatus DAXI_ConvolveDftBufferSize_64f(DaxiSize srcSize, DaxiSize kernelSize, uint64_t* bytes);

/* full(x, y) = sum over i, j of kernel(i, j) src(x - i, y - j). */
DAX_API DaxStatus DAXI_ConvolveDft_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, const float* kernel,
                                           int32_t kernelStep, DaxiSize kernelSize, float* dst, int32_t dstStep,
                                           int32_t part, void* buffer);
DAX_API DaxStatus DAXI_ConvolveDft_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                              DaxiSize srcSize, const float* kernel, int32_t kernelStep,
                                              DaxiSize kernelSize, float* dst, int32_t dstStep, int32_t part,
                                              void* buffer);
DAX_API DaxStatus DAXI_ConvolveDft_64f_C1R(const double* src, int32_t srcStep, DaxiSize srcSize, const double* kernel,
                                           int32_t kernelStep, DaxiSize kernelSize, double* dst, int32_t dstStep,
                                           int32_t part, void* buffer);
DAX_API DaxStatus DAXI_ConvolveDft_64f_C1R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep,
                                              DaxiSize srcSize, const double* kernel, int32_t kernelStep,
                                              DaxiSize kernelSize, double* dst, int32_t dstStep, int32_t part,
                                              void* buffer);

/* full(x, y) = sum over i, j of kernel(i, j) src(x - (w - 1) + i, y - (h - 1) + j): the pixel (x, y) of the part `valid`
 * has the kernel's corner on the pixel (x, y) of the source. */
DAX_API DaxStatus DAXI_CorrelateDft_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, const float* kernel,
                                            int32_t kernelStep, DaxiSize kernelSize, float* dst, int32_t dstStep,
                                            int32_t part, void* buffer);
DAX_API DaxStatus DAXI_CorrelateDft_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                               DaxiSize srcSize, const float* kernel, int32_t kernelStep,
                                               DaxiSize kernelSize, float* dst, int32_t dstStep, int32_t part,
                                               void* buffer);
DAX_API DaxStatus DAXI_CorrelateDft_64f_C1R(const double* src, int32_t srcStep, DaxiSize srcSize, const double* kernel,
                                            int32_t kernelStep, DaxiSize kernelSize, double* dst, int32_t dstStep,
                                            int32_t part, void* buffer);
DAX_API DaxStatus DAXI_CorrelateDft_64f_C1R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep,
                                               DaxiSize srcSize, const double* kernel, int32_t kernelStep,
                                               DaxiSize kernelSize, double* dst, int32_t dstStep, int32_t part,
                                               void* buffer);

DAX_END_DECLS

#endif
