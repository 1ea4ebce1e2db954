// Boards as rectangles of cells.
#pragma once

#include <cstddef>
#include <cstdint>

#include "daxi/chessboard_hessian.h"

namespace dax {

// A rectangle of cells; rows are `step` cells apart in memory. A cell is the index of a corner, or -1.
struct CellRectangle {
  int32_t* cells;
  int32_t step;
  int32_t columns;
  int32_t rows;
  int32_t& at(int32_t column, int32_t row) const { return cells[ptrdiff_t{row} * step + column]; }
};

// The largest rectangle without empty cells; `heights` has room for a row.
CellRectangle largestFullRectangle(const CellRectangle& all, int32_t* heights);

// Whether the corners of a rectangle can be those of a board in perspective: neighbouring steps are similar, and all
// cells convex.
bool isRegular(const CheckerboardCorner* corners, const CellRectangle& board);

// Writes the indices of the rectangle's corners in the order of a board; returns columns and rows.
CheckerboardGrid orderBoard(const CheckerboardCorner* corners, const CellRectangle& board, int32_t* indices);

}  // namespace dax
