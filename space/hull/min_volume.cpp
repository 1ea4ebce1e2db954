#include <numbers>
#include <utility>

#include "frame/numeric/elementary.h"
#include "space/hull/box_axes.h"
#include "space/hull/hull_builder.h"

namespace dax {
namespace {

constexpr int32_t kMaxEdges = 300, kDirections = 100;
constexpr int kPlaces = 9;

// An edge of the hull and the outward normals of its faces, one a turn of the other about the edge by `angle`.
struct BoxEdge {
  Vector3 along, normal, side, other;
  double angle;

  Vector3 normalAt(double turn) const {
    const SinCos at = elementary::sinCos(turn);
    return at.cosine * normal + at.sine * side;
  }
  // Seen along a direction it is part of the outline: its faces turn to opposite sides.
  bool isOutline(const Vector3& view) const { return dot(normal, view) * dot(other, view) <= 1e-12; }
};

struct BoxMemory {
  explicit BoxMemory(int32_t n) : hull(n) {
    edges = hull.layout.add<BoxEdge>(kMaxEdges);
    corners = hull.layout.add<Vector3>(static_cast<uint64_t>(n));
    fewCorners = hull.layout.add<Vector3>(kDirections);
  }
  HullMemory hull;
  BufferPiece<BoxEdge> edges;
  BufferPiece<Vector3> corners, fewCorners;
};

// The corners and edges of a hull, as the search for its box needs them.
struct HullOutline {
  BoxEdge* edges;
  Vector3* corners;
  int32_t edgeCount = 0, cornerCount = 0;
  double worth = 1.5;  // places whose volume is less than so many times the best one are searched more closely

