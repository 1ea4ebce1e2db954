// Shapes: the functions behind the exports. They check their arguments as the public header lists.
#pragma once

#include "daxi/draw.h"
#include "image/draw/canvas.h"

namespace dax {

DaxStatus drawLine(const Canvas& canvas, double x0, double y0, double x1, double y1, const DaxiStroke* stroke,
                   void* buffer);
DaxStatus drawPolyline(const Canvas& canvas, const DaxiPoint64f* points, int32_t count, int32_t closed,
                       const DaxiStroke* stroke, void* buffer);
DaxStatus drawArrow(const Canvas& canvas, double x0, double y0, double x1, double y1, double head, double spread,
                    const DaxiStroke* stroke, void* buffer);
DaxStatus drawRect(const Canvas& canvas, double x, double y, double width, double height, double angle,
                   const DaxiStroke* stroke, void* buffer);
DaxStatus drawEllipse(const Canvas& canvas, double x, double y, double radiusX, double radiusY, double angle,
                      const DaxiStroke* stroke, void* buffer);
DaxStatus drawArc(const Canvas& canvas, double x, double y, double radiusX, double radiusY, double angle, double start,
                  double span, const DaxiStroke* stroke, void* buffer);
DaxStatus drawPolygon(const Canvas& canvas, const DaxiPoint64f* points, int32_t count, const int32_t* lengths,
                      int32_t contours, int32_t rule, const DaxiStroke* stroke, void* buffer);
DaxStatus drawMarker(const Canvas& canvas, const DaxiPoint64f* points, int32_t count, double size, double angle,
                     int32_t shape, const DaxiStroke* stroke, void* buffer);

// Forwards an export.
template <auto draw, class T, int kChannels, class... Rest>
DaxStatus onCanvas(T* dst, int32_t dstStep, DaxiSize dstSize, Rest... rest) {
  return draw(canvasOf<kChannels>(dst, dstStep, dstSize), rest...);
}

// A size query's own arguments.
inline DaxStatus checkDrawQuery(DaxiSize dstSize, const DaxiStroke* stroke, const uint64_t* bytes, bool mayFill) {
  DAX_REQUIRE(stroke && bytes, DAX_STS_NULL_POINTER);
  DAX_REQUIRE(isDrawnSize(dstSize), DAX_STS_BAD_PARAM);
  return checkPen(*stroke, mayFill);
}

inline bool isAngle(double v) {
  return v >= -1e6 && v <= 1e6;
}

inline bool isLength(double v) {
  return v >= 0 && v <= 2147483647.0;
}

}  // namespace dax
