#include "draw/range_picture.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "base/failure.h"
#include "base/text.h"
#include "draw/drawing.h"

namespace dax::tool {
namespace {

constexpr Colour kInvalid = {24, 26, 30};
constexpr int kScaleHeight = 34;
constexpr int kScaleMargin = 8;
constexpr int kMinScaleWidth = 120;
constexpr double kScaleFontSize = 12;

ColourImage colours(const RangeImage& image, float low, float high) {
  ColourImage picture = makeColourImage(image.size(), kInvalid);
  const double span = high > low ? double{high} - low : 1;
  for (size_t i = 0; i < picture.pixels.size(); ++i) {
    if (image.valid(i)) picture.pixels[i] = heightColour((double{image.height(i)} - low) / span);
  }
  return picture;
}

void drawText(cairo_t* c, double right, double top, const std::string& text, bool rightAligned) {
  cairo_text_extents_t extents;
  cairo_text_extents(c, text.c_str(), &extents);
  cairo_move_to(c, rightAligned ? right - extents.x_advance : right, top);
  cairo_show_text(c, text.c_str());
}

void drawScale(const Surface& surface, int width, int top, float low, float high) {
  const Context context(cairo_create(surface.get()));
  cairo_t* const c = context.get();
  for (int x = kScaleMargin; x < width - kScaleMargin; ++x) {
    const Colour colour = heightColour(double(x - kScaleMargin) / (width - 2 * kScaleMargin - 1));
    cairo_set_source_rgb(c, colour.red / 255.0, colour.green / 255.0, colour.blue / 255.0);
    cairo_rectangle(c, x, top + 4, 1, 10);
    cairo_fill(c);
  }
  cairo_set_source_rgb(c, 0.92, 0.93, 0.95);
  cairo_select_font_face(c, "sans-serif", CAIRO_FONT_SLANT_NORMAL, CAIRO_FONT_WEIGHT_NORMAL);
  cairo_set_font_size(c, kScaleFontSize);
  drawText(c, kScaleMargin, top + kScaleHeight - 6, shortest(low), false);
  drawText(c, width - kScaleMargin, top + kScaleHeight - 6, shortest(high), true);
  require(cairo_status(c));
}

}  // namespace

std::pair<float, float> usualHeights(const RangeImage& image) {
  std::vector<float> heights;
  for (size_t i = 0; i < image.values().size(); ++i) {
    if (image.valid(i)) heights.push_back(image.height(i));
  }
  if (heights.empty()) return {0.0F, 1.0F};
  const auto quantile = [&](double share) {
    const auto place = heights.begin() + std::lround(share * static_cast<double>(heights.size() - 1));
    std::nth_element(heights.begin(), place, heights.end());
    return *place;
  };
  const float low = quantile(0.01);
  return {low, quantile(0.99)};
}

std::string drawHeights(const RangeImage& image, float low, float high) {
  const DaxiSize size = image.size();
  const int scale = size.width >= kMinScaleWidth ? kScaleHeight : 0;
  if (std::max(size.width, size.height + scale) > kMaxDrawingSide) {
    throw Failure(ExitStatus::kRefused, "the picture would be higher than " + std::to_string(kMaxDrawingSide));
  }
  const Surface surface = makeSurface(size.width, size.height + scale);
  paint(colours(image, low, high), surface);
  if (scale > 0) drawScale(surface, size.width, size.height, low, high);
  return toPng(surface);
}

}  // namespace dax::tool
