// Arcs of ellipses and of curves parallel to them, as chords. Chords lie on both sides of the curve, so that the area is
// that of the curve, and within 1/128 pixel of it. Of what lies outside of the window only so much is kept that the outline
// stays closed: blocks of chords on the far side of one of its borders become one chord.
#pragma once

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>

#include "dax/types.h"
#include "daxi/point.h"
#include "frame/memory/work_buffer.h"
#include "frame/numeric/elementary.h"

namespace dax {

constexpr double kTurn = 2 * std::numbers::pi;

inline DaxiPoint64f operator+(DaxiPoint64f a, DaxiPoint64f b) {
  return {a.x + b.x, a.y + b.y};
}
inline DaxiPoint64f operator-(DaxiPoint64f a, DaxiPoint64f b) {
  return {a.x - b.x, a.y - b.y};
}
inline DaxiPoint64f operator*(double s, DaxiPoint64f a) {
  return {s * a.x, s * a.y};
}
// A quarter turn from x to y.
inline DaxiPoint64f turned(DaxiPoint64f a) {
  return {-a.y, a.x};
}

struct Arc {
  DaxiPoint64f centre;
  DaxiPoint64f way;    // unit vector of the first half axis; the second is a quarter turn from it
  double a, b;         // half axes
  double offset;       // outwards
  double start, span;  // of the parameter, span >= 0; a whole turn closes the curve
  int64_t chords;
};

// Borders of what is visible.
struct Window {
  double left, top, right, bottom;
};

inline Window windowOf(const DaxiRect& rect, double margin) {
  return {rect.x - 0.5 - margin, rect.y - 0.5 - margin, rect.x + rect.width - 0.5 + margin,
          rect.y + rect.height - 0.5 + margin};
}

// So many chords, at least, hold a curve within the error where its radius of curvature is at most this: each spans an angle
// 2 acos(1 - e / radius) or less, and 1 - e / radius < cos sqrt(2 e / radius).
inline int64_t chordCount(double radius, double span) {
  constexpr double kError = 1.0 / 128, kWidest = std::numbers::pi / 4;
  const double angle = radius > 0 ? std::min(2 * std::sqrt(2 * kError / radius), kWidest) : kWidest;
  const auto chords = static_cast<int64_t>(std::ceil(span / angle));
  return span >= kTurn ? (chords + 3) / 4 * 4 : std::max<int64_t>(chords, 1);
}

// How fast the parallel curve may turn: a curve of half axes a, b turns max(a/b, b/a) times as fast as its parameter.
inline double turningRadius(double a, double b, double offset) {
  const double ratio = std::max(a, b) / std::min(a, b);
  return std::max(a, b) + std::fabs(offset) * ratio * ratio;
}

// The greatest number of points that walkArc makes. In the direction in which it extends further, each half of a curve passes
// the window within pi sqrt(D / 2A) of its parameter (D the window, A the half extent); blocks outside at most double them.
inline int64_t maxArcPoints(DaxiSize size, double margin, int64_t chords) {
  const double seen = 60 * std::sqrt(std::max(size.width, size.height) + 2 * margin + 8) + 256;
  return std::min(chords, static_cast<int64_t>(std::min(seen, 0x1p62))) + 2;
}

class ArcPoints {
 public:
  explicit ArcPoints(const Arc& arc) : arc_(arc), closed_(arc.span >= kTurn) {
    const double step = arc.span / static_cast<double>(arc.chords);
    growth_ = 1 + std::min(step * step, 1.0) / 12;  // sqrt(step / sin(step)): keeps the area
    double longest = std::max(arc.a, arc.b) + std::fabs(arc.offset);
    if (arc.offset != 0 && arc.a != arc.b) longest = std::max(longest, turningRadius(arc.a, arc.b, arc.offset));
    sagitta_ = longest * step * step / 8;
    reach_ = 2 * longest;
  }

  DaxiPoint64f operator[](int64_t i) const {
    const bool isEnd = i == 0 || i == arc_.chords;
    if (closed_ && isEnd) i = 0;
    const SinCos t =
        elementary::sinCos(arc_.start + arc_.span * (static_cast<double>(i) / static_cast<double>(arc_.chords)));
    double u = arc_.a, v = arc_.b;
    if (arc_.offset != 0) {
      const double across = arc_.b * t.cosine, along = arc_.a * t.sine;
      const double length = std::sqrt(across * across + along * along);
      const double scaled = length > 0 ? arc_.offset / length : 0;
      u += scaled * arc_.b, v += scaled * arc_.a;
    }
    const double grown = isEnd && !closed_ ? 1 : growth_;
    return arc_.centre + (grown * u * t.cosine) * arc_.way + (grown * v * t.sine) * turned(arc_.way);
  }

  // Whether the arc between two points so many chords apart lies beyond one border of the window.
  bool isHidden(DaxiPoint64f p, DaxiPoint64f q, int64_t chords, const Window& window) const {
    const double n = static_cast<double>(chords), bulge = std::min(sagitta_ * n * n, reach_) + 1.0 / 64;
    return std::max(p.x, q.x) + bulge < window.left || std::min(p.x, q.x) - bulge > window.right ||
           std::max(p.y, q.y) + bulge < window.top || std::min(p.y, q.y) - bulge > window.bottom;
  }

 private:
  Arc arc_;
  bool closed_;
  double growth_, sagitta_, reach_;
};

// Calls emit(point) from the start of the arc to its end.
template <class Emit>
void walkArc(const Arc& arc, const Window& window, Emit&& emit) {
  const ArcPoints points(arc);
  DaxiPoint64f at = points[0];
  emit(at);
  for (int64_t i = 0; i < arc.chords;) {
    // Blocks of 2^level chords begin at their multiples.
    int level = i == 0 ? static_cast<int>(std::bit_width(static_cast<uint64_t>(arc.chords)))
                       : std::countr_zero(static_cast<uint64_t>(i));
    for (;; --level) {
      const int64_t end = std::min(i + (int64_t{1} << level), arc.chords);
      const DaxiPoint64f next = points[end];
      if (level > 0 && !points.isHidden(at, next, end - i, window)) continue;
      i = end, at = next;
      break;
    }
    emit(at);
  }
}

}  // namespace dax
