#include "calib/board/chessboard_surplus.h"

#include <algorithm>
#include <cmath>

#include "daxi/region.h"
#include "geometry/convex_hull.h"

namespace dax {
namespace {

constexpr float kMaxBoxArea = 1.0e6f;  // square pixels; a group whose box stays larger is emptied

// Rounds half away from zero. Coordinates far outside any image become 0, so that the conversion is defined.
int32_t roundCoordinate(float v) {
  const float bounded = v >= -1e8f && v <= 1e8f ? v : 0;
  return static_cast<int32_t>(std::round(bounded));
}

DaxiPoint32s centreOf(const QuadTable& table, const ChessboardQuad& quad) {
  int32_t x = 0, y = 0;
  for (const int32_t id : quad.corner) {
    x += roundCoordinate(table.corner(id).x);
    y += roundCoordinate(table.corner(id).y);
  }
  return {x >> 2, y >> 2};
}

DaxiPoint32s meanOf(const DaxiPoint32s* points, int32_t count) {
  int64_t x = 0, y = 0;
  for (int32_t i = 0; i < count; ++i) {
    x += points[i].x;
    y += points[i].y;
  }
  return {static_cast<int32_t>(x / count), static_cast<int32_t>(y / count)};
}

class SurplusRemover {
 public:
  SurplusRemover(const QuadTable& table, QuadGroup& group, const GroupScratch& scratch)
      : table_(table), group_(group), centres_(scratch.centres), scratch_(scratch) {
    for (int32_t i = 0; i < group.count; ++i) centres_[i] = centreOf(table, table.quad(group.ids[i]));
    mean_ = meanOf(centres_, group.count);
  }

  void run(int32_t max) {
    while (group_.count > max) {
      const int32_t slot = findSurplus();
      if (slot < 0) {
        group_.count = 0;
        return;
      }
      remove(slot);
    }
  }

 private:
  // Area of the box around all centres, with the centre at one slot replaced by the mean.
  float areaWithout(int32_t slot) {
    const DaxiPoint32s kept = centres_[slot];
    centres_[slot] = mean_;
    DaxiRotatedBox box;
    const DaxStatus status =
        _DAXI_PtEncloseBox_32s(centres_, group_.count, DAXI_BOX_MIN_AREA, &box, scratch_.boxBuffer);
    centres_[slot] = kept;
    return status == DAX_STS_OK ? box.width * box.height : kMaxBoxArea;
  }

  // Finds the hull of all centres and their mean. Only the removal of one of its corners changes the box.
  int32_t findHull() {
    const int32_t count = group_.count + 1;
    DaxiPoint32s* const sorted = scratch_.hull + 3 * count + 1;
    std::copy(centres_, centres_ + group_.count, sorted);
    sorted[group_.count] = mean_;
    std::sort(sorted, sorted + count,
              [](DaxiPoint32s a, DaxiPoint32s b) { return a.y != b.y ? a.y < b.y : a.x < b.x; });
    return sortedPointsHull(sorted, count, scratch_.hull);
  }

  int32_t findSurplus() {
    const int32_t hullCount = findHull();
    const auto onHull = [&](DaxiPoint32s p) {
      return std::any_of(scratch_.hull, scratch_.hull + hullCount,
                         [p](DaxiPoint32s h) { return h.x == p.x && h.y == p.y; });
    };
    float smallest = kMaxBoxArea, inner = -1;  // inner: the area without any centre inside the hull
    int32_t best = -1;
    for (int32_t i = 0; i < group_.count; ++i) {
      float area = inner;
      if (onHull(centres_[i]) || inner < 0) {
        area = areaWithout(i);
        if (!onHull(centres_[i])) inner = area;
      }
      if (area < smallest) {
        smallest = area;
        best = i;
      }
    }
    return best;
  }

  // Moves the last quad to the slot. The count falls by two: the last but one is lost as well.
  void remove(int32_t slot) {
    ChessboardQuad& quad = table_.quad(group_.ids[slot]);
    for (int32_t i = 0; i < group_.count; ++i) {
      ChessboardQuad& other = table_.quad(group_.ids[i]);
      for (int32_t& id : other.neighbour) {
        if (i == slot || id != quad.id) continue;
        id = 0;
        --other.neighbours;
      }
    }
    group_.ids[slot] = group_.ids[group_.count - 1];
    centres_[slot] = centres_[group_.count - 1];
    group_.count = std::max(group_.count - 2, 0);
  }

  const QuadTable& table_;
  QuadGroup& group_;
  DaxiPoint32s* centres_;
  const GroupScratch& scratch_;
  DaxiPoint32s mean_;
};

}  // namespace
}  // namespace dax

void DAXI_ChessboardCorner_clean_surplus_quads(const dax::QuadTable* table, dax::QuadGroup* group, int32_t max,
                                               const dax::GroupScratch* scratch) {
  if (group->count > max) dax::SurplusRemover(*table, *group, *scratch).run(max);
}
