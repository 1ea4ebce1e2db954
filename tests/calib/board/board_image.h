// Pictures of chessboards with known corners: the dark squares are polygons in the image, and every pixel takes the
// share of it that they cover.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <vector>

#include "tests/support/test_image.h"

namespace dax::test {

struct PlanePoint {
  double x, y;
};

// How a board lies before the camera, and what the camera makes of it. Angles in degrees, lengths in pixels.
struct BoardView {
  int32_t columns = 9, rows = 6;  // inner corners
  DaxiSize size{640, 480};
  double rotation = 0;  // in the image
  double tilt = 0;      // away from the image plane
  double tiltAxis = 0;  // direction of the axis that it is tilted about
  double square = 0;    // about the side of a square; 0: as large as fits
  double shiftX = 0, shiftY = 0;
  double dark = 40, light = 200, background = 110;
  double gradient = 1;    // brightness at the right edge by that at the left one
  double blur = 0;        // sigma
  double noise = 0;       // sigma, grey levels
  double distortion = 0;  // radial: r becomes r (1 + distortion (r / half diagonal)^2)
  bool firstDark = true;  // the square at the first corner of the board
  bool mirrored = false;
  uint64_t seed = 1;
};

// The pinhole camera over the board; a unit is a square, the origin its centre.
class BoardCamera {
 public:
  explicit BoardCamera(const BoardView& view) : view_(view) {
    const double toRadians = std::acos(-1.0) / 180;
    const double a = view.rotation * toRadians, t = view.tilt * toRadians, p = view.tiltAxis * toRadians;
    // Rotation about the axis (cos p, sin p, 0) after one in the plane.
    const double ux = std::cos(p), uy = std::sin(p), c = std::cos(t), s = std::sin(t);
    const double ca = std::cos(a), sa = std::sin(a);
    const double m[3][2] = {
        {c + ux * ux * (1 - c), ux * uy * (1 - c)}, {ux * uy * (1 - c), c + uy * uy * (1 - c)}, {-uy * s, ux * s}};
    for (int i = 0; i < 3; ++i) {
      r_[i][0] = m[i][0] * ca + m[i][1] * sa;
      r_[i][1] = -m[i][0] * sa + m[i][1] * ca;
    }
    focal_ = 1.25 * view.size.width;
    double low = 0.5, high = 2000;
    for (int i = 0; i < 60; ++i) {
      const double middle = (low + high) / 2;
      distance_ = middle;
      (fits() ? high : low) = middle;
    }
    distance_ = high;
    if (view.square > 0) distance_ = std::max(distance_, focal_ / view.square);
  }

  // From board coordinates in squares, the first inner corner at (0, 0).
  PlanePoint operator()(double column, double row) const {
    double x = column - (view_.columns - 1) / 2.0;
    const double y = row - (view_.rows - 1) / 2.0;
    if (view_.mirrored) x = -x;
    const double X = r_[0][0] * x + r_[0][1] * y, Y = r_[1][0] * x + r_[1][1] * y;
    const double Z = r_[2][0] * x + r_[2][1] * y + distance_;
    const double u = focal_ * X / Z, v = focal_ * Y / Z;
    const double half2 = (std::pow(view_.size.width, 2) + std::pow(view_.size.height, 2)) / 4;
    const double k = 1 + view_.distortion * (u * u + v * v) / half2;
    return {u * k + (view_.size.width - 1) / 2.0 + view_.shiftX, v * k + (view_.size.height - 1) / 2.0 + view_.shiftY};
  }

 private:
  bool fits() const {
    const double c = view_.columns + 0.4, r = view_.rows + 0.4;
    for (const PlanePoint corner : {PlanePoint{-1.4, -1.4}, {c, -1.4}, {c, r}, {-1.4, r}}) {
      const double x = corner.x - (view_.columns - 1) / 2.0, y = corner.y - (view_.rows - 1) / 2.0;
      if (r_[2][0] * x + r_[2][1] * y + distance_ < 0.2 * distance_) return false;
      const PlanePoint p = (*this)(corner.x, corner.y);
      const double px = p.x - view_.shiftX, py = p.y - view_.shiftY;
      if (!(px >= 1 && px <= view_.size.width - 2 && py >= 1 && py <= view_.size.height - 2)) return false;
    }
    return true;
  }

