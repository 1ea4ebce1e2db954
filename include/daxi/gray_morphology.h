/* Minima and maxima over windows: grey erosion and dilation, and what is made of the two.
 *
 * A window of W x H pixels has an anchor (ax, ay), a pixel of it, which lies on the pixel that is computed:
 *   erosion   dst(x, y) = min of src(x - ax + i, y - ay + j) over i in 0..W - 1, j in 0..H - 1
 *   dilation  dst(x, y) = max of src(x + ax - i, y + ay - j): the window is turned by half a circle about its anchor,
 *             so that an opening never exceeds its source and a closing never falls below it, for even windows and any
 *             anchor, too
 *   opening   the dilation of the erosion              closing    the erosion of the dilation
 *   gradient  dilation - erosion                       top-hat    src - opening        black-hat   closing - src
 * N iterations are one pass with a window of N (W - 1) + 1 by N (H - 1) + 1 pixels and an anchor of N ax, N ay; an
 * opening of N iterations is N erosions, then N dilations. Differences saturate at the type's limits; those of 32f are
 * rounded once.
 *
 * Borders: replicated, mirrored, symmetric, circular, constant, in memory, or clipped, the default, where pixels
 * outside do not count, which is the same as replicated ones. In memory: the pixels that the window reaches around the
 * region must be there; an opening, a closing and what is made of them reach by W - 1 columns and H - 1 rows in each
 * direction.
 *
 * Values are exact. Floats are ordered as by totalOrder of IEEE 754-2008: -0 before +0, and NaN beyond the infinity of
 * its sign.
 *
 * Steps count elements. src and dst must not overlap. The cost of a pixel does not depend on H (van Herk, A fast
 * algorithm for local minimum and maximum filters on rectangular and octagonal kernels, 1992), and grows with the
 * number of bits of W at most. Forms ending in _MT run on the host's pool, in at most `threads` tiles; any number works with
 * any pool, results do not depend on it, and pool may be null. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, dst, cfg or buffer null                       0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smaller step                       0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_GRAY_MORPHOLOGY_H
#define DAXI_GRAY_MORPHOLOGY_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

/* Configuration. 32 bytes. */
typedef struct DaxiGrayMorphologyCfg {
  DaxiSize window;    /* 3 x 3 by default; sides 1..32767 */
  int32_t anchorX;    /* a column of the window, 0 to W - 1; default 1 */
  int32_t anchorY;    /* a row of the window, 0 to H - 1; default 1 */
  int32_t iterations; /* at least 1, the default; N (W - 1) + 1 and N (H - 1) + 1 are at most 32767; in memory the sides
                       * of the image and the reach together at most 2^31 - 1 */
  int32_t border;     /* 0..6: DAXI_BORDER_REPLICATE to ..._CLIP, the default */
  double value;       /* of a constant border: 0; finite, taken to the nearest value of the type */
} DaxiGrayMorphologyCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_GrayMorphologyDefaultCfg(DaxiGrayMorphologyCfg* cfg);

/* Bytes of work buffer for the same arguments, for the forms ending in _MT too.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019; a need that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_GrayErodeRectBufferSize_8u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayErodeRectBufferSize_16u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayErodeRectBufferSize_16s(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayErodeRectBufferSize_32f(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateRectBufferSize_8u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateRectBufferSize_16u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateRectBufferSize_16s(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayDilateRectBufferSize_32f(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayOpenBufferSize_8u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayOpenBufferSize_16u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayOpenBufferSize_16s(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayOpenBufferSize_32f(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayCloseBufferSize_8u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayCloseBufferSize_16u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayCloseBufferSize_16s(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayCloseBufferSize_32f(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayGradientBufferSize_8u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayGradientBufferSize_16u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayGradientBufferSize_16s(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayGradientBufferSize_32f(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayTopHatBufferSize_8u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayTopHatBufferSize_16u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayTopHatBufferSize_16s(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayTopHatBufferSize_32f(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayBlackHatBufferSize_8u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayBlackHatBufferSize_16u(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayBlackHatBufferSize_16s(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_GrayBlackHatBufferSize_32f(DaxiSize size, const DaxiGrayMorphologyCfg* cfg, uint64_t* bytes);

/* The minimum over the window. buffer, here and below: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_GrayErodeRect_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeRect_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                               uint8_t* dst, int32_t dstStep, DaxiSize size,
                                               const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeRect_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeRect_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeRect_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeRect_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                int16_t* dst, int32_t dstStep, DaxiSize size,
                                                const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeRect_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayErodeRect_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                float* dst, int32_t dstStep, DaxiSize size,
                                                const DaxiGrayMorphologyCfg* cfg, void* buffer);

/* The maximum over the turned window. */
DAX_API DaxStatus DAXI_GrayDilateRect_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateRect_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                uint8_t* dst, int32_t dstStep, DaxiSize size,
                                                const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateRect_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateRect_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                 uint16_t* dst, int32_t dstStep, DaxiSize size,
                                                 const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateRect_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateRect_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                                 int16_t* dst, int32_t dstStep, DaxiSize size,
                                                 const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateRect_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayDilateRect_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                                 float* dst, int32_t dstStep, DaxiSize size,
                                                 const DaxiGrayMorphologyCfg* cfg, void* buffer);

