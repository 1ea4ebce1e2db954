#include "measure/enclose_box.h"

namespace dax {
namespace {

// Twice the area of the triangle abc; positive when the way a-b-c turns from x towards y.
int64_t turn(PointI32 a, PointI32 b, PointI32 c) {
  return int64_t{b.x - a.x} * (c.y - a.y) - int64_t{b.y - a.y} * (c.x - a.x);
}

// One side of the hull, from top to bottom: a chain that only turns inwards (A. M. Andrew, Inf. Proc. Letters 9(5),
// 1979).
class HullSide {
 public:
  // `inwards`: 1 for the right side, -1 for the left.
  HullSide(PointI32* points, int32_t inwards) : points_(points), inwards_(inwards) {}

  void add(PointI32 point) {
    while (count_ >= 2 && turn(points_[count_ - 2], points_[count_ - 1], point) * inwards_ <= 0) --count_;
    points_[count_++] = point;
  }

  int32_t count() const { return count_; }
  PointI32 operator[](int32_t i) const { return points_[i]; }

 private:
  PointI32* points_;
  int32_t inwards_;
  int32_t count_ = 0;
};

}  // namespace
}  // namespace dax

// points[0] is kept for the top left corner, which comes before the right side; the left side is built behind the room
// that the right side can take, and then appended upwards.
int32_t _DAXI_DomainConvexHull_ROI(const dax::DomainView* view, dax::PointI32* points) {
  using namespace dax;
  HullSide right(points + 1, 1);
  HullSide left(points + 1 + 2 * static_cast<size_t>(view->size.height), -1);
  RunSpan row{-1, 0, 0};
  const auto finishRow = [&] {
    if (row.row < 0) return;
    left.add({row.start, row.row});
    right.add({row.end, row.row});
  };
  forEachRun(*view, [&](RunSpan run) {
    if (run.row != row.row) {
      finishRow();
      row = run;
    }
    row.end = run.end;
  });
  finishRow();
  if (left.count() == 0) return 0;

  const auto same = [](PointI32 a, PointI32 b) { return a.x == b.x && a.y == b.y; };
  const PointI32 bottomRight = right[right.count() - 1];
  points[0] = left[0];
  int32_t count = 1 + right.count();
  if (same(points[0], points[1])) {
    for (int32_t i = 1; i < count - 1; ++i) points[i] = points[i + 1];
    --count;
  }
  for (int32_t i = left.count() - 1; i > 0; --i) {
    if (!same(left[i], bottomRight)) points[count++] = left[i];
  }
  return count;
}
