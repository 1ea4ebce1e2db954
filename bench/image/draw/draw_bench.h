// What is drawn: lines, circles and polygons all over an image of 1080p, the same for all.
#pragma once

#include <cmath>
#include <vector>

#include "bench/support/image.h"
#include "daxi/point.h"

namespace bench {

constexpr size_t kShapes = 1000;

// Points in the image, in pairs.
inline std::vector<DaxiPoint64f> drawnPoints() {
  std::vector<DaxiPoint64f> points(2 * kShapes);
  uint32_t state = 1;
  const auto next = [&](int32_t side) {
    state = state * 1664525 + 1013904223;
    return static_cast<double>(state >> 8) / (1 << 24) * side;
  };
  for (DaxiPoint64f& p : points) {
    p.x = next(kSize.width);
    p.y = next(kSize.height);
  }
  return points;
}

// A star of so many corners.
inline std::vector<DaxiPoint64f> drawnStar(int corners, double scale) {
  std::vector<DaxiPoint64f> star;
  for (int i = 0; i < 2 * corners; ++i) {
    const double angle = 3.14159265358979 * i / corners, radius = (i % 2 ? 0.25 : 0.48) * scale;
    star.push_back({kSize.width / 2.0 + radius * std::cos(angle), kSize.height / 2.0 + radius * std::sin(angle)});
  }
  return star;
}

}  // namespace bench
