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
 * Integers: sums are exact. Floats: doubles, added in raster order; NaN gives NaN. The variance is a sum of doubles, of
 * all types, about the mean in a second pass. The results are the same bits on every machine. No work buffer. Thread-safe.
 *
 *   src, srcStep    image, step in elements
 *   size            of the region
 *   sharpness       receives the number
 *
 * Checks, in order:
 *   src or sharpness null                     0x10000014
 *   width < 3 or height < 3                   0x1000001a
 *   srcStep < width                           0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_SHARPNESS_H
#define DAXI_SHARPNESS_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

DAX_API DaxStatus DAXI_SharpnessTenengrad_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* sharpness);
DAX_API DaxStatus DAXI_SharpnessTenengrad_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size,
                                                  double* sharpness);
DAX_API DaxStatus DAXI_SharpnessTenengrad_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* sharpness);

DAX_API DaxStatus DAXI_SharpnessLaplacianVariance_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                         double* sharpness);
DAX_API DaxStatus DAXI_SharpnessLaplacianVariance_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size,
                                                          double* sharpness);
DAX_API DaxStatus DAXI_SharpnessLaplacianVariance_32f_C1R(const float* src, int32_t srcStep, DaxiSize size,
                                                          double* sharpness);

DAX_API DaxStatus DAXI_SharpnessBrenner_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, double* sharpness);
DAX_API DaxStatus DAXI_SharpnessBrenner_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, double* sharpness);
DAX_API DaxStatus DAXI_SharpnessBrenner_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, double* sharpness);

DAX_END_DECLS

#endif
