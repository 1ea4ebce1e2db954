#include "calib/board/chessboard_quads.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "daxi/region.h"
#include "measure/region/domain_runs.h"

namespace dax {
namespace {

// Limits of squares; other regions are ignored.
constexpr uint64_t kMuchLarger = 8;   // areas of at least this many times the mean are too large
constexpr uint64_t kMuchSmaller = 4;  // areas up to the mean divided by this are too small
constexpr int32_t kMinSquares = 6;    // fewer are no board
constexpr float kMinRectangularity = 0.3f;
constexpr float kNearerBy = 2;  // squared pixels by which a corner counts as nearer

uint64_t areaOf(const DaxiDomainList& domains, uint32_t label) {
  uint64_t area = 0;
  forEachWholeRun(viewDomain(domains, domains.domains[label], domains.size),
                  [&](RunSpan run) { area += static_cast<uint64_t>(run.length()); });
  return area;
}

// Keeps the regions for which keep(area, count, sum) holds; count and sum are those of all areas.
template <class Keep>
int32_t keepByArea(uint32_t* labels, uint64_t* areas, int32_t count, Keep keep) {
  uint64_t sum = 0;
  for (int32_t i = 0; i < count; ++i) sum += areas[i];
  int32_t kept = 0;
  for (int32_t i = 0; i < count; ++i) {
    if (!keep(areas[i], static_cast<uint64_t>(count), sum)) continue;
    areas[kept] = areas[i];
    labels[kept++] = labels[i];
  }
  return kept;
}

int32_t keepRectangles(const DaxiDomainList& domains, uint32_t* labels, int32_t count, DaxiPoint32s* points) {
  for (int32_t i = count - 1; i >= 0; --i) {
    float rectangularity = 0;
    _DAXI_DomainRectangularity(&domains, &domains.domains[labels[i]], domains.size, points, &rectangularity);
    if (rectangularity >= kMinRectangularity) continue;
    std::copy(labels + i + 1, labels + count, labels + i);
    --count;
  }
  return count;
}

float distance2(const ChessboardCornerPoint& a, const ChessboardCornerPoint& b) {
  const float dx = a.x - b.x, dy = a.y - b.y;
  return dx * dx + dy * dy;
}

struct CornerRef {
  int32_t quad;  // index
  int32_t slot;
};

class Linker {
 public:
  explicit Linker(const QuadTable& table) : table_(table) {}

  void linkAll() const {
    for (int32_t i = 0; i < table_.quadCount; ++i) {
      for (int32_t slot = 0; slot < 4; ++slot) {
        if (isFree(i, slot)) linkNearest({i, slot});
      }
    }
  }

 private:
  bool isFree(int32_t quad, int32_t slot) const { return table_.quads[quad].neighbour[slot] == 0; }
  const ChessboardCornerPoint& point(CornerRef at) const {
    return table_.corner(table_.quads[at.quad].corner[at.slot]);
  }

  // The nearest corner within the shortest edges of both quads; the first one of equals.
  bool findNearest(CornerRef from, CornerRef& nearest, float& smallest) const {
    smallest = std::numeric_limits<float>::max();
    const float reach = table_.quads[from.quad].minEdge;
    for (int32_t j = 0; j < table_.quadCount; ++j) {
      if (j == from.quad) continue;
      for (int32_t slot = 0; slot < 4; ++slot) {
        if (!isFree(j, slot)) continue;
        const float d2 = distance2(point(from), point({j, slot}));
        if (!(d2 < smallest) || d2 > reach || d2 > table_.quads[j].minEdge) continue;
        smallest = d2;
        nearest = {j, slot};
      }
    }
    return smallest < std::numeric_limits<float>::max();
  }

  bool isLinked(int32_t quad, int32_t other) const {
    const int32_t* const ids = table_.quads[quad].neighbour;
    return std::find(ids, ids + 4, table_.quads[other].id) != ids + 4;
  }

