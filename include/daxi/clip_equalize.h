/* Histogram equalisation by tiles, with limited contrast (CLAHE). Zuiderveld, Contrast limited adaptive histogram equalization,
 * Graphics Gems IV, 1994.
 *
 * The image, extended to the right and below by mirroring without the border pixel, has tilesX x tilesY tiles of ceil(W / tilesX) x
 * ceil(H / tilesY) pixels each. A tile's histogram has `bins` bins of equally many levels. Counts above max(1, floor(clip area /
 * bins)), area being the pixels of a tile, are cut off, and what was cut off is given back once: excess div bins to all bins, and one
 * each of the remaining r to bins i floor(bins / r), i < r. A tile maps a level to cdf max / area, rounded to the nearest integer,
 * halves to the even one; cdf is the sum of the counts up to the level's bin, max the greatest value of the type.
 *
 * A pixel becomes the bilinear interpolation between the maps of the four nearest tiles, whose centres lie at (i + 0.5) tile - 0.5;
 * beyond the outer centres there are two, or one. Weights are integers, and the sum is rounded once, halves to even: results are exact.
 *
 * dst may equal src with the same step; else they must not overlap. Steps count elements. Thread-safe for distinct destinations and
 * buffers. Forms ending in _MT run on the host's pool, of `threads` threads; results do not depend on it. pool may be null.
 *
 * Checks, in order:
 *   src, dst, cfg or buffer null                                 0x10000014
 *   width < 1 or height < 1, or tiles of more than 2^31 - 1
 *   pixels                                                       0x1000001a
 *   width above the smallest step                                0x1000001b
 *   configuration, in the order of its fields                    0x10000019
 * When a check fails, nothing is written. */
#ifndef DAXI_CLIP_EQUALIZE_H
#define DAXI_CLIP_EQUALIZE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Configuration. 24 bytes. */
typedef struct DaxiClipEqualizeCfg {
  int32_t tilesX;   /* 1..64, default 8; at most the image's width */
  int32_t tilesY;   /* 1..64, default 8; at most the image's height */
  double clip;      /* at least 1, finite, default 2: limit of a count, as a multiple of the mean count */
  int32_t bins;     /* a power of two, 2..256, of 16u 2..65536; default 256 */
  int32_t reserved; /* not read */
} DaxiClipEqualizeCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_ClipEqualizeDefaultCfg(DaxiClipEqualizeCfg* cfg);

/* Bytes of work buffer for the same arguments, for the forms ending in _MT too.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1, or tiles of more than 2^31 - 1 pixels ->
 * 0x10000019; then the configuration as above. Thread-safe. */
DAX_API DaxStatus DAXI_ClipEqualizeBufferSize_8u(DaxiSize size, const DaxiClipEqualizeCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ClipEqualizeBufferSize_16u(DaxiSize size, const DaxiClipEqualizeCfg* cfg, uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_ClipEqualize_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiClipEqualizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ClipEqualize_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiClipEqualizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ClipEqualize_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              uint8_t* dst, int32_t dstStep, DaxiSize size,
                                              const DaxiClipEqualizeCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ClipEqualize_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               uint16_t* dst, int32_t dstStep, DaxiSize size,
                                               const DaxiClipEqualizeCfg* cfg, void* buffer);

DAX_END_DECLS

#endif
