// Strokes: any number of polylines, open or closed, drawn as one shape: every pixel is blended once, with the area of the
// union of all segments, joins and caps that lies in its unit square.
//
//   DrawBuffer layout(size, strokeEdges(size, points, polylines, stroke));  // in the size query: layout.store(bytes)
//   Drawing drawing(canvas, layout, buffer);
//   Pen pen(drawing, stroke);
//   pen.moveTo(a); pen.lineTo(b); pen.lineTo(c);                    // an open polyline, ended by the next moveTo or finish
//   pen.moveTo(d); pen.lineTo(e); pen.lineTo(f); pen.close();       // a closed one
//   pen.finish();
//   drawing.paint(stroke, FillRule::nonZero);
#pragma once

#include "image/draw/drawing.h"

namespace dax {

// The greatest number of edges that a pen makes of so many points (all moveTo and lineTo together) in so many polylines,
// on an image of this size. 2^62 where that is more than can be.
uint64_t strokeEdges(DaxiSize size, uint64_t points, uint64_t polylines, const DaxiStroke& stroke);

class Pen {
 public:
  // stroke.width > 0. A stroke without anti-aliasing and with a width of at most 1 draws the pixels of Bresenham's lines.
  Pen(Drawing& drawing, const DaxiStroke& stroke);

  // Coordinates must be finite and at most 2^40; points equal to the one before are passed over. A polyline of one point
  // is a dot: a disc with round caps, an upright square with square ones, nothing with butt ones.
  void moveTo(DaxiPoint64f point);
  void lineTo(DaxiPoint64f point);
  // Joins the last point to the first.
  void close();
  // Ends the last polyline. Needed before painting.
  void finish();

 private:
  void segment(DaxiPoint64f from, DaxiPoint64f to);
  void join(DaxiPoint64f at, DaxiPoint64f before, DaxiPoint64f after);
  void cap(DaxiPoint64f at, DaxiPoint64f outwards);
  void dot(DaxiPoint64f at);

  Drawing& drawing_;
  DaxiStroke stroke_;
  double half_;           // of the width
  DaxiPoint64f first_{};  // of the polyline
  DaxiPoint64f last_{};
  DaxiPoint64f firstWay_{};  // unit vectors of its first and last segment
  DaxiPoint64f lastWay_{};
  int32_t state_ = 0;  // 0 nothing, 1 a point, 2 segments
};

}  // namespace dax
