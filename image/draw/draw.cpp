#include "image/draw/draw.h"

#include <cmath>

#include "image/draw/pen.h"

namespace dax {
namespace {

// Of polygons and markers.
constexpr int32_t kMaxPoints = 1 << 24;

bool isCount(int32_t count) {
  return count >= 1 && count <= kMaxPoints;
}

bool areCoordinates(const DaxiPoint64f* points, int32_t count) {
  for (int32_t i = 0; i < count; ++i) {
    if (!isCoordinate(points[i].x) || !isCoordinate(points[i].y)) return false;
  }
  return true;
}

void addOutline(Drawing& drawing, const DaxiPoint64f* points, int32_t count) {
  for (int32_t i = 0; i < count; ++i) drawing.side(points[i], points[i + 1 < count ? i + 1 : 0]);
}

void addPolyline(Pen& pen, const DaxiPoint64f* points, int32_t count, bool isClosed) {
  pen.moveTo(points[0]);
  for (int32_t i = 1; i < count; ++i) pen.lineTo(points[i]);
  if (isClosed) pen.close();
  pen.finish();
}

// --- Arrows ---

constexpr uint64_t kArrowPoints = 5, kArrowLines = 2;

// --- Rectangles ---

uint64_t rectEdges(DaxiSize size, const DaxiStroke& stroke) {
  return stroke.width == 0 ? 4 : strokeEdges(size, 5, 1, stroke);
}

// --- Markers ---

// In a square of side 2, from x to y.
constexpr DaxiPoint64f kPlus[] = {{-1, 0}, {1, 0}, {0, -1}, {0, 1}};
constexpr DaxiPoint64f kCross[] = {{-1, -1}, {1, 1}, {1, -1}, {-1, 1}};
constexpr DaxiPoint64f kSquare[] = {{-1, -1}, {1, -1}, {1, 1}, {-1, 1}};
constexpr DaxiPoint64f kDiamond[] = {{0, -1}, {1, 0}, {0, 1}, {-1, 0}};
constexpr DaxiPoint64f kTriangle[] = {{0, -1}, {1, 1}, {-1, 1}};

bool isOpenMarker(int32_t shape) {
  return shape <= DAXI_MARKER_STAR;
}

// Circles are drawn as polygons, whose corners are as sharp as they should be.
int64_t markerChords(double size, double width) {
  return chordCount((size + width) / 2, kTurn);
}

// Where hidden chords are left out, a miter may be as long as it ever is.
constexpr double kMiterReach = 2;

DaxiStroke markerStroke(DaxiStroke stroke, int32_t shape) {
  if (shape == DAXI_MARKER_CIRCLE) stroke.join = DAXI_JOIN_MITER, stroke.miterLimit = 2 * kMiterReach;
  return stroke;
}

uint64_t markerEdges(DaxiSize size, int32_t count, double extent, int32_t shape, const DaxiStroke& stroke) {
  DaxiStroke area = markerStroke(stroke, shape);
  uint64_t points = 8, lines = 4;
  if (shape == DAXI_MARKER_CIRCLE) {
    points =
        static_cast<uint64_t>(maxArcPoints(size, kMiterReach * stroke.width, markerChords(extent, stroke.width))) + 1,
    lines = 1;
    area.antialias = 1;
  }
  if (stroke.width == 0) return static_cast<uint64_t>(count) * points;
  uint64_t edges;
  const bool isTooMuch =
      __builtin_mul_overflow(static_cast<uint64_t>(count), strokeEdges(size, points, lines, area), &edges);
  return isTooMuch ? uint64_t{1} << 62 : edges;
}

// One marker of many.
class Marker {
 public:
  Marker(Drawing& drawing, double size, double angle, int32_t shape, const DaxiStroke& stroke)
      : drawing_(drawing),
        shape_(shape),
        width_(stroke.width),
        pen_(drawing, markerStroke(stroke, shape), shape != DAXI_MARKER_CIRCLE) {
    const SinCos turn = elementary::sinCos(angle);
    way_ = {turn.cosine, turn.sine};
    half_ = size / 2;
  }

  void add(DaxiPoint64f at) {
    switch (shape_) {
      case DAXI_MARKER_PLUS:
        return addLines(at, kPlus);
      case DAXI_MARKER_CROSS:
        return addLines(at, kCross);
      case DAXI_MARKER_STAR:
        addLines(at, kPlus);
        return addLines(at, kCross);
      case DAXI_MARKER_SQUARE:
        return addClosed(at, kSquare);
      case DAXI_MARKER_DIAMOND:
        return addClosed(at, kDiamond);
      case DAXI_MARKER_TRIANGLE:
        return addClosed(at, kTriangle);
      default:
        return addCircle(at);
    }
  }

