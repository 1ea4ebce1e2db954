// Strokes: any number of polylines, open or closed, drawn as one shape: every pixel is blended once, with the area of the
// union of all segments, joins and caps that lies in its unit square.
//
//   DrawBuffer layout(size, strokeEdges(size, points, polylines, stroke));  // in the size query: layout.store(bytes)
//   Drawing drawing(canvas, layout, buffer);
//   Pen pen(drawing, stroke);
//   pen.moveTo(a); pen.lineTo(b); pen.lineTo(c);                // an open polyline, ended by the next moveTo or finish
//   pen.moveTo(d); pen.lineTo(e); pen.lineTo(f); pen.close();   // a closed one
//   pen.finish();
//   return drawing.paint(stroke, FillRule::nonZero);
#pragma once

#include "image/draw/arc.h"
#include "image/draw/drawing.h"

namespace dax {

// The greatest number of edges that a pen makes of so many points (all moveTo and lineTo together) in so many polylines,
// on an image of this size; more than can be counted is 2^62.
uint64_t strokeEdges(DaxiSize size, uint64_t points, uint64_t polylines, const DaxiStroke& stroke);

// Whether strokes are lines one pixel thin rather than areas.
inline bool isThin(const DaxiStroke& stroke) {
  return stroke.antialias == 0 && stroke.width <= 1;
}

// Adds the outline of what an ellipse with a = b = radius encloses.
void addDisc(Drawing& drawing, DaxiPoint64f centre, double radius);

class Pen {
 public:
  // stroke.width > 0. mayBeThin: lines one pixel thin are drawn as such.
  Pen(Drawing& drawing, const DaxiStroke& stroke, bool mayBeThin = true);

  // Coordinates must be finite and within 2^40; thin lines have theirs rounded, within the limits of int32_t. Points
  // less than 1e-9 from the one before are passed over. A polyline of one point is a dot: a disc with round caps, an
  // upright square with square ones, nothing with butt ones, a pixel where lines are thin.
  void moveTo(DaxiPoint64f point);
  void lineTo(DaxiPoint64f point);
  // Joins the last point to the first.
  void close();
  // Ends the last polyline; needed before painting.
  void finish();

 private:
  enum class State { idle, point, line };

  void segment(DaxiPoint64f from, DaxiPoint64f to, DaxiPoint64f way);
  void join(DaxiPoint64f at, DaxiPoint64f before, DaxiPoint64f after);
  void cap(DaxiPoint64f at, DaxiPoint64f outwards);
  void dot();
  void sector(DaxiPoint64f at, DaxiPoint64f from, DaxiPoint64f to, double angle);

  Drawing& drawing_;
  DaxiStroke stroke_;
  double half_;  // of the width
  bool isThin_;
  State state_ = State::idle;
  DaxiPoint64f first_{}, last_{};        // of the polyline
  DaxiPoint64f firstWay_{}, lastWay_{};  // unit vectors of its first and last segment
};

}  // namespace dax
