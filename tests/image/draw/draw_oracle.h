// Drawing by definition: whether a point lies in a shape, and how many points of a grid over a pixel do. For convex shapes
// the area of each pixel exactly, by cutting the shape to the pixel's square.
#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "daxi/draw.h"
#include "tests/image/draw/draw_scene.h"

namespace dax::test::oracle {

using Point = DaxiPoint64f;
using Points = std::vector<Point>;

// How often the outline turns around p.
inline int windingOf(const Point* outline, size_t count, Point p) {
  int winding = 0;
  for (size_t i = 0; i < count; ++i) {
    const Point &a = outline[i], &b = outline[(i + 1) % count];
    const double side = (b.x - a.x) * (p.y - a.y) - (p.x - a.x) * (b.y - a.y);
    if (a.y <= p.y && b.y > p.y && side > 0) ++winding;
    if (b.y <= p.y && a.y > p.y && side < 0) --winding;
  }
  return winding;
}

inline bool isInPolygon(const Points& outline, Point p) {
  return windingOf(outline.data(), outline.size(), p) != 0;
}

// Along a segment from a to b, and to its side.
inline Point inSegment(Point a, Point b, Point p) {
  const double length = std::hypot(b.x - a.x, b.y - a.y), ux = (b.x - a.x) / length, uy = (b.y - a.y) / length;
  return {(p.x - a.x) * ux + (p.y - a.y) * uy, (p.y - a.y) * ux - (p.x - a.x) * uy};
}

inline bool isInJoin(Point before, Point at, Point after, const DaxiStroke& stroke, Point p) {
  const double half = stroke.width / 2, limit = stroke.join == DAXI_JOIN_MITER ? stroke.miterLimit : 1;
  if (std::hypot(p.x - at.x, p.y - at.y) > half * limit) return false;
  const double l0 = std::hypot(at.x - before.x, at.y - before.y), l1 = std::hypot(after.x - at.x, after.y - at.y);
  const Point u = {(at.x - before.x) / l0, (at.y - before.y) / l0}, v = {(after.x - at.x) / l1, (after.y - at.y) / l1};
  const double turn = std::atan2(u.x * v.y - u.y * v.x, u.x * v.x + u.y * v.y), side = turn > 0 ? -half : half;
  if (stroke.join == DAXI_JOIN_ROUND) {  // the sector between the segments
    const Point out = {u.x - v.x, u.y - v.y}, way = {p.x - at.x, p.y - at.y};
    const double off = std::atan2(out.x * way.y - out.y * way.x, out.x * way.x + out.y * way.y);
    return std::hypot(way.x, way.y) <= half && std::fabs(off) <= std::fabs(turn) / 2;
  }
  Points corners = {at, {at.x - side * u.y, at.y + side * u.x}, {at.x - side * v.y, at.y + side * v.x}};
  const double c = std::cos(turn / 2);
  if (stroke.join == DAXI_JOIN_MITER && c > 0 && 1 / c <= stroke.miterLimit) {
    const Point middle = {(corners[1].x + corners[2].x) / 2 - at.x, (corners[1].y + corners[2].y) / 2 - at.y};
    corners.insert(corners.begin() + 2, {at.x + middle.x / (c * c), at.y + middle.y / (c * c)});
  }
  return isInPolygon(corners, p);
}

inline bool isInStroke(const Points& points, bool isClosed, const DaxiStroke& stroke, Point p) {
  const size_t n = points.size(), segments = isClosed ? n : n - 1;
  const double half = stroke.width / 2, extra = stroke.cap == DAXI_CAP_SQUARE && !isClosed ? half : 0;
  for (size_t i = 0; i < segments; ++i) {
    const Point &a = points[i], &b = points[(i + 1) % n], at = inSegment(a, b, p);
    const double length = std::hypot(b.x - a.x, b.y - a.y);
    const double low = i == 0 ? -extra : 0, high = i + 1 == segments ? length + extra : length;
    if (std::fabs(at.y) <= half && at.x >= low && at.x <= high) return true;
    if ((isClosed || i > 0) && isInJoin(points[(i + n - 1) % n], a, b, stroke, p)) return true;
  }
  return !isClosed && stroke.cap == DAXI_CAP_ROUND &&
         (std::hypot(p.x - points[0].x, p.y - points[0].y) <= half ||
          std::hypot(p.x - points.back().x, p.y - points.back().y) <= half);
}

// A shape as polylines, open or closed.
struct Outline {
  Points points;
  bool isClosed;
};

inline Point placed(Point at, double angle, double u, double v) {
  return {at.x + u * std::cos(angle) - v * std::sin(angle), at.y + u * std::sin(angle) + v * std::cos(angle)};
}

// Curves as so many chords that their corners do not matter.
inline Outline oval(Point at, double a, double b, double angle, double start, double span, bool isSector) {
  constexpr int kChords = 130;
  const bool isWhole = std::fabs(span) > 6.2831853;
  Outline outline = {{}, isWhole || isSector};
  for (int i = 0; i < (isWhole ? kChords : kChords + 1); ++i) {
    const double t = start + span * i / kChords;
    outline.points.push_back(placed(at, angle, a * std::cos(t), b * std::sin(t)));
  }
  if (isSector && !isWhole) outline.points.push_back(at);
  return outline;
}

inline std::vector<Outline> markersOf(const Shape& shape) {
  const double half = shape.numbers[0] / 2, angle = shape.numbers[1];
  std::vector<Outline> outlines;
  for (const Point& at : shape.points) {
    const auto add = [&](bool isClosed, const Points& corners) {
      Outline& made = outlines.emplace_back(Outline{{}, isClosed});
      for (const Point& corner : corners) made.points.push_back(placed(at, angle, half * corner.x, half * corner.y));
    };
    const int32_t choice = shape.choice;
    if (choice == DAXI_MARKER_PLUS || choice == DAXI_MARKER_STAR)
      add(false, {{-1, 0}, {1, 0}}), add(false, {{0, -1}, {0, 1}});
    if (choice == DAXI_MARKER_CROSS || choice == DAXI_MARKER_STAR)
      add(false, {{-1, -1}, {1, 1}}), add(false, {{1, -1}, {-1, 1}});
    if (choice == DAXI_MARKER_SQUARE) add(true, {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}});
    if (choice == DAXI_MARKER_DIAMOND) add(true, {{0, -1}, {1, 0}, {0, 1}, {-1, 0}});
    if (choice == DAXI_MARKER_TRIANGLE) add(true, {{0, -1}, {1, 1}, {-1, 1}});
    if (choice == DAXI_MARKER_CIRCLE) outlines.push_back(oval(at, half, half, 0, 0, 2 * M_PI, false));
  }
  return outlines;
}

