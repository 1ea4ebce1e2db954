#include "draw/cloud_picture.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

#include "draw/drawing.h"

namespace dax::tool {
namespace {

using Vector = std::array<double, 3>;

constexpr Colour kBackground = {24, 26, 30};
constexpr Colour kSurface = {222, 214, 200};
constexpr Vector kLamp = {-0.48, 0.62, 0.62};  // right, up, towards the eye
constexpr double kAmbient = 0.16;
constexpr double kMargin = 20;
constexpr double kMaxRadius = 8;

double dot(const Vector& a, const Vector& b) {
  return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

// The directions right, up and towards the eye.
struct Eye {
  explicit Eye(const View& view) {
    const double a = view.azimuth * std::numbers::pi / 180, e = view.elevation * std::numbers::pi / 180;
    const Vector r = {-std::sin(a), std::cos(a), 0};
    const Vector u = {-std::sin(e) * std::cos(a), -std::sin(e) * std::sin(a), std::cos(e)};
    const Vector t = {std::cos(e) * std::cos(a), std::cos(e) * std::sin(a), std::sin(e)};
    // The third of these axes is the one called `up`.
    for (int i = 0; i < 3; ++i) {
      const int axis = (i + view.up + 1) % 3;
      right[axis] = r[i];
      up[axis] = u[i];
      towards[axis] = t[i];
    }
  }

  Vector see(const float* v) const {
    const Vector p = {v[0], v[1], v[2]};
    return {dot(right, p), dot(up, p), dot(towards, p)};
  }

  Vector right, up, towards;
};

// Maps eye coordinates to pixels.
struct ViewFrame {
  ViewFrame(const std::vector<Vector>& points, DaxiSize size) {
    Vector low = points.front(), high = points.front();
    for (const Vector& p : points) {
      for (int i = 0; i < 3; ++i) {
        low[i] = std::min(low[i], p[i]);
        high[i] = std::max(high[i], p[i]);
      }
    }
    const double width = high[0] - low[0], height = high[1] - low[1];
    const double tiny = std::numeric_limits<double>::min();
    scale = std::min((size.width - 2 * kMargin) / std::max(width, tiny),
                     (size.height - 2 * kMargin) / std::max(height, tiny));
    if (!(scale < 1e300)) scale = 1;  // all points coincide
    x = (size.width - scale * (low[0] + high[0])) / 2;
    y = (size.height + scale * (low[1] + high[1])) / 2;
    // Discs of this size cover the picture twice if spread evenly, because about half of the points may be hidden.
    const double area = scale * width * scale * height;
    radius = std::clamp(std::sqrt(area / static_cast<double>(points.size())), 0.7, kMaxRadius);
  }

  double scale, x, y, radius;
};

Colour lit(const Vector& normal) {
  const double towards = normal[2] < 0 ? -1 : 1;  // both sides are lit
  const double light = kAmbient + (1 - kAmbient) * std::max(0.0, towards * dot(normal, kLamp));
  const auto shade = [&](uint8_t c) { return static_cast<uint8_t>(std::clamp(std::lround(c * light), 0L, 255L)); };
  return {shade(kSurface.red), shade(kSurface.green), shade(kSurface.blue)};
}

class Painter {
 public:
  explicit Painter(DaxiSize size)
      : picture_(makeColourImage(size, kBackground)),
        depth_(picture_.pixels.size(), -std::numeric_limits<double>::infinity()) {}

  void disc(double x, double y, double depth, double radius, Colour colour) {
    const auto first = [](double v, int side) { return static_cast<int>(std::clamp(std::ceil(v), 0.0, double(side))); };
    const auto last = [](double v, int side) { return static_cast<int>(std::clamp(std::floor(v), -1.0, side - 1.0)); };
    for (int py = first(y - radius, picture_.size.height); py <= last(y + radius, picture_.size.height); ++py) {
      for (int px = first(x - radius, picture_.size.width); px <= last(x + radius, picture_.size.width); ++px) {
        const size_t pixel = static_cast<size_t>(py) * picture_.size.width + px;
        if ((px - x) * (px - x) + (py - y) * (py - y) > radius * radius || depth <= depth_[pixel]) continue;
        depth_[pixel] = depth;
        picture_.pixels[pixel] = colour;
      }
    }
  }

  const ColourImage& picture() const { return picture_; }

 private:
  ColourImage picture_;
  std::vector<double> depth_;
};

}  // namespace

std::string drawCloud(const Cloud& cloud, const View& view) {
  const Eye eye(view);
  std::vector<Vector> seen(cloud.size());
  for (size_t i = 0; i < seen.size(); ++i) seen[i] = eye.see(cloud.points.data() + 3 * i);
  const ViewFrame frame(seen, view.size);
  Painter painter(view.size);
  for (size_t i = 0; i < seen.size(); ++i) {
    painter.disc(frame.x + frame.scale * seen[i][0], frame.y - frame.scale * seen[i][1], seen[i][2], frame.radius,
                 lit(eye.see(cloud.normals.data() + 4 * i)));
  }
  const Surface surface = makeSurface(view.size.width, view.size.height);
  paint(painter.picture(), surface);
  return toPng(surface);
}

}  // namespace dax::tool
