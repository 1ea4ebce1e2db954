/* Chessboard corners: the inner corners of a printed board of known size, in an 8-bit image. Refine them with
 * DAXI_ChessboardCornerGetSubpix_8u_C1R (chessboard_subpix.h).
 *
 * A BOARD OF TWO GREY VALUES IS NOT FOUND in the Otsu mode: its level sets every pixel (threshold.h). Smooth such a
 * picture first. The detectors of boards of any size (chessboard_sym.h, chessboard_hessian.h) find more boards, tilted
 * and blurred ones above all.
 *
 * The image is binarised and eroded 1, 2, ... times, until its dark squares separate. Squares that touch corner to
 * corner are linked; a group of linked squares whose corners form exactly the requested grid is the board. A shared
 * corner is halfway between the corners of the two squares. Its error grows with the number of erosions: about half a
 * pixel up and left for each on average, up to 3 pixels on sharp boards.
 *
 * Corners are ordered row by row. The first row is the one nearest the top of the image. The turn from the direction of
 * the rows to that of the columns has the sense of the turn from x to y, so that mirrored boards are read backwards.
 *
 * Single dark squares that touch the board from outside are ignored. Where more than half of a further row or column of
 * squares touches it, the board is larger than the requested one and is not found: its corners could not be identified
 * reliably from image to image. */
#ifndef DAXI_CHESSBOARD_H
#define DAXI_CHESSBOARD_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "point.h"

DAX_BEGIN_DECLS

/* Inner corners of a board: one less than its squares. */
typedef struct ChessboardPatternSize {
  int32_t columns; /* corners in a row */
  int32_t rows;    /* corners in a column */
} ChessboardPatternSize;

/* Which pixels are dark. */
enum {
  DAXI_CHESSBOARD_OTSU = 0,      /* below the Otsu level of the image */
  DAXI_CHESSBOARD_LOCAL_MEAN = 1 /* more than 3 grey levels below the mean of the surroundings, a window of 8 to 128
                                    pixels, depending on the size of the image; finds few photographs, since noise
                                    joins the squares: open such a mask first, or use another detector */
};

/* Bytes of work buffer. The size of the board has no upper limit here.
 *
 * Checks, in order: bytes null -> 0x10000014; width or height below 64 or above 65536 -> 0x1000001a; columns or rows
 * below 2 -> 0x10000019; a size that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_ChessboardCornerBufferSize_8u(DaxiSize size, ChessboardPatternSize pattern, uint64_t* bytes);

/* Finds the board.
 *
 *   src, srcStep    image and its row step in bytes
 *   size            region, sides 64..65536
 *   pattern         inner corners, columns and rows each 2..25. A board of 2 x 2 has too few squares to be found.
 *   corners         receives columns * rows points, in pixels; undefined where no board was found
 *   cornerCount     receives columns * rows when a group of squares had the shape of the board, else 0
 *   found           receives 1 or 0; 0 if a corner is not more than 8 pixels inside the image
 *   thresholdMode   DAXI_CHESSBOARD_OTSU or DAXI_CHESSBOARD_LOCAL_MEAN
 *   maxLevel        maximum number of erosions, 1..18; 8 are enough
 *   buffer          at least the queried bytes, aligned as by malloc
 *
 * Checks, in order:
 *   src, corners, cornerCount, found or buffer null                       0x10000014
 *   srcStep < width                                                       0x1000001b
 *   width or height below 64 or above 65536                               0x1000001a
 *   columns or rows outside 2..25, thresholdMode above 1 (compared as an
 *   unsigned number), maxLevel outside 1..18                              0x10000019
 * A failed call writes nothing. Whether the board was found or not, a call that passes the checks returns 0.
 * Thread-safe for distinct outputs and buffers. */
DAX_API DaxStatus DAXI_ChessboardCorner_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                               ChessboardPatternSize pattern, DaxiPoint32f* corners,
                                               int32_t* cornerCount, int32_t* found, int32_t thresholdMode,
                                               int32_t maxLevel, void* buffer);

DAX_END_DECLS

#endif
