// Corners compared with the true ones.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "dax/types.h"
#include "tests/calib/board/board_image.h"

namespace dax::test {

inline double distance(DaxiPoint32f a, PlanePoint b) {
  return std::hypot(static_cast<double>(a.x) - b.x, static_cast<double>(a.y) - b.y);
}

// The largest distance of the corners from the true ones, row by row or from the other end.
inline double worstError(const DaxiPoint32f* corners, const std::vector<PlanePoint>& truth) {
  double forward = 0, backward = 0;
  for (size_t i = 0; i < truth.size(); ++i) {
    forward = std::max(forward, distance(corners[i], truth[i]));
    backward = std::max(backward, distance(corners[i], truth[truth.size() - 1 - i]));
  }
  return std::min(forward, backward);
}

// The same for boards that may have been read along the other side: every corner against its nearest.
inline double worstNearest(const DaxiPoint32f* corners, const std::vector<PlanePoint>& truth) {
  double worst = 0;
  for (const PlanePoint& p : truth) {
    double nearest = 1e9;
    for (size_t i = 0; i < truth.size(); ++i) nearest = std::min(nearest, distance(corners[i], p));
    worst = std::max(worst, nearest);
  }
  return worst;
}

// First row on top, rows turning clockwise into columns.
inline bool isOrdered(const DaxiPoint32f* p, int32_t columns, int32_t rows) {
  const DaxiPoint32f row = p[columns - 1], column = p[columns * (rows - 1)];
  const float cross = (row.x - p[0].x) * (column.y - p[0].y) - (row.y - p[0].y) * (column.x - p[0].x);
  return cross > 0 && column.y >= p[0].y;
}

}  // namespace dax::test
