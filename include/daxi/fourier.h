/* Discrete Fourier transforms of pictures and, as pictures of one row, of signals.
 *
 * Forward  X(u, v) = s sum over x, y of x(x, y) e^(-2 pi i (u x / W + v y / H)),
 * backward x(x, y) = s sum over u, v of X(u, v) e^(+2 pi i (u x / W + v y / H)).
 * The factor s is 1 but where `scale` says otherwise: by default 1 / (W H) backward, so that backward undoes forward.
 * Frequency u is u / W periods a pixel, or that minus 1 above W / 2; X(0, 0) lies in the first pixel.
 *
 * Any sides from 1 to 2^26. Those without a prime factor above 7 are transformed in stages of radix 4, 2, 3, 5 and 7
 * (DAXI_DftGoodSide); others are some four times slower, by a convolution with a chirp (Bluestein, A linear filtering
 * approach to the computation of discrete Fourier transform, 1970). A plan holds the tables for one size and type and
 * serves complex and real transforms, both directions, and any number of threads at once. It is a block of the caller's
 * at a multiple of 8, which may be moved, copied, written to a file and read again. A long signal is faster as one row
 * than as one column; a real one alone costs as much as a complex one.
 *
 * Accuracy, in the L2 norm, relative: 3e-7 (32fc) and 6e-16 (64fc) to 2^20 points, with a chirp 6e-7 and 1.2e-15.
 * The results are the same bits on every machine, with any pool. A row of a picture and the same row alone may be
 * computed in different orders. Infinities and NaN spread over all of the result.
 *
 * Steps count elements. No work buffer of one call may serve another at the same time. Forms ending in _MT run on the
 * host's pool, in at most 8 tiles; pool may be null. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, dst, model or buffer null                                              0x10000014
 *   width or height outside 1..67108864                                         0x1000001a
 *   srcStep below a row of the source, dstStep below one of the destination     0x1000001b
 *   scale outside 0..2                                                          0x10000019
 *   a model of another kind, type or size, cut short, or at an address that is no multiple of 8 -> 0x10000019
 *   a model of another version                                                  0x10000020
 * A failed call writes nothing; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_FOURIER_H
#define DAXI_FOURIER_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* What the sums are multiplied by. */
typedef enum DaxiDftScale {
  DAXI_DFT_UNSCALED = 0, /* nothing */
  DAXI_DFT_BACKWARD = 1, /* 1 / (W H), of backward transforms only */
  DAXI_DFT_UNITARY = 2   /* 1 / sqrt(W H), in both directions */
} DaxiDftScale;

/* The smallest number from n on without a prime factor above 7: a side to pad to. Checks, in order: side null ->
 * 0x10000014; n outside 1..67108864 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_DftGoodSide(int32_t n, int32_t* side);

/* Bytes of the plan of a size, about 8 (32f) or 16 (64f) bytes for each of W + H, and up to some 80 where a side needs
 * a chirp.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height outside 1..67108864 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_DftPlanModelSize_32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_DftPlanModelSize_64f(DaxiSize size, uint64_t* bytes);

/* Makes a plan for all transforms of a size: _32f for those of 32f and 32fc, _64f for those of 64f and 64fc.
 *
 * Checks, in order: model null -> 0x10000014; width or height outside 1..67108864 -> 0x1000001a; model at an address
 * that is no multiple of 8 -> 0x10000019. A failed call writes nothing. Thread-safe. */
DAX_API DaxStatus DAXI_DftPlan_32f(DaxiSize size, void* model);
DAX_API DaxStatus DAXI_DftPlan_64f(DaxiSize size, void* model);

/* Bytes of work buffer of all transforms of a size, forms ending in _MT too.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height outside 1..67108864 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_DftBufferSize_32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_DftBufferSize_64f(DaxiSize size, uint64_t* bytes);

/* Complex, forward. dst may equal src with the same step; else they must not overlap. */
DAX_API DaxStatus DAXI_Dft_32fc_C1R(const DaxComplex32f* src, int32_t srcStep, DaxComplex32f* dst, int32_t dstStep,
                                    DaxiSize size, int32_t scale, const void* model, uint64_t modelBytes, void* buffer);
DAX_API DaxStatus DAXI_Dft_32fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex32f* src, int32_t srcStep,
                                       DaxComplex32f* dst, int32_t dstStep, DaxiSize size, int32_t scale,
                                       const void* model, uint64_t modelBytes, void* buffer);
