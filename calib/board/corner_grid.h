// Corners arranged into grids, and boards read off them.
#pragma once

#include <cstdint>

#include "calib/board/corner_ring.h"
#include "daxi/chessboard_hessian.h"
#include "frame/memory/work_buffer.h"

namespace dax {

inline constexpr int32_t kMostGridCorners = DAXI_CHECKERBOARD_MAX_CORNERS;
inline constexpr int32_t kMostCells = 1 << 16;

// A corner as a node: its neighbours along the edges, clockwise on the screen, and its cell.
struct GridNode {
  int32_t neighbour[4];  // indices; -1: none
  DaxiPoint32f direction[4];
  int32_t component;  // -1: in none
  int32_t column;
  int32_t row;
  int32_t turn;  // which neighbour is the one in the next column: (4 - turn) % 4
};

struct GridBuffer {
  GridBuffer();
  BufferLayout layout;
  BufferPiece<GridNode> nodes;
  BufferPiece<int32_t> queue;
  BufferPiece<int32_t> cells;  // of one component: indices of nodes, -1: none
  BufferPiece<int32_t> heights;
  BufferPiece<int32_t> board;  // indices of the corners of boards, one board behind the other
  BufferPiece<CheckerboardGrid> found;
};

struct GridLimits {
  int32_t leastExtent;
  int32_t mostExtent;
};

// Looks for a corner where a grid expects one, at a distance from its neighbours, one of which is given: its edges are
// the same, with their senses swapped.
struct CornerProber {
  bool (*probe)(const void* context, DaxiPoint32f expected, float spacing, const CheckerboardCorner& neighbour,
                CheckerboardCorner* corner);
  const void* context;
};

// Finds boards among corners[0 .. *count - 1]; with a prober, gaps in grids and their surroundings are searched, and
// found corners appended, up to kMostGridCorners, for which the array has room. Writes grids, the one of most corners
// first, at most `maxBoards` of them, and their corners into sorted; returns the number of boards.
int32_t findBoards(CheckerboardCorner* corners, int32_t* count, GridLimits limits, const CornerProber* prober,
                   CheckerboardCorner* sorted, CheckerboardGrid* boards, int32_t maxBoards, void* buffer);

// A rectangle of cells of a component, `step` cells wide in memory.
struct CellRectangle {
  int32_t* cells;
  int32_t step;
  int32_t columns;
  int32_t rows;
  int32_t& at(int32_t column, int32_t row) const { return cells[ptrdiff_t{row} * step + column]; }
};

// The largest rectangle of cells all of which are taken; `heights` has room for a row.
CellRectangle largestFullRectangle(const CellRectangle& all, int32_t* heights);

// Whether the corners of a rectangle lie as on a board in perspective: neighbouring steps alike, no cell folded.
bool isRegular(const CheckerboardCorner* corners, const CellRectangle& board);

// Writes the indices of the rectangle's corners in the order of boards; returns columns and rows.
CheckerboardGrid orderBoard(const CheckerboardCorner* corners, const CellRectangle& board, int32_t* indices);

}  // namespace dax
