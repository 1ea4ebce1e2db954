// Single lines. Between its ends a slim anti-aliased line goes through a kernel of its own; the ends are drawn as other
// strokes are, with the rest of the line cut off, each in its own part of the image, so that no pixel is blended twice.
#include <cmath>
#include <optional>

#include "image/draw/draw.h"
#include "image/draw/pen.h"
#include "image/draw/slim_band.h"
#include "image/draw/thin_line.h"

namespace dax {
namespace {

struct SlimLine {
  SlimBand band;          // with all pixels along between the ends
  DaxiPoint64f from, to;  // along and across; from.x < to.x
  double corner;          // how far the ends reach along beyond from and to, to either side
};

DaxiPoint64f swapped(DaxiPoint64f p, bool isSteep) {
  return isSteep ? DaxiPoint64f{p.y, p.x} : p;
}

// Nothing where the line is too wide or too short.
std::optional<SlimLine> slimLineOf(DaxiPoint64f a, DaxiPoint64f b, double width) {
  constexpr double kMaxAcross = 8;  // wider lines have more inside than sides
  constexpr double kShortest = 8;
  const bool isSteep = std::fabs(b.y - a.y) > std::fabs(b.x - a.x);
  DaxiPoint64f from = swapped(a, isSteep), to = swapped(b, isSteep);
  if (from.x > to.x) std::swap(from, to);
  const double along = to.x - from.x;
  if (!(along >= kShortest)) return {};
  const double slope = (to.y - from.y) / along, secant = std::sqrt(1 + slope * slope), half = width / 2 * secant;
  const double across = 2 * half + std::fabs(slope), corner = width / 2 * std::fabs(slope) / secant;
  if (!(across <= kMaxAcross)) return {};
  const double first = std::ceil(from.x + corner + 0.5), end = std::floor(to.x - corner - 0.5) + 1;
  if (!(end - first >= 2)) return {};
  const auto pixel = [](double v) { return static_cast<int32_t>(std::clamp(v, -2147483647.0, 2147483647.0)); };
  return SlimLine{{isSteep, from.x, from.y, slope, half, pixel(first), pixel(end)}, from, to, corner};
}

// The band's pixels that lie in the image, or nearly so.
SlimBand visible(const SlimBand& band, const Canvas& canvas) {
  const int32_t length = band.isSteep ? canvas.size.height : canvas.size.width;
  const int32_t limit = band.isSteep ? canvas.size.width : canvas.size.height;
  const double reach = band.half + 2;
  double low = 0, high = length;
  if (band.slope != 0) {
    const double a = band.along + (-reach - band.across) / band.slope,
                 b = band.along + (limit + reach - band.across) / band.slope;
    low = std::max(low, std::min(a, b) - 1);
    high = std::min(high, std::max(a, b) + 1);
  } else if (!(band.across >= -reach && band.across <= limit + reach)) {
    high = low;
  }
  SlimBand part = band;
  if (!(low < high)) return part.end = part.first, part;
  part.first = std::max(part.first, static_cast<int32_t>(low));
  part.end = std::min(part.end, static_cast<int32_t>(std::ceil(high)));
  return part;
}

// The part of the image with pixels first..end - 1 along.
DaxiRect partOf(const Canvas& canvas, bool isSteep, int32_t first, int32_t end) {
  const int32_t length = isSteep ? canvas.size.height : canvas.size.width;
  const int32_t from = std::clamp(first, 0, length), to = std::clamp(end, 0, length);
  return isSteep ? DaxiRect{0, from, canvas.size.width, to - from} : DaxiRect{from, 0, to - from, canvas.size.height};
}

// A line from `from` to `to`, with a cap at its end, and at its beginning if hasBegin.
void addLine(Drawing& drawing, DaxiPoint64f from, DaxiPoint64f to, bool hasBegin, const DaxiStroke& stroke) {
  const DaxiPoint64f step = to - from;
  const double length = std::sqrt(step.x * step.x + step.y * step.y), half = stroke.width / 2;
  if (stroke.cap == DAXI_CAP_ROUND || !(length > 0)) {
    Pen pen(drawing, stroke);
    pen.moveTo(from);
    pen.lineTo(to);
    pen.finish();
    return;
  }
  const DaxiPoint64f along = half / length * step, n = turned(along);
  if (stroke.cap == DAXI_CAP_SQUARE) to = to + along;
  if (stroke.cap == DAXI_CAP_SQUARE && hasBegin) from = from - along;
  const DaxiPoint64f corners[] = {from - n, to - n, to + n, from + n};
  for (int i = 0; i < 4; ++i) drawing.side(corners[i], corners[(i + 1) % 4]);
  drawing.setSimple();
}

// An end, and so much of the line that what is cut off lies in other parts.
DaxStatus drawEnd(Drawing& drawing, const SlimLine& line, const DaxiRect& part, bool isFirst,
                  const DaxiStroke& stroke) {
  if (part.width == 0 || part.height == 0) return DAX_STS_OK;
  const SlimBand& band = line.band;
  const double cut = isFirst ? band.first + line.corner + 1 : band.end - line.corner - 2;
  const DaxiPoint64f at = {cut, band.across + (cut - band.along) * band.slope};
  const DaxiPoint64f end = swapped(isFirst ? line.from : line.to, band.isSteep), from = swapped(at, band.isSteep);
  drawing.setWindow(part);
  addLine(drawing, from, end, false, stroke);
  return drawing.paint(stroke, FillRule::nonZero);
}

DaxStatus drawSlimLine(Drawing& drawing, const SlimLine& line, const DaxiStroke& stroke) {
  const Canvas& canvas = drawing.canvas();
  const SlimBand band = visible(line.band, canvas);
  if (band.first < band.end) canvas.blendBand(canvas, inkOf(stroke), band);
  const bool isSteep = band.isSteep;
  DAX_REQUIRE_OK(drawEnd(drawing, line, partOf(canvas, isSteep, 0, line.band.first), true, stroke));
  return drawEnd(drawing, line, partOf(canvas, isSteep, line.band.end, INT32_MAX), false, stroke);
}

uint64_t lineEdges(DaxiSize size, const DaxiStroke& stroke) {
  return strokeEdges(size, 2, 1, stroke);
}

}  // namespace

DaxStatus drawLine(const Canvas& canvas, double x0, double y0, double x1, double y1, const DaxiStroke* stroke,
                   void* buffer) {
  DAX_REQUIRE_OK(checkCanvas(canvas, stroke, buffer));
  DAX_REQUIRE(isCoordinate(x0) && isCoordinate(y0) && isCoordinate(x1) && isCoordinate(y1), DAX_STS_BAD_PARAM);
  DAX_REQUIRE_OK(checkStroke(*stroke, canvas, false));
  if (isThin(*stroke)) {
    drawThinLine(canvas, inkOf(*stroke), nearestPixel({x0, y0}), nearestPixel({x1, y1}));
    return DAX_STS_OK;
  }
  Drawing drawing(canvas, DrawBuffer(canvas.size, lineEdges(canvas.size, *stroke)), buffer);
  if (stroke->antialias) {
    if (const auto line = slimLineOf({x0, y0}, {x1, y1}, stroke->width)) return drawSlimLine(drawing, *line, *stroke);
  }
  addLine(drawing, {x0, y0}, {x1, y1}, true, *stroke);
  return drawing.paint(*stroke, FillRule::nonZero);
}

}  // namespace dax

DaxStatus DAXI_DrawLineBufferSize(DaxiSize dstSize, const DaxiStroke* stroke, uint64_t* bytes) {
  DAX_REQUIRE_OK(dax::checkDrawQuery(dstSize, stroke, bytes, false));
  return dax::DrawBuffer(dstSize, dax::lineEdges(dstSize, *stroke)).store(bytes);
}
