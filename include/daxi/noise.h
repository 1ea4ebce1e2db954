/* The deviation of the noise in one image.
 *
 * Both estimates look at the image through the difference of two Laplace operators, which takes out what is flat or
 * bends evenly,
 *    1 -2  1
 *   -2  4 -2
 *    1 -2  1
 * and whose response r to noise of deviation s has the deviation 6 s.
 *
 *   Immerkaer   sqrt(pi / 2) / 6 times the mean of |r| (Immerkaer, Fast noise variance estimation, Computer Vision and
 *               Image Understanding 64, 1996). Texture and edges raise it: for images that are mostly smooth
 *   Mad         the median of |r|, divided by 6 times 0.6744897501960817. Half of the pixels may be edges before it
 *               fails. The median of integers is interpolated in their histogram, each value k being spread evenly
 *               over k - 1/2 to k + 1/2, and 0 over 0 to 1/2; that of floats is the lower one of the responses, rounded
 *               to single precision, so that pixels near the end of its range give infinity
 *
 * Integers carry the noise of their rounding, a variance of 1/12, which is subtracted from the square of the estimate
 * (0 if it is less). Deviations below one half of a level are not told reliably: the noise no longer moves every pixel.
 *
 * Clipped pixels do not vary. Windows count whose nine pixels lie between the limits, low < v < high: 0 and 255 for
 * all of 8u, 0 and 4095 for 12 bits in 16u, infinities for floats. NaN and infinities never count.
 *
 *   src, srcStep    image, step in elements
 *   size            of the region; the outermost pixels are only looked at
 *   low, high       the limits of what counts, both excluded; infinities are possible
 *   sigma           receives the deviation, in grey levels
 *   buffer          as many bytes as the query says, aligned as by malloc; forms without _MT need none
 *
 * Sums of integers are exact, floats are doubles: of 256 windows of a row from left to right, such sums along the row, rows
 * from top to bottom. The results are the same bits on every machine. Forms ending in _MT run on the host's pool, in at
 * most `threads` tiles; any number works with any pool, results do not depend on it, and pool may be null. Thread-safe
 * for distinct buffers.
 *
 * Checks, in order:
 *   src, sigma or buffer null                    0x10000014
 *   width < 3 or height < 3                      0x1000001a
 *   srcStep < width                              0x1000001b
 *   not low < high                               0x10000019
 *   no window counts                             0x10000033
 * A failed call writes nothing but the buffer; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_NOISE_H
#define DAXI_NOISE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

DAX_API DaxStatus DAXI_NoiseImmerkaer_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double low,
                                             double high, double* sigma);
DAX_API DaxStatus DAXI_NoiseImmerkaer_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double low,
                                              double high, double* sigma);
DAX_API DaxStatus DAXI_NoiseImmerkaer_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double low,
                                              double high, double* sigma);
DAX_API DaxStatus DAXI_NoiseImmerkaer_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double low, double high,
                                              double* sigma);
DAX_API DaxStatus DAXI_NoiseImmerkaer_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                DaxiSize size, double low, double high, double* sigma, void* buffer);
DAX_API DaxStatus DAXI_NoiseImmerkaer_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                 DaxiSize size, double low, double high, double* sigma, void* buffer);
DAX_API DaxStatus DAXI_NoiseImmerkaer_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                 DaxiSize size, double low, double high, double* sigma, void* buffer);
DAX_API DaxStatus DAXI_NoiseImmerkaer_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                 DaxiSize size, double low, double high, double* sigma, void* buffer);

DAX_API DaxStatus DAXI_NoiseMad_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double low, double high,
                                       double* sigma);
DAX_API DaxStatus DAXI_NoiseMad_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double low, double high,
                                        double* sigma);
DAX_API DaxStatus DAXI_NoiseMad_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double low, double high,
                                        double* sigma);
DAX_API DaxStatus DAXI_NoiseMad_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double low, double high,
                                        double* sigma);
DAX_API DaxStatus DAXI_NoiseMad_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          DaxiSize size, double low, double high, double* sigma, void* buffer);
DAX_API DaxStatus DAXI_NoiseMad_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           DaxiSize size, double low, double high, double* sigma, void* buffer);
DAX_API DaxStatus DAXI_NoiseMad_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                           DaxiSize size, double low, double high, double* sigma, void* buffer);
DAX_API DaxStatus DAXI_NoiseMad_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                           DaxiSize size, double low, double high, double* sigma, void* buffer);

/* Bytes of work buffer for the same arguments.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 3 or height < 3 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_NoiseImmerkaerBufferSize_8u_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_NoiseImmerkaerBufferSize_16u_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_NoiseImmerkaerBufferSize_16s_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_NoiseImmerkaerBufferSize_32f_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_NoiseMadBufferSize_8u_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_NoiseMadBufferSize_16u_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_NoiseMadBufferSize_16s_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_NoiseMadBufferSize_32f_MT(DaxiSize size, uint32_t threads, uint64_t* bytes);

DAX_END_DECLS

#endif