inline std::vector<Outline> outlinesOf(const Shape& shape, bool isFilled) {
  const Points& p = shape.points;
  const std::vector<double>& n = shape.numbers;
  switch (shape.kind) {
    case Kind::line:
    case Kind::polyline:
      return {{p, false}};
    case Kind::closed: {
      Outline outline = {{}, true};
      for (const Point& each : p) {
        const bool isNew =
            outline.points.empty() || each.x != outline.points.back().x || each.y != outline.points.back().y;
        if (isNew) outline.points.push_back(each);
      }
      return {outline};
    }
    case Kind::arrow: {
      const double back = std::atan2(p[0].y - p[1].y, p[0].x - p[1].x);
      return {{p, false}, {{placed(p[1], back + n[1], n[0], 0), p[1], placed(p[1], back - n[1], n[0], 0)}, false}};
    }
    case Kind::rect: {
      const double u = n[0] / 2, v = n[1] / 2;
      return {
          {{placed(p[0], n[2], -u, -v), placed(p[0], n[2], u, -v), placed(p[0], n[2], u, v), placed(p[0], n[2], -u, v)},
           true}};
    }
    case Kind::ellipse:
      return {oval(p[0], n[0], n[1], n[2], 0, 2 * M_PI, false)};
    case Kind::arc:
      return {oval(p[0], n[0], n[1], n[2], n[3], n[4], isFilled)};
    case Kind::polygon: {
      std::vector<Outline> outlines;
      auto at = p.begin();
      for (const int32_t length : shape.lengths) {
        outlines.push_back({Points(at, at + length), true});
        at += length;
      }
      return outlines;
    }
    case Kind::marker:
      break;
  }
  return markersOf(shape);
}

class Definition {
 public:
  Definition(const Shape& shape, const DaxiStroke& stroke)
      : stroke_(stroke),
        isFilled_(stroke.width == 0 || shape.kind == Kind::polygon),
        isEvenOdd_(shape.kind == Kind::polygon && shape.choice == DAXI_FILL_EVEN_ODD),
        outlines_(outlinesOf(shape, isFilled_)) {
    const bool isCurved = shape.kind == Kind::ellipse || shape.kind == Kind::arc;
    if (isCurved || (shape.kind == Kind::marker && shape.choice == DAXI_MARKER_CIRCLE)) stroke_.join = DAXI_JOIN_ROUND;
  }

  bool isInside(Point p) const {
    int winding = 0;
    for (const Outline& each : outlines_) {
      if (isFilled_) winding += windingOf(each.points.data(), each.points.size(), p);
      if (!isFilled_ && isInStroke(each.points, each.isClosed, stroke_, p)) return true;
    }
    return isEvenOdd_ ? winding % 2 != 0 : winding != 0;
  }

