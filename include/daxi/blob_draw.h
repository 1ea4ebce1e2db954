/* Drawing blobs into images. */
#ifndef DAXI_BLOB_DRAW_H
#define DAXI_BLOB_DRAW_H

#include "blob_select.h"

DAX_BEGIN_DECLS

/* Writes 1 + label mod 255 into the pixels of `count` blobs, or of all domains where blobs is null; other pixels are
 * left unchanged. Runs are clipped to the region.
 *
 * Checks, in order: image, domains or their arrays null -> 0x10000014; size below 1 x 1 -> 0x1000001a; step < width ->
 * 0x1000001b; count < 0 -> 0x10000019; a blob without a domain -> 0x10000014. Thread-safe for distinct images. */
DAX_API DaxStatus DAXI_DrawBlobLabel_8u_C1IR(uint8_t* srcDst, int32_t step, DaxiSize size,
                                             const DaxiDomainList* domains, const BlobInfo* blobs, int32_t count);

/* Writes `value` into the pixels of the outer boundary of each blob: the points that its perimeter was measured along.
 * `buffer` has DAXI_BlobSelectBufferSize_8u bytes. Arguments and checks as above, with buffer among the pointers;
 * checked last: a side above 65536 -> 0x1000001a. */
DAX_API DaxStatus DAXI_BlobSelect_draw_blob_contour(uint8_t* srcDst, int32_t step, DaxiSize size,
                                                    const DaxiDomainList* domains, const BlobInfo* blobs, int32_t count,
                                                    uint8_t value, void* buffer);

/* Writes the label of every pixel, and `background` where there is no domain. Runs are clipped to the region. The step
 * counts elements. Checks, in order: domains or its arrays null -> 0x10000014; dst null, size below 1 x 1, dstStep <
 * width -> 0x10000014, 0x1000001a, 0x1000001b. Thread-safe for distinct images. */
DAX_API DaxStatus DAXI_BlobLabelImage_32s_C1R(const DaxiDomainList* domains, int32_t background, int32_t* dst,
                                              int32_t dstStep, DaxiSize size);

DAX_END_DECLS

#endif
