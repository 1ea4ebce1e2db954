// The voxel grid as a dictionary from cells to their points.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <map>
#include <vector>

namespace dax::oracle {

using Point = std::array<float, 3>;

inline std::vector<Point> voxelCentroids(const std::vector<Point>& points, const std::array<float, 6>& box,
                                         const Point& leaf) {
  std::map<std::array<int64_t, 3>, std::vector<Point>> cells;  // z, y, x
  for (const Point& p : points) {
    bool inside = true;
    std::array<int64_t, 3> cell = {};
    for (size_t k = 0; k < 3; ++k) {
      if (!(p[k] >= box[k] && p[k] <= box[k + 3])) {
        inside = false;
        break;
      }
      const float perUnit = 1.0f / leaf[k], scaled = p[k] * perUnit;
      cell[2 - k] = static_cast<int64_t>(std::trunc(scaled));
    }
    if (inside) cells[cell].push_back(p);
  }
  if (cells.empty()) return {points[0]};
  if (cells.size() == 1 && cells.begin()->second.size() == 1) return cells.begin()->second;
  std::vector<Point> result;
  for (const auto& [cell, members] : cells) {
    Point sum = members[0];
    for (size_t i = 1; i < members.size(); ++i) {
      for (size_t k = 0; k < 3; ++k) sum[k] += members[i][k];
    }
    const float weight = 1.0f / static_cast<float>(members.size());
    for (float& value : sum) value *= weight;
    result.push_back(sum);
  }
  return result;
}

}  // namespace dax::oracle
