/* Refinement of chessboard corners to fractions of a pixel.
 *
 * Around a corner every gradient that is not 0 is perpendicular to the line from the corner to its pixel. The corner is
 * the point that satisfies this best (W. Foerstner, E. Guelch, ISPRS Intercommission Workshop 1987); the search is
 * repeated around each new estimate. For each corner, at most maxIter times:
 *   1. A patch of (2 hw + 3) x (2 hh + 3) pixels, centred on the estimate, is interpolated bilinearly, with the edge
 *      pixels repeated outside the image.
 *   2. gx and gy are its 3 x 3 Sobel gradients, over the window of (2 hw + 1) x (2 hh + 1) pixels.
 *   3. With offsets (x, y) from the centre and weights w = exp(-x^2 / hw^2) exp(-y^2 / hh^2), the shift solves
 *        sum w gx^2   sum w gx gy     x     sum w (gx^2 x + gx gy y)
 *        sum w gx gy  sum w gy^2      y  =  sum w (gx gy x + gy^2 y)
 *      unless the determinant is below 1.1920929e-7 in magnitude: then the search ends.
 *   4. The search ends when the squared shift is below epsilon.
 * A corner keeps its input position when the last estimate is farther than hw or hh from it, when the system became
 * singular before the shift was small enough, and when the position is not finite or so far outside the image that the
 * patch does not overlap it.
 *
 *   src, srcStep   image and its row step in bytes
 *   size           region, sides from 64
 *   corners        positions to start from
 *   count          number of corners, at least 1
 *   halfWindow     hw and hh, each 2..50
 *   maxIter        at least 1
 *   refined        receives `count` positions; may be `corners` itself
 *   epsilon        squared pixels, above 0
 *
 * On sharp boards with squares of 20 pixels and more the mean error is below 0.05 pixels, provided that the error of
 * the start is within the window and the window has no second corner. No work buffer; thread-safe for distinct outputs.
 *
 * Checks, in order:
 *   src, corners or refined null                                               0x10000014
 *   width or height below 64                                                   0x1000001a
 *   srcStep < width                                                            0x1000001b
 *   a half window outside 2..50, count < 1, epsilon not above 0, maxIter < 1   0x10000019
 * A failed call writes nothing. */
#ifndef DAXI_CHESSBOARD_SUBPIX_H
#define DAXI_CHESSBOARD_SUBPIX_H

#include "../dax/status.h"
#include "../dax/types.h"
#include "point.h"

DAX_BEGIN_DECLS

/* Bytes for hosts that allocate a work buffer for each call; the functions below do not use one. With
 * n = (2 hw + 5) (2 hh + 5): 11 round128(4 n) + 2 round128(n). Checks, in order: bytes null -> 0x10000014; a half
 * window outside 2..50 -> 0x10000019. */
DAX_API DaxStatus DAXI_ChessboardCornerGetSubpixBufferSize_8u(DaxiSize halfWindow, uint64_t* bytes);
DAX_API DaxStatus DAXI_ChessboardCornerGetSubpixBufferSize_8u_v2(DaxiSize halfWindow, uint64_t* bytes);

DAX_API DaxStatus DAXI_ChessboardCornerGetSubpix_8u_C1R(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                        const DaxiPoint32f* corners, int32_t count, DaxiSize halfWindow,
                                                        int32_t maxIter, DaxiPoint32f* refined, float epsilon);

/* The same with two more conditions for a corner to move: no estimate may leave the window around the input position;
 * and on a circle around the refined position, with the smaller half window or half of it as radius, dark and light
 * must alternate twice. */
DAX_API DaxStatus DAXI_ChessboardCornerGetSubpix_8u_C1R_v2(const uint8_t* src, int32_t srcStep, DaxiSize size,
                                                           const DaxiPoint32f* corners, int32_t count,
                                                           DaxiSize halfWindow, int32_t maxIter, DaxiPoint32f* refined,
                                                           float epsilon);

DAX_END_DECLS

#endif
