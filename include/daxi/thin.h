/* Thinning of masks to lines of one pixel, and the branches of such lines. A pixel is set when it is not 0; pixels outside
 * the image are clear; results are 0 and 255.
 *
 * Steps count bytes. dst may equal src with the same step; otherwise they must not overlap. Thread-safe for distinct
 * destinations and buffers.
 *
 * Checks, in order:
 *   src, dst or buffer null                         0x10000014
 *   width or height below 1 or above 32768          0x1000001a
 *   width above the smaller step                    0x1000001b
 *   maxIterations < 0, maxLength < 0                0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_THIN_H
#define DAXI_THIN_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* Bytes of work buffer.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height below 1 or above 32768 -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_ThinBufferSize_8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_PruneBranchesBufferSize_8u(DaxiSize size, uint64_t* bytes);

/* The thinning of Guo and Hall (Parallel thinning with two-subiteration algorithms, Communications of the ACM 32, 1989,
 * their A1), which keeps what hangs together, with 8 neighbours, and ends of lines. An iteration has two passes; a pass
 * decides on all pixels, then clears. With the neighbours p2, north, to p9, northwest, clockwise, a set pixel is cleared
 * where
 *   C = 1 and 2 <= N <= 3, where
 *     C = (!p2 & (p3 | p4)) + (!p4 & (p5 | p6)) + (!p6 & (p7 | p8)) + (!p8 & (p9 | p2))
 *     N = min((p9 | p2) + (p3 | p4) + (p5 | p6) + (p7 | p8), (p2 | p3) + (p4 | p5) + (p6 | p7) + (p8 | p9))
 *   and in the first pass (p2 | p3 | !p5) & p4 is 0, in the second (p6 | p7 | !p9) & p8.
 *
 * maxIterations  at least 0; 0: until nothing changes
 * buffer         at least as many bytes as the query says, aligned as by malloc
 *
 * Only pixels whose neighbours have changed are looked at again, so the time grows with the number of pixels, not with
 * the thickness. */
DAX_API DaxStatus DAXI_Thin_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep, DaxiSize size,
                                   int32_t maxIterations, void* buffer);

/* Clears short branches of thin lines. A branch starts at a set pixel with one set neighbour of eight and goes on over
 * pixels with two, up to one with more, which does not belong to it. Branches of at most maxLength pixels are cleared,
 * all as they are in src; lines between two ends stay.
 *
 * maxLength  at least 0
 * buffer     at least as many bytes as the query says, aligned as by malloc */
DAX_API DaxStatus DAXI_PruneBranches_8u_C1R(const uint8_t* src, int32_t srcStep, uint8_t* dst, int32_t dstStep,
                                            DaxiSize size, int32_t maxLength, void* buffer);

DAX_END_DECLS

#endif
