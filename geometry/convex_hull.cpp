#include "geometry/convex_hull.h"

namespace dax {
namespace {

bool same(DaxiPoint32s a, DaxiPoint32s b) {
  return a.x == b.x && a.y == b.y;
}

}  // namespace

int32_t RowHull::finish() {
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
