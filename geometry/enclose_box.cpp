#include "geometry/enclose_box.h"

#include <cmath>

#include "frame/math.h"

namespace dax {
namespace {

__extension__ using Int128 = __int128;

struct Vector {
  int64_t x;
  int64_t y;
};

Vector between(DaxiPoint32s a, DaxiPoint32s b) {
  return {int64_t{b.x} - a.x, int64_t{b.y} - a.y};
}

int64_t dot(Vector a, Vector b) {
  return a.x * b.x + a.y * b.y;
}

Vector perpendicular(Vector v) {
  return {-v.y, v.x};
}

// A rectangle with a side along the edge direction u: the extents of the polygon along u and perpendicular to it,
// relative to the edge's first point and multiplied by |u|, so that they are whole numbers.
struct Candidate {
  DaxiPoint32s origin;
  Vector u;
  int64_t uMin, uMax, vMax;

  int64_t length2() const { return dot(u, u); }
  int64_t along() const { return uMax - uMin; }
  // Area times |u|^2, and the square of half the perimeter times |u|^2.
  Int128 area() const { return Int128{along()} * vMax; }
  Int128 perimeter2() const { return Int128{along() + vMax} * (along() + vMax); }
};

// Compares area or perimeter, each scaled by 1 / |u|^2, without a division.
bool improves(const Candidate& candidate, const Candidate& best, int32_t mode) {
  if (mode == DAXI_BOX_MIN_PERIMETER)
    return candidate.perimeter2() * best.length2() < best.perimeter2() * candidate.length2();
  return candidate.area() * best.length2() <= best.area() * candidate.length2();
}

// Rotating calipers (G. T. Toussaint, Proc. IEEE MELECON 1983): as the edge advances around the polygon, so do the
// corners that are farthest along it, perpendicular to it, and against it.
class Calipers {
 public:
  Calipers(const DaxiPoint32s* points, int32_t count) : points_(points), count_(count) {}

  Candidate along(int32_t edge) {
    const Vector u = step(edge);
    const Vector v = perpendicular(u);
    front_ = advance(front_ > edge ? front_ : edge + 1, u);
    across_ = advance(across_ > front_ ? across_ : front_, v);
    back_ = advance(back_ > across_ ? back_ : across_, {-u.x, -u.y});
    const DaxiPoint32s origin = at(edge);
    return {origin, u, dot(u, between(origin, at(back_))), dot(u, between(origin, at(front_))),
            dot(v, between(origin, at(across_)))};
  }

 private:
  DaxiPoint32s at(int32_t i) const { return points_[i % count_]; }
  Vector step(int32_t i) const { return between(at(i), at(i + 1)); }

  // Advances from corner i as long as the next one is farther in the direction, at most once around.
  int32_t advance(int32_t i, Vector direction) const {
    for (const int32_t end = i + count_; i < end && dot(step(i), direction) > 0;) ++i;
    return i;
  }

  const DaxiPoint32s* points_;
  int32_t count_;
  int32_t front_ = 0, across_ = 0, back_ = 0;
};

Candidate bestCandidate(const DaxiPoint32s* points, int32_t count, int32_t mode) {
  Calipers calipers(points, count);
  Candidate best = calipers.along(0);
  for (int32_t edge = 1; edge < count; ++edge) {
    const Candidate candidate = calipers.along(edge);
    if (improves(candidate, best, mode)) best = candidate;
  }
  return best;
}

// The angle of the line along d in (-pi/2, pi/2]; for a square, where either side may be the long one, in (-pi/4,
// pi/4].
double lineAngle(Vector d, bool square) {
  if (d.x < 0 || (d.x == 0 && d.y < 0)) d = {-d.x, -d.y};
  if (square && d.y > d.x) d = {d.y, -d.x};
  if (square && d.y <= -d.x) d = perpendicular(d);
  return atan2Exact(static_cast<double>(d.y), static_cast<double>(d.x));
}

DaxiRotatedBox toBox(const Candidate& c) {
  const double length2 = static_cast<double>(c.length2()), length = std::sqrt(length2);
  // The centre is the middle of the extents, transformed back from (u, v) to (x, y).
  const double uMid = 0.5 * static_cast<double>(c.uMin + c.uMax) / length2;
  const double vMid = 0.5 * static_cast<double>(c.vMax) / length2;
  const double ux = static_cast<double>(c.u.x), uy = static_cast<double>(c.u.y);
  const bool uIsLong = c.along() >= c.vMax;
  const double along = static_cast<double>(c.along()) / length, across = static_cast<double>(c.vMax) / length;

  DaxiRotatedBox box;
  box.x = static_cast<float>(c.origin.x + (uMid * ux - vMid * uy));
  box.y = static_cast<float>(c.origin.y + (uMid * uy + vMid * ux));
  box.width = static_cast<float>(uIsLong ? along : across);
  box.height = static_cast<float>(uIsLong ? across : along);
  box.angle = static_cast<float>(lineAngle(uIsLong ? c.u : perpendicular(c.u), c.along() == c.vMax));
  return box;
}

}  // namespace

DaxiRotatedBox encloseBox(const DaxiPoint32s* points, int32_t count, int32_t mode) {
  if (count == 0) return {};
  if (count == 1) return {static_cast<float>(points[0].x), static_cast<float>(points[0].y), 0, 0, 0};
  return toBox(bestCandidate(points, count, mode));
}

}  // namespace dax
