#include "space/hull/hull_builder.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "frame/numeric/pcg32.h"
#include "geometry/union_find.h"
#include "space/hull/orientation.h"

namespace dax {

HullMemory::HullMemory(int32_t n) {
  const auto count = static_cast<uint64_t>(n);
  points = layout.add<double>(3 * count);
  faces = layout.add<HullFace>(2 * count);
  horizon = layout.add<HorizonEdge>(count);
  order = layout.add<int32_t>(count);
  next = layout.add<int32_t>(count);
  home = layout.add<int32_t>(count);
  atCorner = layout.add<int32_t>(count);
  lowest = layout.add<int32_t>(count);
  visible = layout.add<int32_t>(2 * count);
}

HullBuilder::HullBuilder(const HullMemory& memory, void* buffer, int32_t n)
    : n_(n),
      points_(memory.points.in(buffer)),
      faces_(memory.faces.in(buffer)),
      horizon_(memory.horizon.in(buffer)),
      order_(memory.order.in(buffer)),
      next_(memory.next.in(buffer)),
      home_(memory.home.in(buffer)),
      atCorner_(memory.atCorner.in(buffer)),
      facesAt_(atCorner_),
      lowest_(memory.lowest.in(buffer)),
      visible_(memory.visible.in(buffer)),
      parents_(reinterpret_cast<uint32_t*>(visible_)) {}

template <class T>
bool HullBuilder::loadAny(const T* points) {
  for (int64_t i = 0; i < int64_t{3} * n_; ++i) {
    const double value = double{points[i]}, size = std::fabs(value);
    if (!(size <= 1e90 && (size >= 1e-60 || size == 0))) return false;
    points_[i] = value;
  }
  return true;
}

bool HullBuilder::load(const float* points) {
  return loadAny(points);
}
bool HullBuilder::load(const double* points) {
  return loadAny(points);
}

bool HullBuilder::areSame(int32_t i, int32_t k) const {
  const Vector3 a = point(i), b = point(k);
  return a.x == b.x && a.y == b.y && a.z == b.z;
}

bool HullBuilder::sees(int32_t face, const Vector3& p) const {
  const int32_t* const c = faces_[face].corners;
  return orientation(point(c[0]), point(c[1]), point(c[2]), p) > 0;
}

// Four of the points that span a volume, the first in the order.
bool HullBuilder::start(int32_t (&corners)[4]) const {
  int found = 1;
  corners[0] = order_[0];
  for (int32_t k = 1; k < n_ && found < 4; ++k) {
    const int32_t i = order_[k];
    const bool isNew = found == 1 ? !areSame(corners[0], i)
                       : found == 2
                           ? !areCollinear(point(corners[0]), point(corners[1]), point(i))
                           : orientation(point(corners[0]), point(corners[1]), point(corners[2]), point(i)) != 0;
    if (isNew) corners[found++] = i;
  }
  if (found < 4) return false;
  if (orientation(point(corners[0]), point(corners[1]), point(corners[2]), point(corners[3])) > 0) {
    std::swap(corners[1], corners[2]);
  }
  return true;
}

int32_t HullBuilder::newFace(int32_t a, int32_t b, int32_t c) {
  int32_t face = free_;
  if (face >= 0) {
    free_ = faces_[face].across[0];
  } else {
    face = faceCount_++;
  }
  faces_[face] = {{a, b, c}, {-1, -1, -1}, -1, 0};
  return face;
}

int32_t HullBuilder::edgeFrom(int32_t face, int32_t corner) const {
  const int32_t* const c = faces_[face].corners;
  return c[0] == corner ? 0 : c[1] == corner ? 1 : 2;
}

// Both ways.
void HullBuilder::link(int32_t face, int32_t edge, int32_t other) {
  faces_[face].across[edge] = other;
  faces_[other].across[edgeFrom(other, faces_[face].corners[(edge + 1) % 3])] = face;
}

void HullBuilder::firstFaces(const int32_t (&c)[4]) {
  const int32_t base = newFace(c[0], c[1], c[2]);
  int32_t sides[3];
  for (int k = 0; k < 3; ++k) sides[k] = newFace(c[(k + 1) % 3], c[k], c[3]);
  for (int k = 0; k < 3; ++k) {
    link(base, k, sides[k]);
    link(sides[k], 1, sides[(k + 2) % 3]);
  }
}

// All faces that the point sees, from the one at which it is listed on, and the edges around them.
void HullBuilder::findVisible(int32_t i) {
  ++round_;
  const Vector3 p = point(i);
  visibleCount_ = horizonCount_ = 0;
  visible_[visibleCount_++] = home_[i];
  faces_[home_[i]].mark = round_;
  for (int32_t k = 0; k < visibleCount_; ++k) {
    const HullFace& face = faces_[visible_[k]];
    for (int edge = 0; edge < 3; ++edge) {
      const int32_t other = face.across[edge];
      if (faces_[other].mark == round_) continue;
      if (sees(other, p)) {
        faces_[other].mark = round_;
        visible_[visibleCount_++] = other;
      } else {
        horizon_[horizonCount_++] = {face.corners[edge], face.corners[(edge + 1) % 3], other};
      }
    }
  }
}

// The points of all visible faces as one list; the faces go.
int32_t HullBuilder::takePending() {
  int32_t pending = -1;
  for (int32_t k = 0; k < visibleCount_; ++k) {
    HullFace& face = faces_[visible_[k]];
    for (int32_t q = face.outside; q >= 0;) {
      const int32_t after = next_[q];
      next_[q] = pending;
      pending = q;
      q = after;
    }
    face.mark = -1;
    face.across[0] = free_;
    free_ = visible_[k];
  }
  return pending;
}

// Faces from the edges to the new point. They take the places of the faces beyond in the list of edges.
void HullBuilder::closeHorizon(int32_t i) {
  for (int32_t k = 0; k < horizonCount_; ++k) {
    HorizonEdge& edge = horizon_[k];
    const int32_t face = newFace(edge.from, edge.to, i);
    link(face, 0, edge.beyond);
    atCorner_[edge.from] = face;
    edge.beyond = face;
  }
  for (int32_t k = 0; k < horizonCount_; ++k) link(horizon_[k].beyond, 1, atCorner_[horizon_[k].to]);
}

// A point that saw a face that went sees one of the new ones, or none: the two faces at an edge of the horizon that it
// saw both make it see the new face at that edge.
void HullBuilder::distribute(int32_t pending, int32_t inserted) {
  while (pending >= 0) {
    const int32_t q = pending;
    pending = next_[q];
    home_[q] = -1;
    if (areSame(q, inserted)) {
      lowest_[inserted] = std::min(lowest_[inserted], q);
      continue;
    }
    for (int32_t k = 0; k < horizonCount_ && home_[q] < 0; ++k) {
      const int32_t face = horizon_[k].beyond;
      if (!sees(face, point(q))) continue;
      home_[q] = face;
      next_[q] = faces_[face].outside;
      faces_[face].outside = q;
    }
  }
}

void HullBuilder::insert(int32_t i) {
  findVisible(i);
  const int32_t pending = takePending();
  closeHorizon(i);
  distribute(pending, i);
}

// The extremes along 7 axes come first, since points that they enclose need no more than one look; the others in random
// order.
void HullBuilder::drawOrder() {
  constexpr Vector3 kAxes[] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}, {1, 1, 1}, {1, 1, -1}, {1, -1, 1}, {-1, 1, 1}};
  for (int32_t i = 0; i < n_; ++i) lowest_[i] = i, home_[i] = 0;
  int32_t first = 0;
  for (const Vector3& axis : kAxes) {
    int32_t low = 0, high = 0;
    double least = INFINITY, largest = -INFINITY;
    for (int32_t i = 0; i < n_; ++i) {
      const double along = dot(point(i), axis);
      if (along < least) least = along, low = i;
      if (along > largest) largest = along, high = i;
    }
    for (const int32_t i : {low, high}) {
      if (home_[i] == 0) order_[first++] = i;
      home_[i] = 1;
    }
  }
  int32_t end = first;
  for (int32_t i = 0; i < n_; ++i) {
    if (home_[i] == 0) order_[end++] = i;
  }
  Pcg32 random(1);
  for (int32_t i = n_ - 1; i > first; --i) {
    std::swap(order_[i], order_[first + static_cast<int32_t>(random.below(static_cast<uint32_t>(i - first) + 1))]);
  }
}

