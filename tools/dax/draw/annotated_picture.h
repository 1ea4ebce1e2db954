// An image with outlines and labels drawn over it.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "daxi/draw_text.h"
#include "draw/ink.h"
#include "io/colour_image.h"
#include "io/grey_image.h"
#include "scene/contour.h"

namespace dax::tool {

struct Rect {
  double x, y, width, height;

  bool overlaps(const Rect& other) const {
    return x < other.x + other.width && other.x < x + width && y < other.y + other.height && other.y < y + height;
  }
};

class AnnotatedPicture {
 public:
  // `scale` 0 enlarges small images to a legible size. Throws Failure(kRefused) if the picture would be too large.
  AnnotatedPicture(const GreyImage& image, double scale);

  // Lines through points of the image (pixel centres at integers); `width` in output pixels.
  void line(std::span<const Point> points, bool closed, const Ink& colour, double width);

  // Keeps labels away from a rectangle of the image.
  void keepFree(const Rect& rect) { placed_.push_back(onPicture(rect)); }

  // A label above, below, beside or on a rectangle of the image; omitted if there is no room.
  void label(const Rect& around, const std::string& text);

  std::string png() const;

 private:
  double out(double coordinate) const { return (coordinate + 0.5) * scale_; }
  Rect onPicture(const Rect& r) const { return {out(r.x), out(r.y), r.width * scale_, r.height * scale_}; }
  bool isFree(const Rect& rect) const;
  void polyline(std::span<const DaxiPoint64f> points, bool closed, const DaxiStroke& stroke);
  void drawLabel(const Rect& rect, const std::string& text);
  uint8_t* pixels() { return &picture_.pixels.data()->red; }

  double scale_;
  ColourImage picture_;
  std::vector<Rect> placed_;
};

}  // namespace dax::tool