/* The dilation of the erosion. */
DAX_API DaxStatus DAXI_GrayOpen_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayOpen_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                          uint8_t* dst, int32_t dstStep, DaxiSize size,
                                          const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayOpen_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                        DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayOpen_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                           uint16_t* dst, int32_t dstStep, DaxiSize size,
                                           const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayOpen_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                        DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayOpen_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                           int16_t* dst, int32_t dstStep, DaxiSize size,
                                           const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayOpen_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                        const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayOpen_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                           int32_t dstStep, DaxiSize size, const DaxiGrayMorphologyCfg* cfg,
                                           void* buffer);

/* The erosion of the dilation. */
DAX_API DaxStatus DAXI_GrayClose_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayClose_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                           uint8_t* dst, int32_t dstStep, DaxiSize size,
                                           const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayClose_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayClose_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                            uint16_t* dst, int32_t dstStep, DaxiSize size,
                                            const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayClose_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayClose_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                            int16_t* dst, int32_t dstStep, DaxiSize size,
                                            const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayClose_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                         const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayClose_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                            int32_t dstStep, DaxiSize size, const DaxiGrayMorphologyCfg* cfg,
                                            void* buffer);

/* The dilation less the erosion. */
DAX_API DaxStatus DAXI_GrayGradient_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayGradient_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              uint8_t* dst, int32_t dstStep, DaxiSize size,
                                              const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayGradient_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayGradient_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               uint16_t* dst, int32_t dstStep, DaxiSize size,
                                               const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayGradient_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayGradient_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                               int16_t* dst, int32_t dstStep, DaxiSize size,
                                               const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayGradient_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayGradient_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                               float* dst, int32_t dstStep, DaxiSize size,
                                               const DaxiGrayMorphologyCfg* cfg, void* buffer);

/* The source less its opening. */
DAX_API DaxStatus DAXI_GrayTopHat_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayTopHat_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size,
                                            const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayTopHat_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayTopHat_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size,
                                             const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayTopHat_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayTopHat_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                             int16_t* dst, int32_t dstStep, DaxiSize size,
                                             const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayTopHat_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                          const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayTopHat_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size,
                                             const DaxiGrayMorphologyCfg* cfg, void* buffer);

/* The closing less the source. */
DAX_API DaxStatus DAXI_GrayBlackHat_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayBlackHat_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              uint8_t* dst, int32_t dstStep, DaxiSize size,
                                              const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayBlackHat_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayBlackHat_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               uint16_t* dst, int32_t dstStep, DaxiSize size,
                                               const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayBlackHat_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayBlackHat_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                               int16_t* dst, int32_t dstStep, DaxiSize size,
                                               const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayBlackHat_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiGrayMorphologyCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_GrayBlackHat_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                               float* dst, int32_t dstStep, DaxiSize size,
                                               const DaxiGrayMorphologyCfg* cfg, void* buffer);

/* Minima of 3 x 3 pixels, clipped at the image's edge, without a work buffer: the defaults of the
 * configuration. Checks as above, without cfg and buffer. */
DAX_API DaxStatus DAXI_GrayErode3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size);
DAX_API DaxStatus DAXI_GrayErode3x3_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                            DaxiSize size);
DAX_API DaxStatus DAXI_GrayErode3x3_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                            DaxiSize size);
DAX_API DaxStatus DAXI_GrayErode3x3_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size);

/* Maxima of 3 x 3 pixels, as DAXI_GrayErode3x3_8u_C1R. Checks as above, without cfg and buffer. */
DAX_API DaxStatus DAXI_GrayDilate3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size);
DAX_API DaxStatus DAXI_GrayDilate3x3_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                             DaxiSize size);
DAX_API DaxStatus DAXI_GrayDilate3x3_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                             DaxiSize size);
DAX_API DaxStatus DAXI_GrayDilate3x3_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                             DaxiSize size);

DAX_END_DECLS

#endif
