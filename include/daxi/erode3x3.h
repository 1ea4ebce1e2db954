/* One-sided binary erosion with 3-pixel passes along rows and columns. A pixel is set when it is not 0.
 *
 * Row pass, o from s, for every row of w pixels:
 *   inside:        o[x] = 255 where s[x] is set and (s[x - 1] is clear or s[x + 1] is set), else 0
 *   first column:  o[0] = s[1] where s[0] is set, else 0
 *   last column:   o[w - 1] = s[w - 2] where s[w - 1] is set, else 0
 * So a run that does not touch the edge loses its last pixel and keeps its first; a single pixel stays. In the edge
 * columns the neighbour's value is copied unchanged. For w = 1 the missing neighbour counts as clear: o[0] = 0. The
 * column pass is the same along columns: the row above is the left neighbour, the row below the right one.
 *
 * Steps count bytes. Thread-safe; a failed call writes nothing.
 *
 * Checks of the images, in order: src null, size below 1 x 1, srcStep < w -> 0x10000014, 0x1000001a, 0x1000001b;
 * dst null, dstStep < w -> 0x10000014, 0x1000001b. */
#ifndef DAXI_ERODE3X3_H
#define DAXI_ERODE3X3_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Work-buffer need of DAXI_Erode3x3_8u_C1R: width * height bytes, rounded up to a multiple of 128.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; a need that does not fit a signed
 * 64-bit integer -> 0x10000015. */
DAX_API DaxStatus DAXI_Erode3x3BufferSize_8u(DaxiSize size, uint64_t* bytes);

/* Erodes `iterations` times: a row pass, then a column pass over its result. dst may equal src with the same step;
 * otherwise they must not overlap. Iterations stop when one changes nothing.
 *
 * Checks after those of the images, in order: iterations < 1 -> 0x10000019; buffer null -> 0x10000014. `buffer` holds
 * at least the queried bytes, at any address. */
DAX_API DaxStatus DAXI_Erode3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                       DaxiSize size, int32_t iterations, void* buffer);

/* The row pass alone. dst may equal src with the same step. */
DAX_API DaxStatus DAXI_ErodeRow3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size);

/* The column pass alone. dst must not overlap src. */
DAX_API DaxStatus DAXI_ErodeCol3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size);

DAX_END_DECLS

#endif
