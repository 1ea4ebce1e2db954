/* Checkerboard corners of a board of unknown size: saddle points of the smoothed image, found where the determinant of
 * the Hessian is large, verified on circles around them, and arranged into rows and columns.
 *
 * Corners are ordered row by row. A board has at least as many columns as rows; its first row is the one nearer the top
 * of the image, and the turn from the direction of the rows to that of the columns has the sense of the turn from x to
 * y. For a square board the rows are those most nearly along x. Corners are within about 0.1 pixels of the true ones on
 * boards with squares from 15 pixels on; DAXI_ChessboardCornerGetSubpix_8u_C1R (chessboard_subpix.h) improves that.
 *
 * Where corners are missing, because they are hidden or outside the image, the board is the largest rectangle of
 * corners without gaps and so can be a part of the printed one: compare columns and rows with the known size. Limits of
 * extent never cut a board: a board beyond them is ignored as a whole.
 *
 * Squares must be 10 pixels wide at least, after sub-sampling. */
#ifndef DAXI_CHESSBOARD_HESSIAN_H
#define DAXI_CHESSBOARD_HESSIAN_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "point.h"

DAX_BEGIN_DECLS

/* Maximum number of corners that are examined, and the room that outputs for boards of any size must have. */
#define DAXI_CHECKERBOARD_MAX_CORNERS 2048

enum {
  DAXI_CHECKERBOARD_MEDIAN = 1, /* 3 x 3 median, against noise */
  DAXI_CHECKERBOARD_PLAIN = 2   /* no filter */
};

typedef struct CheckerboardHessianParam {
  int32_t filter;      /* DAXI_CHECKERBOARD_MEDIAN or DAXI_CHECKERBOARD_PLAIN */
  int32_t subSampling; /* 1..5: every n-th pixel of every n-th row is used; squares should be 10..60 of these wide */
  int32_t minExtent;   /* 2..300: minimum number of corners along the board's shorter side. A grid of 2 x 2 often occurs
                          elsewhere in an image; from 3 on false boards are rare. */
  int32_t maxExtent;   /* 2..300: maximum number along the longer side */
  float minAngle;      /* degrees, 0..180, minAngle <= maxAngle: a corner passes when the angle between its edges, */
  float maxAngle;      /* or its supplement to 180, lies in between */
} CheckerboardHessianParam;

/* A corner. 32 bytes. */
typedef struct CheckerboardCorner {
  DaxiPoint32f point;
  DaxiPoint32f intoDark;  /* edges through the corner as unit vectors: a small turn from this one, in the sense from */
  DaxiPoint32f intoLight; /* x towards y, leads into a dark square, from this one into a light one */
  float response;         /* magnitude of the determinant of the Hessian, or response of the detector by symmetry */
  float radius;           /* at which the corner was found, pixels */
} CheckerboardCorner;

/* A board among corners: corners[first .. first + columns * rows - 1], row by row. */
typedef struct CheckerboardGrid {
  int32_t columns; /* 0: no board */
  int32_t rows;
  int32_t first;
} CheckerboardGrid;

/* Bytes of work buffer. Checks, in order: bytes null -> 0x10000014; width or height below 64 or above 65536 ->
 * 0x10000008; a size that does not fit a signed 64-bit integer -> 0x10000015. Thread-safe. */
DAX_API DaxStatus DAXI_CheckerboardCornerHessianBufferSize_8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_CheckerboardCornerHessian_LocBufferSize_8u(DaxiSize size, uint64_t* bytes);
DAX_API DaxStatus DAXI_MulCheckerboardCornerHessianBufferSize_8u(DaxiSize size, uint64_t* bytes);

/* Bytes of work buffer for arranging `count` corners. bytes null -> 0x10000014; count outside 1..2048 -> 0x10000019. */
DAX_API DaxStatus DAXI_CheckerboardCornerHessian_SortBufferSize(int32_t count, uint64_t* bytes);
DAX_API DaxStatus DAXI_MulCheckerboardCornerHessian_SortBufferSize(int32_t count, uint64_t* bytes);

