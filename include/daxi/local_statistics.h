/* Statistics of the window around each pixel, as images.
 *
 * n pixels x of a window have the mean m.
 *   LocalMean     m
 *   LocalStdDev   sqrt(mean of (x - m)^2), from n Q - S^2 with the sum S and the sum of squares Q
 *   LocalEntropy  - sum of p log2 p in bits, p being the shares of the grey levels in the window
 *   LocalRange    the greatest pixel less the least one; of 32f rounded once
 * Sums of integers are exact, and so is n Q - S^2; quotient and root are rounded in double precision, then to single
 * precision. 32f: sums are those of suffixes and prefixes of blocks as large as the window, in double precision; each
 * pixel counts only in its own windows, which are NaN where it is; a deviation loses digits where it is small beside
 * the mean: its square is wrong by up to some 1e-15 m^2 times the sum of the window's sides. Entropy is within 1e-5.
 *
 * Even windows reach one pixel further to the left, or up. Borders: replicated, mirrored, symmetric, circular, constant,
 * in memory, or clipped, the default, where n counts the pixels inside the image. In memory the pixels that windows
 * reach must be there.
 *
 * Steps count elements. src and dst must not overlap. The cost of a pixel does not depend on the window, but that of
 * LocalEntropy, which grows with its height, and that of LocalRange, as in gray_morphology.h. Forms ending in _MT run
 * on the host's pool, in at most `threads` tiles; any number works with any pool, results do not depend on it, and pool
 * may be null. Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, dst, cfg or buffer null                       0x10000014
 *   width < 1 or height < 1                            0x1000001a
 *   width above the smaller step                       0x1000001b
 *   configuration, in the order of its fields          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_LOCAL_STATISTICS_H
#define DAXI_LOCAL_STATISTICS_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

/* Configuration. 24 bytes. */
typedef struct DaxiLocalStatisticsCfg {
  DaxiSize window;  /* 9 x 9 by default; sides 1..32767, together with those of the image at most 2^31 - 1; of
                     * LocalEntropy at most 65536 pixels */
  int32_t border;   /* 0..6: DAXI_BORDER_REPLICATE to ..._CLIP, the default */
  int32_t reserved; /* not read */
  double value;     /* of a constant border: 0; finite, taken to the nearest value of the type */
} DaxiLocalStatisticsCfg;

/* Fills in the defaults. cfg null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_LocalStatisticsDefaultCfg(DaxiLocalStatisticsCfg* cfg);

/* Bytes of work buffer for the same arguments.
 *
 * Checks, in order: cfg or bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; the configuration, in the
 * order of its fields -> 0x10000019; a need that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_LocalMeanBufferSize_8u32f(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalMeanBufferSize_8u32f_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint32_t threads,
                                                    uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalMeanBufferSize_16u32f(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalMeanBufferSize_16u32f_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint32_t threads,
                                                     uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalMeanBufferSize_32f(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalMeanBufferSize_32f_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint32_t threads,
                                                  uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalStdDevBufferSize_8u32f(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalStdDevBufferSize_8u32f_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg,
                                                      uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalStdDevBufferSize_16u32f(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalStdDevBufferSize_16u32f_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg,
                                                       uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalStdDevBufferSize_32f(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalStdDevBufferSize_32f_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint32_t threads,
                                                    uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalEntropyBufferSize_8u32f(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalEntropyBufferSize_8u32f_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg,
                                                       uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalEntropyBufferSize_16u32f(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalEntropyBufferSize_16u32f_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg,
                                                        uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalRangeBufferSize_8u(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalRangeBufferSize_8u_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint32_t threads,
                                                  uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalRangeBufferSize_16u(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalRangeBufferSize_16u_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint32_t threads,
                                                   uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalRangeBufferSize_32f(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint64_t* bytes);
DAX_API DaxStatus DAXI_LocalRangeBufferSize_32f_MT(DaxiSize size, const DaxiLocalStatisticsCfg* cfg, uint32_t threads,
                                                   uint64_t* bytes);

/* buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_LocalMean_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalMean_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              float* dst, int32_t dstStep, DaxiSize size,
                                              const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalMean_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalMean_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               float* dst, int32_t dstStep, DaxiSize size,
                                               const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalMean_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                         const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalMean_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep, float* dst,
                                            int32_t dstStep, DaxiSize size, const DaxiLocalStatisticsCfg* cfg,
                                            void* buffer);
DAX_API DaxStatus DAXI_LocalStdDev_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                             DaxiSize size, const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalStdDev_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                float* dst, int32_t dstStep, DaxiSize size,
                                                const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalStdDev_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalStdDev_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                 float* dst, int32_t dstStep, DaxiSize size,
                                                 const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalStdDev_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                           DaxiSize size, const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalStdDev_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                              float* dst, int32_t dstStep, DaxiSize size,
                                              const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalEntropy_8u32f_C1R(const uint8_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                              DaxiSize size, const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalEntropy_8u32f_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                                 float* dst, int32_t dstStep, DaxiSize size,
                                                 const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalEntropy_16u32f_C1R(const uint16_t* src, int32_t srcStep, float* dst, int32_t dstStep,
                                               DaxiSize size, const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalEntropy_16u32f_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                                  float* dst, int32_t dstStep, DaxiSize size,
                                                  const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalRange_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalRange_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size,
                                            const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalRange_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalRange_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size,
                                             const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalRange_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                          const DaxiLocalStatisticsCfg* cfg, void* buffer);
DAX_API DaxStatus DAXI_LocalRange_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size,
                                             const DaxiLocalStatisticsCfg* cfg, void* buffer);

DAX_END_DECLS

#endif
