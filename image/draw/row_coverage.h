// One row of a drawing: from the edges that reach it to blended pixels.
//
// Exact areas: edges are put together to clusters of columns that no edge leaves. Between clusters the winding number is the
// same in all of the row. Where outlines do not overlap, the areas to the right of their edges add up to the coverage.
// Else the row is cut into bands at the ends of edges and where edges cross; in a band the
// edges are ordered, the fill rule chooses some of them, and the area to their right is added up by pixels.
#pragma once

#include <algorithm>

#include "image/draw/canvas.h"
#include "image/draw/edge.h"

namespace dax {

// What needs more bands in one cluster, or more crossings or comparisons of edges, is cut into 64 rows of exact spans.
constexpr int32_t kMaxBands = 512, kMaxCrossings = 4096;
constexpr int64_t kMaxComparisons = 1 << 20;
constexpr uint64_t kMaxEnds = kMaxCrossings + 4;  // beyond those of pieces

struct RowMemory {
  const Edge* edges;
  Piece* pieces;
  Crossing* crossings;
  double* ends;
  double* areas;
  float* coverage;
};

struct RowPaint {
  const Canvas& canvas;
  Ink ink;
  DaxiRect window;
  FillRule rule;
  bool isSimple;  // no two outlines overlap
};

// x of an edge at a height between its ends.
inline double xAt(const Edge& edge, double y) {
  if (y <= edge.y0) return edge.x0;
  if (y >= edge.y1) return edge.x1;
  // However steep, not beyond its ends.
  return std::clamp(edge.x0 + (y - edge.y0) * edge.slope, std::min(edge.x0, edge.x1), std::max(edge.x0, edge.x1));
}

// The edges with the numbers active[0..count - 1], whose order is changed to that from left to right.
void paintCoveredRow(const RowPaint& paint, const RowMemory& memory, int32_t y, int32_t* active, int32_t count);

// Pixels whose centres lie inside; one that lies on a left or upper side does.
void paintRowOfCentres(const RowPaint& paint, const RowMemory& memory, int32_t y, int32_t* active, int32_t count);

// Sorts nearly sorted items; what is not is left to std::sort.
template <class T, class Less>
void sortNearlySorted(T* items, int32_t count, Less less) {
  int64_t moves = int64_t{16} * count + 64;
  for (int32_t i = 1; i < count; ++i) {
    const T item = items[i];
    int32_t at = i;
    for (; at > 0 && less(item, items[at - 1]); --at) items[at] = items[at - 1];
    items[at] = item;
    moves -= i - at;
    if (moves < 0) {
      std::sort(items, items + count, less);
      return;
    }
  }
}

}  // namespace dax
