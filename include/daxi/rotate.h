/* Images mirrored, transposed, and turned by multiples of 90 degrees. Pixels are copied, with every bit.
 *
 * `size` is that of the source, of width columns and height rows. That of the destination is the same, or height
 * columns and width rows where rows become columns: of DAXI_Transpose, and of DAXI_Rotate90 with 1 or 3 quarters.
 *
 * Layouts: C1R has one channel, C3R three interleaved channels, P3R three planes of one size and one step. C1IR, C3IR
 * and P3IR work in place: DAXI_Mirror on images of any shape, the others where rows become columns on squares only.
 *
 * Steps count elements. Source and destination must not overlap. No work buffer. Forms that end in _MT run on the
 * host's pool, in at most `threads` tiles of rows; pool may be null, and they return the host's status. Thread-safe.
 *
 * Checks, in order:
 *   an image, or one of its planes, null                                               0x10000014
 *   width < 1 or height < 1                                                            0x1000001a
 *   in place, Transpose, and Rotate90 if quarters is not 0 or 2: width is not height   0x1000001a
 *   axis outside 0..2, quarters outside 0..3                                           0x10000019
 *   srcStep, or step in place, below a row of the source                               0x1000001b
 *   dstStep below a row of the destination                                             0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_ROTATE_H
#define DAXI_ROTATE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

enum {
  DAXI_MIRROR_COLUMNS = 0, /* columns in reverse order: left becomes right */
  DAXI_MIRROR_ROWS = 1,    /* rows in reverse order: top becomes bottom */
  DAXI_MIRROR_BOTH = 2     /* both: half a turn */
};

