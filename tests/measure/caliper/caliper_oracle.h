// Calipers by their definition: samples at real positions from the C library's sine and cosine, means, the filter's sum
// with repeated ends, extrema and ramps as the contract words them.
#pragma once

#include <algorithm>
#include <cmath>
#include <functional>
#include <vector>

#include "daxi/caliper.h"

namespace dax::oracle {

struct Position {
  double x, y;
};

struct CaliperLayout {
  int columns, rows;
  bool alongColumns;
  // From distances along columns and rows from the centre, in pixels.
  std::function<Position(double, double)> at;

  int length() const { return alongColumns ? columns : rows; }
  Position position(int i, int across) const {
    const int n = length(), m = alongColumns ? rows : columns;
    const double along = i - n / 2.0, side = across - (m - 1) / 2.0;
    return alongColumns ? at(along, side) : at(side, along);
  }
};

inline int evenCount(double side, bool mayBeOne) {
  const int count = static_cast<int>(std::floor(side + 0.5));
  return mayBeOne && count < 2 ? count : (count + 1) / 2 * 2;
}

inline CaliperLayout layoutOf(const CaliperRhomboid& r, bool alongColumns) {
  return {evenCount(r.width, false), evenCount(r.height, true), alongColumns, [r](double u, double v) {
            return Position{r.x + u * std::cos(r.angle) + v * std::cos(r.sideAngle),
                            r.y + u * std::sin(r.angle) + v * std::sin(r.sideAngle)};
          }};
}

inline CaliperLayout layoutOf(const CaliperBox& b, bool alongColumns) {
  return {evenCount(b.width, false), evenCount(b.height, true), alongColumns, [b](double u, double v) {
            const double c = std::cos(b.angle), s = std::sin(b.angle);
            return Position{b.x + u * c - v * s, b.y + u * s + v * c};
          }};
}

inline CaliperLayout layoutOf(const CaliperAnnulus& a, bool alongColumns) {
  const double radius = (a.innerRadius + a.outerRadius) / 2.0, middle = a.startAngle + a.sweep / 2.0;
  return {evenCount(a.outerRadius - a.innerRadius, false), evenCount(radius * a.sweep, true), alongColumns,
          [=](double u, double v) {
            const double angle = middle + v / radius;
            return Position{a.x + (radius + u) * std::cos(angle), a.y + (radius + u) * std::sin(angle)};
          }};
}

// Calls visit(x, y, weight) for the pixels of a bilinear sample that have weight.
template <class Visit>
void forEachPixel(Position p, DaxiSize size, Visit visit) {
  const double x = std::clamp(p.x, 0.0, size.width - 1.0), y = std::clamp(p.y, 0.0, size.height - 1.0);
  const int x0 = static_cast<int>(x), y0 = static_cast<int>(y);
  for (int i = 0; i < 4; ++i) {
    const double wx = i % 2 ? x - x0 : 1 - (x - x0), wy = i / 2 ? y - y0 : 1 - (y - y0);
    if (wx * wy > 0) visit(x0 + i % 2, y0 + i / 2, wx * wy);
  }
}

template <class Image>
std::vector<double> profileOf(const Image& image, const CaliperLayout& layout) {
  const int m = layout.alongColumns ? layout.rows : layout.columns;
  std::vector<double> profile;
  for (int i = 0; i < layout.length(); ++i) {
    double sum = 0;
    for (int k = 0; k < m; ++k) {
      forEachPixel(layout.position(i, k), image.size(),
                   [&](int x, int y, double weight) { sum += weight * image.at(x, y); });
    }
    profile.push_back(sum / m);
  }
  return profile;
}

inline std::vector<double> respond(const std::vector<float>& profile, const std::vector<double>& kernel) {
  const int n = static_cast<int>(profile.size()), length = static_cast<int>(kernel.size());
  std::vector<double> response;
  for (int i = 0; i < n; ++i) {
    double sum = 0;
    for (int k = 0; k < length; ++k) {
      sum += kernel[static_cast<size_t>(k)] * profile[static_cast<size_t>(std::clamp(i - length / 2 + k, 0, n - 1))];
    }
    response.push_back(sum);
  }
  return response;
}

inline int kernelLength(int halfWidth, int n) {
  int length = 2 * halfWidth + 1;
  while (length > n && length > 3) length -= 2;
  return length;
}

// Central differences of a Gaussian, halved; one-sided at the ends.
inline std::vector<double> gaussianKernel(int length) {
  std::vector<double> g, kernel;
  double sum = 0;
  for (int i = 0; i < length; ++i) {
    g.push_back(std::exp(-0.5 * std::pow((i - length / 2) / ((length - 1) * 0.16667), 2)));
    sum += g.back();
  }
  for (int i = 0; i < length; ++i) {
    const auto right = static_cast<size_t>(std::min(i + 1, length - 1)), left = static_cast<size_t>(std::max(i - 1, 0));
    kernel.push_back((g[right] - g[left]) / sum / 2);
  }
  return kernel;
}

// A ramp between corners (x, y), and 0 on its open side.
inline double factor(const CaliperCriterion& c, float value) {
  const float v = value + 1.1920929e-7f;
  const bool rising = c.mode == 0;
  if (rising ? v < c.x0 : v >= c.x2) return 0;
  const float a = rising ? c.x1 : c.x0, b = rising ? c.x2 : c.x1;
  const double from = rising ? c.y0 : c.y1, to = rising ? c.y1 : c.y0;
  if (v < a) return from;
  if (v >= b) return to;
  return from + (to - from) * (value - a) / (b - a + 1.1920929e-7);
}

}  // namespace dax::oracle
