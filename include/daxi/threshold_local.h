/* Masks by a threshold of each pixel's own, from the window around it.
 *
 * n pixels x of a window have the sum S, the sum of squares Q, the mean m = S / n and the standard deviation
 * s = sqrt(n Q - S^2) / n. The threshold T is
 *   MEAN           m
 *   MEAN_VARIANCE  m + k max(s, minDeviation)
 *   NIBLACK        m + k s                             (Niblack 1986)
 *   SAUVOLA        m (1 + k (s / r - 1))               (Sauvola, Pietikainen 2000)
 *   WOLF           m - k (1 - s / s_max) (m - x_min)   (Wolf, Jolion 2004), with the greatest deviation of all windows
 *                  and the least pixel of the region; m where s_max is 0
 *   BERNSEN        (max + min) / 2 of the window (Bernsen 1986); where max - min is below minContrast, nothing is set
 *   GAUSS          the mean weighted by exp(-(i^2 / a^2 + j^2 / b^2) / 2) at i, j pixels from the middle, a and b being k
 *                  times the window's width and height
 * A pixel x is set, 255, else 0, by
 *   LIGHT      x >= T + offset          DARK  x <= T - offset
 *   EQUAL      |x - T| <= offset        NOT_EQUAL  |x - T| > offset
 *
 * Sums of integers are exact, whatever the window. n x - S is compared with n (T - m) + n offset, where only the term
 * with the deviation is rounded, in double precision: the mean itself is never rounded. Weights of GAUSS are taken to
 * whole numbers, which sum to 2^18 along each axis but for that rounding; with them its sums are exact as well. 32f: sums
 * are those of suffixes and prefixes of blocks as large as the window, of GAUSS those of its weighted columns, in double
 * precision; each pixel counts only in its own windows, so that NaN, infinities and large values do not spread further.
 * A comparison with a NaN fails: in its windows NOT_EQUAL sets all pixels and the others none; BERNSEN takes NaN as
 * gray_morphology.h does. WOLF leaves deviations that are NaN out.
 *
 * Even windows reach one pixel further to the left, or up. Borders: replicated, mirrored, symmetric, circular, constant,
 * in memory, or clipped, the default, where n counts the pixels inside the image. In memory the pixels that windows
 * reach must be there.
 *
 * mask of C1MR chooses the pixels that may be set: where it is 0, dst is 0. Windows, x_min and s_max do not regard it.
 *
 * Steps count elements. src and dst must not overlap. The cost of a pixel does not depend on the window; 32f and BERNSEN
 * as in gray_morphology.h; that of GAUSS grows with the sides of the window. Forms ending in _MT run on the host's pool, in at most `threads` tiles; any number works with
 * any pool, results do not depend on it, and pool may be null. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, mask, dst, cfg or buffer null                 0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smallest step                      0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_THRESHOLD_LOCAL_H
#define DAXI_THRESHOLD_LOCAL_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

enum {
  DAXI_LOCAL_MEAN = 0,
  DAXI_LOCAL_MEAN_VARIANCE = 1,
  DAXI_LOCAL_NIBLACK = 2,
  DAXI_LOCAL_SAUVOLA = 3,
  DAXI_LOCAL_WOLF = 4,
  DAXI_LOCAL_BERNSEN = 5,
  DAXI_LOCAL_GAUSS = 6
};

enum { DAXI_LOCAL_LIGHT = 0, DAXI_LOCAL_DARK = 1, DAXI_LOCAL_EQUAL = 2, DAXI_LOCAL_NOT_EQUAL = 3 };

/* Configuration. 72 bytes. Defaults of 16u are 256 times, and of 32f, whose greys are taken as 0..1, 1/256 times those
 * of 8u, where they are greys. */