/* dst(x, y) = src(width - 1 - x, y), src(x, height - 1 - y) or src(width - 1 - x, height - 1 - y), by DAXI_MIRROR_... `axis`. */
DAX_API DaxStatus DAXI_Mirror_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                     int32_t axis);
DAX_API DaxStatus DAXI_Mirror_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                        int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                     int32_t axis);
DAX_API DaxStatus DAXI_Mirror_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep, uint8_t* dst,
                                        int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_8u_P3R(const uint8_t* const src[3], int32_t srcStep, uint8_t* const dst[3],
                                     int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_8u_P3R_MT(void* pool, uint32_t threads, const uint8_t* const src[3], int32_t srcStep,
                                        uint8_t* const dst[3], int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_8u_P3IR(uint8_t* const srcDst[3], int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                      DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                         uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                      DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                         uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16u_P3R(const uint16_t* const src[3], int32_t srcStep, uint16_t* const dst[3],
                                      int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16u_P3R_MT(void* pool, uint32_t threads, const uint16_t* const src[3], int32_t srcStep,
                                         uint16_t* const dst[3], int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16u_P3IR(uint16_t* const srcDst[3], int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                      int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                         int16_t* dst, int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16s_C3R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep, DaxiSize size,
                                      int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16s_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                         int16_t* dst, int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16s_P3R(const int16_t* const src[3], int32_t srcStep, int16_t* const dst[3],
                                      int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16s_P3R_MT(void* pool, uint32_t threads, const int16_t* const src[3], int32_t srcStep,
                                         int16_t* const dst[3], int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16s_C3IR(int16_t* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_16s_P3IR(int16_t* const srcDst[3], int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32s_C1R(const int32_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep, DaxiSize size,
                                      int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32s_C1R_MT(void* pool, uint32_t threads, const int32_t* src, int32_t srcStep,
                                         int32_t* dst, int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32s_C3R(const int32_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep, DaxiSize size,
                                      int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32s_C3R_MT(void* pool, uint32_t threads, const int32_t* src, int32_t srcStep,
                                         int32_t* dst, int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32s_P3R(const int32_t* const src[3], int32_t srcStep, int32_t* const dst[3],
                                      int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32s_P3R_MT(void* pool, uint32_t threads, const int32_t* const src[3], int32_t srcStep,
                                         int32_t* const dst[3], int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32s_C1IR(int32_t* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32s_C3IR(int32_t* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32s_P3IR(int32_t* const srcDst[3], int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                      int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                         int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                      int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                         int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32f_P3R(const float* const src[3], int32_t srcStep, float* const dst[3], int32_t dstStep,
                                      DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32f_P3R_MT(void* pool, uint32_t threads, const float* const src[3], int32_t srcStep,
                                         float* const dst[3], int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_32f_P3IR(float* const srcDst[3], int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_64f_C1R(const double* src, int32_t srcStep, double* dst, int32_t dstStep, DaxiSize size,
                                      int32_t axis);
DAX_API DaxStatus DAXI_Mirror_64f_C1R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep, double* dst,
                                         int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_64f_C3R(const double* src, int32_t srcStep, double* dst, int32_t dstStep, DaxiSize size,
                                      int32_t axis);
DAX_API DaxStatus DAXI_Mirror_64f_C3R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep, double* dst,
                                         int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_64f_P3R(const double* const src[3], int32_t srcStep, double* const dst[3],
                                      int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_64f_P3R_MT(void* pool, uint32_t threads, const double* const src[3], int32_t srcStep,
                                         double* const dst[3], int32_t dstStep, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_64f_C1IR(double* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_64f_C3IR(double* srcDst, int32_t step, DaxiSize size, int32_t axis);
DAX_API DaxStatus DAXI_Mirror_64f_P3IR(double* const srcDst[3], int32_t step, DaxiSize size, int32_t axis);

/* dst(y, x) = src(x, y). */
DAX_API DaxStatus DAXI_Transpose_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           uint8_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_8u_P3R(const uint8_t* const src[3], int32_t srcStep, uint8_t* const dst[3],
                                        int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_8u_P3R_MT(void* pool, uint32_t threads, const uint8_t* const src[3], int32_t srcStep,
                                           uint8_t* const dst[3], int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_8u_P3IR(uint8_t* const srcDst[3], int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            uint16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16u_P3R(const uint16_t* const src[3], int32_t srcStep, uint16_t* const dst[3],
                                         int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16u_P3R_MT(void* pool, uint32_t threads, const uint16_t* const src[3], int32_t srcStep,
                                            uint16_t* const dst[3], int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16u_P3IR(uint16_t* const srcDst[3], int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                            int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16s_C3R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16s_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                            int16_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16s_P3R(const int16_t* const src[3], int32_t srcStep, int16_t* const dst[3],
                                         int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16s_P3R_MT(void* pool, uint32_t threads, const int16_t* const src[3], int32_t srcStep,
                                            int16_t* const dst[3], int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16s_C3IR(int16_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_16s_P3IR(int16_t* const srcDst[3], int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32s_C1R(const int32_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32s_C1R_MT(void* pool, uint32_t threads, const int32_t* src, int32_t srcStep,
                                            int32_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32s_C3R(const int32_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32s_C3R_MT(void* pool, uint32_t threads, const int32_t* src, int32_t srcStep,
                                            int32_t* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32s_P3R(const int32_t* const src[3], int32_t srcStep, int32_t* const dst[3],
                                         int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32s_P3R_MT(void* pool, uint32_t threads, const int32_t* const src[3], int32_t srcStep,
                                            int32_t* const dst[3], int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32s_C1IR(int32_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32s_C3IR(int32_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32s_P3IR(int32_t* const srcDst[3], int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                            int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                            int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32f_P3R(const float* const src[3], int32_t srcStep, float* const dst[3],
                                         int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32f_P3R_MT(void* pool, uint32_t threads, const float* const src[3], int32_t srcStep,
                                            float* const dst[3], int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32f_C1IR(float* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32f_C3IR(float* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_32f_P3IR(float* const srcDst[3], int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_64f_C1R(const double* src, int32_t srcStep, double* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_64f_C1R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep,
                                            double* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_64f_C3R(const double* src, int32_t srcStep, double* dst, int32_t dstStep,
                                         DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_64f_C3R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep,
                                            double* dst, int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_64f_P3R(const double* const src[3], int32_t srcStep, double* const dst[3],
                                         int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_64f_P3R_MT(void* pool, uint32_t threads, const double* const src[3], int32_t srcStep,
                                            double* const dst[3], int32_t dstStep, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_64f_C1IR(double* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_64f_C3IR(double* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_Transpose_64f_P3IR(double* const srcDst[3], int32_t step, DaxiSize size);

/* So many quarters of a turn from the x axis towards the y axis, clockwise on the screen: of one, dst(height - 1 - y,
 * x) =
 * src(x, y); of two, both mirrorings; of three, dst(y, width - 1 - x) = src(x, y). */
DAX_API DaxStatus DAXI_Rotate90_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_8u_C3R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_8u_P3R(const uint8_t* const src[3], int32_t srcStep, uint8_t* const dst[3],
                                       int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_8u_P3R_MT(void* pool, uint32_t threads, const uint8_t* const src[3], int32_t srcStep,
                                          uint8_t* const dst[3], int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_8u_C3IR(uint8_t* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_8u_P3IR(uint8_t* const srcDst[3], int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16u_C3R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16u_P3R(const uint16_t* const src[3], int32_t srcStep, uint16_t* const dst[3],
                                        int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16u_P3R_MT(void* pool, uint32_t threads, const uint16_t* const src[3], int32_t srcStep,
                                           uint16_t* const dst[3], int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16u_C3IR(uint16_t* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16u_P3IR(uint16_t* const srcDst[3], int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                           int16_t* dst, int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16s_C3R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16s_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                           int16_t* dst, int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16s_P3R(const int16_t* const src[3], int32_t srcStep, int16_t* const dst[3],
                                        int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16s_P3R_MT(void* pool, uint32_t threads, const int16_t* const src[3], int32_t srcStep,
                                           int16_t* const dst[3], int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16s_C1IR(int16_t* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16s_C3IR(int16_t* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_16s_P3IR(int16_t* const srcDst[3], int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32s_C1R(const int32_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32s_C1R_MT(void* pool, uint32_t threads, const int32_t* src, int32_t srcStep,
                                           int32_t* dst, int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32s_C3R(const int32_t* src, int32_t srcStep, int32_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32s_C3R_MT(void* pool, uint32_t threads, const int32_t* src, int32_t srcStep,
                                           int32_t* dst, int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32s_P3R(const int32_t* const src[3], int32_t srcStep, int32_t* const dst[3],
                                        int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32s_P3R_MT(void* pool, uint32_t threads, const int32_t* const src[3], int32_t srcStep,
                                           int32_t* const dst[3], int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32s_C1IR(int32_t* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32s_C3IR(int32_t* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32s_P3IR(int32_t* const srcDst[3], int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                        int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32f_C3R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                        int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32f_P3R(const float* const src[3], int32_t srcStep, float* const dst[3],
                                        int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32f_P3R_MT(void* pool, uint32_t threads, const float* const src[3], int32_t srcStep,
                                           float* const dst[3], int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32f_C1IR(float* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32f_C3IR(float* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_32f_P3IR(float* const srcDst[3], int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_64f_C1R(const double* src, int32_t srcStep, double* dst, int32_t dstStep, DaxiSize size,
                                        int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_64f_C1R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep,
                                           double* dst, int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_64f_C3R(const double* src, int32_t srcStep, double* dst, int32_t dstStep, DaxiSize size,
                                        int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_64f_C3R_MT(void* pool, uint32_t threads, const double* src, int32_t srcStep,
                                           double* dst, int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_64f_P3R(const double* const src[3], int32_t srcStep, double* const dst[3],
                                        int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_64f_P3R_MT(void* pool, uint32_t threads, const double* const src[3], int32_t srcStep,
                                           double* const dst[3], int32_t dstStep, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_64f_C1IR(double* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_64f_C3IR(double* srcDst, int32_t step, DaxiSize size, int32_t quarters);
DAX_API DaxStatus DAXI_Rotate90_64f_P3IR(double* const srcDst[3], int32_t step, DaxiSize size, int32_t quarters);

DAX_END_DECLS

#endif
