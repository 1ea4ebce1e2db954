/* Magnitude and direction of the gradient in one pass.
 *
 * gx and gy are the derivatives of gradient.h, by the windows of Sobel, Prewitt or Scharr.
 *   mag = sqrt(gx^2 + gy^2), in floats, within 2 units in the last place of the gradients' own
 *   dir = the angle of (gx, gy) in radians, in [-pi, pi], from the x axis towards the y axis, clockwise on the screen,
 *         within 4e-7; 0 where the gradient is 0
 *
 * 32f: squares must not exceed floats: gradients below 1.3e19. NaN gives NaN in both. mag and dir must overlap neither
 * src nor each other. Steps count elements. Borders, steps and forms ending in _MT are as in gradient.h. No work buffer.
 * The results are the same bits on every machine. Thread-safe.
 *
 * Checks, in order:
 *   src, mag or dir null                                0x10000014
 *   width < 1 or height < 1                             0x1000001a
 *   width above the smallest step                       0x1000001b
 *   kernel < 0 or kernel > 2                            0x10000019
 *   aperture other than 3 and 5                         0x10000019
 *   border < 0 or border > 5                            0x10000019
 *   value not finite                                    0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_GRADIENT_MAG_DIR_H
#define DAXI_GRADIENT_MAG_DIR_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

enum { DAXI_GRADIENT_SOBEL = 0, DAXI_GRADIENT_PREWITT = 1, DAXI_GRADIENT_SCHARR = 2 };

DAX_API DaxStatus DAXI_GradientMagDir_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* mag, int32_t magStep,
                                                float* dir, int32_t dirStep, DaxiSize size, int32_t kernel,
                                                int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_GradientMagDir_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* mag, int32_t magStep,
                                                 float* dir, int32_t dirStep, DaxiSize size, int32_t kernel,
                                                 int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_GradientMagDir_32f_C1R(const float* src, int32_t srcStep, float* mag, int32_t magStep,
                                              float* dir, int32_t dirStep, DaxiSize size, int32_t kernel,
                                              int32_t aperture, int32_t border, double value);
DAX_API DaxStatus DAXI_GradientMagDir_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                   float* mag, int32_t magStep, float* dir, int32_t dirStep,
                                                   DaxiSize size, int32_t kernel, int32_t aperture, int32_t border,
                                                   double value);
DAX_API DaxStatus DAXI_GradientMagDir_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                    float* mag, int32_t magStep, float* dir, int32_t dirStep,
                                                    DaxiSize size, int32_t kernel, int32_t aperture, int32_t border,
                                                    double value);
DAX_API DaxStatus DAXI_GradientMagDir_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                 float* mag, int32_t magStep, float* dir, int32_t dirStep,
                                                 DaxiSize size, int32_t kernel, int32_t aperture, int32_t border,
                                                 double value);

DAX_END_DECLS

#endif
