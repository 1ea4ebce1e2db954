// The outlines of one call and the memory in which they are painted: every pixel is blended once, with the area of its
// unit square that lies inside.
#pragma once

#include "frame/memory/work_buffer.h"
#include "image/draw/canvas.h"
#include "image/draw/edge.h"

namespace dax {

// The memory of a call that makes at most so many edges. Exports take a `void* buffer` of this size; the size query is
//   return DrawBuffer(size, edges).store(bytes);
struct DrawBuffer {
  DrawBuffer(DaxiSize size, uint64_t edges);

  // Whether so many edges can be counted at all; `store` and Drawing's `paint` fail with 0x10000015 where they cannot.
  bool isPossible() const { return capacity <= INT32_MAX; }
  DaxStatus store(uint64_t* bytes) const;

  uint64_t capacity;
  BufferLayout layout;
  BufferPiece<Edge> edges;
  BufferPiece<Piece> pieces;
  BufferPiece<Crossing> crossings;
  BufferPiece<double> ends;    // of pieces, and where they cross
  BufferPiece<int32_t> heads;  // a row's first edge
  BufferPiece<int32_t> active;
  BufferPiece<double> areas;  // of a row's pixels
  BufferPiece<float> coverage;
};

class Drawing {
 public:
  Drawing(const Canvas& canvas, const DrawBuffer& layout, void* buffer);

  const Canvas& canvas() const { return canvas_; }

  // Nothing is painted outside of this part of the image, which is all of it at first.
  void setWindow(const DaxiRect& window) { window_ = window; }
  const DaxiRect& window() const { return window_; }

  // Says that the outlines turn at most once around any point, as convex ones do that do not overlap.
  void setSimple() { isSimple_ = true; }

  // A side of an outline. Outlines are closed; for the non-zero rule to unite them they run the same way around.
  // Coordinates must be finite.
  void side(DaxiPoint64f from, DaxiPoint64f to);

  // A line of single pixels, Bresenham's. Lines and sides do not mix.
  void thinLine(DaxiPoint32s from, DaxiPoint32s to);

  // Blends the pixels inside by colour, alpha and antialias of the stroke, and forgets the outlines. 0x10000015 where there
  // was not enough memory for them, without painting.
  DaxStatus paint(const DaxiStroke& stroke, FillRule rule);

 private:
  void add(const Edge& edge);

  Canvas canvas_;
  DrawBuffer layout_;
  void* buffer_;
  DaxiRect window_;
  uint64_t count_ = 0;
  double farRight_ = -1e300;  // of all sides
  bool isThin_ = false, isSimple_ = false;
};

}  // namespace dax