bool HullBuilder::build() {
  drawOrder();
  int32_t corners[4];
  if (!start(corners)) return false;
  firstFaces(corners);
  for (int32_t i = 0; i < n_; ++i) {
    home_[i] = -1;
    for (const int32_t corner : corners) {
      if (areSame(i, corner)) lowest_[corner] = std::min(lowest_[corner], i);
    }
    for (int32_t face = 0; face < 4 && home_[i] < 0; ++face) {
      if (!sees(face, point(i))) continue;
      home_[i] = face;
      next_[i] = faces_[face].outside;
      faces_[face].outside = i;
    }
  }
  for (int32_t k = 0; k < n_; ++k) {
    if (home_[order_[k]] >= 0) insert(order_[k]);
  }
  mergeFaces();
  return true;
}

// --- Faces in one plane ---

void HullBuilder::mergeFaces() {
  UnionFind sets(parents_);
  for (int32_t f = 0; f < faceCount_; ++f) sets.add();
  for (int32_t f = 0; f < faceCount_; ++f) {
    for (int edge = 0; edge < 3 && isUsed(f); ++edge) {
      const int32_t g = faces_[f].across[edge];
      if (g < f) continue;
      // The corner of g that is not on the edge.
      const Vector3 opposite = point(faces_[g].corners[(edgeFrom(g, faces_[f].corners[edge]) + 1) % 3]);
      const int32_t* const c = faces_[f].corners;
      if (orientation(point(c[0]), point(c[1]), point(c[2]), opposite) != 0) continue;
      const uint32_t one = sets.root(static_cast<uint32_t>(f)), other = sets.root(static_cast<uint32_t>(g));
      if (one != other) sets.unite(one, other);
    }
  }
  for (int32_t f = 0; f < faceCount_; ++f) parents_[f] = sets.root(static_cast<uint32_t>(f));
  std::fill_n(facesAt_, n_, 0);
  forEachFacet([&](int32_t corner) { ++facesAt_[corner]; }, [] {});
}

