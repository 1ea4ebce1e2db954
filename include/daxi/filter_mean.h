/* Means over windows of mask.width x mask.height pixels.
 *
 * The window of pixel (x, y) covers the columns x - W / 2..x - W / 2 + W - 1 and the rows y - H / 2..y - H / 2 + H - 1:
 * even windows reach one pixel further left and up. The cost does not depend on the mask.
 *
 * Steps count elements. src and dst must not overlap. `buffer` holds at least the queried bytes and lies at a multiple
 * of the size of a float (64f and MeanInt: of a double). Thread-safe. When a check fails, nothing is written. */
#ifndef DAXI_FILTER_MEAN_H
#define DAXI_FILTER_MEAN_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* DAXI_FilterMean: the mean over the image extended symmetrically: column -1 is column 0, column -2 is column 1, column
 * w is column w - 1; rows likewise.
 *
 *   8u, 16u, 16s   exact sum, rounded to single precision, times 1 / (W H) in single precision; rounded by adding 0.5
 *                  (negative ones: subtracting it) and truncating
 *   32f, 64f       running sums in the pixels' precision times 1 / (W H): of every column over the rows of the window,
 *                  first from top to bottom, then plus the row that enters, minus the row that leaves; and of these
 *                  along the row likewise, from left to right. Rounding errors of the sums are carried along columns
 *                  and rows, and so are infinities and NaNs. Of 32f, with values 0..255 and 9 x 9 pixels, the greatest
 *                  error of a mean is 0.0003 at 640 x 480, 0.0007 at 2448 x 2048, 0.0009 at 5120 x 4096; after a value of
 *                  1e20 all means below and to the right of it are wrong.
 *
 * Checks, in order:
 *   buffer null                                                           0x10000014
 *   src null, size below 1 x 1, srcStep < width                           0x10000014, 0x1000001a, 0x1000001b
 *   dst null, dstStep < width                                             0x10000014, 0x1000001b
 *   W < 1, H < 1, W > width or H > height; 8u: W or H above 255           0x10000019
 *   _IS: isa < 0                                                          0x1000001c */

/* Work-buffer need of DAXI_FilterMean: 4 * width * height bytes (64f: 8 * width * height), rounded up to a multiple of
 * 128.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; a need that does not fit a signed
 * 64-bit integer -> 0x10000015. */
DAX_API DaxStatus DAXI_FilterMeanBufferSize_8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMeanBufferSize_16u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMeanBufferSize_16s(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMeanBufferSize_32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMeanBufferSize_64f(DaxiSize size, uint64_t* bytes);

/* A smaller buffer that suffices for the three 8u members on one thread: 2 (w + W / 2 + 8 (W / 16 + 1)) bytes, or 2 w
 * h for w < 9, rounded up to a multiple of 128.
 *
 * Checks, in order: bytes null -> 0x10000014; W or H outside 1..255, W > width or H > height -> 0x10000019; a need that
 * does not fit a signed 64-bit integer -> 0x10000015. */
DAX_API DaxStatus DAXI_FilterMeanBufferSize_8u_V2(DaxiSize size, DaxiSize mask, uint64_t* bytes);

/* Work-buffer need of DAXI_FilterMean_8u_C1R_MT: that of one thread (before it is rounded up) times `threads`, rounded
 * up; for threads < 2 as DAXI_FilterMeanBufferSize_8u_V2. Checks as there. */
DAX_API DaxStatus DAXI_FilterMeanBufferSize_8u_MT(DaxiSize size, DaxiSize mask, uint32_t threads, uint64_t* bytes);

DAX_API DaxStatus DAXI_FilterMean_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, DaxiSize mask, void* buffer);
DAX_API DaxStatus DAXI_FilterMean_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, DaxiSize mask, void* buffer);
DAX_API DaxStatus DAXI_FilterMean_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                          DaxiSize size, DaxiSize mask, void* buffer);
DAX_API DaxStatus DAXI_FilterMean_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                          DaxiSize mask, void* buffer);
DAX_API DaxStatus DAXI_FilterMean_64f_C1R(const double* src, int32_t srcStep, double* dst, int32_t dstStep,
                                          DaxiSize size, DaxiSize mask, void* buffer);

/* With an instruction-set code. */
DAX_API DaxStatus DAXI_FilterMean_8u_C1R_IS(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size, DaxiSize mask, void* buffer, int32_t isa);

/* On the host's thread pool, in bands of ceil(height / threads) rows, where width >= 9, pool is not null, threads > 1
 * and threads * H <= height; else on the calling thread. `threads` is the number of bands, which has a slice of the
 * buffer each: any number works with any pool, and the result does not depend on it. Returns the status of the host's
 * parallel-for, unchanged. */
DAX_API DaxStatus DAXI_FilterMean_8u_C1R_MT(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size, DaxiSize mask, void* buffer, uint32_t threads, void* pool);

/* DAXI_FilterMeanInt: the mean of the pixels of the window that lie in the image, n of them, as from an integral image,
 * but with exact sums of integers and sums of floats in double precision.
 *
 *   8u, 16u, 16s   sum / n, both rounded to single precision, rounded by adding 0.5 (negative ones: subtracting it) and
 *                  truncating
 *   32f            sum / n in double precision, then rounded to single precision
 *   64f            sum / n
 * The sums are differences of sums from the corner of the image on: A NaN OR AN INFINITY MAKES ALL MEANS BELOW AND TO
 * THE RIGHT OF IT NaN, and a value of 1e20 leaves errors of 1e4 there.
 *
 * Checks, in order:
 *   src null, size below 1 x 1, srcStep < width                           0x10000014, 0x1000001a, 0x1000001b
 *   dst null, dstStep < width                                             0x10000014, 0x1000001b
 *   buffer null                                                           0x10000014
 *   W < 1, H < 1, W > width or H > height                                 0x10000019
 *   a size for which the query fails                                      0x10000015 */

/* Work-buffer need of DAXI_FilterMeanInt: 4 (width + 1) (height + 1) bytes, rounded up to a multiple of 128.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; a need above 2^31 - 1 ->
 * 0x10000015. */
DAX_API DaxStatus DAXI_FilterMeanIntBufferSize_8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMeanIntBufferSize_16u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMeanIntBufferSize_16s(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMeanIntBufferSize_32f(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMeanIntBufferSize_64f(DaxiSize size, uint64_t* bytes);

DAX_API DaxStatus DAXI_FilterMeanInt_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size, DaxiSize mask, void* buffer);
DAX_API DaxStatus DAXI_FilterMeanInt_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                             DaxiSize size, DaxiSize mask, void* buffer);
DAX_API DaxStatus DAXI_FilterMeanInt_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                             DaxiSize size, DaxiSize mask, void* buffer);
DAX_API DaxStatus DAXI_FilterMeanInt_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                             DaxiSize size, DaxiSize mask, void* buffer);
DAX_API DaxStatus DAXI_FilterMeanInt_64f_C1R(const double* src, int32_t srcStep, double* dst, int32_t dstStep,
                                             DaxiSize size, DaxiSize mask, void* buffer);

DAX_END_DECLS

#endif
