// Principal axes in double precision by Jacobi's rotations.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>
#include <utility>
#include <vector>

namespace dax::oracle {

struct Axes {
  std::array<double, 3> values;                  // ascending
  std::array<std::array<double, 3>, 3> vectors;  // unit, in the same order
};

inline Axes principalAxes(std::array<std::array<double, 3>, 3> a) {
  std::array<std::array<double, 3>, 3> v{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};  // rows are the axes
  for (int sweep = 0; sweep < 60; ++sweep) {
    for (size_t p = 0; p < 2; ++p) {
      for (size_t q = p + 1; q < 3; ++q) {
        if (a[p][q] == 0) continue;
        const double angle = 0.5 * std::atan2(2 * a[p][q], a[q][q] - a[p][p]);
        const double c = std::cos(angle), s = std::sin(angle);
        for (size_t i = 0; i < 3; ++i) {
          a[i][p] = std::exchange(a[i][q], s * a[i][p] + c * a[i][q]) * -s + c * a[i][p];
        }
        for (size_t i = 0; i < 3; ++i) {
          a[p][i] = std::exchange(a[q][i], s * a[p][i] + c * a[q][i]) * -s + c * a[p][i];
          v[p][i] = std::exchange(v[q][i], s * v[p][i] + c * v[q][i]) * -s + c * v[p][i];
        }
      }
    }
  }
  Axes axes{{a[0][0], a[1][1], a[2][2]}, v};
  for (const size_t i : {size_t{0}, size_t{1}, size_t{0}}) {
    if (axes.values[i] <= axes.values[i + 1]) continue;
    std::swap(axes.values[i], axes.values[i + 1]);
    std::swap(axes.vectors[i], axes.vectors[i + 1]);
  }
  return axes;
}

// Of points {x, y, z}.
inline Axes principalAxes(const std::vector<float>& points) {
  const double n = static_cast<double>(points.size()) / 3;
  std::array<double, 3> mean{};
  for (size_t i = 0; i < points.size(); ++i) mean[i % 3] += static_cast<double>(points[i]) / n;
  std::array<std::array<double, 3>, 3> sum{};
  for (size_t i = 0; i < points.size(); i += 3) {
    for (size_t r = 0; r < 3; ++r) {
      for (size_t c = 0; c < 3; ++c) {
        sum[r][c] +=
            (static_cast<double>(points[i + r]) - mean[r]) * (static_cast<double>(points[i + c]) - mean[c]) / n;
      }
    }
  }
  return principalAxes(sum);
}

}  // namespace dax::oracle
