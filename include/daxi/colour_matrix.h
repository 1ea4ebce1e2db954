/* A linear map of the channels of each pixel.
 *
 * C3IR works in place; dst may equal src with the same step, else they must not overlap. Steps count elements. No work buffer.
 * Thread-safe. The forms that end in _MT run on the host's pool, in at most `threads` tiles of rows, with the same result; pool may
 * be null, and they return the host's status. The results are the same bits on every machine (NaN payloads apart).
 *
 * Checks, in order:
 *   an image or the array of coefficients null                0x10000014
 *   width < 1 or height < 1                                   0x1000001a
 *   a step below three times the width                        0x1000001b
 *   a coefficient that is not finite                          0x10000019
 * When a check fails, nothing is written. */
#ifndef DAXI_COLOUR_MATRIX_H
#define DAXI_COLOUR_MATRIX_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Channel k of dst is ((m[4k] c0 + m[4k + 1] c1) + m[4k + 2] c2) + m[4k + 3] of the channels of src: a 3 x 4 matrix, row by row. In
 * double precision; integers are rounded half to even and saturated, floats rounded to single precision. */
DAX_API DaxStatus DAXI_ColourMatrix_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const double matrix[12]);
DAX_API DaxStatus DAXI_ColourMatrix_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              uint8_t* dst, int32_t dstStep, DaxiSize size, const double matrix[12]);
DAX_API DaxStatus DAXI_ColourMatrix_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, const double matrix[12]);
DAX_API DaxStatus DAXI_ColourMatrix_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                            DaxiSize size, const double matrix[12]);
DAX_API DaxStatus DAXI_ColourMatrix_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               uint16_t* dst, int32_t dstStep, DaxiSize size, const double matrix[12]);
DAX_API DaxStatus DAXI_ColourMatrix_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, const double matrix[12]);
DAX_API DaxStatus DAXI_ColourMatrix_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, const double matrix[12]);
DAX_API DaxStatus DAXI_ColourMatrix_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                               float* dst, int32_t dstStep, DaxiSize size, const double matrix[12]);
DAX_API DaxStatus DAXI_ColourMatrix_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, const double matrix[12]);

/* Each channel times its gain, as by a ColourMatrix of zeros but for the gains. */
DAX_API DaxStatus DAXI_WhiteBalance_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const double gains[3]);
DAX_API DaxStatus DAXI_WhiteBalance_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              uint8_t* dst, int32_t dstStep, DaxiSize size, const double gains[3]);
DAX_API DaxStatus DAXI_WhiteBalance_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, const double gains[3]);
DAX_API DaxStatus DAXI_WhiteBalance_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                            DaxiSize size, const double gains[3]);
DAX_API DaxStatus DAXI_WhiteBalance_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               uint16_t* dst, int32_t dstStep, DaxiSize size, const double gains[3]);
DAX_API DaxStatus DAXI_WhiteBalance_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, const double gains[3]);
DAX_API DaxStatus DAXI_WhiteBalance_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, const double gains[3]);
DAX_API DaxStatus DAXI_WhiteBalance_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                               float* dst, int32_t dstStep, DaxiSize size, const double gains[3]);
DAX_API DaxStatus DAXI_WhiteBalance_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, const double gains[3]);

DAX_END_DECLS

#endif
