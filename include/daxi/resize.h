/* Images of another size.
 *
 * Column x of the destination, of D columns in all, lies at (x + 0.5) W / D - 0.5 of the source's W columns, or with a factor
 * f at (x + 0.5) / f - 0.5; rows likewise. Positions are exact rational numbers, or one division in double precision. A
 * value is the sum of source pixels at the distance d from the position, weighted by a kernel of each axis:
 *
 *   nearest   the pixel floor((2x + 1) W / 2D), or floor((x + 0.5) / f)
 *   linear    1 - |d|                                                                         |d| < 1
 *   cubic     (a + 2)|d|^3 - (a + 3)|d|^2 + 1 to 1, a|d|^3 - 5a|d|^2 + 8a|d| - 4a from 1 on   |d| < 2   a is `cubicA`
 *   Lanczos   sinc(d) sinc(d / 3), sinc(d) = sin(pi d) / (pi d)                               |d| < 3
 *   area      how much of the pixel, of side 1, the cell [x W / D, (x + 1) W / D) - 0.5 covers, or that of [x / f, (x + 1) / f)
 *
 * With `antialias` linear, cubic and Lanczos kernels are widened to W / D, or 1 / f, where the image shrinks, so that every source
 * pixel counts. The weights of an output sum to 1. Taps outside the image read what the border says; pixels whose weight is 0
 * are not read, but between others.
 *
 * Integer results are the real-valued formula rounded to the nearest integer, with an error of at most 0.51 levels, and saturated;
 * areas by size are exact, halves to even. 32f results are that formula in double precision, along columns first, taps in
 * ascending order, rounded once. Flat images stay flat. The results are the same bits on every machine.
 *
 * `dst` is the rectangle dstRect of the whole result of dstSize: a part computed alone is that part of the whole. Source
 * and destination must not overlap. Steps count elements. Sides are at most 2^20, and sides of source and destination
 * differ by a factor of at most 256. Forms that end in _MT run on the host's pool, in at most 8 tiles of rows, with the same
 * result; pool may be null, and they return the host's status. Thread-safe for distinct destinations and buffers.
 *
 * Checks of DAXI_Resize, in order:
 *   src, dst, cfg or buffer null                                      0x10000014
 *   srcSize or dstSize outside 1..2^20, or a factor beyond 256        0x1000001a
 *   dstRect of less than 1 x 1 pixels or not inside dstSize           0x1000001a
 *   srcStep below a row of the source, dstStep below one of dstRect   0x1000001b
 *   configuration, in the order of its fields                         0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_RESIZE_H
#define DAXI_RESIZE_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"
#include "interpolation.h"

DAX_BEGIN_DECLS

/* Configuration. 48 bytes. */
typedef struct DaxiResizeCfg {
  int32_t interpolation; /* 0..4: DAXI_INTERPOLATION_NEAREST to ..._AREA; default DAXI_INTERPOLATION_LINEAR */
  int32_t antialias;     /* 1, the default: the kernel is widened where the image shrinks; 0: it is not */
  double cubicA;         /* of cubic interpolation: -0.5; finite */
  int32_t border;        /* 0..4: DAXI_BORDER_REPLICATE, the default, to ..._CONSTANT */
  int32_t reserved;      /* not read */
  double value;          /* of a constant border: 0; finite, taken to the nearest value of the type */
  double factorX;        /* 0, the default: dstSize / srcSize; or 1/256..256, and then dstSize.width must be */
  double factorY;        /* srcSize.width * factorX to the nearest integer, at least 1; rows likewise */
} DaxiResizeCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_ResizeDefaultCfg(DaxiResizeCfg* cfg);

/* Bytes of work buffer for the same arguments, of the forms that end in _MT too.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; a size outside 1..2^20, a factor beyond 256 or dstRect not inside
 * dstSize -> 0x10000019; then the configuration as above; a size beyond 2^63 - 1 -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_ResizeBufferSize_8u_C1R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect,
                                               const DaxiResizeCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ResizeBufferSize_8u_C3R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect,
                                               const DaxiResizeCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ResizeBufferSize_16u_C1R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect,
                                                const DaxiResizeCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ResizeBufferSize_16u_C3R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect,
                                                const DaxiResizeCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ResizeBufferSize_16s_C1R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect,
                                                const DaxiResizeCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ResizeBufferSize_16s_C3R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect,
                                                const DaxiResizeCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ResizeBufferSize_32f_C1R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect,
                                                const DaxiResizeCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ResizeBufferSize_32f_C3R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect,
                                                const DaxiResizeCfg* cfg, uint64_t* bytes);

/* buffer: at least as many bytes as the query of the type and the layout says, aligned as by malloc. */
DAX_API DaxStatus DAXI_Resize_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg,
                                     void* buffer);
DAX_API DaxStatus DAXI_Resize_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                        DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Resize_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg,
                                     void* buffer);
DAX_API DaxStatus DAXI_Resize_8u_C3R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                        DaxiSize srcSize, uint8_t* dst, int32_t dstStep, DaxiSize dstSize,
                                        DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Resize_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                      int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg,
                                      void* buffer);
DAX_API DaxStatus DAXI_Resize_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                         DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Resize_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                      int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg,
                                      void* buffer);
DAX_API DaxStatus DAXI_Resize_16u_C3R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                         DaxiSize srcSize, uint16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Resize_16s_C1R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                      int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg,
                                      void* buffer);
DAX_API DaxStatus DAXI_Resize_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                         DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Resize_16s_C3R(const int16_t* src, int32_t srcStep, DaxiSize srcSize, int16_t* dst,
                                      int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg,
                                      void* buffer);
DAX_API DaxStatus DAXI_Resize_16s_C3R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                         DaxiSize srcSize, int16_t* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Resize_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst, int32_t dstStep,
                                      DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Resize_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                         DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Resize_32f_C3R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst, int32_t dstStep,
                                      DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Resize_32f_C3R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                         DaxiSize srcSize, float* dst, int32_t dstStep, DaxiSize dstSize,
                                         DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);

DAX_END_DECLS

#endif