 private:
  DaxiPoint64f placed(DaxiPoint64f at, DaxiPoint64f corner) const {
    return at + half_ * (corner.x * way_ + corner.y * turned(way_));
  }

  void addLines(DaxiPoint64f at, const DaxiPoint64f (&ends)[4]) {
    for (int i = 0; i < 4; i += 2) {
      const DaxiPoint64f line[] = {placed(at, ends[i]), placed(at, ends[i + 1])};
      addPolyline(pen_, line, 2, false);
    }
  }

  template <int kCorners>
  void addClosed(DaxiPoint64f at, const DaxiPoint64f (&corners)[kCorners]) {
    DaxiPoint64f outline[kCorners];
    for (int i = 0; i < kCorners; ++i) outline[i] = placed(at, corners[i]);
    width_ == 0 ? addOutline(drawing_, outline, kCorners) : addPolyline(pen_, outline, kCorners, true);
  }

  void addCircle(DaxiPoint64f at) {
    if (width_ == 0) return addDisc(drawing_, at, half_);
    const Arc arc = {at, way_, half_, half_, 0, 0, kTurn, markerChords(2 * half_, width_)};
    bool isFirst = true;
    walkArc(arc, windowOf(drawing_.window(), kMiterReach * width_), [&](DaxiPoint64f p) {
      isFirst ? pen_.moveTo(p) : pen_.lineTo(p);
      isFirst = false;
    });
    pen_.close();
  }

