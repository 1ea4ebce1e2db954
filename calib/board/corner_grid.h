// Corners are linked to grids, and boards read from these.
#pragma once

#include <algorithm>
#include <cstdint>

#include "daxi/chessboard_hessian.h"
#include "frame/memory/work_buffer.h"

namespace dax {

inline constexpr int32_t kMaxGridCorners = DAXI_CHECKERBOARD_MAX_CORNERS;
inline constexpr int32_t kMaxCells = 1 << 16;  // of a grid, empty ones included

// A corner as a node: its neighbours along the edges, clockwise on the screen, and its cell.
struct GridNode {
  int32_t neighbour[4];  // indices; -1: none
  DaxiPoint32f direction[4];
  int32_t component;  // -1: none
  int32_t column;
  int32_t row;
  int32_t turn;  // the neighbour in the next column is neighbour[(4 - turn) % 4]
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
  int32_t minExtent;  // corners along the shorter side
  int32_t maxExtent;  // corners along the longer side
};

// Radius in pixels of the circle around a corner that is expected `spacing` away from its neighbours: it stays within the
// squares.
inline float probedRadius(float spacing, float max) {
  return std::clamp(0.45f * spacing, 3.0f, max);
}

// Looks for a corner at an expected position, `spacing` away from its neighbours. One of these is given: the corner
// must have its edges, with their senses swapped.
struct CornerProber {
  bool (*probe)(const void* context, DaxiPoint32f expected, float spacing, const CheckerboardCorner& neighbour,
                CheckerboardCorner* corner);
  const void* context;
};

// Finds boards among corners[0 .. *count - 1]. With a prober, gaps in grids and their surroundings are searched, and
// corners found there are appended, up to kMaxGridCorners, for which the array must have room. Writes at most
// `maxBoards` boards, the one with the most corners first, and their corners to `sorted`; returns the number of boards.
int32_t findBoards(CheckerboardCorner* corners, int32_t* count, GridLimits limits, const CornerProber* prober,
                   CheckerboardCorner* sorted, CheckerboardGrid* boards, int32_t maxBoards, void* buffer);

// Whether a corner that was found near an expected position continues the grid: it is close, and its edges are those of
// the neighbour with their senses swapped.
bool continuesGrid(const CheckerboardCorner& corner, DaxiPoint32f expected, float spacing,
                   const CheckerboardCorner& neighbour);

}  // namespace dax