DAX_API DaxStatus DAXI_Dft_64fc_C1R(const DaxComplex64f* src, int32_t srcStep, DaxComplex64f* dst, int32_t dstStep,
                                    DaxiSize size, int32_t scale, const void* model, uint64_t modelBytes, void* buffer);
DAX_API DaxStatus DAXI_Dft_64fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex64f* src, int32_t srcStep,
                                       DaxComplex64f* dst, int32_t dstStep, DaxiSize size, int32_t scale,
                                       const void* model, uint64_t modelBytes, void* buffer);

/* Complex, backward. dst may equal src with the same step; else they must not overlap. */
DAX_API DaxStatus DAXI_Idft_32fc_C1R(const DaxComplex32f* src, int32_t srcStep, DaxComplex32f* dst, int32_t dstStep,
                                     DaxiSize size, int32_t scale, const void* model, uint64_t modelBytes,
                                     void* buffer);
DAX_API DaxStatus DAXI_Idft_32fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex32f* src, int32_t srcStep,
                                        DaxComplex32f* dst, int32_t dstStep, DaxiSize size, int32_t scale,
                                        const void* model, uint64_t modelBytes, void* buffer);
DAX_API DaxStatus DAXI_Idft_64fc_C1R(const DaxComplex64f* src, int32_t srcStep, DaxComplex64f* dst, int32_t dstStep,
                                     DaxiSize size, int32_t scale, const void* model, uint64_t modelBytes,
                                     void* buffer);
DAX_API DaxStatus DAXI_Idft_64fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex64f* src, int32_t srcStep,
                                        DaxComplex64f* dst, int32_t dstStep, DaxiSize size, int32_t scale,
                                        const void* model, uint64_t modelBytes, void* buffer);

/* Of a real picture of W x H the columns 0..W / 2 of its spectrum: dst has W / 2 + 1 columns and H rows. The others are
 * X(W - u, H - v) = conj(X(u, v)). src and dst must not overlap. */
DAX_API DaxStatus DAXI_DftReal_32f_C1R(const float* src, int32_t srcStep, DaxComplex32f* dst, int32_t dstStep,
                                       DaxiSize size, int32_t scale, const void* model, uint64_t modelBytes,
                                       void* buffer);
DAX_API DaxStatus DAXI_DftReal_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                          DaxComplex32f* dst, int32_t dstStep, DaxiSize size, int32_t scale,
                                          const void* model, uint64_t modelBytes, void* buffer);

/* The same in double precision. */
DAX_API DaxStatus DAXI_DftReal_64f_C1R(const double* src, int32_t srcStep, DaxComplex64f* dst, int32_t dstStep,
                                       DaxiSize size, int32_t scale, const void* model, uint64_t modelBytes,
                                       void* buffer);
DAX_API DaxStatus DAXI_DftReal_64f_C1R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep,
                                          DaxComplex64f* dst, int32_t dstStep, DaxiSize size, int32_t scale,
                                          const void* model, uint64_t modelBytes, void* buffer);

/* The real picture of W x H, which is `size`, of such W / 2 + 1 columns; they are kept. What could not come from a real
 * picture does not count: the imaginary parts of columns 0 and, of an even width, W / 2 after the transform along y.
 * src and dst must not overlap. */
DAX_API DaxStatus DAXI_IdftReal_32f_C1R(const DaxComplex32f* src, int32_t srcStep, float* dst, int32_t dstStep,
                                        DaxiSize size, int32_t scale, const void* model, uint64_t modelBytes,
                                        void* buffer);
DAX_API DaxStatus DAXI_IdftReal_32f_C1R_MT(void* pool, uint32_t threads, const DaxComplex32f* src, int32_t srcStep,
                                           float* dst, int32_t dstStep, DaxiSize size, int32_t scale, const void* model,
                                           uint64_t modelBytes, void* buffer);

/* The same in double precision. */
DAX_API DaxStatus DAXI_IdftReal_64f_C1R(const DaxComplex64f* src, int32_t srcStep, double* dst, int32_t dstStep,
                                        DaxiSize size, int32_t scale, const void* model, uint64_t modelBytes,
                                        void* buffer);
DAX_API DaxStatus DAXI_IdftReal_64f_C1R_MT(void* pool, uint32_t threads, const DaxComplex64f* src, int32_t srcStep,
                                           double* dst, int32_t dstStep, DaxiSize size, int32_t scale,
                                           const void* model, uint64_t modelBytes, void* buffer);

DAX_END_DECLS

#endif