  // The share of the pixel's square, of a grid of points where the outline is near.
  double coverage(int32_t x, int32_t y, int grid) const {
    const Point centre = {static_cast<double>(x), static_cast<double>(y)};
    const double half = stroke_.width / 2, away = distance(centre);
    const double reach = isFilled_ ? 0 : half * (stroke_.join == DAXI_JOIN_MITER ? stroke_.miterLimit : 1.5);
    if (away > reach + 0.71) return isFilled_ && isInside(centre);
    int inside = 0;
    for (int i = 0; i < grid * grid; ++i) {
      inside += isInside({x - 0.5 + (i % grid + 0.5) / grid, y - 0.5 + (i / grid + 0.5) / grid});
    }
    return static_cast<double>(inside) / (grid * grid);
  }

 private:
  // From the middle of the stroke.
  double distance(Point p) const {
    double nearest = 1e300;
    for (const Outline& each : outlines_) {
      const size_t n = each.points.size();
      for (size_t i = 0; i + (each.isClosed ? 0 : 1) < n; ++i) {
        const Point &a = each.points[i], &b = each.points[(i + 1) % n], at = inSegment(a, b, p);
        const double beyond = std::max({-at.x, at.x - std::hypot(b.x - a.x, b.y - a.y), 0.0});
        nearest = std::min(nearest, std::hypot(beyond, at.y));
      }
    }
    return nearest;
  }

  DaxiStroke stroke_;
  bool isFilled_, isEvenOdd_;
  std::vector<Outline> outlines_;
};

// What remains of a convex outline where a x + b y <= c.
inline Points cut(const Points& outline, double a, double b, double c) {
  Points kept;
  for (size_t i = 0; i < outline.size(); ++i) {
    const Point &p = outline[i], &q = outline[(i + 1) % outline.size()];
    const double before = a * p.x + b * p.y - c, after = a * q.x + b * q.y - c;
    if (before <= 0) kept.push_back(p);
    if ((before < 0 && after > 0) || (before > 0 && after < 0)) {
      const double t = before / (before - after);
      kept.push_back({p.x + t * (q.x - p.x), p.y + t * (q.y - p.y)});
    }
  }
  return kept;
}

inline double areaOf(const Points& outline) {
  double sum = 0;
  for (size_t i = 0; i < outline.size(); ++i) {
    const Point &p = outline[i], &q = outline[(i + 1) % outline.size()], &o = outline[0];
    sum += (p.x - o.x) * (q.y - o.y) - (q.x - o.x) * (p.y - o.y);
  }
  return std::fabs(sum) / 2;
}

inline double exactCoverage(const Points& convex, int32_t x, int32_t y) {
  Points left = cut(convex, -1, 0, -(x - 0.5));
  left = cut(left, 1, 0, x + 0.5);
  left = cut(left, 0, -1, -(y - 0.5));
  left = cut(left, 0, 1, y + 0.5);
  return left.empty() ? 0 : areaOf(left);
}

// The corners of a straight stroke with butt or square caps.
inline Points straightStroke(Point a, Point b, double half, double extra) {
  const double length = std::hypot(b.x - a.x, b.y - a.y), ux = (b.x - a.x) / length, uy = (b.y - a.y) / length;
  a = {a.x - extra * ux, a.y - extra * uy};
  b = {b.x + extra * ux, b.y + extra * uy};
  const double nx = -uy * half, ny = ux * half;
  return {{a.x - nx, a.y - ny}, {b.x - nx, b.y - ny}, {b.x + nx, b.y + ny}, {a.x + nx, a.y + ny}};
}

// The pixel of Bresenham's line from a to b at a step along its longer axis, by the definition; a comes first by (y, x).
inline DaxiPoint32s thinPixel(DaxiPoint32s a, DaxiPoint32s b, int64_t step) {
  const __int128 dx = int64_t{b.x} - a.x, dy = int64_t{b.y} - a.y, length = dx < 0 ? -dx : dx;
  const auto nearest = [](__int128 n, __int128 d) {  // ceil(n / d - 1/2)
    const __int128 top = 2 * n - d, whole = top / (2 * d);
    return static_cast<int64_t>(whole + (top > 0 && top % (2 * d) != 0));
  };
  if (step == 0) return a;
  if (length >= dy) {
    const int64_t way = dx < 0 ? -1 : 1;
    return {static_cast<int32_t>(a.x + way * step), static_cast<int32_t>(a.y + nearest(step * dy, length))};
  }
  return {static_cast<int32_t>(a.x + nearest(step * dx, dy)), static_cast<int32_t>(a.y + step)};
}

}  // namespace dax::test::oracle
