#include "measure/blob/enclose_box.h"

namespace dax {
namespace {

bool same(DaxiPoint32s a, DaxiPoint32s b) {
  return a.x == b.x && a.y == b.y;
}

// Twice the area of the triangle abc; positive when the way a-b-c turns from x towards y.
int64_t turn(DaxiPoint32s a, DaxiPoint32s b, DaxiPoint32s c) {
  return int64_t{b.x - a.x} * (c.y - a.y) - int64_t{b.y - a.y} * (c.x - a.x);
}

// One side of the hull, from top to bottom: a chain that only turns inwards (A. M. Andrew, Inf. Proc. Letters 9(5),
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
  DaxiPoint32s* points_;
  int32_t inwards_;
  int32_t count_ = 0;
};

// A hull built row by row, for at most `rows` rows. points[0] is kept for the top left corner, which comes before the
// right side; the left side is built behind the room that the two can take, and then appended upwards.
class RowHull {
 public:
  RowHull(DaxiPoint32s* points, size_t rows)
      : points_(points), right_(points + 1, 1), left_(points + 1 + 2 * rows, -1) {}

  void addRow(int32_t y, int32_t first, int32_t last) {
    left_.add({first, y});
    right_.add({last, y});
  }

  int32_t finish() {
    if (left_.count() == 0) return 0;
    const DaxiPoint32s bottomRight = right_[right_.count() - 1];
    points_[0] = left_[0];
    int32_t count = 1 + right_.count();
    if (same(points_[0], points_[1])) {
      for (int32_t i = 1; i < count - 1; ++i) points_[i] = points_[i + 1];
      --count;
    }
    for (int32_t i = left_.count() - 1; i > 0; --i) {
      if (!same(left_[i], bottomRight)) points_[count++] = left_[i];
    }
    return count;
  }

 private:
  DaxiPoint32s* points_;
  HullSide right_;
  HullSide left_;
};

}  // namespace

int32_t domainHull(const DomainView& view, DaxiPoint32s* points) {
  RowHull hull(points, static_cast<size_t>(view.size.height));
  RunSpan row{-1, 0, 0};
  forEachRun(view, [&](RunSpan run) {
    if (run.row != row.row) {
      if (row.row >= 0) hull.addRow(row.row, row.start, row.end);
      row = run;
    }
    row.end = run.end;
  });
  if (row.row >= 0) hull.addRow(row.row, row.start, row.end);
  return hull.finish();
}

int32_t sortedPointsHull(const DaxiPoint32s* sorted, int32_t count, DaxiPoint32s* hull) {
  RowHull rows(hull, static_cast<size_t>(count));
  for (int32_t first = 0, last = 0; first < count; first = last + 1) {
    last = first;
    while (last + 1 < count && sorted[last + 1].y == sorted[first].y) ++last;
    rows.addRow(sorted[first].y, sorted[first].x, sorted[last].x);
  }
  return rows.finish();
}

}  // namespace dax
