/* Images moved, turned, scaled, sheared and seen in another perspective.
 *
 * A 3 x 3 matrix, row by row, maps (x, y, 1) of the source to the destination, or with `inverse` back. Each pixel of
 * the destination is read where it lies in the source; pixel centres are whole numbers. `dst` is the rectangle dstRect
 * of the whole result of dstSize: a part computed alone is that part of the whole.
 *
 * Positions. Affine: whole numbers of 2^-32 pixels, A x + B y + C without further rounding, so that at columns and
 * rows up to 2^15 they are within 2^-17 pixels of the real ones (doubles, where the terms add up to 2^30 or more).
 * Perspective: double precision, one division a coordinate, then cut off at 2^-32 pixels. The inverse is adjugate over
 * determinant, computed without error but for its own rounding. Of the fraction of a position, integers use 16 bits
 * and floats 24, rounded down.
 *
 * Interpolation: nearest (halves up), linear, cubic (Keys, with the parameter cubicA), Lanczos-3 with weights that add
 * up to 1. Integers: linear results are the exact formula at that position, rounded to the nearest integer, halves to
 * the even one; cubic and Lanczos results likewise from doubles, saturated. 32f: doubles, rounded once; a pixel of
 * weight 0 does not count, so that its NaN does not spread.
 *
 * Borders: replicate, mirror, symmetric, circular, a constant, which blends with the pixels at the edge, or leave:
 * where the position lies outside [-0.5, width - 0.5) x [-0.5, height - 0.5) the destination is not written, elsewhere
 * pixels outside are replicated. What lies nowhere, beyond the horizon of a perspective or more than 2^30 pixels away,
 * gets the constant whatever the border, and with leave is not written.
 *
 * The sign of a homography is the one that makes its denominator positive at the source's centre; where that of the
 * backward one is not positive is beyond the horizon.
 *
 * Source and destination must not overlap. Steps count elements. Sides are at most 2^20. No work buffer. Forms ending
 * in _MT run on the host's pool, in at most `threads` bands; any number works with any pool, results do not depend on
 * it, and pool may be null. Thread-safe for distinct destinations. The results are the same bits on every machine.
 *
 * Checks, in order:
 *   src, dst or cfg null                                                0x10000014
 *   srcSize or dstSize outside 1..1048576                               0x1000001a
 *   dstRect of less than 1 x 1 pixels or not inside dstSize             0x1000001a
 *   srcStep below a row of the source, dstStep below one of dstRect     0x1000001b
 *   configuration, in the order of its fields                           0x10000019
 *   a matrix without an inverse                                         0x10000037
 * A failed call writes nothing; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_WARP_H
#define DAXI_WARP_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"
#include "interpolation.h"

DAX_BEGIN_DECLS

/* Configuration of warps. 104 bytes. */
typedef struct DaxiWarpCfg {
  double m[9];           /* the matrix; finite, default the identity; of an affine warp the last row is 0, 0, 1 */
  int32_t inverse;       /* 0, the default: m maps the source to the destination; 1: back */
  int32_t interpolation; /* 0..3: DAXI_INTERPOLATION_NEAREST to ..._LANCZOS3; default linear */
  int32_t border;        /* DAXI_BORDER_REPLICATE to ..._CONSTANT, the default, or ..._LEAVE */
  int32_t reserved;      /* not read */
  double value;          /* of a constant border: finite, default 0, taken to the nearest value of the type */
  double cubicA;         /* of cubic interpolation: finite, default -0.5 */
} DaxiWarpCfg;

/* Configuration of rotations. 32 bytes. */
typedef struct DaxiRotateCfg {
  double angle;          /* from x to y, clockwise on the screen; radians, finite, default 0 */
  int32_t interpolation; /* 0..3: DAXI_INTERPOLATION_NEAREST to ..._LANCZOS3; default linear */
  int32_t border;        /* DAXI_BORDER_REPLICATE to ..._CONSTANT, the default, or ..._LEAVE */
  double value;          /* of a constant border: finite, default 0, taken to the nearest value of the type */
  double cubicA;         /* of cubic interpolation: finite, default -0.5 */
} DaxiRotateCfg;

