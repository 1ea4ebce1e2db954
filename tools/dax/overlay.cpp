#include "overlay.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <vector>

#include "drawing.h"
#include "failure.h"
#include "text.h"

namespace dax::tool {
namespace {

constexpr int kLegibleSide = 960;  // small images are enlarged towards it
constexpr double kFontSize = 13;   // output pixels, as all lengths of labels
constexpr double kLabelMargin = 4;

struct Ink {
  double red, green, blue, alpha;
};
constexpr Ink kHalo{0, 0, 0, 0.55};
constexpr Ink kContourColour{0.16, 0.90, 0.62, 1};
constexpr Ink kBoxColour{1.0, 0.72, 0.20, 0.95};
constexpr Ink kLabelColour{0.06, 0.08, 0.11, 0.80};
constexpr Ink kTextColour{1, 1, 1, 1};

Surface toSurface(const GreyImage& image) {
  Surface surface = makeSurface(image.size.width, image.size.height);
  unsigned char* pixels = cairo_image_surface_get_data(surface.get());
  const int stride = cairo_image_surface_get_stride(surface.get());
  for (int y = 0; y < image.size.height; ++y) {
    auto* row = reinterpret_cast<uint32_t*>(pixels + static_cast<ptrdiff_t>(y) * stride);
    const uint8_t* source = image.row(y);
    for (int x = 0; x < image.size.width; ++x) row[x] = source[x] * 0x010101U;
  }
  cairo_surface_mark_dirty(surface.get());
  return surface;
}

struct Rect {
  double x, y, width, height;

  bool overlaps(const Rect& other) const {
    return x < other.x + other.width && other.x < x + width && y < other.y + other.height && other.y < y + height;
  }
};

class Drawing {
 public:
  Drawing(const GreyImage& image, double scale)
      : scale_(scale),
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

  void contour(const Contour& contour) {
    for (const Point& point : contour) cairo_line_to(context_.get(), out(point.x), out(point.y));
    cairo_close_path(context_.get());
    stroke(kContourColour, 1.6);
  }

  void box(const BlobInfo& blob) {
    for (const auto& [u, v] : {std::pair{-1, -1}, {1, -1}, {1, 1}, {-1, 1}}) {
      // Half a pixel more each way: the box holds pixel centres, the picture shows whole pixels.
      const double du = u * (blob.boxWidth + 1) / 2;
      const double dv = v * (blob.boxHeight + 1) / 2;
      const double c = std::cos(blob.boxAngle);
      const double s = std::sin(blob.boxAngle);
      cairo_line_to(context_.get(), out(blob.boxX + du * c - dv * s), out(blob.boxY + du * s + dv * c));
    }
    cairo_close_path(context_.get());
    stroke(kBoxColour, 1);
  }

  // Puts the label above, below or beside the blob, or on it; where there is no room, it is left out.
  void label(const BlobInfo& blob, const std::string& text) {
    cairo_text_extents_t extents;
    cairo_text_extents(context_.get(), text.c_str(), &extents);
    const double width = extents.x_advance + 2 * kLabelMargin;
    const double height = kFontSize + kLabelMargin;
    const Rect blobRect{out(blob.rectX - 0.5), out(blob.rectY - 0.5), blob.rectWidth * scale_,
                        blob.rectHeight * scale_};
    const double left = blobRect.x + (blobRect.width - width) / 2;
    const double top = blobRect.y + (blobRect.height - height) / 2;
    const std::array candidates = {Rect{left, blobRect.y - height - 2, width, height},
                                   Rect{left, blobRect.y + blobRect.height + 2, width, height},
                                   Rect{blobRect.x + blobRect.width + 2, top, width, height},
                                   Rect{blobRect.x - width - 2, top, width, height}, Rect{left, top, width, height}};
    const auto* free = std::find_if(candidates.begin(), candidates.end(), [&](const Rect& r) { return isFree(r); });
    if (free == candidates.end()) return;
    placed_.push_back(*free);
    drawLabel(*free, text);
  }

  std::string png() {
    require(cairo_status(context_.get()));
    return toPng(surface_);
  }

 private:
  int scaled(int side) const { return std::max(1, static_cast<int>(std::lround(side * scale_))); }

  // Pixel centres of the image are integers, of the output half integers.
  double out(double coordinate) const { return (coordinate + 0.5) * scale_; }

  void stroke(const Ink& colour, double width) {
    cairo_t* c = context_.get();
    set(kHalo);
    cairo_set_line_width(c, width + 1.6);
    cairo_stroke_preserve(c);
    set(colour);
    cairo_set_line_width(c, width);
    cairo_stroke(c);
  }

  void set(const Ink& c) { cairo_set_source_rgba(context_.get(), c.red, c.green, c.blue, c.alpha); }

  bool isFree(const Rect& rect) const {
    const bool inside = rect.x >= 0 && rect.y >= 0 && rect.x + rect.width <= width_ && rect.y + rect.height <= height_;
    return inside && std::none_of(placed_.begin(), placed_.end(), [&](const Rect& r) { return r.overlaps(rect); });
  }

  void drawLabel(const Rect& r, const std::string& text) {
    cairo_t* c = context_.get();
    const double radius = 3.5;
    const double quarter = std::numbers::pi / 2;
    cairo_new_sub_path(c);
    cairo_arc(c, r.x + r.width - radius, r.y + radius, radius, -quarter, 0);
    cairo_arc(c, r.x + r.width - radius, r.y + r.height - radius, radius, 0, quarter);
    cairo_arc(c, r.x + radius, r.y + r.height - radius, radius, quarter, 2 * quarter);
    cairo_arc(c, r.x + radius, r.y + radius, radius, 2 * quarter, 3 * quarter);
    cairo_close_path(c);
    set(kLabelColour);
    cairo_fill(c);
    set(kTextColour);
    cairo_move_to(c, r.x + kLabelMargin, r.y + r.height - kLabelMargin - 0.5);
    cairo_show_text(c, text.c_str());
  }

  double scale_;
  int width_;
  int height_;
  Surface surface_;
  Context context_;
  std::vector<Rect> placed_;
};

double legibleScale(DaxiSize size) {
  const int side = std::max(size.width, size.height);
  return std::clamp(std::round(static_cast<double>(kLegibleSide) / side), 1.0, 8.0);
}

}  // namespace

std::string drawOverlay(const GreyImage& image, const Inspection& inspection, double scale) {
  if (scale == 0) scale = legibleScale(image.size);
  const double side = std::max(image.size.width, image.size.height);
  if (side > kMostDrawingSide || side * scale > kMostDrawingSide) {
    throw Failure(ExitStatus::kRefused,
                  "overlay: the picture would be wider or higher than " + std::to_string(kMostDrawingSide));
  }
  Drawing drawing(image, scale);
  for (const BlobInfo& blob : inspection.blobs) drawing.box(blob);
  for (const Contour& contour : inspection.contours) drawing.contour(contour);
  for (size_t i = 0; i < inspection.blobs.size(); ++i) {
    const BlobInfo& blob = inspection.blobs[i];
    const std::string number = std::to_string(i + 1);
    drawing.label(blob, inspection.scored ? number + "  " + fixed(blob.score, 2) : number);
  }
  return drawing.png();
}

}  // namespace dax::tool
