// The outlines of one call and the memory in which they are painted.
#pragma once

#include "frame/memory/work_buffer.h"
#include "image/draw/canvas.h"

namespace dax {

enum class FillRule { nonZero, evenOdd };

// A side of an outline, from its upper to its lower end; the line reaches beyond the image, the rows do not.
struct Edge {
  double x, y;         // a point of it
  double slope;        // dx / dy
  double top, bottom;  // within the rows of the image; equal: a horizontal side
  double left, right;  // its extent
  int32_t winding;     // 1 downwards, -1 upwards, 0 horizontal
  int32_t next;        // that begins in the same row
};

// The memory of a call that makes at most so many edges. Exports hand in a `void* buffer` of this size and malloc's
// alignment; the size query stores it:
//   return DrawBuffer(size, edges).store(bytes);
struct DrawBuffer {
  DrawBuffer(DaxiSize size, uint64_t edges);
  DaxStatus store(uint64_t* bytes) const;

  uint64_t capacity;
  BufferLayout layout;
  BufferPiece<Edge> edges;
};

class Drawing {
 public:
  Drawing(const Canvas& canvas, const DrawBuffer& layout, void* buffer);

  // A side of an outline; outlines are closed, and the inside of each is on the same hand for the non-zero rule to unite
  // them. Coordinates must be finite.
  void side(DaxiPoint64f from, DaxiPoint64f to);

  const Canvas& canvas() const { return canvas_; }

  // Blends the pixels inside, each once, by colour, alpha and antialias of the stroke.
  void paint(const DaxiStroke& stroke, FillRule rule);

 private:
  Canvas canvas_;
  DrawBuffer layout_;
  void* buffer_;
  uint64_t count_ = 0;
};

}  // namespace dax
