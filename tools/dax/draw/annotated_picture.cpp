#include "draw/annotated_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

#include "base/failure.h"

namespace dax::tool {
namespace {

constexpr int kLegibleSide = 960;  // small images are enlarged towards it
constexpr double kFontSize = 13;   // output pixels, as all lengths of labels
constexpr double kLabelMargin = 4;
constexpr Ink kHalo{0, 0, 0, 0.55};
constexpr Ink kLabelColour{0.06, 0.08, 0.11, 0.80};
constexpr Ink kTextColour{1, 1, 1, 1};

double usableScale(DaxiSize size, double scale) {
  const double side = std::max(size.width, size.height);
  if (scale == 0) scale = std::clamp(std::round(kLegibleSide / side), 1.0, 8.0);
  if (side <= kMaxDrawingSide && side * scale <= kMaxDrawingSide) return scale;
  throw Failure(ExitStatus::kRefused,
                "overlay: the picture would be wider or higher than " + std::to_string(kMaxDrawingSide));
}

}  // namespace

AnnotatedPicture::AnnotatedPicture(const GreyImage& image, double scale)
    : scale_(usableScale(image.size, scale)),
      width_(scaled(image.size.width)),
      height_(scaled(image.size.height)),
      surface_(makeSurface(width_, height_)),
      context_(cairo_create(surface_.get())) {
  cairo_t* c = context_.get();
  const Surface picture = toSurface(image);
  cairo_scale(c, scale_, scale_);
  cairo_set_source_surface(c, picture.get(), 0, 0);
  cairo_pattern_set_filter(cairo_get_source(c), scale_ < 1 ? CAIRO_FILTER_GOOD : CAIRO_FILTER_BILINEAR);
  cairo_pattern_set_extend(cairo_get_source(c), CAIRO_EXTEND_PAD);
  cairo_paint(c);
  cairo_identity_matrix(c);
  cairo_set_line_join(c, CAIRO_LINE_JOIN_ROUND);
  cairo_select_font_face(c, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_BOLD);
  cairo_set_font_size(c, kFontSize);
}

void AnnotatedPicture::line(std::span<const Point> points, bool closed, const Ink& colour, double width) {
  cairo_t* c = context_.get();
  cairo_new_path(c);
  for (const Point& point : points) cairo_line_to(c, out(point.x), out(point.y));
  if (closed) cairo_close_path(c);
  setInk(c, kHalo);
  cairo_set_line_width(c, width + 1.6);
  cairo_stroke_preserve(c);
  setInk(c, colour);
  cairo_set_line_width(c, width);
  cairo_stroke(c);
}

void AnnotatedPicture::label(const Rect& around, const std::string& text) {
  cairo_text_extents_t extents;
  cairo_text_extents(context_.get(), text.c_str(), &extents);
  const double width = extents.x_advance + 2 * kLabelMargin;
  const double height = kFontSize + kLabelMargin;
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

int AnnotatedPicture::scaled(int side) const {
  return std::max(1, static_cast<int>(std::lround(side * scale_)));
}

bool AnnotatedPicture::isFree(const Rect& rect) const {
  const bool inside = rect.x >= 0 && rect.y >= 0 && rect.x + rect.width <= width_ && rect.y + rect.height <= height_;
  return inside && std::none_of(placed_.begin(), placed_.end(), [&](const Rect& r) { return r.overlaps(rect); });
}

void AnnotatedPicture::drawLabel(const Rect& r, const std::string& text) {
  cairo_t* c = context_.get();
  const double radius = 3.5;
  const double quarter = std::numbers::pi / 2;
  cairo_new_sub_path(c);
  cairo_arc(c, r.x + r.width - radius, r.y + radius, radius, -quarter, 0);
  cairo_arc(c, r.x + r.width - radius, r.y + r.height - radius, radius, 0, quarter);
  cairo_arc(c, r.x + radius, r.y + r.height - radius, radius, quarter, 2 * quarter);
  cairo_arc(c, r.x + radius, r.y + radius, radius, 2 * quarter, 3 * quarter);
  cairo_close_path(c);
  setInk(c, kLabelColour);
  cairo_fill(c);
  setInk(c, kTextColour);
  cairo_move_to(c, r.x + kLabelMargin, r.y + r.height - kLabelMargin - 0.5);
  cairo_show_text(c, text.c_str());
}

}  // namespace dax::tool