  // Whether another corner of this quad, or a free one of a third quad, is nearer to the chosen corner.
  bool hasRival(CornerRef from, CornerRef chosen, float d2) const {
    const ChessboardCornerPoint& to = point(chosen);
    for (int32_t j = 0; j < table_.quadCount; ++j) {
      if (j == chosen.quad) continue;
      for (int32_t slot = 0; slot < 4; ++slot) {
        const bool counts = j == from.quad ? slot != from.slot : isFree(j, slot);
        if (counts && distance2(point({j, slot}), to) < d2 - kNearerBy) return true;
      }
    }
    return false;
  }

  void linkNearest(CornerRef from) const {
    CornerRef to{};
    float d2 = 0;
    if (!findNearest(from, to, d2) || isLinked(from.quad, to.quad) || hasRival(from, to, d2)) return;
    link(table_, table_.quads[from.quad], from.slot, table_.quads[to.quad], to.slot);
  }

  const QuadTable& table_;
};

void grow(const QuadTable& table, int32_t number, QuadGroup& group) {
  for (int32_t i = 0; i < group.count; ++i) {
    for (const int32_t id : table.quad(group.ids[i]).neighbour) {
      if (id == 0 || table.quad(id).group >= 0) continue;
      table.quad(id).group = number;
      group.ids[group.count++] = id;
    }
  }
}

}  // namespace

void link(const QuadTable& table, ChessboardQuad& a, int32_t slotOfA, ChessboardQuad& b, int32_t slotOfB) {
  ChessboardCornerPoint& shared = table.corner(a.corner[slotOfA]);
  const ChessboardCornerPoint& other = table.corner(b.corner[slotOfB]);
  shared.x = (shared.x + other.x) / 2;
  shared.y = (shared.y + other.y) / 2;
  b.corner[slotOfB] = a.corner[slotOfA];
  a.neighbour[slotOfA] = b.id;
  b.neighbour[slotOfB] = a.id;
  ++a.neighbours;
  ++b.neighbours;
}

void unlink(const QuadTable& table, ChessboardQuad& quad, int32_t slot) {
  ChessboardQuad& other = table.quad(quad.neighbour[slot]);
  for (int32_t& id : other.neighbour) {
    if (id != quad.id) continue;
    id = 0;
    --other.neighbours;
  }
  quad.neighbour[slot] = 0;
  --quad.neighbours;
}

}  // namespace dax

int32_t DAXI_ChessboardCorner_contour_select(const DaxiDomainList* domains, const dax::BoardCounts* counts,
                                             uint32_t* labels, uint64_t* areas, DaxiPoint32s* points) {
  auto count = static_cast<int32_t>(domains->domainCount);
  for (int32_t i = 0; i < count; ++i) {
    labels[i] = static_cast<uint32_t>(i);
    areas[i] = dax::areaOf(*domains, labels[i]);
  }
  count = dax::keepByArea(labels, areas, count,
                          [](uint64_t area, uint64_t n, uint64_t sum) { return area * n < dax::kMuchLarger * sum; });
  if (count < dax::kMinSquares) return 0;
  count = dax::keepByArea(labels, areas, count,
                          [](uint64_t area, uint64_t n, uint64_t sum) { return dax::kMuchSmaller * area * n > sum; });
  if (count < dax::kMinSquares || count > counts->maxRegions()) return 0;
  count = dax::keepRectangles(*domains, labels, count, points);
  return count >= counts->quarter ? count : 0;
}

void DAXI_ChessboardCorner_find_quads_neighbor(const dax::QuadTable* table) {
  dax::Linker(*table).linkAll();
}

void DAXI_ChessboardCorner_find_connected_quads(const dax::QuadTable* table, int32_t number, dax::QuadGroup* group) {
  group->count = 0;
  for (int32_t i = 0; i < table->quadCount; ++i) {
    ChessboardQuad& seed = table->quads[i];
    if (seed.neighbours < 1 || seed.group >= 0) continue;
    seed.group = number;
    group->ids[group->count++] = seed.id;
    return dax::grow(*table, number, *group);
  }
}
