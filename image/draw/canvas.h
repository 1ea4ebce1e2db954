// Images that are drawn into. Everything but the blending of finished coverages is the same for all types and layouts,
// so that it is compiled once; what differs hangs on function pointers.
#pragma once

#include <cstdint>

#include "daxi/stroke.h"
#include "frame/check.h"

namespace dax {

// A colour that is laid on.
struct Ink {
  float color[3];
  float alpha;
};

inline Ink inkOf(const DaxiStroke& stroke) {
  const auto channel = [&](int i) { return static_cast<float>(stroke.color[i]); };
  return {{channel(0), channel(1), channel(2)}, static_cast<float>(stroke.alpha)};
}

struct SlimBand;

struct Canvas {
  void* pixels;
  int32_t step;  // elements
  DaxiSize size;
  int32_t channels;
  int32_t maxValue;  // of the type
  // Pixels x0..x1 - 1 of row y become dst + rint((color - dst) alpha coverage); coverage[0] is that of x0, in 0..1. A null
  // pointer stands for ones.
  void (*blend)(const Canvas&, const Ink&, int32_t y, int32_t x0, int32_t x1, const float* coverage);
  // See image/draw/slim_band.h.
  void (*blendBand)(const Canvas&, const Ink&, const SlimBand&);
};

// For uint8_t and uint16_t, one channel or three.
template <int kChannels, class T>
Canvas canvasOf(T* pixels, int32_t step, DaxiSize size);

// The sides of images.
inline bool isDrawnSize(DaxiSize size) {
  constexpr int32_t kMaxSide = 1 << 20;
  return atLeast(size, 1) && atMost(size, kMaxSide);
}

// What every drawing export checks first, in this order: image or stroke null (the export adds its other pointers as
// `others`), sides outside 1..2^20, step.
DaxStatus checkCanvas(const Canvas& canvas, const DaxiStroke* stroke, bool others);

// The fields in their order; of colours those that the canvas has, against its type. mayFill: a width of 0 is allowed.
DaxStatus checkStroke(const DaxiStroke& stroke, const Canvas& canvas, bool mayFill);

// The same but for colours, which queries do not know the limits of.
DaxStatus checkPen(const DaxiStroke& stroke, bool mayFill);

// Within the limits of int32_t: what coordinates and radii may be. False for NaN.
inline bool isCoordinate(double v) {
  return v >= -2147483648.0 && v <= 2147483647.0;
}

}  // namespace dax