  BoardView view_;
  double r_[3][2];
  double focal_, distance_ = 1;
};

// Shares of pixels covered by polygons.
class Coverage {
 public:
  explicit Coverage(DaxiSize size) : size_(size), share_(static_cast<size_t>(size.width * size.height)) {}

  void add(const std::vector<PlanePoint>& polygon) {
    const auto [top, bottom] = extent(polygon, &PlanePoint::y, size_.height);
    for (int32_t y = top; y <= bottom; ++y) {
      const std::vector<PlanePoint> strip = cut(cut(polygon, &PlanePoint::y, y - 0.5, 1), &PlanePoint::y, y + 0.5, -1);
      if (strip.size() < 3) continue;
      const auto [left, right] = extent(strip, &PlanePoint::x, size_.width);
      const auto [fullFrom, fullTo] = core(strip, y);
      for (int32_t x = left; x <= right; ++x) {
        const bool isFull = x - 0.5 >= fullFrom && x + 0.5 <= fullTo;
        share_[static_cast<size_t>(y * size_.width + x)] +=
            isFull ? 1 : area(cut(cut(strip, &PlanePoint::x, x - 0.5, 1), &PlanePoint::x, x + 0.5, -1));
      }
    }
  }

  double at(int32_t x, int32_t y) const { return std::min(share_[static_cast<size_t>(y * size_.width + x)], 1.0); }

 private:
  using Polygon = std::vector<PlanePoint>;

  static std::pair<int32_t, int32_t> extent(const Polygon& p, double PlanePoint::*axis, int32_t n) {
    double low = 1e9, high = -1e9;
    for (const PlanePoint& q : p) low = std::min(low, q.*axis), high = std::max(high, q.*axis);
    return {static_cast<int32_t>(std::clamp(std::floor(low + 0.5), 0.0, n - 0.0)),
            static_cast<int32_t>(std::clamp(std::floor(high + 0.5), -1.0, n - 1.0))};
  }

  // Between its sides a strip that is a trapezium from edge to edge of its row covers pixels as wholes: most of a board.
  static std::pair<double, double> core(const Polygon& strip, int32_t y) {
    double low[2] = {1e9, 1e9}, high[2] = {-1e9, -1e9};
    for (const PlanePoint& p : strip) {
      const bool isLower = p.y > y;
      if (strip.size() != 4 || std::fabs(std::fabs(p.y - y) - 0.5) > 1e-9) return {1, 0};
      low[isLower] = std::min(low[isLower], p.x), high[isLower] = std::max(high[isLower], p.x);
    }
    return {std::max(low[0], low[1]), std::min(high[0], high[1])};
  }

  // The part of a polygon on one side of a line across an axis.
  static Polygon cut(const Polygon& p, double PlanePoint::*axis, double limit, int side) {
    Polygon kept;
    kept.reserve(p.size() + 2);
    for (size_t i = 0; i < p.size(); ++i) {
      const PlanePoint a = p[i], b = p[(i + 1) % p.size()];
      const double da = side * (a.*axis - limit), db = side * (b.*axis - limit);
      if (da >= 0) kept.push_back(a);
      if ((da >= 0) != (db >= 0)) {
        const double f = da / (da - db);
        kept.push_back({a.x + f * (b.x - a.x), a.y + f * (b.y - a.y)});
      }
    }
    return kept;
  }

  static double area(const Polygon& p) {
    double sum = 0;
    for (size_t i = 0; i < p.size(); ++i) {
      const PlanePoint a = p[i], b = p[(i + 1) % p.size()];
      sum += a.x * b.y - a.y * b.x;
    }
    return std::fabs(sum) / 2;
  }

