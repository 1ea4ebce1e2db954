/* Images of another size.
 *
 * Column x of the destination, of D columns in all, lies at (x + 0.5) W / D - 0.5 of the source's W columns, or with a factor
 * f at (x + 0.5) / f - 0.5; rows likewise. Positions are exact rational numbers, or one division in double precision. Linear
 * interpolation is a triangle of half width 1 around the position. With `antialias` it is widened to 1 / factor where
 * the image shrinks, so that every source pixel counts; the weights of an output sum to 1. Both axes are computed apart,
 * columns first.
 *
 * Integer results are the real-valued formula rounded to the nearest integer, with an error of at most 0.51 levels, and 32f
 * results that formula in double precision, rounded once: flat images stay flat. The results are the same bits on every machine.
 *
 * `dst` is the rectangle dstRect of the whole result of dstSize: a part computed alone is that part of the whole. Source
 * and destination must not overlap. Steps count elements. Sides are at most 2^20, and sides of source and destination
 * differ by a factor of at most 256. Thread-safe for distinct destinations and buffers.
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
  int32_t interpolation; /* DAXI_INTERPOLATION_LINEAR, the default; the others are refused */
  int32_t antialias;     /* 1, the default: the kernel is widened where the image shrinks; 0: it is not */
  double cubicA;         /* of cubic interpolation: -0.5; finite, not used by linear interpolation */
  int32_t border;        /* DAXI_BORDER_REPLICATE, the default, ..._MIRROR, ..._SYMMETRIC or ..._CIRCULAR */
  int32_t reserved;      /* not read */
  double value;          /* of a constant border: 0; finite, not used by the borders above */
  double factorX;        /* 0, the default: dstSize / srcSize; or 1/256..256, and then dstSize.width must be */
  double factorY;        /* srcSize.width * factorX to the nearest integer, at least 1; rows likewise */
} DaxiResizeCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_ResizeDefaultCfg(DaxiResizeCfg* cfg);

/* Bytes of work buffer for the same arguments.
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
DAX_API DaxStatus DAXI_ResizeBufferSize_32f_C1R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect,
                                                const DaxiResizeCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ResizeBufferSize_32f_C3R(DaxiSize srcSize, DaxiSize dstSize, DaxiRect dstRect,
                                                const DaxiResizeCfg* cfg, uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_Resize_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg,
                                     void* buffer);
DAX_API DaxStatus DAXI_Resize_8u_C3R(const uint8_t* src, int32_t srcStep, DaxiSize srcSize, uint8_t* dst,
                                     int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg,
                                     void* buffer);
DAX_API DaxStatus DAXI_Resize_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                      int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg,
                                      void* buffer);
DAX_API DaxStatus DAXI_Resize_16u_C3R(const uint16_t* src, int32_t srcStep, DaxiSize srcSize, uint16_t* dst,
                                      int32_t dstStep, DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg,
                                      void* buffer);
DAX_API DaxStatus DAXI_Resize_32f_C1R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst, int32_t dstStep,
                                      DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_Resize_32f_C3R(const float* src, int32_t srcStep, DaxiSize srcSize, float* dst, int32_t dstStep,
                                      DaxiSize dstSize, DaxiRect dstRect, const DaxiResizeCfg* cfg, void* buffer);

DAX_END_DECLS

#endif
