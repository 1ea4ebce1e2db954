// Box sums by their definition: windows of integers (modulo 2^32) by adding them up, of floats by running sums held in
// full.
#pragma once

#include <algorithm>
#include <cstdint>
#include <vector>

namespace dax::oracle {

// Window sums along a line, clipped to it.
inline std::vector<uint32_t> clippedWindows(const std::vector<uint32_t>& line, int32_t radius) {
  const auto n = static_cast<int32_t>(line.size());
  std::vector<uint32_t> windows(line.size());
  for (int32_t i = 0; i < n; ++i) {
    for (int32_t k = std::max(i - radius, 0); k <= std::min(i + radius, n - 1); ++k) {
      windows[static_cast<size_t>(i)] += line[static_cast<size_t>(k)];
    }
  }
  return windows;
}

// Window sums along a line from its running sums in single precision.
inline std::vector<float> runningWindows(const std::vector<float>& line, int32_t radius) {
  const auto n = static_cast<int32_t>(line.size());
  std::vector<float> sums(line), windows(line.size());
  for (size_t i = 1; i < sums.size(); ++i) sums[i] = sums[i - 1] + line[i];
  for (int32_t i = 0; i < n; ++i) {
    const float lead = sums[static_cast<size_t>(std::min(i + radius, n - 1))];
    windows[static_cast<size_t>(i)] = i <= radius ? lead : lead - sums[static_cast<size_t>(i - radius - 1)];
  }
  return windows;
}

// windows() along all rows, then along all columns. The result has w * h elements, row by row.
template <class Sum, class Pixel>
std::vector<Sum> box(const Pixel& pixel, int32_t radius, int32_t w, int32_t h,
                     std::vector<Sum> (*windows)(const std::vector<Sum>&, int32_t)) {
  const auto at = [w](int32_t x, int32_t y) {
    return static_cast<size_t>(y) * static_cast<size_t>(w) + static_cast<size_t>(x);
  };
  std::vector<Sum> result(at(0, h));
  for (int32_t y = 0; y < h; ++y) {
    std::vector<Sum> row;
    for (int32_t x = 0; x < w; ++x) row.push_back(static_cast<Sum>(pixel(x, y)));
    row = windows(row, radius);
    std::copy(row.begin(), row.end(), result.begin() + static_cast<ptrdiff_t>(at(0, y)));
  }
  for (int32_t x = 0; x < w; ++x) {
    std::vector<Sum> column;
    for (int32_t y = 0; y < h; ++y) column.push_back(result[at(x, y)]);
    column = windows(column, radius);
    for (int32_t y = 0; y < h; ++y) result[at(x, y)] = column[static_cast<size_t>(y)];
  }
  return result;
}

}  // namespace dax::oracle
