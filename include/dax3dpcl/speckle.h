/* Speckle filter: clears small patches of similar values from 16-bit range images.
 *
 * Two horizontal or vertical neighbours are connected when neither is `invalid` and their values differ by less than
 * maxDiff. A region is a maximal set of connected pixels of the whole image. dst receives src, with the pixels of
 * regions of at most maxSize pixels set to `invalid` in the window of rows start.y..end.y - 1 and columns
 * start.x..end.x - 1. Pixels outside the window are copied, but count in the size of their region. A maxDiff below 1
 * connects nothing, a maxSize below 1 clears nothing; an empty window is no error.
 *
 * Rows have no padding. dst may equal src, but must not overlap it otherwise. `buffer` holds at least the queried bytes
 * and has an alignment of 8. Thread-safe. */
#ifndef DAX3DPCL_SPECKLE_H
#define DAX3DPCL_SPECKLE_H

#include "../dax/status.h"
#include "../dax/types.h"

DAX_BEGIN_DECLS

/* A pixel. Passed by value. */
typedef struct DAX3DPCL_PIXEL {
  int32_t x;
  int32_t y;
} DAX3DPCL_PIXEL;

/* Work-buffer need, n = width * height: 4 * n, 8 * n and n bytes, each rounded up to a multiple of 128. Checks, in
 * order: bytes null -> 0x10000000, the general failure; a side < 1 -> 0x10000019; does not fit a signed 64-bit integer
 * -> 0x10000015. */
DAX_API DaxStatus DAX3DPCL_PREP_FILTER_Speckle_BufferSize(DaxiSize size, uint64_t* bytes);

/* Checks, in order:
 *   src, dst or buffer null                                               0x10000014
 *   height < 1 or width < 1                                               0x10000019
 *   start.x < 0, end.x > width, start.y < 0 or end.y > height             0x10000012
 *   more than 2^31 - 1 pixels                                             0x1000001a
 * A failed call writes nothing. */
DAX_API DaxStatus DAX3DPCL_PREP_FILTER_Speckle_U16(DaxiSize size, const uint16_t* src, uint16_t* dst,
                                                   DAX3DPCL_PIXEL start, DAX3DPCL_PIXEL end, int32_t maxDiff,
                                                   int32_t maxSize, uint16_t invalid, void* buffer);
DAX_API DaxStatus DAX3DPCL_PREP_FILTER_Speckle_S16(DaxiSize size, const int16_t* src, int16_t* dst,
                                                   DAX3DPCL_PIXEL start, DAX3DPCL_PIXEL end, int32_t maxDiff,
                                                   int32_t maxSize, int16_t invalid, void* buffer);

DAX_END_DECLS

#endif
