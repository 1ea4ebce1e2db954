// Pens of all widths, most of them slim, so that buffers stay small; outlines whose lengths add up, or do not.
#include "daxi.h"
#include "tests/hostile/call.h"

namespace dax::hostile {
namespace {

bool mayFill(const Call& c) {
  const std::string_view name = c.function.name;
  const bool isClosed = name.find("Rect") != name.npos || name.find("Ellipse") != name.npos ||
                        name.find("Arc") != name.npos || name.find("Polygon") != name.npos;
  return isClosed || (c.has("shape") && c.get<int32_t>("shape") >= DAXI_MARKER_SQUARE);
}

void pen(Call& c) {
  c.filled<DaxiStroke>("stroke", 1, [&](DaxiStroke& stroke) {
    stroke.width = c.chance(80) ? static_cast<double>(c.between(1, 80)) / 8 : c.pick({0.001, 300.0, 1e6});
    if (mayFill(c) && c.chance(40)) stroke.width = 0;
    stroke.miterLimit = static_cast<double>(c.between(1, 20)), stroke.alpha = static_cast<double>(c.between(0, 8)) / 8;
    for (int32_t& each : stroke.color) each = static_cast<int32_t>(c.between(0, 255));
  });
}

// Near the image; now and then as far as numbers may be.
void real(Call& c, const char* name, double low, double high) {
  c.chance(80) ? static_cast<void>(c.real(name, low, high)) : c.draw(name);
}

void geometry(Call& c) {
  for (const char* const each : {"x", "y", "x0", "y0", "x1", "y1"}) {
    if (c.has(each)) real(c, each, -50, 150);
  }
  for (const char* const each : {"width", "height", "radiusX", "radiusY", "head", "size"}) {
    if (c.has(each)) real(c, each, 0, 120);
  }
  for (const char* const each : {"angle", "start", "span"}) {
    if (c.has(each)) real(c, each, -10, 10);
  }
  if (c.has("shape")) c.draw("shape");
}

void shape(Call& c) {
  geometry(c);
  pen(c);
}

void points(Call& c) {
  geometry(c);
  const int64_t count = c.number("count", 1, 16777216, 40);
  const double unit = c.pick({1.0, 0.25, 1.0 / 1024, 1e6});
  c.filled<DaxiPoint64f>("points", count < 1 ? -1 : count, [&](DaxiPoint64f& point) {
    point = {static_cast<double>(c.between(-20, 200)) * unit, static_cast<double>(c.between(-20, 200)) * unit};
  });
  pen(c);
}

void polygon(Call& c) {
  points(c);
  const int64_t count = c.get<int32_t>("count");
  const int64_t contours = c.number("contours", 1, std::clamp<int64_t>(count, 1, 3));
  auto* const lengths = static_cast<int32_t*>(c.array("lengths", contours < 1 ? -1 : contours));
  if (!lengths || contours < 1 || contours > 3) return;
  std::fill_n(lengths, contours, 1);
  lengths[contours - 1] = static_cast<int32_t>(count - contours + 1);
  if (c.chance(5)) ++lengths[0];
}

const Rows rows = {{"DAXI_DrawLine_*", shape},
                   {"DAXI_DrawArrow_*", shape},
                   {"DAXI_DrawRect_*", shape},
                   {"DAXI_DrawEllipse_*", shape},
                   {"DAXI_DrawArc_*", shape},
                   {"DAXI_DrawPolyline_*", points},
                   {"DAXI_DrawMarker_*", points},
                   {"DAXI_DrawPolygon_*", polygon},
                   {"DAXI_DrawLineBufferSize", shape},
                   {"DAXI_DrawArrowBufferSize", shape},
                   {"DAXI_DrawRectBufferSize", shape},
                   {"DAXI_DrawPolylineBufferSize", shape},
                   {"DAXI_DrawEllipseBufferSize", shape},
                   {"DAXI_DrawArcBufferSize", shape},
                   {"DAXI_DrawMarkerBufferSize", shape}};

}  // namespace
}  // namespace dax::hostile
