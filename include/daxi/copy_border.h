/* Copy an image into a larger one and fill the border around it.
 *
 * Five families, one rule each, for nine pixel types. `src` (size `srcSize`, {w, h}) lands in `dst` (size `dstSize`,
 * {W, H}) with `top` rows above it and `left` columns to its left; what remains at the right and at the bottom is
 * border as well. A border may be wider than the source. For a pixel of the destination let x = column - left; outside
 * 0..w - 1 the rule of the family gives the source column, and the same rule with h gives the source row. Corners
 * combine the two. Every pixel of the destination region is written, elements between W and dstStep are not. Values are
 * copied bit for bit, NaNs included.
 *
 * Steps count elements of the pixel type (a complex pixel is one element). `left` is read as a signed number:
 * values from 2^31 on are negative.
 *
 * Checks, in order, for all 45 members:
 *   src null, then srcSize below 1 x 1, then srcStep < w       0x10000014, 0x1000001a, 0x1000001b
 *   dst null, then dstSize below 1 x 1, then dstStep < W       0x10000014, 0x1000001a, 0x1000001b
 *   top < 0 or left < 0                                        0x10000019
 *   left + w > W or top + h > H; mirror: w < 2 or h < 2        0x1000001a
 *
 * A failed call writes nothing. Source and destination must not overlap. No work buffer. Thread-safe. */
#ifndef DAXI_COPY_BORDER_H
#define DAXI_COPY_BORDER_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Constant border: every pixel outside the source takes the value.
 * The complex types take its real and its imaginary part. */
DAX_API DaxStatus DAXI_CopyConstBorder_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                              int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left,
                                              uint8_t value);
DAX_API DaxStatus DAXI_CopyConstBorder_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                               int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left,
                                               uint16_t value);
DAX_API DaxStatus DAXI_CopyConstBorder_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                               int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left,
                                               int16_t value);
DAX_API DaxStatus DAXI_CopyConstBorder_32s_C1R(const int32_t* src, int32_t srcStep, DaxiSize srcSize, int32_t* dst,
                                               int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left,
                                               int32_t value);
DAX_API DaxStatus DAXI_CopyConstBorder_32u_C1R(const uint32_t* src, int32_t srcStep, DaxiSize srcSize, uint32_t* dst,
                                               int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left,
                                               uint32_t value);
DAX_API DaxStatus DAXI_CopyConstBorder_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst,
                                               int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left,
                                               float value);
DAX_API DaxStatus DAXI_CopyConstBorder_64f_C1R(const double* src, int32_t srcStep, DaxiSize srcSize, double* dst,
                                               int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left,
                                               double value);
DAX_API DaxStatus DAXI_CopyConstBorder_32fc_C1R(const DaxComplex32f* src, int32_t srcStep, DaxiSize srcSize,
                                                DaxComplex32f* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                uint32_t left, float re, float im);
DAX_API DaxStatus DAXI_CopyConstBorder_64fc_C1R(const DaxComplex64f* src, int32_t srcStep, DaxiSize srcSize,
                                                DaxComplex64f* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                uint32_t left, double re, double im);

/* Replicate: the edge pixel is repeated. a b c with a border of 2 gives  a a | a b c | c c.
 * Source index of column x: 0 for x < 0, w - 1 for x >= w. */
DAX_API DaxStatus DAXI_CopyReplicateBorder_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                                  int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyReplicateBorder_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize,
                                                   uint16_t* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                   uint32_t left);
