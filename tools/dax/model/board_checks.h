// Checks of boards, and the order of their corners.
#pragma once

#include <vector>

#include "io/grey_image.h"
#include "model/board.h"

namespace dax::tool {

// Whether dark and light alternate twice on a circle around each corner.
std::vector<bool> ringsOf(const GreyImage& image, const Board& board, float radius);

// Whether the corners are those of a plane grid seen by a camera: a homography and, of enough corners, a smooth
// displacement by the lens hold all of them.
bool isPlaneGrid(const Board& board);

// Where colours tell the two ends of a board apart, which is with an odd sum of columns and rows, the first corner
// becomes the one beside the dark square of the board's corner; else the order stays and the board is ambiguous.
void orderByColour(const GreyImage& image, Board& board);

// A quarter turn: rows become columns; the sense of the turn is kept.
Board turned(const Board& board);

}  // namespace dax::tool
