/* Histogram equalisation of the whole image.
 *
 * dst = (cdf(src) - c) max / (n - c), rounded to the nearest integer, halves to the even one: cdf(v) is the number of pixels up to v,
 * c that of the lowest level there is, n of all, and max the greatest value of the type. An image of one level stays as it is.
 *
 * C1R has one channel; C1IR works in place. dst may equal src with the same step; else they must not overlap. Steps count elements. 16u
 * needs a work buffer, aligned as by malloc. Thread-safe for distinct destinations and buffers. Results are exact.
 *
 * Checks, in order:
 *   an image or buffer null        0x10000014
 *   width < 1 or height < 1        0x1000001a
 *   width above the smallest step  0x1000001b
 * A failed call writes nothing. */
#ifndef DAXI_EQUALIZE_HIST_H
#define DAXI_EQUALIZE_HIST_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* dst = src equalised. */
DAX_API DaxStatus DAXI_EqualizeHist_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                           DaxiSize size);
DAX_API DaxStatus DAXI_EqualizeHist_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size);
DAX_API DaxStatus DAXI_EqualizeHist_16u_C1R(const uint16_t* src, int32_t srcStep, uint16_t* dst, int32_t dstStep,
                                            DaxiSize size, void* buffer);
DAX_API DaxStatus DAXI_EqualizeHist_16u_C1IR(uint16_t* srcDst, int32_t step, DaxiSize size, void* buffer);

/* Bytes of work buffer. bytes null -> 0x10000014. Thread-safe. */
DAX_API DaxStatus DAXI_EqualizeHistBufferSize_16u(uint64_t* bytes);

DAX_END_DECLS

#endif
