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
  bool at(int32_t x, int32_t y) const {
    return x >= 0 && y >= 0 && x < width && y < height && pixels[static_cast<size_t>(y) * width + x] != 0;
  }
};

// Labels in raster order of the first pixel; -1 is background.
struct Labels {
  std::vector<int32_t> of;
  int32_t count = 0;
};

inline Labels floodFill(const Mask& mask, int32_t connectivity) {
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
            if (neighbour && mask.at(px + dx, py + dy)) stack.push_back({px + dx, py + dy});
          }
        }
      }
      ++labels.count;
    }
  }
  return labels;
}

}  // namespace dax::oracle