/* Finds the board with the most corners.
 *
 *   src, srcStep   image and its row step in bytes
 *   size           region, sides 64..65536
 *   points         receives the board's corners; room for DAXI_CHECKERBOARD_MAX_CORNERS
 *   corners        receives the same with edges and responses; room for as many. The radius is in pixels of `src`.
 *   buffer         at least the queried bytes, aligned as by malloc
 *   param          see above
 *   result         receives the board; columns and rows 0 when there is none
 *
 * Checks, in order:
 *   a null pointer                                                         0x10000014
 *   width or height below 64 or above 65536                                0x10000008
 *   srcStep < width                                                        0x10000009
 *   a field of param out of its range, in the record's order               0x10000019
 * A failed call writes nothing. Returns 0 whether a board is found or not. Thread-safe for distinct outputs. */
DAX_API DaxStatus DAXI_CheckerboardCornerHessian_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                        DaxiPoint32f* points, CheckerboardCorner* corners, void* buffer,
                                                        const CheckerboardHessianParam* param,
                                                        CheckerboardGrid* result);

/* Finds all boards, the one with the most corners first: boards[0 .. *boardCount - 1], their corners one after the
 * other. Boards beyond maxBoards are omitted. Checks as above; checked last: maxBoards < 1 -> 0x10000019. */
DAX_API DaxStatus DAXI_MulCheckerboardCornerHessian_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                           DaxiPoint32f* points, CheckerboardCorner* corners,
                                                           void* buffer, const CheckerboardHessianParam* param,
                                                           CheckerboardGrid* boards, int32_t maxBoards,
                                                           int32_t* boardCount);

/* The locator only: *count verified corners in no particular order, at most maxCorners. Sub-sampling and extents of
 * param are checked but not used: the image is not sub-sampled.
 *   1. Median, or copy.
 *   2. Gaussian of 13 x 13 pixels, sigma 3, with the edge pixels repeated outside.
 *   3. Response |Dxx Dyy - Dxy^2| of second differences. The threshold is 0.005 of the most negative determinant.
 *   4. Non-maximum suppression: the maxima of blocks of (r + 1) x (r + 1) that no response around them exceeds, for
 *      r = 4, 5 and 7.
 *   5. 17 grey values on a circle of 1.6 r must be dark, light, dark, light. The saddle point of a quadric fitted to
 *      the smoothed image is the corner; the two dominant directions of the gradients around it give the edges.
 * Checks as above, without result; checked last: maxCorners < 1 -> 0x10000019. */
DAX_API DaxStatus DAXI_CheckerboardCornerHessian_Loc_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                            CheckerboardCorner* corners, int32_t maxCorners,
                                                            int32_t* count, void* buffer,
                                                            const CheckerboardHessianParam* param);

/* Arranges corners: links each to the nearest corner of opposite sense along its edges, takes connected corners as a
 * grid, and returns the largest rectangle without gaps. `sorted` receives the board and has room for `count` corners.
 * Corners with a number that is not finite are ignored.
 *
 * Checks, in order: a null pointer -> 0x10000014; count outside 1..2048, or a field of param out of its
 * range -> 0x10000019. Thread-safe. */
DAX_API DaxStatus DAXI_CheckerboardCornerHessian_Sort(const CheckerboardCorner* corners, int32_t count,
                                                      CheckerboardCorner* sorted, void* buffer,
                                                      const CheckerboardHessianParam* param, CheckerboardGrid* result);

/* The same for all boards; checked last: maxBoards < 1 -> 0x10000019. */
DAX_API DaxStatus DAXI_MulCheckerboardCornerHessian_Sort(const CheckerboardCorner* corners, int32_t count,
                                                         CheckerboardCorner* sorted, void* buffer,
                                                         const CheckerboardHessianParam* param,
                                                         CheckerboardGrid* boards, int32_t maxBoards,
                                                         int32_t* boardCount);

DAX_END_DECLS

#endif