typedef struct DaxiThresholdLocalCfg {
  int32_t method;  /* 0..6: DAXI_LOCAL_MEAN to ..._GAUSS */
  int32_t mode;    /* 0..3: DAXI_LOCAL_LIGHT, the default, to ..._NOT_EQUAL */
  DaxiSize window; /* 31 x 31 by default; sides 1..32767, together with those of the image at most 2^31 - 1 */
  double k;        /* finite; MEAN_VARIANCE 0.2, NIBLACK -0.2, SAUVOLA 0.2, WOLF 0.5, others 0; of GAUSS 0 means 1/6 */
  double r;        /* above 0, finite: of SAUVOLA, the deviation at which T is m; 128 */
  double offset;   /* finite; MEAN, MEAN_VARIANCE, BERNSEN and GAUSS 5, others, published without one, 0 */
  double minDeviation; /* >= 0, finite: of MEAN_VARIANCE; 2 */
  double minContrast;  /* >= 0, finite: of BERNSEN; 15 */
  int32_t border;      /* 0..6: DAXI_BORDER_REPLICATE to ..._CLIP, the default */
  int32_t reserved;    /* not read */
  double value;        /* of a constant border: 0; finite, taken to the nearest value of the type */
} DaxiThresholdLocalCfg;

/* Fills in the defaults of a method.
 *
 * Checks, in order: cfg null -> 0x10000014; method outside 0..6 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_ThresholdLocalDefaultCfg_8u(int32_t method, DaxiThresholdLocalCfg* cfg);
DAX_API DaxStatus DAXI_ThresholdLocalDefaultCfg_16u(int32_t method, DaxiThresholdLocalCfg* cfg);
DAX_API DaxStatus DAXI_ThresholdLocalDefaultCfg_32f(int32_t method, DaxiThresholdLocalCfg* cfg);

/* Bytes of work buffer for the same arguments.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019; a need that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_ThresholdLocalBufferSize_8u(DaxiSize size, const DaxiThresholdLocalCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ThresholdLocalBufferSize_16u8u(DaxiSize size, const DaxiThresholdLocalCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ThresholdLocalBufferSize_32f8u(DaxiSize size, const DaxiThresholdLocalCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_ThresholdLocalBufferSize_8u_MT(DaxiSize size, const DaxiThresholdLocalCfg* cfg, uint32_t threads,
                                                      uint64_t* bytes);
DAX_API DaxStatus DAXI_ThresholdLocalBufferSize_16u8u_MT(DaxiSize size, const DaxiThresholdLocalCfg* cfg,
                                                         uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_ThresholdLocalBufferSize_32f8u_MT(DaxiSize size, const DaxiThresholdLocalCfg* cfg,
                                                         uint32_t threads, uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_ThresholdLocal_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiThresholdLocalCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ThresholdLocal_16u8u_C1R(const uint16_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                DaxiSize size, const DaxiThresholdLocalCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ThresholdLocal_32f8u_C1R(const float* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                                DaxiSize size, const DaxiThresholdLocalCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ThresholdLocal_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                              int32_t maskStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                              const DaxiThresholdLocalCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ThresholdLocal_16u8u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask,
                                                 int32_t maskStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                 const DaxiThresholdLocalCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ThresholdLocal_32f8u_C1MR(const float* src, int32_t srcStep, const uint8_t* mask,
                                                 int32_t maskStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                 const DaxiThresholdLocalCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ThresholdLocal_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                const DaxiThresholdLocalCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ThresholdLocal_16u8u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                   uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                   const DaxiThresholdLocalCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ThresholdLocal_32f8u_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                   uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                   const DaxiThresholdLocalCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ThresholdLocal_8u_C1MR_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                 const uint8_t* mask, int32_t maskStep, uint8_t* dst, int32_t dstStep,
                                                 DaxiSize size, const DaxiThresholdLocalCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_ThresholdLocal_16u8u_C1MR_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                    const uint8_t* mask, int32_t maskStep, uint8_t* dst,
                                                    int32_t dstStep, DaxiSize size, const DaxiThresholdLocalCfg* cfg,
                                                    void* buffer);
DAX_API DaxStatus DAXI_ThresholdLocal_32f8u_C1MR_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                    const uint8_t* mask, int32_t maskStep, uint8_t* dst,
                                                    int32_t dstStep, DaxiSize size, const DaxiThresholdLocalCfg* cfg,
                                                    void* buffer);

DAX_END_DECLS

#endif
