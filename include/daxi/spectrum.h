/* What is in spectra, number by number: magnitude, phase, picture; products of two; and the middle moved to the corner.
 *
 * 32fc is computed in double precision and rounded once, within 0.51 units of the last place; 64fc within 2 units.
 * Infinities and NaN go through as IEEE says. Steps count elements. Images must not overlap unless a function says
 * otherwise. No work buffer. Thread-safe. The results are the same bits on every machine (NaN
 * payloads apart).
 *
 * _MT: on the host's thread pool, in bands of ceil(height / threads) rows, where pool is not null and threads > 1; else
 * on the calling thread. The result does not depend on it. Returns the status of the host's parallel-for, unchanged.
 *
 * Checks, in order:
 *   an image null                       0x10000014
 *   width < 1 or height < 1             0x1000001a
 *   width above the smallest step       0x1000001b
 *   back other than 0 and 1             0x10000019
 * When a check fails, nothing is written. */
#ifndef DAXI_SPECTRUM_H
#define DAXI_SPECTRUM_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = |src|, the square root of the sum of the squares of both parts; 64fc: of parts up to 1e154. */
DAX_API DaxStatus DAXI_Magnitude_32fc32f_C1R(const DaxComplex32f* src, int32_t srcStep, float* dst, int32_t dstStep,
                                             DaxiSize size);
DAX_API DaxStatus DAXI_Magnitude_32fc32f_C1R_MT(void* pool, uint32_t threads, const DaxComplex32f* src, int32_t srcStep,
                                                float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Magnitude_64fc64f_C1R(const DaxComplex64f* src, int32_t srcStep, double* dst, int32_t dstStep,
                                             DaxiSize size);
DAX_API DaxStatus DAXI_Magnitude_64fc64f_C1R_MT(void* pool, uint32_t threads, const DaxComplex64f* src, int32_t srcStep,
                                                double* dst, int32_t dstStep, DaxiSize size);

/* dst = the angle of src in -pi..pi, 0 of 0. */
DAX_API DaxStatus DAXI_Phase_32fc32f_C1R(const DaxComplex32f* src, int32_t srcStep, float* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_Phase_32fc32f_C1R_MT(void* pool, uint32_t threads, const DaxComplex32f* src, int32_t srcStep,
                                            float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Phase_64fc64f_C1R(const DaxComplex64f* src, int32_t srcStep, double* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_Phase_64fc64f_C1R_MT(void* pool, uint32_t threads, const DaxComplex64f* src, int32_t srcStep,
                                            double* dst, int32_t dstStep, DaxiSize size);

/* dst = ln(1 + |src|), of which a picture can be made; 64fc: of parts up to 1e154. */
DAX_API DaxStatus DAXI_LogSpectrum_32fc32f_C1R(const DaxComplex32f* src, int32_t srcStep, float* dst, int32_t dstStep,
                                               DaxiSize size);
DAX_API DaxStatus DAXI_LogSpectrum_32fc32f_C1R_MT(void* pool, uint32_t threads, const DaxComplex32f* src,
                                                  int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_LogSpectrum_64fc64f_C1R(const DaxComplex64f* src, int32_t srcStep, double* dst, int32_t dstStep,
                                               DaxiSize size);
DAX_API DaxStatus DAXI_LogSpectrum_64fc64f_C1R_MT(void* pool, uint32_t threads, const DaxComplex64f* src,
                                                  int32_t srcStep, double* dst, int32_t dstStep, DaxiSize size);

/* dst = src1 src2: that of a circular convolution. dst may equal src1 with the same step. */
DAX_API DaxStatus DAXI_MulSpectrum_32fc_C1R(const DaxComplex32f* src1, int32_t step1, const DaxComplex32f* src2,
                                            int32_t step2, DaxComplex32f* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_MulSpectrum_32fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex32f* src1, int32_t step1,
                                               const DaxComplex32f* src2, int32_t step2, DaxComplex32f* dst,
                                               int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_MulSpectrum_64fc_C1R(const DaxComplex64f* src1, int32_t step1, const DaxComplex64f* src2,
                                            int32_t step2, DaxComplex64f* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_MulSpectrum_64fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex64f* src1, int32_t step1,
                                               const DaxComplex64f* src2, int32_t step2, DaxComplex64f* dst,
                                               int32_t dstStep, DaxiSize size);

/* dst = src1 conj(src2): that of a circular correlation of the first with the second. dst may equal src1 with the same
 * step. */
DAX_API DaxStatus DAXI_MulConjSpectrum_32fc_C1R(const DaxComplex32f* src1, int32_t step1, const DaxComplex32f* src2,
                                                int32_t step2, DaxComplex32f* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_MulConjSpectrum_32fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex32f* src1,
                                                   int32_t step1, const DaxComplex32f* src2, int32_t step2,
                                                   DaxComplex32f* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_MulConjSpectrum_64fc_C1R(const DaxComplex64f* src1, int32_t step1, const DaxComplex64f* src2,
                                                int32_t step2, DaxComplex64f* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_MulConjSpectrum_64fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex64f* src1,
                                                   int32_t step1, const DaxComplex64f* src2, int32_t step2,
                                                   DaxComplex64f* dst, int32_t dstStep, DaxiSize size);

/* Moves an image in circles: pixel (x, y) comes to (x + floor(W / 2), y + floor(H / 2)), modulo the sides, so that
 * frequency 0 comes from the corner to the middle; with back = 1 by ceil(W / 2), ceil(H / 2), which undoes it. */
DAX_API DaxStatus DAXI_ShiftQuadrants_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, int32_t back);
DAX_API DaxStatus DAXI_ShiftQuadrants_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t back);
DAX_API DaxStatus DAXI_ShiftQuadrants_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, int32_t back);
DAX_API DaxStatus DAXI_ShiftQuadrants_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                 float* dst, int32_t dstStep, DaxiSize size, int32_t back);
DAX_API DaxStatus DAXI_ShiftQuadrants_64f_C1R(const double* src, int32_t srcStep, double* dst, int32_t dstStep,
                                              DaxiSize size, int32_t back);
DAX_API DaxStatus DAXI_ShiftQuadrants_64f_C1R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep,
                                                 double* dst, int32_t dstStep, DaxiSize size, int32_t back);
DAX_API DaxStatus DAXI_ShiftQuadrants_32fc_C1R(const DaxComplex32f* src, int32_t srcStep, DaxComplex32f* dst,
                                               int32_t dstStep, DaxiSize size, int32_t back);
DAX_API DaxStatus DAXI_ShiftQuadrants_32fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex32f* src,
                                                  int32_t srcStep, DaxComplex32f* dst, int32_t dstStep, DaxiSize size,
                                                  int32_t back);
DAX_API DaxStatus DAXI_ShiftQuadrants_64fc_C1R(const DaxComplex64f* src, int32_t srcStep, DaxComplex64f* dst,
                                               int32_t dstStep, DaxiSize size, int32_t back);
DAX_API DaxStatus DAXI_ShiftQuadrants_64fc_C1R_MT(void* pool, uint32_t threads, const DaxComplex64f* src,
                                                  int32_t srcStep, DaxComplex64f* dst, int32_t dstStep, DaxiSize size,
                                                  int32_t back);

DAX_END_DECLS

#endif
