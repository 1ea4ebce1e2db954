// Images that are drawn into. Everything but the blending of finished coverages is the same for all types and layouts,
// so that it is compiled once; what differs hangs on a function pointer.
#pragma once

#include <cstdint>

#include "daxi/stroke.h"
#include "frame/check.h"
#include "frame/rows.h"

namespace dax {

struct Canvas;

// A colour that is laid on.
struct Ink {
  float color[3];
  float alpha;
};

struct Canvas {
  void* pixels;
  int32_t step;  // elements
  DaxiSize size;
  int32_t channels;
  int32_t maxValue;  // of the type
  // Pixels x0..x1 - 1 of row y become dst + rint((color - dst) alpha coverage); coverage[0] is that of x0, in 0..1. A null
  // pointer stands for ones.
  void (*blend)(const Canvas&, const Ink&, int32_t y, int32_t x0, int32_t x1, const float* coverage);
};

template <int kChannels, class T>
Canvas canvasOf(T* pixels, int32_t step, DaxiSize size);

// The checks that every drawing export begins with, in this order: dst or stroke null, size below 1 x 1, step, then the
// stroke by `checkStroke`. Exports check further pointers (points, buffer) before they call it.
DaxStatus checkCanvas(const Canvas& canvas, const DaxiStroke* stroke);

// The fields in their order; of colours those that the canvas has, against its type. `mayFill`: a width of 0 is allowed.
DaxStatus checkStroke(const DaxiStroke& stroke, int32_t channels, int32_t maxValue, bool mayFill);

// Within the limits of int32_t: what coordinates and radii may be. False for NaN.
inline bool isCoordinate(double v) {
  return v >= -2147483648.0 && v <= 2147483647.0;
}

}  // namespace dax
