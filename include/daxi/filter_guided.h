/* Guided filter: smooths where the guide is even, and keeps its edges (He, Sun, Tang, Guided image filtering, 2013).
 *
 * In each window of the guide I and the source p, with means over the window,
 *   a = (mean(I p) - mean(I) mean(p)) / (mean(I^2) - mean(I)^2 + eps),    b = mean(p) - a mean(I)
 * and dst = mean(a) I + mean(b), with means over the windows that hold the pixel; 0 / 0 gives a = 0. Without a guide
 * the source is its own. The greater eps, the stronger an edge must be to stay: one of a contrast well above sqrt(eps)
 * does.
 *
 * Windows are squares of 2 radius + 1 pixels, clipped at the image. With subsample s above 1, a and b are computed
 * from every s-th pixel of every s-th row, from s / 2 on, with a radius of radius / s, rounded down, at least 1, and
 * their means are interpolated between these pixels, at the image's edge continued (He, Sun, Fast guided filter, 2015).
 *
 * Sums of windows are exact for 8u and 16u, and for 32f those of suffixes and prefixes of blocks as large as the window,
 * in double precision, so that NaN, infinities and large values reach no further than two windows. a and b are rounded
 * to single precision, all else is in double precision and rounded once. A NaN is written as the same one everywhere.
 *
 * Steps count elements. src, guide and dst must not overlap, but guide may be src. The cost of a pixel does not depend on
 * the radius. Forms ending in _MT run on the host's pool, in at most `threads` tiles; any number works with any pool,
 * results do not depend on it, and pool may be null. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, guide, dst, cfg or buffer null                0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smallest step                      0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_FILTER_GUIDED_H
#define DAXI_FILTER_GUIDED_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Configuration. 16 bytes. */
typedef struct DaxiFilterGuidedCfg {
  int32_t radius;    /* 1..16383, default 8; 2 radius + 1 and each side of the image together at most 2^31 - 1 */
  int32_t subsample; /* 1..8, default 1 */
  double eps;        /* >= 0, finite: in squares of grey levels; default 100 */
} DaxiFilterGuidedCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_FilterGuidedDefaultCfg(DaxiFilterGuidedCfg* cfg);

/* Bytes of work buffer for the same arguments.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019; a need that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_FilterGuidedBufferSize_8u(DaxiSize size, const DaxiFilterGuidedCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterGuidedBufferSize_16u(DaxiSize size, const DaxiFilterGuidedCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterGuidedBufferSize_32f(DaxiSize size, const DaxiFilterGuidedCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterGuidedBufferSize_8u_MT(DaxiSize size, const DaxiFilterGuidedCfg* cfg, uint32_t threads,
                                                    uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterGuidedBufferSize_16u_MT(DaxiSize size, const DaxiFilterGuidedCfg* cfg, uint32_t threads,
                                                     uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterGuidedBufferSize_32f_MT(DaxiSize size, const DaxiFilterGuidedCfg* cfg, uint32_t threads,
                                                     uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_FilterGuided_8u_C1R(const uint8_t* src, int32_t srcStep, const uint8_t* guide, int32_t guideStep,
                                           uint8_t* dst, int32_t dstStep, DaxiSize size, const DaxiFilterGuidedCfg* cfg,
                                           void* buffer);
DAX_API DaxStatus DAXI_FilterGuided_16u_C1R(const uint16_t* src, int32_t srcStep, const uint16_t* guide,
                                            int32_t guideStep, uint16_t* dst, int32_t dstStep, DaxiSize size,
                                            const DaxiFilterGuidedCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterGuided_32f_C1R(const float* src, int32_t srcStep, const float* guide, int32_t guideStep,
                                            float* dst, int32_t dstStep, DaxiSize size, const DaxiFilterGuidedCfg* cfg,
                                            void* buffer);
DAX_API DaxStatus DAXI_FilterGuided_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              const uint8_t* guide, int32_t guideStep, uint8_t* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiFilterGuidedCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterGuided_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               const uint16_t* guide, int32_t guideStep, uint16_t* dst, int32_t dstStep,
                                               DaxiSize size, const DaxiFilterGuidedCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_FilterGuided_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                               const float* guide, int32_t guideStep, float* dst, int32_t dstStep,
                                               DaxiSize size, const DaxiFilterGuidedCfg* cfg, void* buffer);

DAX_END_DECLS

#endif