  DaxiSize size_;
  std::vector<double> share_;
};

// A picture and where its corners are, row by row.
class BoardImage {
 public:
  explicit BoardImage(const BoardView& view, int32_t padding = 0) : image(view.size, padding) {
    const BoardCamera camera(view);
    for (int32_t r = 0; r < view.rows; ++r) {
      for (int32_t c = 0; c < view.columns; ++c) corners.push_back(camera(c, r));
    }
    Coverage sheet(view.size), dark(view.size);
    sheet.add(outline(camera, -1.4, -1.4, view.columns + 0.4, view.rows + 0.4));
    for (int32_t r = -1; r < view.rows; ++r) {
      for (int32_t c = -1; c < view.columns; ++c) {
        if (((r + c) % 2 == 0) == view.firstDark) dark.add(outline(camera, c, r, c + 1, r + 1));
      }
    }
    std::vector<double> grey(static_cast<size_t>(view.size.width * view.size.height));
    for (int32_t y = 0; y < view.size.height; ++y) {
      for (int32_t x = 0; x < view.size.width; ++x) {
        const double light = view.background + sheet.at(x, y) * (view.light - view.background);
        const double level = light - dark.at(x, y) * (view.light - view.dark);
        const double f = static_cast<double>(x) / (view.size.width - 1);
        const double brightness = (1 + f * (view.gradient - 1)) / std::max(1.0, view.gradient);
        grey[static_cast<size_t>(y * view.size.width + x)] = level * brightness;
      }
    }
    if (view.blur > 0) blur(grey, view.size, view.blur);
    Random random(view.seed);
    image.fill([&](int32_t x, int32_t y) {
      const double noise = view.noise > 0 ? view.noise * gaussian(random) : 0;
      return std::clamp(std::floor(grey[static_cast<size_t>(y * view.size.width + x)] + noise + 0.5), 0.0, 255.0);
    });
  }

  TestImage<uint8_t> image;
  std::vector<PlanePoint> corners;

 private:
  // With points along the sides, which are not straight where there is distortion.
  static std::vector<PlanePoint> outline(const BoardCamera& camera, double x0, double y0, double x1, double y1) {
    const PlanePoint corner[5] = {{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}, {x0, y0}};
    std::vector<PlanePoint> polygon;
    for (int i = 0; i < 4; ++i) {
      for (const double f : {0.0, 0.25, 0.5, 0.75}) {
        polygon.push_back(camera(corner[i].x + f * (corner[i + 1].x - corner[i].x),
                                 corner[i].y + f * (corner[i + 1].y - corner[i].y)));
      }
    }
    return polygon;
  }

  static void blur(std::vector<double>& grey, DaxiSize size, double sigma) {
    const auto radius = static_cast<int32_t>(std::ceil(4 * sigma));
    std::vector<double> weights;
    double sum = 0;
    for (int32_t i = -radius; i <= radius; ++i) sum += weights.emplace_back(std::exp(-i * i / (2 * sigma * sigma)));
    for (const bool rows : {true, false}) {
      const std::vector<double> from = grey;
      for (int32_t y = 0; y < size.height; ++y) {
        for (int32_t x = 0; x < size.width; ++x) {
          double value = 0;
          for (int32_t i = -radius; i <= radius; ++i) {
            const int32_t u = rows ? std::clamp(x + i, 0, size.width - 1) : x;
            const int32_t v = rows ? y : std::clamp(y + i, 0, size.height - 1);
            value += weights[static_cast<size_t>(i + radius)] * from[static_cast<size_t>(v * size.width + u)];
          }
          grey[static_cast<size_t>(y * size.width + x)] = value / sum;
        }
      }
    }
  }

  // The sum of twelve even numbers less its mean.
  static double gaussian(Random& random) {
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += static_cast<double>(random.next() >> 11) / 9007199254740992.0;
    return sum;
  }
};

}  // namespace dax::test
