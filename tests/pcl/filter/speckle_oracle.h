// The speckle filter by flood fill over 4-neighbours, one pixel at a time.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <utility>
#include <vector>

namespace dax::oracle {

struct SpeckleWindow {
  int32_t x0, y0, x1, y1;
};

template <class T>
std::vector<T> withoutSpeckles(const std::vector<T>& image, int32_t width, int32_t height, const SpeckleWindow& window,
                               int32_t maxDiff, int32_t maxSize, T invalid) {
  const auto at = [&](int32_t x, int32_t y) {
    return static_cast<size_t>(y) * static_cast<size_t>(width) + static_cast<size_t>(x);
  };
  std::vector<T> result = image;
  std::vector<bool> seen(image.size());
  for (int32_t y = 0; y < height; ++y) {
    for (int32_t x = 0; x < width; ++x) {
      if (image[at(x, y)] == invalid || seen[at(x, y)]) continue;
      std::vector<std::pair<int32_t, int32_t>> region = {{x, y}};
      seen[at(x, y)] = true;
      for (size_t i = 0; i < region.size(); ++i) {
        const auto [px, py] = region[i];
        constexpr std::pair<int32_t, int32_t> kNext[] = {{0, 1}, {0, -1}, {1, 0}, {-1, 0}};
        for (const auto& [dx, dy] : kNext) {
          const int32_t qx = px + dx, qy = py + dy;
          if (qx < 0 || qy < 0 || qx >= width || qy >= height) continue;
          if (seen[at(qx, qy)] || image[at(qx, qy)] == invalid) continue;
          if (std::abs(int32_t{image[at(px, py)]} - int32_t{image[at(qx, qy)]}) >= maxDiff) continue;
          seen[at(qx, qy)] = true;
          region.emplace_back(qx, qy);
        }
      }
      if (static_cast<int64_t>(region.size()) > maxSize) continue;
      for (const auto& [px, py] : region) {
        const bool inside = px >= window.x0 && px < window.x1 && py >= window.y0 && py < window.y1;
        if (inside) result[at(px, py)] = invalid;
      }
    }
  }
  return result;
}

}  // namespace dax::oracle
