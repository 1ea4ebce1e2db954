// Ellipses and their arcs: filled, or as the area between two parallel curves. Where a pen is too wide for the narrow ends of
// an ellipse, whose parallel curves overtake themselves there, it follows the chords.
#include <cmath>

#include "image/draw/draw.h"
#include "image/draw/pen.h"

namespace dax {
namespace {

struct Oval {
  DaxiPoint64f centre;
  double radiusX, radiusY, angle, start, span;

  bool isWhole() const { return span >= kTurn; }
};

enum class OvalWay { filled, parallel, chords };

struct OvalPlan {
  OvalWay way;
  int64_t chords;
};

OvalPlan planOf(double radiusX, double radiusY, double span, double width) {
  // What the chords of a pen number at most, for the sake of memory: beyond, those of thin ellipses with radii above 26000
  // are further from the curve than others.
  constexpr int64_t kMaxPenChords = 4096;
  const double a = std::max(radiusX, radiusY), b = std::min(radiusX, radiusY), half = width / 2;
  if (width == 0) return {OvalWay::filled, chordCount(a, span)};
  const bool isWhole = span >= kTurn, isCircle = a == b;
  if (isCircle && (isWhole || half < a)) return {OvalWay::parallel, chordCount(a + half, span)};
  // The smallest radius of curvature is b^2 / a. A whole curve may overtake itself inside: what it encloses there has the
  // opposite winding, and is inside all the same.
  const double tight = b > 0 ? half * (a / b) * (a / b) : INFINITY;
  const double bound = isWhole ? 64 * a : a;
  if (tight < bound) return {OvalWay::parallel, chordCount(a + tight, span)};
  return {OvalWay::chords, std::min(chordCount(a, span), kMaxPenChords)};
}

uint64_t ovalEdges(DaxiSize size, double radiusX, double radiusY, double span, const DaxiStroke& stroke) {
  const OvalPlan plan = planOf(radiusX, radiusY, span, stroke.width);
  const double half = stroke.width / 2;
  DaxiStroke area = stroke;
  area.antialias = 1, area.join = DAXI_JOIN_ROUND;
  const uint64_t caps = 2 * strokeEdges(size, 0, 1, area);  // discs
  if (plan.way != OvalWay::chords) return 2 * static_cast<uint64_t>(maxArcPoints(size, 0, plan.chords)) + caps + 8;
  // The joins of all chords together make one turn.
  const auto points = static_cast<uint64_t>(maxArcPoints(size, half, plan.chords));
  return 8 * points + 2 * static_cast<uint64_t>(chordCount(half, kTurn)) + caps;
}

// The curve at this distance, outwards.
Arc arcOf(const Oval& oval, double offset, int64_t chords) {
  const SinCos turn = elementary::sinCos(oval.angle);
  const DaxiPoint64f way = {turn.cosine, turn.sine};
  if (oval.radiusX == oval.radiusY) {
    const double radius = oval.radiusX + offset;
    return {oval.centre, way, radius, radius, 0, oval.start, oval.span, chords};
  }
  return {oval.centre, way, oval.radiusX, oval.radiusY, offset, oval.start, oval.span, chords};
}

// Adds the sides of an arc, in the other direction for those that bound a hole, and gives its ends.
struct Ends {
  DaxiPoint64f first, last;
};

Ends addArc(Drawing& drawing, const Arc& arc, bool isBack) {
  Ends ends{};
  bool isFirst = true;
  walkArc(arc, windowOf(drawing.window(), 0), [&](DaxiPoint64f p) {
    if (isFirst) ends.first = p;
    if (!isFirst) isBack ? drawing.side(p, ends.last) : drawing.side(ends.last, p);
    isFirst = false;
    ends.last = p;
  });
  return ends;
}

void addFilled(Drawing& drawing, const Oval& oval, int64_t chords) {
  const Ends ends = addArc(drawing, arcOf(oval, 0, chords), false);
  drawing.setSimple();
  if (oval.isWhole()) return;
  drawing.side(ends.last, oval.centre);
  drawing.side(oval.centre, ends.first);
}

// A cap on an end of the arc, whose outline is `outer` and `inner` there.
void addCap(Drawing& drawing, DaxiPoint64f outer, DaxiPoint64f inner, const DaxiStroke& stroke, bool isStart) {
  if (stroke.cap == DAXI_CAP_BUTT) return;
  const DaxiPoint64f across = outer - inner, middle = 0.5 * (outer + inner);
  const double length = std::sqrt(across.x * across.x + across.y * across.y);
  if (!(length > 0)) return;
  const DaxiPoint64f on = (isStart ? -1 : 1) / length * turned(across);
  if (stroke.cap == DAXI_CAP_ROUND) return addDisc(drawing, middle, stroke.width / 2);
  const DaxiPoint64f far = stroke.width / 2 * on, n = stroke.width / 2 * turned(on);
  drawing.side(middle - n, middle + far - n);
  drawing.side(middle + far - n, middle + far + n);
  drawing.side(middle + far + n, middle + n);
  drawing.side(middle + n, middle - n);
}

void addParallel(Drawing& drawing, const Oval& oval, int64_t chords, const DaxiStroke& stroke) {
  const double half = stroke.width / 2;
  const Ends outer = addArc(drawing, arcOf(oval, half, chords), false);
  const double shorter = std::min(oval.radiusX, oval.radiusY), longer = std::max(oval.radiusX, oval.radiusY);
  const bool hasHole = half < shorter;
  // Where the inner curve does not overtake itself.
  if (oval.isWhole() && (!hasHole || half * longer < shorter * shorter)) drawing.setSimple();
  if (!hasHole && oval.isWhole()) return;
  const Ends inner = addArc(drawing, arcOf(oval, -half, chords), true);
  if (oval.isWhole()) return;
  drawing.side(outer.last, inner.last);
  drawing.side(inner.first, outer.first);
  addCap(drawing, outer.first, inner.first, stroke, true);
  addCap(drawing, outer.last, inner.last, stroke, false);
}

void addChords(Drawing& drawing, const Oval& oval, int64_t chords, DaxiStroke stroke) {
  stroke.join = DAXI_JOIN_ROUND;
  Pen pen(drawing, stroke, false);
  bool isFirst = true;
  walkArc(arcOf(oval, 0, chords), windowOf(drawing.window(), stroke.width / 2), [&](DaxiPoint64f p) {
    isFirst ? pen.moveTo(p) : pen.lineTo(p);
    isFirst = false;
  });
  if (oval.isWhole()) pen.close();
  pen.finish();
}

DaxStatus drawOval(const Canvas& canvas, const Oval& oval, const DaxiStroke& stroke, void* buffer) {
  const OvalPlan plan = planOf(oval.radiusX, oval.radiusY, oval.span, stroke.width);
  const uint64_t edges = ovalEdges(canvas.size, oval.radiusX, oval.radiusY, oval.span, stroke);
  Drawing drawing(canvas, DrawBuffer(canvas.size, edges), buffer);
  switch (plan.way) {
    case OvalWay::filled:
      addFilled(drawing, oval, plan.chords);
      break;
    case OvalWay::parallel:
      addParallel(drawing, oval, plan.chords, stroke);
      break;
    case OvalWay::chords:
      addChords(drawing, oval, plan.chords, stroke);
  }
  return drawing.paint(stroke, FillRule::nonZero);
}

DaxStatus ovalBufferSize(DaxiSize size, double radiusX, double radiusY, double span, const DaxiStroke* stroke,
                         uint64_t* bytes) {
  DAX_REQUIRE(stroke && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isDrawnSize(size), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isLength(radiusX) && isLength(radiusY), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isAngle(span), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkPen(*stroke, true));
  return DrawBuffer(size, ovalEdges(size, radiusX, radiusY, std::min(std::fabs(span), kTurn), *stroke)).store(bytes);
}

}  // namespace

DaxStatus drawEllipse(const Canvas& canvas, double x, double y, double radiusX, double radiusY, double angle,
                      const DaxiStroke* stroke, void* buffer) {
  return drawArc(canvas, x, y, radiusX, radiusY, angle, 0, kTurn, stroke, buffer);
}

DaxStatus drawArc(const Canvas& canvas, double x, double y, double radiusX, double radiusY, double angle, double start,
                  double span, const DaxiStroke* stroke, void* buffer) {
  DAX_REQUIRE_OK(checkCanvas(canvas, stroke, buffer));
  DAX_REQUIRE(isCoordinate(x) && isCoordinate(y), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isLength(radiusX) && isLength(radiusY), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isAngle(angle) && isAngle(start) && isAngle(span), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkStroke(*stroke, canvas, true));
  const double size = std::min(std::fabs(span), kTurn), begin = span < 0 ? start - size : start;
  return drawOval(canvas, {{x, y}, radiusX, radiusY, angle, begin, size}, *stroke, buffer);
}

}  // namespace dax

DaxStatus DAXI_DrawEllipseBufferSize(DaxiSize dstSize, double radiusX, double radiusY, const DaxiStroke* stroke,
                                     uint64_t* bytes) {
  return dax::ovalBufferSize(dstSize, radiusX, radiusY, dax::kTurn, stroke, bytes);
}

DaxStatus DAXI_DrawArcBufferSize(DaxiSize dstSize, double radiusX, double radiusY, double span,
                                 const DaxiStroke* stroke, uint64_t* bytes) {
  return dax::ovalBufferSize(dstSize, radiusX, radiusY, span, stroke, bytes);
}