  Span spanAlong(const Vector3& axis) const {
    Span span;
    for (int32_t i = 0; i < cornerCount; ++i) span.add(dot(corners[i], axis));
    return span;
  }
};

Vector3 normalOf(const HullBuilder& hull, int32_t face) {
  const int32_t* const c = hull.face(face).corners;
  return unit(cross(hull.point(c[1]) - hull.point(c[0]), hull.point(c[2]) - hull.point(c[0])));
}

// Corners are kept from the first one on, so that the volume of small hulls far from the origin keeps its digits. False
// where there are more than kMaxEdges edges.
bool outlineOf(const HullBuilder& hull, int32_t n, HullOutline& outline) {
  outline.edgeCount = outline.cornerCount = 0;
  const Vector3 origin = hull.point(0);
  for (int32_t i = 0; i < n; ++i) {
    if (hull.isExtreme(i)) outline.corners[outline.cornerCount++] = hull.point(i) - origin;
  }
  for (int32_t f = 0; f < hull.faceCount(); ++f) {
    for (int edge = 0; edge < 3 && hull.isUsed(f); ++edge) {
      const HullFace& face = hull.face(f);
      if (face.across[edge] < f || !hull.isEdge(f, edge)) continue;
      if (outline.edgeCount == kMaxEdges) return false;
      const Vector3 along = unit(hull.point(face.corners[(edge + 1) % 3]) - hull.point(face.corners[edge]));
      const Vector3 one = normalOf(hull, f), other = normalOf(hull, face.across[edge]);
      if (!isFinite(one) || !isFinite(other)) continue;  // slivers of which rounding leaves no area
      // Counter-clockwise about the edge the other face comes next.
      const Vector3 side = unit(cross(along, one));
      const double angle = elementary::atan2(dot(other, side), dot(other, one));
      outline.edges[outline.edgeCount++] = {along, one, side, other, std::fabs(angle)};
      if (angle < 0) outline.edges[outline.edgeCount - 1].side = -side;
    }
  }
  return true;
}

// The extremes of the corners in directions spread over half the sphere by the golden angle; returns their number.
int32_t reduceCorners(const HullOutline& outline, double (&to)[6 * kDirections]) {
  int32_t kept[2 * kDirections], count = 0;
  const double golden = std::numbers::pi * (3 - std::sqrt(5.0));
  constexpr int kHalf = kDirections / 2;
  for (int k = 0; k < kHalf; ++k) {
    const double z = (k + 0.5) / kHalf, r = std::sqrt((1 - z) * (1 + z));
    const SinCos turn = elementary::sinCos(golden * k);
    const Vector3 direction{r * turn.cosine, r * turn.sine, z};
    Span span;
    int32_t low = 0, high = 0;
    for (int32_t i = 0; i < outline.cornerCount; ++i) {
      const double x = dot(outline.corners[i], direction);
      if (x < span.low) low = i;
      if (x > span.high) high = i;
      span.add(x);
    }
    for (const int32_t found : {low, high}) {
      if (std::find(kept, kept + count, found) == kept + count) kept[count++] = found;
    }
  }
  // Halved and cut off where differences leave the range of the hull's numbers.
  for (int32_t i = 0; i < count; ++i) {
    store3(0.5 * outline.corners[kept[i]], to + ptrdiff_t{3} * i);
    for (ptrdiff_t k = 0; k < 3; ++k) {
      if (std::fabs(to[3 * i + k]) < 1e-60) to[3 * i + k] = 0;
    }
  }
  return count;
}

struct BestBox {
  double volume = INFINITY;
  Vector3 first{1, 0, 0}, second{0, 1, 0};
};

// The box with a face at a right angle to `normal` and another one along an edge.
double volumeOf(const HullOutline& outline, const Vector3& normal, double width, const Vector3& edge, BestBox& best) {
  const Vector3 across = cross(edge, normal);
  const double size = length(across);
  if (!(size > 1e-9)) return INFINITY;
  const Vector3 second = (1 / size) * across, third = cross(normal, second);
  const double volume = width * outline.spanAlong(second).size() * outline.spanAlong(third).size();
  if (volume < best.volume) best = {volume, normal, second};
  return volume;
}

// Golden sections of a turn of the first edge between two angles.
void searchTurn(const HullOutline& outline, const BoxEdge& first, const BoxEdge& second, double from, double to,
                BestBox& best) {
  constexpr double kGolden = 0.6180339887498949;
  const auto volumeAt = [&](double turn) {
    const Vector3 normal = first.normalAt(turn);
    return volumeOf(outline, normal, outline.spanAlong(normal).size(), second.along, best);
  };
  double a = to - kGolden * (to - from), b = from + kGolden * (to - from);
  double atA = volumeAt(a), atB = volumeAt(b);
  for (int k = 0; k < 40; ++k) {
    if (atA < atB) {
      to = b, b = a, atB = atA;
      a = to - kGolden * (to - from), atA = volumeAt(a);
    } else {
      from = a, a = b, atA = atB;
      b = from + kGolden * (to - from), atB = volumeAt(b);
    }
  }
}

// J. O'Rourke, Finding minimal enclosing boxes, Int. J. Computer and Information Sciences 14, 1985: two adjacent faces
// of the least box hold an edge each. The first one's normal turns between those of the edge's faces; the second one's
// then follows, and its edge is on the outline seen along the first normal.
void searchEdge(const HullOutline& outline, const BoxEdge& first, BestBox& best) {
  Vector3 normals[kPlaces];
  double widths[kPlaces];
  for (int k = 0; k < kPlaces; ++k) {
    normals[k] = first.normalAt(first.angle * k / (kPlaces - 1));
    widths[k] = outline.spanAlong(normals[k]).size();
  }
  for (int32_t e = 0; e < outline.edgeCount; ++e) {
    const BoxEdge& second = outline.edges[e];
    double volumes[kPlaces + 2];
    std::fill_n(volumes, kPlaces + 2, INFINITY);
    for (int k = 0; k < kPlaces; ++k) {
      if (second.isOutline(normals[k])) volumes[k + 1] = volumeOf(outline, normals[k], widths[k], second.along, best);
    }
    for (int k = 1; k <= kPlaces; ++k) {
      const bool isLow = volumes[k] <= volumes[k - 1] && volumes[k] <= volumes[k + 1];
      if (!isLow || !(volumes[k] < outline.worth * best.volume)) continue;
      const double step = first.angle / (kPlaces - 1);
      searchTurn(outline, first, second, std::max(step * (k - 2), 0.0), std::min(step * k, first.angle), best);
    }
  }
}

void searchEdges(const HullOutline& outline, BestBox& best) {
  for (int32_t e = 0; e < outline.edgeCount; ++e) searchEdge(outline, outline.edges[e], best);
}

// From a box of some corners to one of all: turns about its axes, by ever smaller angles, while that is better.
void turnDownhill(const HullOutline& outline, BestBox& best) {
  const auto measured = [&](const Vector3& first, const Vector3& second) {
    const double volume = outline.spanAlong(first).size() * outline.spanAlong(second).size() *
                          outline.spanAlong(cross(first, second)).size();
    return BestBox{volume, first, second};
  };
  best = measured(best.first, best.second);
  double angle = 0.1;
  for (int round = 0; round < 200 && angle > 1e-4; ++round) {
    const Vector3 x = best.first, y = best.second, z = cross(x, y);
    const double volume = best.volume;
    const SinCos turn = elementary::sinCos(angle);
    const auto offer = [&](const Vector3& first, const Vector3& second) {
      const BestBox other = measured(unit(first), unit(second));
      if (other.volume < best.volume) best = other;
    };
    for (const double sine : {turn.sine, -turn.sine}) {
      offer(turn.cosine * x + sine * y, turn.cosine * y - sine * x);
      offer(turn.cosine * x + sine * z, y);
      offer(x, turn.cosine * y + sine * z);
    }
    if (!(best.volume < volume)) angle /= 2;
  }
}

template <class T>
DaxStatus leastBox(const T* points, int32_t n, Dax3dBox* box, void* buffer) {
  DAX_REQUIRE(points && box && buffer, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 4 && n <= kMaxHullPoints, DAX_STS_BAD_PARAM);
  const BoxMemory memory(n);
  HullBuilder hull(memory.hull, buffer, n);
  DAX_REQUIRE(hull.load(points), DAX_STS_DATA_RANGE);
  DAX_REQUIRE(hull.build(), DAX_STS_DEGENERATE);
  HullOutline outline{memory.edges.in(buffer), memory.corners.in(buffer)};
  const bool isSmall = outlineOf(hull, n, outline);
  BestBox best;
  // Where no other box can be told of, one along a face.
  if (outline.edgeCount > 0) best.first = outline.edges[0].normal, best.second = outline.edges[0].along;
  if (isSmall) {
    searchEdges(outline, best);
  } else {
    double kept[6 * kDirections];
    const int32_t count = reduceCorners(outline, kept);
    HullBuilder reduced(memory.hull, buffer, count);
    HullOutline few{memory.edges.in(buffer), memory.fewCorners.in(buffer)};
    few.worth = 0;
    if (count >= 4 && reduced.load(kept) && reduced.build() && outlineOf(reduced, count, few)) searchEdges(few, best);
    turnDownhill(outline, best);
  }
  // The longest side first.
  const Dax3dBox any = boxAlong(points, n, best.first, best.second);
  const Matrix33 axes = transposed(loadPose(any.pose).rotation);
  int order[3] = {0, 1, 2};
  std::sort(order, order + 3,
            [&](int i, int k) { return any.size[i] != any.size[k] ? any.size[i] > any.size[k] : i < k; });
  *box = boxAlong(points, n, axes.rows[order[0]], axes.rows[order[1]]);
  return DAX_STS_OK;
}

}  // namespace
}  // namespace dax

using namespace dax;

DaxStatus DAX3D_BOX_MinVolume_BufferSize(int32_t n, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 4 && n <= kMaxHullPoints, DAX_STS_BAD_PARAM);
  return BoxMemory(n).hull.layout.store(bytes);
}
DaxStatus DAX3D_BOX_MinVolume_f64(const double* points, int32_t n, Dax3dBox* box, void* buffer) {
  return leastBox(points, n, box, buffer);
}
DaxStatus DAX3D_BOX_MinVolume_f32(const float* points, int32_t n, Dax3dBox* box, void* buffer) {
  return leastBox(points, n, box, buffer);
}
