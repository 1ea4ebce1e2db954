/* Histograms of a region, or of the pixels that a mask chooses: over bins of one width, or between given edges.
 *
 *   src, srcStep    image, step in elements
 *   mask, maskStep  of the same size: pixels where it is not 0 count (C1MR)
 *   size            of the region
 *   bins            1..65536
 *   counts          receives the number of pixels of each of the `bins` bins, exact at any size
 *   outside         receives the number of pixels below, above, and that are NaN; may be null
 *   buffer          as many bytes as the query says, aligned as by malloc; bytes need none, nor do floats between given edges
 *
 * Thread-safe for distinct outputs and buffers. The results are the same on every machine.
 *
 * Checks, in order:
 *   a pointer (other than outside) null               0x10000014
 *   width < 1 or height < 1                           0x1000001a
 *   srcStep < width                                   0x1000001b
 *   maskStep < width                                  0x1000001b
 *   bins outside 1..65536                             0x10000019
 *   low and high, or the edges, as the function says  0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_HISTOGRAM_H
#define DAXI_HISTOGRAM_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Pixels that lie in no bin. 24 bytes. */
typedef struct DaxiHistogramOutside {
  uint64_t below;
  uint64_t above;
  uint64_t nan; /* of floats */
} DaxiHistogramOutside;

/* Bytes of work buffer for so many bins.
 *
 * Checks, in order: bytes null -> 0x10000014; bins outside 1..65536 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_HistogramEvenBufferSize_16u(int32_t bins, uint64_t* bytes);
DAX_API DaxStatus DAXI_HistogramEvenBufferSize_32f(int32_t bins, uint64_t* bytes);
DAX_API DaxStatus DAXI_HistogramRangeBufferSize_16u(int32_t bins, uint64_t* bytes);

/* Bins of one width from low to high. Integers: pixels with low <= x < high, bin (x - low) * bins div (high - low). Floats: the
 * bin is the last one whose edge low + i * (high - low) / bins, in double, is not above x; x = high belongs to the last bin.
 *
 * Checked last: low >= high; 32f: low < -FLT_MAX or high > FLT_MAX -> 0x10000019. */
DAX_API DaxStatus DAXI_HistogramEven_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, int32_t bins,
                                            int32_t low, int32_t high, uint64_t* counts, DaxiHistogramOutside* outside);
DAX_API DaxStatus DAXI_HistogramEven_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                             DaxiSize size, int32_t bins, int32_t low, int32_t high, uint64_t* counts,
                                             DaxiHistogramOutside* outside);
DAX_API DaxStatus DAXI_HistogramEven_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, int32_t bins,
                                             int32_t low, int32_t high, uint64_t* counts, DaxiHistogramOutside* outside,
                                             void* buffer);
DAX_API DaxStatus DAXI_HistogramEven_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask,
                                              int32_t maskStep, DaxiSize size, int32_t bins, int32_t low, int32_t high,
                                              uint64_t* counts, DaxiHistogramOutside* outside, void* buffer);
DAX_API DaxStatus DAXI_HistogramEven_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, int32_t bins, double low,
                                             double high, uint64_t* counts, DaxiHistogramOutside* outside,
                                             void* buffer);
DAX_API DaxStatus DAXI_HistogramEven_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                              DaxiSize size, int32_t bins, double low, double high, uint64_t* counts,
                                              DaxiHistogramOutside* outside, void* buffer);

/* Bins between bins + 1 edges: bin i has edges[i] <= x < edges[i + 1]; of floats the last one has its last edge too.
 *
 * Checked last: the edges do not ascend strictly, or one is NaN -> 0x10000019. */
DAX_API DaxStatus DAXI_HistogramRange_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size, const int32_t* edges,
                                             int32_t bins, uint64_t* counts, DaxiHistogramOutside* outside);
DAX_API DaxStatus DAXI_HistogramRange_8u_C1MR(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                              int32_t maskStep, DaxiSize size, const int32_t* edges, int32_t bins,
                                              uint64_t* counts, DaxiHistogramOutside* outside);
DAX_API DaxStatus DAXI_HistogramRange_16u_C1R(const uint16_t* src, int32_t srcStep, DaxiSize size, const int32_t* edges,
                                              int32_t bins, uint64_t* counts, DaxiHistogramOutside* outside,
                                              void* buffer);
DAX_API DaxStatus DAXI_HistogramRange_16u_C1MR(const uint16_t* src, int32_t srcStep, const uint8_t* mask,
                                               int32_t maskStep, DaxiSize size, const int32_t* edges, int32_t bins,
                                               uint64_t* counts, DaxiHistogramOutside* outside, void* buffer);
DAX_API DaxStatus DAXI_HistogramRange_32f_C1R(const float* src, int32_t srcStep, DaxiSize size, const float* edges,
                                              int32_t bins, uint64_t* counts, DaxiHistogramOutside* outside);
DAX_API DaxStatus DAXI_HistogramRange_32f_C1MR(const float* src, int32_t srcStep, const uint8_t* mask, int32_t maskStep,
                                               DaxiSize size, const float* edges, int32_t bins, uint64_t* counts,
                                               DaxiHistogramOutside* outside);

DAX_END_DECLS

#endif
