/* The pixel of a rank among those of a window; its median.
 *
 * The window of pixel (x, y) covers the columns x - W / 2..x - W / 2 + W - 1 and the rows y - H / 2..y - H / 2 + H - 1: even
 * windows reach one pixel further left and up. Of its n = W H pixels in ascending order dst(x, y) is
 *   rank     number r, counted from 0: 0 the minimum, n - 1 the maximum
 *   median   number n / 2: the middle one, of an even n the upper of the two (the medians of image statistics are the lower)
 * Values are exact, pixels of the source bit for bit. Floats are ordered as by totalOrder of IEEE 754-2008: -0 before +0, and
 * NaN beyond the infinity of its sign.
 *
 * Borders: replicated, mirrored, symmetric, circular, constant, in memory, or clipped, where pixels outside do not count: of
 * the m pixels that are left dst(x, y) is number floor(r m / n), of r = n - 1 the last. In memory: the pixels that the window
 * reaches around the region must be there.
 *
 * The cost of a pixel: of 8u it does not depend on the window (Perreault and Hebert, Median filtering in constant time, 2007);
 * of the other types it grows with H (Huang, Yang and Tang, A fast two-dimensional median filtering algorithm, 1979), of 32f
 * also slowly with the window's share in its tile of 128 x 128 pixels, which are sorted. Medians of 3 x 3, 5 x 5, 7 x 7 and
 * 9 x 9 pixels are found by comparisons alone (Adams, Fast median filters using separable sorting networks, 2021).
 *
 * Steps count elements. src and dst must not overlap. `value` is that of a constant border. Forms ending in _MT run on the
 * host's pool, in at most `threads` tiles; any number works with any pool, results do not depend on it, and pool may be null.
 * Thread-safe for distinct destinations and buffers.
 *
 * Checks, in order:
 *   src, dst or buffer null                                         0x10000014
 *   width < 1 or height < 1                                         0x1000001a
 *   width above the smaller of the two steps                        0x1000001b
 *   W, H < 1 or above 255; w + W or h + H above 2^31 - 1            0x10000019
 *   rank: not 0 <= rank < W * H                                     0x10000019
 *   border outside 0..6: DAXI_BORDER_REPLICATE to ..._CLIP          0x10000019
 * When a check fails, nothing is written; _MT forms return the status of the host's parallel-for, unchanged. */
#ifndef DAXI_FILTER_RANK_H
#define DAXI_FILTER_RANK_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "border.h"

DAX_BEGIN_DECLS

/* The rank of a percentile, 0 the minimum, 1 the maximum: min(n - 1, floor(percentile n)) of the n pixels of a window.
 *
 * Checks, in order: rank null -> 0x10000014; not 0 <= percentile <= 1 -> 0x10000019; width or height of the window outside
 * 1..255 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_RankFromPercentile(double percentile, DaxiSize window, int32_t* rank);

/* Bytes of work buffer for the same arguments: of 8u 273 (min(width, 512) + W - 1), of 16u and 16s 136 KiB and 2 bytes, of 32f
 * 15 bytes, for each pixel of a tile and what its windows reach, (min(width, 128) + W - 1) by (min(height, 128) + H - 1), with
 * some bytes for alignment. Forms ending in _MT take that times `threads`, at least 1.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; W, H < 1 or above 255, w + W or h + H
 * above 2^31 - 1 -> 0x10000019; a need that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_FilterMedianBufferSize_8u(DaxiSize size, DaxiSize window, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMedianBufferSize_16u(DaxiSize size, DaxiSize window, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMedianBufferSize_16s(DaxiSize size, DaxiSize window, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMedianBufferSize_32f(DaxiSize size, DaxiSize window, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMedianBufferSize_8u_MT(DaxiSize size, DaxiSize window, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMedianBufferSize_16u_MT(DaxiSize size, DaxiSize window, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMedianBufferSize_16s_MT(DaxiSize size, DaxiSize window, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterMedianBufferSize_32f_MT(DaxiSize size, DaxiSize window, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterRankBufferSize_8u(DaxiSize size, DaxiSize window, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterRankBufferSize_16u(DaxiSize size, DaxiSize window, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterRankBufferSize_16s(DaxiSize size, DaxiSize window, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterRankBufferSize_32f(DaxiSize size, DaxiSize window, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterRankBufferSize_8u_MT(DaxiSize size, DaxiSize window, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterRankBufferSize_16u_MT(DaxiSize size, DaxiSize window, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterRankBufferSize_16s_MT(DaxiSize size, DaxiSize window, uint32_t threads, uint64_t* bytes);
DAX_API DaxStatus DAXI_FilterRankBufferSize_32f_MT(DaxiSize size, DaxiSize window, uint32_t threads, uint64_t* bytes);

/* The median. buffer: at least as many bytes as the query says, aligned as by malloc. */
DAX_API DaxStatus DAXI_FilterMedian_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size, DaxiSize window, int32_t border, uint8_t value, void* buffer);
DAX_API DaxStatus DAXI_FilterMedian_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                            DaxiSize size, DaxiSize window, int32_t border, uint16_t value,
                                            void* buffer);
