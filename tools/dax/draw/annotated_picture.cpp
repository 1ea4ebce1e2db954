#include "draw/annotated_picture.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "base/failure.h"
#include "base/library_call.h"
#include "daxi/draw.h"
#include "daxi/resize.h"
#include "io/image_file.h"

namespace dax::tool {
namespace {

constexpr int kMaxOverlaySide = 32767;
constexpr int kLegibleSide = 960;  // small images are enlarged towards it
constexpr double kTextHeight = 9;  // of capitals, output pixels, as all lengths of labels
constexpr double kTextThickness = 1.5;
constexpr double kLabelHeight = 17;
constexpr double kLabelMargin = 6;
constexpr Ink kHalo{0, 0, 0, 0.55};
constexpr Ink kLabelColour{0.06, 0.08, 0.11, 0.80};
constexpr Ink kTextColour{1, 1, 1, 1};

double usableScale(DaxiSize size, double scale) {
  const double side = std::max(size.width, size.height);
  if (scale == 0) scale = std::clamp(std::round(kLegibleSide / side), 1.0, 8.0);
  if (side <= kMaxOverlaySide && side * scale <= kMaxOverlaySide) return scale;
  throw Failure(ExitStatus::kRefused,
                "overlay: the picture would be wider or higher than " + std::to_string(kMaxOverlaySide));
}

GreyImage resized(const GreyImage& image, double scale) {
  const auto side = [scale](int32_t length) { return std::max(1, static_cast<int32_t>(std::rint(length * scale))); };
  const DaxiSize size = {side(image.size.width), side(image.size.height)};
  const DaxiRect all = {0, 0, size.width, size.height};
  GreyImage result = makeGreyImage(size);
  DaxiResizeCfg cfg;
  DAXI_ResizeDefaultCfg(&cfg);
  cfg.factorX = cfg.factorY = scale;
  uint64_t bytes = 0;
  check(DAXI_ResizeBufferSize_8u_C1R(image.size, size, all, &cfg, &bytes), "overlay");
  const Memory buffer(bytes);
  check(DAXI_Resize_8u_C1R(image.pixels.data(), image.step(), image.size, result.pixels.data(), result.step(), size,
                           all, &cfg, buffer.get()),
        "overlay");
  return result;
}

ColourImage coloured(const GreyImage& image) {
  ColourImage result = makeColourImage(image.size, {0, 0, 0});
  std::transform(image.pixels.begin(), image.pixels.end(), result.pixels.begin(), [](uint8_t v) {
    return Colour{v, v, v};
  });
  return result;
}

DaxiStroke strokeOf(const Ink& ink, double width) {
  DaxiStroke stroke;
  DAXI_StrokeDefault(&stroke);
  stroke.width = width, stroke.alpha = ink.alpha;
  const double components[] = {ink.red, ink.green, ink.blue};
  std::transform(components, components + 3, stroke.color,
                 [](double c) { return static_cast<int32_t>(255 * c + 0.5); });
  return stroke;
}

DaxiTextCfg labelText() {
  DaxiTextCfg cfg;
  DAXI_TextDefaultCfg(&cfg);
  cfg.height = kTextHeight;
  return cfg;
}

}  // namespace

AnnotatedPicture::AnnotatedPicture(const GreyImage& image, double scale)
    : scale_(usableScale(image.size, scale)), picture_(coloured(scale_ == 1 ? image : resized(image, scale_))) {}

void AnnotatedPicture::line(std::span<const Point> points, bool closed, const Ink& colour, double width) {
  std::vector<DaxiPoint64f> path;
  for (const Point& point : points) path.push_back({out(point.x) - 0.5, out(point.y) - 0.5});
  polyline(path, closed, strokeOf(kHalo, width + 1.6));
  polyline(path, closed, strokeOf(colour, width));
}

void AnnotatedPicture::label(const Rect& around, const std::string& text) {
  const DaxiTextCfg cfg = labelText();
  const DaxiStroke stroke = strokeOf(kTextColour, kTextThickness);
  DaxiTextBox box;
  check(DAXI_TextSize(text.data(), static_cast<int32_t>(text.size()), &cfg, &stroke, &box), "label");
  const double width = std::max(kLabelHeight, box.advance + 2 * kLabelMargin), height = kLabelHeight;
  const Rect rect = onPicture(around);
  const double left = rect.x + (rect.width - width) / 2;
  const double top = rect.y + (rect.height - height) / 2;
  const std::array candidates = {Rect{left, rect.y - height - 2, width, height},
                                 Rect{left, rect.y + rect.height + 2, width, height},
                                 Rect{rect.x + rect.width + 2, top, width, height},
                                 Rect{rect.x - width - 2, top, width, height}, Rect{left, top, width, height}};
  const auto* free = std::find_if(candidates.begin(), candidates.end(), [&](const Rect& r) { return isFree(r); });
  if (free == candidates.end()) return;
  placed_.push_back(*free);
  drawLabel(*free, text);
}

std::string AnnotatedPicture::png() const {
  DaxiImageRecord record = {};
  record.width = picture_.size.width, record.height = picture_.size.height, record.channels = 3;
  record.type = DAXI_SAMPLE_8U;
  DaxiImageWriteCfg cfg;
  DAXI_ImageWriteDefaultCfg(&cfg);
  cfg.format = DAXI_IMAGE_PNG;
  return encode(record, picture_.pixels.data(), cfg);
}

bool AnnotatedPicture::isFree(const Rect& rect) const {
  const bool inside = rect.x >= 0 && rect.y >= 0 && rect.x + rect.width <= picture_.size.width &&
                      rect.y + rect.height <= picture_.size.height;
  return inside && std::none_of(placed_.begin(), placed_.end(), [&](const Rect& r) { return r.overlaps(rect); });
}

void AnnotatedPicture::polyline(std::span<const DaxiPoint64f> points, bool closed, const DaxiStroke& stroke) {
  if (points.empty()) return;
  const auto count = static_cast<int32_t>(points.size());
  uint64_t bytes = 0;
  check(DAXI_DrawPolylineBufferSize(picture_.size, count, &stroke, &bytes), "overlay");
  const Memory buffer(bytes);
  check(DAXI_DrawPolyline_8u_C3R(pixels(), 3 * picture_.size.width, picture_.size, points.data(), count, closed ? 1 : 0,
                                 &stroke, buffer.get()),
        "overlay");
}

// A pill with the text in its middle.
void AnnotatedPicture::drawLabel(const Rect& r, const std::string& text) {
  const double radius = r.height / 2, middle = r.y + radius - 0.5;
  DaxiStroke pill = strokeOf(kLabelColour, r.height);
  pill.cap = DAXI_CAP_ROUND;
  const std::array ends = {DaxiPoint64f{r.x + radius - 0.5, middle},
                           DaxiPoint64f{r.x + r.width - radius - 0.5, middle}};
  polyline(ends, false, pill);
  DaxiTextCfg cfg = labelText();
  cfg.alignX = DAXI_TEXT_CENTRE;
  const DaxiStroke stroke = strokeOf(kTextColour, kTextThickness);
  const auto count = static_cast<int32_t>(text.size());
  uint64_t bytes = 0;
  check(DAXI_DrawTextBufferSize(picture_.size, text.data(), count, &cfg, &stroke, &bytes), "label");
  const Memory buffer(bytes);
  // The baseline on a whole row.
  const double baseline = std::floor(middle + kTextHeight / 2 + 0.5);
  check(DAXI_DrawText_8u_C3R(pixels(), 3 * picture_.size.width, picture_.size, text.data(), count,
                             r.x + r.width / 2 - 0.5, baseline, &cfg, &stroke, buffer.get()),
        "label");
}

}  // namespace dax::tool
