/* One-sided binary dilation with 3-pixel passes along rows and columns, which gives back what the erosion of erode3x3.h
 * takes: the right and the lower ends of runs. A pixel is set when it is not 0.
 *
 * Row pass, o from s, for every row: o[x] = 255 where s[x] is set, or where s[x - 1] is set and s[x + 1] is clear, else
 * 0; neighbours outside the image count as clear. The column pass is the same along columns: the row above is the left
 * neighbour, the row below the right one. So a run grows by one pixel to the right, unless that joins it to the next
 * one. Along rows, and along columns, runs of at least two pixels come back exactly after one erosion; a single pixel,
 * which the erosion keeps, grows.
 *
 * Steps count bytes. Thread-safe; a failed call writes nothing.
 *
 * Checks of the images, in order: src null, size below 1 x 1, srcStep < w -> 0x10000014, 0x1000001a, 0x1000001b;
 * dst null, dstStep < w -> 0x10000014, 0x1000001b. */
#ifndef DAXI_DILATE3X3_H
#define DAXI_DILATE3X3_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Work-buffer need of DAXI_Dilate3x3_8u_C1R: width * height bytes, rounded up to a multiple of 128.
 *
 * Checks, in order: bytes null -> 0x10000014; width < 1 or height < 1 -> 0x10000019; a need that does not fit a signed
 * 64-bit integer -> 0x10000015. */
DAX_API DaxStatus DAXI_Dilate3x3BufferSize_8u(DaxiSize size, uint64_t* bytes);

/* Dilates `iterations` times: a row pass, then a column pass over its result. dst may equal src with the same step;
 * otherwise they must not overlap. Iterations stop when one changes nothing.
 *
 * Checks after those of the images, in order: iterations < 1 -> 0x10000019; buffer null -> 0x10000014. `buffer` holds
 * at least the queried bytes, at any address. */
DAX_API DaxStatus DAXI_Dilate3x3_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                        DaxiSize size, int32_t iterations, void* buffer);

DAX_END_DECLS

#endif
