/* Sectors of rings as rectangles, and back.
 *
 * Of a polar image with W columns and H rows, column x is the angle and row y the radius
 *   angle0 + span (x + 0.5) / W          r0 + (r1 - r0) (y + 0.5) / H, or with log r0 (r1 / r0)^((y + 0.5) / H)
 * about (cx, cy), so that labels around a ring read along rows. Angles are radians from x to y, clockwise on the
 * screen. Cells tile: two images of half the span each make that of the whole, and a full circle closes. r0 > r1 turns
 * the image upside down, a negative span runs against the clock.
 *
 * Positions are double precision, cut off at 2^-32 pixels. Interpolation, rounding and borders are those of
 * DAXI_WarpAffine_8u_C1R. `dst` is the rectangle dstRect of the whole result of dstSize: a part computed alone is that
 * part of the whole.
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
 * A failed call writes nothing; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_POLAR_H
#define DAXI_POLAR_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"
#include "interpolation.h"

DAX_BEGIN_DECLS

/* Configuration. 80 bytes. */
typedef struct DaxiPolarCfg {
  double cx;             /* centre, -1e7..1e7; default 0 */
  double cy;             /* -1e7..1e7; default 0 */
  double r0;             /* radius above the first row, 0..1e7, with log not 0; default 0 */
  double r1;             /* radius below the last row, 0..1e7, with log not 0; not r0; default 1 */
  double angle0;         /* where the first column begins, -1e6..1e6; default 0 */
  double span;           /* of all columns, of either sign, not 0; default a full circle, within 1e-9 the largest */
  int32_t log;           /* 0 or 1: radii grow by a factor from row to row; default 0 */
  int32_t interpolation; /* 0..3: DAXI_INTERPOLATION_NEAREST to ..._LANCZOS3; default linear */
  int32_t border;        /* DAXI_BORDER_REPLICATE to ..._CONSTANT, the default, or ..._LEAVE */
  int32_t reserved;      /* not read */
  double value;          /* of a constant border: finite, default 0, taken to the nearest value of the type */
  double cubicA;         /* of cubic interpolation: finite, default -0.5 */
} DaxiPolarCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_PolarDefaultCfg(DaxiPolarCfg* cfg);

/* The polar image, of dstSize, of a picture. */
DAX_API DaxStatus DAXI_Polar_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                    int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                       DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                       DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                    int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                       DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                       DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                        DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                        DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                        DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_16s_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                        DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst, int32_t dstStep,
                                     DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                        DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                        DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_32f_C3R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst, int32_t dstStep,
                                     DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_Polar_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                        DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                        DaxiRect dstRect, const DaxiPolarCfg* cfg);

/* The picture, of dstSize, of a polar image. What lies outside the ring is outside the image; angles outside a sector
 * lie beyond its nearer end. A full circle goes on across the seam, whatever the border.
 * Checks as DAXI_Polar_8u_C1R. */
DAX_API DaxStatus DAXI_PolarBack_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                        int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                           DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                        int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                           DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                         int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                            DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                         int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                            DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                         int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                            DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                            DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                         int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_16s_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                            DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                            DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst,
                                         int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                            DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                            DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_32f_C3R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst,
                                         int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiPolarCfg* cfg);
DAX_API DaxStatus DAXI_PolarBack_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                            DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                            DaxiRect dstRect, const DaxiPolarCfg* cfg);

DAX_END_DECLS

#endif
