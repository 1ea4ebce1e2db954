// Convex hulls of whole-number points: the corners only, from the topmost (of these the leftmost) on by increasing
// angle of x towards y.
#pragma once

#include <cstddef>
#include <cstdint>

#include "daxi/point.h"

namespace dax {

// One side of a hull, built from top to bottom: a chain that turns inwards only (A. M. Andrew, Inf. Proc. Letters 9(5),
// 1979).
class HullSide {
 public:
  // `inwards`: 1 for the right side, -1 for the left.
  HullSide(DaxiPoint32s* points, int32_t inwards) : points_(points), inwards_(inwards) {}

  void add(DaxiPoint32s point) {
    while (count_ >= 2 && turn(points_[count_ - 2], points_[count_ - 1], point) * inwards_ <= 0) --count_;
    points_[count_++] = point;
  }

  int32_t count() const { return count_; }
  DaxiPoint32s operator[](int32_t i) const { return points_[i]; }

 private:
  // Twice the area of the triangle abc; positive when the path a-b-c turns from x towards y.
  static int64_t turn(DaxiPoint32s a, DaxiPoint32s b, DaxiPoint32s c) {
    return int64_t{b.x - a.x} * (c.y - a.y) - int64_t{b.y - a.y} * (c.x - a.x);
  }

  DaxiPoint32s* points_;
  int32_t inwards_;
  int32_t count_ = 0;
};

// A hull built row by row from the first and last point of each row. `points` has room for 3 * rows + 1 points; after
// finish() the hull is points[0..n).
class RowHull {
 public:
  // points[0] is reserved for the top left corner, which precedes the right side. The left side is built behind the
  // room for both, and then appended from bottom to top.
  RowHull(DaxiPoint32s* points, size_t rows)
      : points_(points), right_(points + 1, 1), left_(points + 1 + 2 * rows, -1) {}

  void addRow(int32_t y, int32_t first, int32_t last) {
    left_.add({first, y});
    right_.add({last, y});
  }

  // Returns the number of corners.
  int32_t finish();

 private:
  DaxiPoint32s* points_;
  HullSide right_;
  HullSide left_;
};

// Hull of points sorted by row, then column, into hull[0..n); returns n. `hull` has room for 3 * count + 1 points.
int32_t sortedPointsHull(const DaxiPoint32s* sorted, int32_t count, DaxiPoint32s* hull);

}  // namespace dax
