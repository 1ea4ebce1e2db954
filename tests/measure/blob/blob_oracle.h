// Blobs by definition: flood fill, and features pixel by pixel in double precision.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <utility>
#include <vector>

namespace dax::oracle {

struct Mask {
  int32_t width, height;
  std::vector<uint8_t> pixels;
  // 0 outside.
  uint8_t value(int32_t x, int32_t y) const {
    return x >= 0 && y >= 0 && x < width && y < height ? pixels[static_cast<size_t>(y) * width + x] : 0;
  }
  bool at(int32_t x, int32_t y) const { return value(x, y) != 0; }
};

// Labels in raster order of the first pixel; -1 is background.
struct Labels {
  std::vector<int32_t> of;
  int32_t count = 0;
};

// With classes, only pixels of one value are neighbours.
inline Labels floodFill(const Mask& mask, int32_t connectivity, bool classes = false) {
  Labels labels{std::vector<int32_t>(mask.pixels.size(), -1), 0};
  std::vector<std::pair<int32_t, int32_t>> stack;
  for (int32_t y = 0; y < mask.height; ++y) {
    for (int32_t x = 0; x < mask.width; ++x) {
      if (!mask.at(x, y) || labels.of[static_cast<size_t>(y) * mask.width + x] >= 0) continue;
      stack.push_back({x, y});
      while (!stack.empty()) {
        const auto [px, py] = stack.back();
        stack.pop_back();
        int32_t& label = labels.of[static_cast<size_t>(py) * mask.width + px];
        if (label >= 0) continue;
        label = labels.count;
        for (int32_t dy = -1; dy <= 1; ++dy) {
          for (int32_t dx = -1; dx <= 1; ++dx) {
            const bool neighbour = connectivity == 4 ? (dx == 0) != (dy == 0) : dx != 0 || dy != 0;
            if (!neighbour || !mask.at(px + dx, py + dy)) continue;
            if (!classes || mask.value(px + dx, py + dy) == mask.value(px, py)) stack.push_back({px + dx, py + dy});
          }
        }
      }
      ++labels.count;
    }
  }
  return labels;
}

using Points = std::vector<std::pair<double, double>>;

inline Points pixelsOf(const Mask& mask, const Labels& labels, int32_t label) {
  Points points;
  for (int32_t y = 0; y < mask.height; ++y) {
    for (int32_t x = 0; x < mask.width; ++x) {
      if (labels.of[static_cast<size_t>(y) * mask.width + x] == label) points.push_back({x, y});
    }
  }
  return points;
}

// Mean and second moments of weighted points.
struct Moments {
  double mass = 0, x = 0, y = 0, xx = 0, xy = 0, yy = 0;
};

template <class Weight>
Moments moments(const Points& points, Weight weight) {
  Moments m;
  for (const auto& [x, y] : points) m.mass += weight(x, y), m.x += x * weight(x, y), m.y += y * weight(x, y);
  m.x /= m.mass, m.y /= m.mass;
  for (const auto& [x, y] : points) {
    m.xx += (x - m.x) * (x - m.x), m.xy += (x - m.x) * (y - m.y), m.yy += (y - m.y) * (y - m.y);
  }
  return m;
}

inline double largestDistance2(const Points& points, double cx, double cy) {
  double largest = 0;
  for (const auto& [x, y] : points) largest = std::max(largest, (x - cx) * (x - cx) + (y - cy) * (y - cy));
  return largest;
}

// The least area of a rectangle around the points with a side through two of them.
inline double minBoxArea(const Points& points) {
  double min = INFINITY;
  for (const auto& [ax, ay] : points) {
    for (const auto& [bx, by] : points) {
      const double length = std::hypot(bx - ax, by - ay);
      if (length == 0) continue;
      const double ux = (bx - ax) / length, uy = (by - ay) / length;
      double uMin = 0, uMax = 0, vMin = 0, vMax = 0;
      for (const auto& [x, y] : points) {
        const double u = (x - ax) * ux + (y - ay) * uy, v = (y - ay) * ux - (x - ax) * uy;
        uMin = std::min(uMin, u), uMax = std::max(uMax, u), vMin = std::min(vMin, v), vMax = std::max(vMax, v);
      }
      if (vMin > -1e-9 || vMax < 1e-9) min = std::min(min, (uMax - uMin) * (vMax - vMin));
    }
  }
  return points.size() == 1 ? 0 : min;
}

}  // namespace dax::oracle