/* Fill in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_WarpDefaultCfg(DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_RotateDefaultCfg(DaxiRotateCfg* cfg);

/* The rectangle of the destination that a region of the source comes to fill: the pixels whose centres lie in the box
 * around its corners, each pixel of the region a unit square; the nearest one where there is none. bound->x and y may
 * be negative. The checks and what is singular are those of a warp; the region may reach neither the horizon, a
 * denominator below 2^-20 of that at the source's centre, nor beyond 2^29 pixels.
 *
 * Checks, in order: cfg or bound null -> 0x10000014; srcSize outside 1..1048576 -> 0x1000001a; region of less than 1 x
 * 1 pixels or not inside srcSize -> 0x1000001a; the configuration, in the order of its fields -> 0x10000019; a matrix
 * without an inverse -> 0x10000037; no bound -> 0x10000033. A failed call writes nothing. Thread-safe. */
DAX_API DaxStatus DAXI_WarpBound(DaxiSize srcSize, DaxiRect region, const DaxiWarpCfg* cfg, DaxiRect* bound);

/* The affine matrix that takes three points, x0 y0 x1 y1 x2 y2, to three others.
 *
 * Checks, in order: from, to or m null -> 0x10000014; from not finite, to not finite -> 0x10000019; the points of
 * `from` on one line, or a matrix beyond the doubles -> 0x10000033. A failed call writes nothing. Thread-safe. */
DAX_API DaxStatus DAXI_AffineFrom3(const double from[6], const double to[6], double m[9]);

/* The perspective matrix that takes four corners, in order round a convex quadrangle, to four others; scaled so that
 * its denominators at the corners of `from` have the mean 1 (an affine one has m[8] = 1). By way of the unit square
 * (Heckbert, Fundamentals of texture mapping and image warping, 1989).
 *
 * Checks, in order: from, to or m null -> 0x10000014; from not finite, to not finite -> 0x10000019; three corners on
 * one line, a crossed quadrangle, one of both convex and the other not, or a matrix beyond the doubles -> 0x10000033.
 * A failed call writes nothing. Thread-safe. */
DAX_API DaxStatus DAXI_PerspectiveFrom4(const double from[8], const double to[8], double m[9]);

/* The matrix that turns by `angle` from x to y, clockwise on the screen, and scales, both about (x, y).
 *
 * Checks, in order: m null -> 0x10000014; x or y not finite, angle not finite, scale not finite -> 0x10000019. A failed
 * call writes nothing. Thread-safe. */
DAX_API DaxStatus DAXI_RotationMatrix(double x, double y, double angle, double scale, double m[9]);

/* The size that holds a rotated image: ceil(w |cos| + h |sin| - 2^-10) columns, rows likewise, so that quarter turns
 * exchange the sides.
 *
 * Checks, in order: dstSize null -> 0x10000014; srcSize outside 1..1048576, angle not finite -> 0x10000019. A failed
 * call writes nothing. Thread-safe. */
DAX_API DaxStatus DAXI_RotateSize(DaxiSize srcSize, double angle, DaxiSize* dstSize);

/* By an affine matrix, whose last row is 0, 0, 1: another one is an error of m. */
DAX_API DaxStatus DAXI_WarpAffine_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                         int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                            DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                         int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                            DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                          int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                             DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                          int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                             DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                          int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                             DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                             DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                          int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_16s_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                             DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                             DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst,
                                          int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                             DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_32f_C3R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst,
                                          int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpAffine_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                             DaxiRect dstRect, const DaxiWarpCfg* cfg);

/* By a homography. */
DAX_API DaxStatus DAXI_WarpPerspective_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                              int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect,
                                              const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                 DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                                 DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                              int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect,
                                              const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                 DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                                 DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                               int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect,
                                               const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                  DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                                  DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                               int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect,
                                               const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                  DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                                  DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                               int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect,
                                               const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                  DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                                  DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                               int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect,
                                               const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_16s_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                  DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                                  DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst,
                                               int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect,
                                               const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                  DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                                  DaxiRect dstRect, const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_32f_C3R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst,
                                               int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect,
                                               const DaxiWarpCfg* cfg);
DAX_API DaxStatus DAXI_WarpPerspective_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                  DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                                  DaxiRect dstRect, const DaxiWarpCfg* cfg);

/* Turned by any angle, the source's centre ((width - 1) / 2, (height - 1) / 2) coming to the centre of dstSize. Checks
 * as above, but for a matrix. */
DAX_API DaxStatus DAXI_Rotate_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                        DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                        DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                      int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                         DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                      int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                         DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                      int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                         DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                      int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_16s_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                         DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst, int32_t dstStep,
                                      DaxiSize dstSize, DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                         DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_32f_C3R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst, int32_t dstStep,
                                      DaxiSize dstSize, DaxiRect dstRect, const DaxiRotateCfg* cfg);
DAX_API DaxStatus DAXI_Rotate_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                         DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiRotateCfg* cfg);

DAX_END_DECLS

#endif