// From an edge of a merged face around it, counter-clockwise: the corners at which its edges begin. Marks the edges.
template <class Visit>
void HullBuilder::walkAround(int32_t face, int32_t edge, const Visit& visit) {
  for (int32_t f = face, e = edge;;) {
    const int32_t corner = faces_[f].corners[e];
    visit(corner);
    faces_[f].mark |= 1 << e;
    for (e = (e + 1) % 3; !isEdge(f, e);) {
      const int32_t pivot = faces_[f].corners[e];
      f = faces_[f].across[e];
      e = edgeFrom(f, pivot);
    }
    if (f == face && e == edge) return;
  }
}

// corner(i) for all corners of a merged face, then done().
template <class Corner, class Done>
void HullBuilder::forEachFacet(const Corner& corner, const Done& done) {
  for (int32_t f = 0; f < faceCount_; ++f) {
    if (isUsed(f)) faces_[f].mark = 0;
  }
  for (int32_t f = 0; f < faceCount_; ++f) {
    for (int edge = 0; edge < 3 && isUsed(f); ++edge) {
      if (!isEdge(f, edge) || (faces_[f].mark >> edge & 1)) continue;
      walkAround(f, edge, corner);
      done();
    }
  }
}

int32_t HullBuilder::writeTriangles(int32_t* triangles) {
  int32_t* const polygon = order_;
  int32_t corners = 0, count = 0;
  const auto addCorner = [&](int32_t i) {
    if (isExtreme(i)) polygon[corners++] = lowest_[i];
  };
  const auto fan = [&] {
    std::rotate(polygon, std::min_element(polygon, polygon + corners), polygon + corners);
    for (int32_t k = 2; k < corners; ++k) {
      int32_t* const to = triangles + ptrdiff_t{3} * count;
      ++count;
      to[0] = polygon[0], to[1] = polygon[k - 1], to[2] = polygon[k];
    }
    corners = 0;
  };
  forEachFacet(addCorner, fan);
  return count;
}

}  // namespace dax