  Drawing& drawing_;
  int32_t shape_;
  double width_, half_;
  DaxiPoint64f way_;
  Pen pen_;
};

}  // namespace

DaxStatus drawPolyline(const Canvas& canvas, const DaxiPoint64f* points, int32_t count, int32_t closed,
                       const DaxiStroke* stroke, void* buffer) {
  DAX_REQUIRE_OK(checkCanvas(canvas, stroke, points && buffer));
  DAX_REQUIRE(isCount(count), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(areCoordinates(points, count), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(closed == 0 || closed == 1, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkStroke(*stroke, canvas, false));
  const uint64_t edges = strokeEdges(canvas.size, static_cast<uint64_t>(count) + 1, 1, *stroke);
  Drawing drawing(canvas, DrawBuffer(canvas.size, edges), buffer);
  Pen pen(drawing, *stroke);
  addPolyline(pen, points, count, closed == 1);
  return drawing.paint(*stroke, FillRule::nonZero);
}

DaxStatus drawArrow(const Canvas& canvas, double x0, double y0, double x1, double y1, double head, double spread,
                    const DaxiStroke* stroke, void* buffer) {
  DAX_REQUIRE_OK(checkCanvas(canvas, stroke, buffer));
  DAX_REQUIRE(isCoordinate(x0) && isCoordinate(y0) && isCoordinate(x1) && isCoordinate(y1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isLength(head), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(spread >= 0 && spread <= std::numbers::pi / 2, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkStroke(*stroke, canvas, false));
  Drawing drawing(canvas, DrawBuffer(canvas.size, strokeEdges(canvas.size, kArrowPoints, kArrowLines, *stroke)),
                  buffer);
  const DaxiPoint64f from = {x0, y0}, tip = {x1, y1}, shaft[] = {from, tip};
  Pen pen(drawing, *stroke);
  addPolyline(pen, shaft, 2, false);
  const DaxiPoint64f back = from - tip;
  if (const double length = std::sqrt(back.x * back.x + back.y * back.y); length > 0) {
    const SinCos turn = elementary::sinCos(spread);
    const DaxiPoint64f along = head * turn.cosine / length * back, aside = head * turn.sine / length * turned(back);
    const DaxiPoint64f barbs[] = {tip + along + aside, tip, tip + along - aside};
    addPolyline(pen, barbs, 3, false);
  }
  return drawing.paint(*stroke, FillRule::nonZero);
}

DaxStatus drawRect(const Canvas& canvas, double x, double y, double width, double height, double angle,
                   const DaxiStroke* stroke, void* buffer) {
  DAX_REQUIRE_OK(checkCanvas(canvas, stroke, buffer));
  DAX_REQUIRE(isCoordinate(x) && isCoordinate(y), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isLength(width) && isLength(height), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isAngle(angle), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkStroke(*stroke, canvas, true));
  Drawing drawing(canvas, DrawBuffer(canvas.size, rectEdges(canvas.size, *stroke)), buffer);
  const SinCos turn = elementary::sinCos(angle);
  const DaxiPoint64f way = {turn.cosine, turn.sine}, u = width / 2 * way, v = height / 2 * turned(way), at = {x, y};
  const DaxiPoint64f corners[] = {at - u - v, at + u - v, at + u + v, at - u + v};
  if (stroke->width == 0) {
    addOutline(drawing, corners, 4);
    drawing.setSimple();
  } else {
    Pen pen(drawing, *stroke);
    addPolyline(pen, corners, 4, true);
  }
  return drawing.paint(*stroke, FillRule::nonZero);
}

DaxStatus drawPolygon(const Canvas& canvas, const DaxiPoint64f* points, int32_t count, const int32_t* lengths,
                      int32_t contours, int32_t rule, const DaxiStroke* stroke, void* buffer) {
  DAX_REQUIRE_OK(checkCanvas(canvas, stroke, points && lengths && buffer));
  DAX_REQUIRE(isCount(count), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(contours >= 1 && contours <= count, DAX_STS_BAD_PARAM);
  int64_t sum = 0;
  for (int32_t i = 0; i < contours; ++i) {
    DAX_REQUIRE(lengths[i] >= 1, DAX_STS_BAD_PARAM);
    sum += lengths[i];
  }
  DAX_REQUIRE(sum == count && areCoordinates(points, count), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(rule == DAXI_FILL_EVEN_ODD || rule == DAXI_FILL_NON_ZERO, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkStroke(*stroke, canvas, true));
  Drawing drawing(canvas, DrawBuffer(canvas.size, static_cast<uint64_t>(count)), buffer);
  for (int32_t i = 0; i < contours; ++i) {
    addOutline(drawing, points, lengths[i]);
    points += lengths[i];
  }
  return drawing.paint(*stroke, rule == DAXI_FILL_EVEN_ODD ? FillRule::evenOdd : FillRule::nonZero);
}

DaxStatus drawMarker(const Canvas& canvas, const DaxiPoint64f* points, int32_t count, double size, double angle,
                     int32_t shape, const DaxiStroke* stroke, void* buffer) {
  DAX_REQUIRE_OK(checkCanvas(canvas, stroke, points && buffer));
  DAX_REQUIRE(isCount(count) && areCoordinates(points, count), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isLength(size), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(isAngle(angle), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(shape >= DAXI_MARKER_PLUS && shape <= DAXI_MARKER_CIRCLE, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkStroke(*stroke, canvas, !isOpenMarker(shape)));
  Drawing drawing(canvas, DrawBuffer(canvas.size, markerEdges(canvas.size, count, size, shape, *stroke)), buffer);
  Marker marker(drawing, size, angle, shape, *stroke);
  for (int32_t i = 0; i < count; ++i) marker.add(points[i]);
  return drawing.paint(*stroke, FillRule::nonZero);
}

}  // namespace dax

DaxStatus DAXI_DrawPolylineBufferSize(DaxiSize dstSize, int32_t count, const DaxiStroke* stroke, uint64_t* bytes) {
  DAX_REQUIRE(stroke && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::isDrawnSize(dstSize), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isCount(count), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(dax::checkPen(*stroke, false));
  const uint64_t edges = dax::strokeEdges(dstSize, static_cast<uint64_t>(count) + 1, 1, *stroke);
  return dax::DrawBuffer(dstSize, edges).store(bytes);
}

DaxStatus DAXI_DrawArrowBufferSize(DaxiSize dstSize, const DaxiStroke* stroke, uint64_t* bytes) {
  DAX_REQUIRE_OK(dax::checkDrawQuery(dstSize, stroke, bytes, false));
  return dax::DrawBuffer(dstSize, dax::strokeEdges(dstSize, dax::kArrowPoints, dax::kArrowLines, *stroke)).store(bytes);
}

DaxStatus DAXI_DrawRectBufferSize(DaxiSize dstSize, const DaxiStroke* stroke, uint64_t* bytes) {
  DAX_REQUIRE_OK(dax::checkDrawQuery(dstSize, stroke, bytes, true));
  return dax::DrawBuffer(dstSize, dax::rectEdges(dstSize, *stroke)).store(bytes);
}

DaxStatus DAXI_DrawPolygonBufferSize(DaxiSize dstSize, int32_t count, uint64_t* bytes) {
  DAX_REQUIRE(bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::isDrawnSize(dstSize), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isCount(count), DAX_STS_BAD_PARAM);
  return dax::DrawBuffer(dstSize, static_cast<uint64_t>(count)).store(bytes);
}

DaxStatus DAXI_DrawMarkerBufferSize(DaxiSize dstSize, int32_t count, double size, int32_t shape,
                                    const DaxiStroke* stroke, uint64_t* bytes) {
  DAX_REQUIRE(stroke && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(dax::isDrawnSize(dstSize), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isCount(count), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(dax::isLength(size), DAX_STS_BAD_PARAM);
  DAX_REQUIRE(shape >= DAXI_MARKER_PLUS && shape <= DAXI_MARKER_CIRCLE, DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(dax::checkPen(*stroke, !dax::isOpenMarker(shape)));
  return dax::DrawBuffer(dstSize, dax::markerEdges(dstSize, count, size, shape, *stroke)).store(bytes);
}