DAX_API DaxStatus DAXI_FilterMedian_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                            DaxiSize size, DaxiSize window, int32_t border, int16_t value,
                                            void* buffer);
DAX_API DaxStatus DAXI_FilterMedian_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep,
                                            DaxiSize size, DaxiSize window, int32_t border, float value, void* buffer);
DAX_API DaxStatus DAXI_FilterMedian_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                              uint8_t* dst, int32_t dstStep, DaxiSize size, DaxiSize window,
                                              int32_t border, uint8_t value, void* buffer);
DAX_API DaxStatus DAXI_FilterMedian_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                               uint16_t* dst, int32_t dstStep, DaxiSize size, DaxiSize window,
                                               int32_t border, uint16_t value, void* buffer);
DAX_API DaxStatus DAXI_FilterMedian_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                               int16_t* dst, int32_t dstStep, DaxiSize size, DaxiSize window,
                                               int32_t border, int16_t value, void* buffer);
DAX_API DaxStatus DAXI_FilterMedian_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                               float* dst, int32_t dstStep, DaxiSize size, DaxiSize window,
                                               int32_t border, float value, void* buffer);

/* The pixel of a rank. buffer: as of the median. */
DAX_API DaxStatus DAXI_FilterRank_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                         DaxiSize size, DaxiSize window, int32_t rank, int32_t border, uint8_t value,
                                         void* buffer);
DAX_API DaxStatus DAXI_FilterRank_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                          DaxiSize size, DaxiSize window, int32_t rank, int32_t border, uint16_t value,
                                          void* buffer);
DAX_API DaxStatus DAXI_FilterRank_16s_C1R(const int16_t* src, int32_t srcStep, int16_t* dst, int32_t dstStep,
                                          DaxiSize size, DaxiSize window, int32_t rank, int32_t border, int16_t value,
                                          void* buffer);
DAX_API DaxStatus DAXI_FilterRank_32f_C1R(const float* src, int32_t srcStep, float* dst, int32_t dstStep, DaxiSize size,
                                          DaxiSize window, int32_t rank, int32_t border, float value, void* buffer);
DAX_API DaxStatus DAXI_FilterRank_8u_C1R_MT(void* pool, uint32_t threads, const uint8_t* src, int32_t srcStep,
                                            uint8_t* dst, int32_t dstStep, DaxiSize size, DaxiSize window, int32_t rank,
                                            int32_t border, uint8_t value, void* buffer);
DAX_API DaxStatus DAXI_FilterRank_16u_C1R_MT(void* pool, uint32_t threads, const uint16_t* src, int32_t srcStep,
                                             uint16_t* dst, int32_t dstStep, DaxiSize size, DaxiSize window,
                                             int32_t rank, int32_t border, uint16_t value, void* buffer);
DAX_API DaxStatus DAXI_FilterRank_16s_C1R_MT(void* pool, uint32_t threads, const int16_t* src, int32_t srcStep,
                                             int16_t* dst, int32_t dstStep, DaxiSize size, DaxiSize window,
                                             int32_t rank, int32_t border, int16_t value, void* buffer);
DAX_API DaxStatus DAXI_FilterRank_32f_C1R_MT(void* pool, uint32_t threads, const float* src, int32_t srcStep,
                                             float* dst, int32_t dstStep, DaxiSize size, DaxiSize window, int32_t rank,
                                             int32_t border, float value, void* buffer);

DAX_END_DECLS

#endif
