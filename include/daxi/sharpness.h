/* How sharp a region is: numbers that are greatest where the lens is in focus, to be compared between images of one
 * scene, one exposure and one region.
 *
 *   Tenengrad           the mean of gx^2 + gy^2, gx and gy being those of Sobel's 3 x 3 operators without a factor
 *                       (Tenenbaum, Accommodation in computer vision, 1970)
 *   LaplacianVariance   the variance, divided by n, of the Laplace operator of four neighbours, the sum of the
 *                       neighbours minus four times the pixel (Pech-Pacheco et al., Diatom autofocusing in brightfield
 *                       microscopy, 2000)
 *   Brenner             the mean of (v(x + 1, y) - v(x - 1, y))^2 (Brenner et al., An automated microscope for cytologic
 *                       research, 1976)
 *
 * All are means over the pixels whose 3 x 3 neighbourhood lies in the region, so that they compare. Noise adds to each
 * of them: 24, 20 and 2 times its variance.
 *
 * Integers: sums are exact. Floats: doubles, added along each row, and row by row; NaN gives NaN. The variance is such a
 * sum of doubles, of all types, about the mean in a second pass. The results are the same bits on every machine. Forms
 * ending in _MT run on the host's pool, in at most `threads` tiles; any number works with any pool, results do not depend
 * on it, and pool may be null. Thread-safe for distinct buffers.
 *
 *   src, srcStep    image, step in elements
 *   size            of the region
 *   sharpness       receives the number
 *   buffer          as many bytes as the query says, aligned as by malloc; forms without _MT need none
 *
 * Checks, in order:
 *   src, sharpness or buffer null             0x10000014
 *   width < 3 or height < 3                   0x1000001a
 *   srcStep < width                           0x1000001b
 * A failed call writes nothing but the buffer; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_SHARPNESS_H
#define DAXI_SHARPNESS_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

DAX_API DaxStatus DAXI_SharpnessTenengrad_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* sharpness);
DAX_API DaxStatus DAXI_SharpnessTenengrad_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size,
                                                  double* sharpness);
DAX_API DaxStatus DAXI_SharpnessTenengrad_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size,
                                                  double* sharpness);
DAX_API DaxStatus DAXI_SharpnessTenengrad_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* sharpness);
DAX_API DaxStatus DAXI_SharpnessTenengrad_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                    DaxiSize size, double* sharpness, void* buffer);
DAX_API DaxStatus DAXI_SharpnessTenengrad_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                     DaxiSize size, double* sharpness, void* buffer);
DAX_API DaxStatus DAXI_SharpnessTenengrad_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                     DaxiSize size, double* sharpness, void* buffer);
DAX_API DaxStatus DAXI_SharpnessTenengrad_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                     DaxiSize size, double* sharpness, void* buffer);

DAX_API DaxStatus DAXI_SharpnessLaplacianVariance_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                         double* sharpness);
DAX_API DaxStatus DAXI_SharpnessLaplacianVariance_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size,
                                                          double* sharpness);
DAX_API DaxStatus DAXI_SharpnessLaplacianVariance_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size,
                                                          double* sharpness);
DAX_API DaxStatus DAXI_SharpnessLaplacianVariance_32f_C1R(const float* src, int32_t srcStep, DaxiSize size,
                                                          double* sharpness);
DAX_API DaxStatus DAXI_SharpnessLaplacianVariance_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src,
                                                            int32_t srcStep, DaxiSize size, double* sharpness,
                                                            void* buffer);
DAX_API DaxStatus DAXI_SharpnessLaplacianVariance_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src,
                                                             int32_t srcStep, DaxiSize size, double* sharpness,
                                                             void* buffer);
DAX_API DaxStatus DAXI_SharpnessLaplacianVariance_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src,
                                                             int32_t srcStep, DaxiSize size, double* sharpness,
                                                             void* buffer);
DAX_API DaxStatus DAXI_SharpnessLaplacianVariance_32f_C1R_MT(void* pool, uint32_t threads, const float* src,
                                                             int32_t srcStep, DaxiSize size, double* sharpness,
                                                             void* buffer);

DAX_API DaxStatus DAXI_SharpnessBrenner_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* sharpness);
DAX_API DaxStatus DAXI_SharpnessBrenner_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* sharpness);
DAX_API DaxStatus DAXI_SharpnessBrenner_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize size, double* sharpness);
DAX_API DaxStatus DAXI_SharpnessBrenner_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* sharpness);
DAX_API DaxStatus DAXI_SharpnessBrenner_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                  DaxiSize size, double* sharpness, void* buffer);
DAX_API DaxStatus DAXI_SharpnessBrenner_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                   DaxiSize size, double* sharpness, void* buffer);
DAX_API DaxStatus DAXI_SharpnessBrenner_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                   DaxiSize size, double* sharpness, void* buffer);
DAX_API DaxStatus DAXI_SharpnessBrenner_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                   DaxiSize size, double* sharpness, void* buffer);

/* Bytes of work buffer for regions of this size.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 3 or height < 3 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_SharpnessTenengradBufferSize_8u_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_SharpnessTenengradBufferSize_16u_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_SharpnessTenengradBufferSize_16s_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_SharpnessTenengradBufferSize_32f_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_SharpnessLaplacianVarianceBufferSize_8u_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_SharpnessLaplacianVarianceBufferSize_16u_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_SharpnessLaplacianVarianceBufferSize_16s_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_SharpnessLaplacianVarianceBufferSize_32f_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_SharpnessBrennerBufferSize_8u_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_SharpnessBrennerBufferSize_16u_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_SharpnessBrennerBufferSize_16s_MT(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_SharpnessBrennerBufferSize_32f_MT(DaxiSize size, uint64_t* bytes);

DAX_END_DECLS

#endif