DAX_API DaxStatus DAXI_CopyReplicateBorder_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                                   int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyReplicateBorder_32s_C1R(const int32_t* src, int32_t srcStep, DaxiSize srcSize, int32_t* dst,
                                                   int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyReplicateBorder_32u_C1R(const uint32_t* src, int32_t srcStep, DaxiSize srcSize,
                                                   uint32_t* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                   uint32_t left);
DAX_API DaxStatus DAXI_CopyReplicateBorder_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst,
                                                   int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyReplicateBorder_64f_C1R(const double* src, int32_t srcStep, DaxiSize srcSize, double* dst,
                                                   int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyReplicateBorder_32fc_C1R(const DaxComplex32f* src, int32_t srcStep, DaxiSize srcSize,
                                                    DaxComplex32f* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                    uint32_t left);
DAX_API DaxStatus DAXI_CopyReplicateBorder_64fc_C1R(const DaxComplex64f* src, int32_t srcStep, DaxiSize srcSize,
                                                    DaxComplex64f* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                    uint32_t left);

/* Mirror without repeating the edge: a b c with a border of 2 gives  c b | a b c | b a.
 * Needs w >= 2 and h >= 2, else 0x1000001a. A border wider than w - 1 is laid in blocks of the w - 1 pixels without the
 * edge pixel, alternately reversed (next to the image) and plain: a b c with a left border of 4 gives  b c c b | a b c.
 * With i = -x - 1 for columns left of the source, and o = i mod (w - 1), the source column is 1 + o where i / (w - 1)
 * is even and w - 1 - o where it is odd; with i = x - w on the right, w - 2 - o and o. */
DAX_API DaxStatus DAXI_CopyMirrorBorder_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                               int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyMirrorBorder_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                                int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyMirrorBorder_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                                int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyMirrorBorder_32s_C1R(const int32_t* src, int32_t srcStep, DaxiSize srcSize, int32_t* dst,
                                                int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyMirrorBorder_32u_C1R(const uint32_t* src, int32_t srcStep, DaxiSize srcSize, uint32_t* dst,
                                                int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyMirrorBorder_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst,
                                                int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyMirrorBorder_64f_C1R(const double* src, int32_t srcStep, DaxiSize srcSize, double* dst,
                                                int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyMirrorBorder_32fc_C1R(const DaxComplex32f* src, int32_t srcStep, DaxiSize srcSize,
                                                 DaxComplex32f* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                 uint32_t left);
DAX_API DaxStatus DAXI_CopyMirrorBorder_64fc_C1R(const DaxComplex64f* src, int32_t srcStep, DaxiSize srcSize,
                                                 DaxComplex64f* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                 uint32_t left);

/* Mirror with the edge repeated: a b c with a border of 2 gives  b a | a b c | c b.
 * Period 2w: with x' = x mod 2w the source column is x' for x' < w and 2w - 1 - x' otherwise. */
DAX_API DaxStatus DAXI_CopySymmetricBorder_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                                  int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopySymmetricBorder_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize,
                                                   uint16_t* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                   uint32_t left);
DAX_API DaxStatus DAXI_CopySymmetricBorder_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                                   int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopySymmetricBorder_32s_C1R(const int32_t* src, int32_t srcStep, DaxiSize srcSize, int32_t* dst,
                                                   int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopySymmetricBorder_32u_C1R(const uint32_t* src, int32_t srcStep, DaxiSize srcSize,
                                                   uint32_t* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                   uint32_t left);
DAX_API DaxStatus DAXI_CopySymmetricBorder_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst,
                                                   int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopySymmetricBorder_64f_C1R(const double* src, int32_t srcStep, DaxiSize srcSize, double* dst,
                                                   int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopySymmetricBorder_32fc_C1R(const DaxComplex32f* src, int32_t srcStep, DaxiSize srcSize,
                                                    DaxComplex32f* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                    uint32_t left);
DAX_API DaxStatus DAXI_CopySymmetricBorder_64fc_C1R(const DaxComplex64f* src, int32_t srcStep, DaxiSize srcSize,
                                                    DaxComplex64f* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                    uint32_t left);

/* Periodic: a b c with a border of 2 gives  b c | a b c | a b.
 * Source column: x mod w (non-negative). */
DAX_API DaxStatus DAXI_CopyCircularBorder_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                                 int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyCircularBorder_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                                  int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyCircularBorder_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                                  int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyCircularBorder_32s_C1R(const int32_t* src, int32_t srcStep, DaxiSize srcSize, int32_t* dst,
                                                  int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyCircularBorder_32u_C1R(const uint32_t* src, int32_t srcStep, DaxiSize srcSize, uint32_t* dst,
                                                  int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyCircularBorder_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst,
                                                  int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyCircularBorder_64f_C1R(const double* src, int32_t srcStep, DaxiSize srcSize, double* dst,
                                                  int32_t dstStep, DaxiSize dstSize, int32_t top, uint32_t left);
DAX_API DaxStatus DAXI_CopyCircularBorder_32fc_C1R(const DaxComplex32f* src, int32_t srcStep, DaxiSize srcSize,
                                                   DaxComplex32f* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                   uint32_t left);
DAX_API DaxStatus DAXI_CopyCircularBorder_64fc_C1R(const DaxComplex64f* src, int32_t srcStep, DaxiSize srcSize,
                                                   DaxComplex64f* dst, int32_t dstStep, DaxiSize dstSize, int32_t top,
                                                   uint32_t left);

DAX_END_DECLS

#endif
