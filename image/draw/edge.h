// Outlines as rows see them.
#pragma once

#include <cstdint>

namespace dax {

enum class FillRule : int32_t { nonZero, evenOdd };

inline bool isInside(FillRule rule, int32_t winding) {
  return rule == FillRule::evenOdd ? (winding & 1) != 0 : winding != 0;
}

// A side of an outline, from its upper to its lower end, or a line that is one pixel thin. It reaches beyond the image; its
// rows do not.
struct Edge {
  double x0, y0, x1, y1;
  double slope;  // dx / dy; 0 where y0 == y1
  int32_t firstRow, lastRow;
  int32_t winding;  // 1 downwards, -1 upwards
  int32_t next;     // that begins in the same row, or -1
};

// The part of an edge in one row.
struct Piece {
  double top, bottom, left, right;
  int32_t edge;
  int32_t first, last;  // columns
};

// Where an edge crosses a band of a row: x at its top, its bottom and half way.
struct Crossing {
  double x0, x1, middle;
  int32_t winding;
};

}  // namespace dax
