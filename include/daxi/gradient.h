/* First and second derivatives by windows of 3 x 3 or 5 x 5 pixels.
 *
 * A first derivative along x smooths along the columns and derives along the rows, one along y the other way round. Taps:
 *              smoothing 3     derivative 3   smoothing 5         derivative 5
 *   Sobel      1 2 1           -1 0 1         1 4 6 4 1           -1 -2 0 2 1
 *   Prewitt    1 1 1           -1 0 1         1 1 1 1 1           -2 -1 0 1 2
 *   Scharr     3 10 3          -1 0 1         6 62 120 62 6       -21 -86 0 86 21
 * Results are not normalised, but those of Scharr's 5 x 5 window are multiplied by 2^-16, with which a slope of 1 gives
 * 1.0; it has no integer results. They are positive where the image grows brighter along +x or +y. 8u16s is exact; 16u32f is
 * an exact integer, rounded to a float once; 32f is computed in floats, columns first, from the centre of the window outwards.
 *
 * Borders: replicated, mirrored, symmetric, circular, constant, or in memory, where the pixels around the region that the
 * window reaches must be there.
 *
 * Arguments: `aperture` 3 or 5; `border` DAXI_BORDER_REPLICATE to ..._IN_MEMORY; `value` of a constant border, taken to the
 * nearest value of the type, and not used by the others. Steps count elements. src and dst must not overlap. No work
 * buffer. Forms ending in _MT run on the host's thread pool, in bands of ceil(height / threads) rows, where pool is not null
 * and threads > 1; else on the calling thread. The result does not depend on it, and is the same bits on every machine.
 * Thread-safe.
 *
 * Checks, in order:
 *   src or dst null                                     0x10000014
 *   width < 1 or height < 1                             0x1000001a
 *   width above the smaller step                        0x1000001b
 *   aperture other than 3 and 5                         0x10000019
 *   border < 0 or border > 5                            0x10000019
 *   value not finite                                    0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_GRADIENT_H
#define DAXI_GRADIENT_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

/* dst = the derivative along x, by Sobel's windows. */
DAX_API DaxStatus DAXI_SobelX_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_SobelX_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           int16_t* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                           int32_t border, double value);
DAX_API DaxStatus DAXI_SobelX_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                         DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_SobelX_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            float* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                            int32_t border, double value);
DAX_API DaxStatus DAXI_SobelX_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                      int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_SobelX_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                         int32_t dstStep, DaxiSize size, int32_t aperture, int32_t border,
                                         double value);

/* dst = the derivative along y, by Sobel's windows. */
DAX_API DaxStatus DAXI_SobelY_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_SobelY_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           int16_t* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                           int32_t border, double value);
DAX_API DaxStatus DAXI_SobelY_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                         DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_SobelY_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            float* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                            int32_t border, double value);
DAX_API DaxStatus DAXI_SobelY_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                      int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_SobelY_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                         int32_t dstStep, DaxiSize size, int32_t aperture, int32_t border,
                                         double value);

/* dst = the derivative along x, by Prewitt's. */
DAX_API DaxStatus DAXI_PrewittX_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_PrewittX_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                             int16_t* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                             int32_t border, double value);
DAX_API DaxStatus DAXI_PrewittX_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                           DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_PrewittX_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                              float* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                              int32_t border, double value);
DAX_API DaxStatus DAXI_PrewittX_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                        int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_PrewittX_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size, int32_t aperture, int32_t border,
                                           double value);

/* dst = the derivative along y, by Prewitt's. */
DAX_API DaxStatus DAXI_PrewittY_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                          DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_PrewittY_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                             int16_t* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                             int32_t border, double value);
DAX_API DaxStatus DAXI_PrewittY_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                           DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_PrewittY_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                              float* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                              int32_t border, double value);
DAX_API DaxStatus DAXI_PrewittY_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                        int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_PrewittY_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size, int32_t aperture, int32_t border,
                                           double value);

/* dst = the derivative along x, by Scharr's; checked last: 8u: aperture other than 3 -> 0x10000019. */
DAX_API DaxStatus DAXI_ScharrX_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_ScharrX_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            int16_t* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                            int32_t border, double value);
DAX_API DaxStatus DAXI_ScharrX_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                          DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_ScharrX_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                             int32_t border, double value);
DAX_API DaxStatus DAXI_ScharrX_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                       int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_ScharrX_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                          int32_t dstStep, DaxiSize size, int32_t aperture, int32_t border,
                                          double value);

/* dst = the derivative along y, by Scharr's; checked last: 8u: aperture other than 3 -> 0x10000019. */
DAX_API DaxStatus DAXI_ScharrY_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_ScharrY_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            int16_t* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                            int32_t border, double value);
DAX_API DaxStatus DAXI_ScharrY_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                          DaxiSize size, int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_ScharrY_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, int32_t aperture,
                                             int32_t border, double value);
DAX_API DaxStatus DAXI_ScharrY_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                       int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_ScharrY_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                          int32_t dstStep, DaxiSize size, int32_t aperture, int32_t border,
                                          double value);

/* dst = the sum of the neighbours, less as many times the centre: four neighbours, or eight, diagonal ones too.
 * Checks, in order: src or dst null -> 0x10000014; width < 1 or height < 1 -> 0x1000001a; width above the smaller step -> 0x1000001b;
 * neighbours other than 4 and 8 -> 0x10000019; border < 0 or border > 5 -> 0x10000019; value not finite -> 0x10000019. */
DAX_API DaxStatus DAXI_Laplace_8u16s_C1R(const uint8_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                         DaxiSize size, int32_t neighbours, int32_t border, double value);
DAX_API DaxStatus DAXI_Laplace_8u16s_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            int16_t* dst, int32_t dstStep, DaxiSize size, int32_t neighbours,
                                            int32_t border, double value);
DAX_API DaxStatus DAXI_Laplace_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                          DaxiSize size, int32_t neighbours, int32_t border, double value);
DAX_API DaxStatus DAXI_Laplace_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, int32_t neighbours,
                                             int32_t border, double value);
DAX_API DaxStatus DAXI_Laplace_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                       int32_t neighbours, int32_t border, double value);
DAX_API DaxStatus DAXI_Laplace_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                          int32_t dstStep, DaxiSize size, int32_t neighbours, int32_t border,
                                          double value);

DAX_END_DECLS

#endif
