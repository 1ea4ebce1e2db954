/* Checkerboard corners of a board of unknown size, by symmetry: on a circle around a corner the image is unchanged by
 * half a turn and inverted by a quarter turn.
 *
 *   1. 3 x 3 median, or copy.
 *   2. For every radius of a ladder of scales the image is sub-sampled, so that the radius is 5 pixels or a little
 *      more, and every pixel gets a response: with 16 grey values g(k) on a circle of that radius, k modulo 16,
 *        sum over k = 0..15 of |g(k) - g(k + 4)|  -  2 sum over k = 0..7 of |g(k) - g(k + 8)|,
 *      16 times the contrast at a perfect corner, negative at an edge. On the host's pool.
 *   3. Local maxima of at least 0.3 of the response that the minimum contrast gives, and not within 3 pixels of a
 *      corner found at an earlier scale, are verified on a circle in the image and refined as by
 *      DAXI_ChessboardCornerGetSubpix_8u_C1R_v2. On the host's pool.
 *   4. Corners are arranged and boards ordered as by the Hessian detector (chessboard_hessian.h). Gaps in grids are
 *      searched again.
 *
 * Squares must be wider than the smallest radius of the ladder and wider than 7 pixels. The result does not depend on
 * the pool or its number of threads. */
#ifndef DAXI_CHESSBOARD_SYM_H
#define DAXI_CHESSBOARD_SYM_H

#include "chessboard_hessian.h"

DAX_BEGIN_DECLS

/* Fewer than 4 corners. */
#define DAXI_STS_NO_BOARD ((DaxStatus)0x10000103)

enum {
  DAXI_CHECKERBOARD_ONE_SCALE = 1, /* lastRadius alone */
  DAXI_CHECKERBOARD_LADDER = 2     /* from a thirtieth of the image's shorter side to lastRadius, up or down, each
                                      radius about 1.5 times or a 1.5th of the one before */
};

typedef struct CheckerboardSymCfg {
  uint32_t minExtent;  /* 2..300: minimum number of corners along the board's shorter side */
  uint32_t maxExtent;  /* 2..300: maximum number along the longer side */
  uint32_t contrast;   /* 1..255: minimum difference of dark and light, grey levels */
  uint32_t distance;   /* 3..100: minimum distance of two corners, pixels */
  uint32_t lastRadius; /* 3..100: end of the ladder, pixels; 5 for boards of any size */
  uint32_t filter;     /* DAXI_CHECKERBOARD_MEDIAN or DAXI_CHECKERBOARD_PLAIN */
  uint32_t scales;     /* DAXI_CHECKERBOARD_ONE_SCALE or DAXI_CHECKERBOARD_LADDER */
} CheckerboardSymCfg;

/* Bytes of work buffer, masked or not. Checks, in order: bytes null -> 0x10000014; width or height below 64 or above
 * 65536 -> 0x10000008; a size that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_CheckerboardCornerSymBufferSize_8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_CheckerboardCornerSymMulBufferSize_8u(DaxiSize size, uint64_t* bytes);

/* Finds the board with the most corners.
 *
 *   src, srcStep     image and its row step in bytes
 *   size             region, sides 64..65536
 *   points, corners  receive the board; room for DAXI_CHECKERBOARD_MAX_CORNERS each
 *   result           receives the board; columns and rows 0 when there is none
 *   cfg              see above
 *   buffer           at least the queried bytes, aligned as by malloc
 *   pool             handle of the host's pool, or null to run on the calling thread
 *
 * Checks, in order:
 *   a null pointer other than pool                                         0x10000014
 *   width or height below 64 or above 65536                                0x10000008
 *   srcStep < width; C1RM: maskStep < width                                0x10000009
 *   a field of cfg out of its range, in the record's order                 0x10000019
 * A call that fails these checks writes nothing. Where no board has at least 4 corners the call returns
 * DAXI_STS_NO_BOARD, else 0 or the status of the pool. Thread-safe for distinct outputs and buffers. */
DAX_API DaxStatus DAXI_CheckerboardCornerSym_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                    DaxiPoint32f* points, CheckerboardCorner* corners,
                                                    CheckerboardGrid* result, const CheckerboardSymCfg* cfg,
                                                    void* buffer, void* pool);

/* The same for corners at pixels where the mask, of the size of the image, is not 0. */
DAX_API DaxStatus DAXI_CheckerboardCornerSym_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                     int32_t maskStep, DaxiSize size, DaxiPoint32f* points,
                                                     CheckerboardCorner* corners, CheckerboardGrid* result,
                                                     const CheckerboardSymCfg* cfg, void* buffer, void* pool);

/* All boards, the one with the most corners first: boards[0 .. *boardCount - 1], their corners one after the other.
 * Boards beyond maxBoards are omitted. Checks as DAXI_CheckerboardCornerSym_8u_C1R; checked last: maxBoards < 1 ->
 * 0x10000019. */
DAX_API DaxStatus DAXI_CheckerboardCornerSymMul_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                       DaxiPoint32f* points, CheckerboardCorner* corners,
                                                       CheckerboardGrid* boards, int32_t maxBoards, int32_t* boardCount,
                                                       const CheckerboardSymCfg* cfg, void* buffer, void* pool);
DAX_API DaxStatus DAXI_CheckerboardCornerSymMul_8u_C1RM(const uint8_t* src, int32_t srcStep, const uint8_t* mask,
                                                        int32_t maskStep, DaxiSize size, DaxiPoint32f* points,
                                                        CheckerboardCorner* corners, CheckerboardGrid* boards,
                                                        int32_t maxBoards, int32_t* boardCount,
                                                        const CheckerboardSymCfg* cfg, void* buffer, void* pool);

DAX_END_DECLS

#endif
