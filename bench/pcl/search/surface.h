// A cloud for the measurements.
#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include "bench/support/amount.h"

namespace bench {

constexpr int32_t kUsualPoints = 100000;
inline const int32_t kPoints = scaled(kUsualPoints);
constexpr int32_t kNeighbours = 16;
constexpr int32_t kLeafSize = 10;
constexpr float kRadius = 1;
constexpr float kShift = 0.01f;

// n unordered points {x, y, z}, ten per unit of area, on a surface of hills and valleys. Coordinates are multiples of
// 2^-16 from a fixed seed, the same on every machine.
inline std::vector<float> wavySurface(int32_t n) {
  const double side = std::sqrt(n / 10.0);
  const auto wave = [](double t) {
    const double phase = t - std::floor(t);
    return phase < 0.5 ? 16 * phase * (0.5 - phase) : -16 * (phase - 0.5) * (1 - phase);
  };
  uint64_t state = 1;
  const auto next = [&] {
    state = state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<double>(state >> 40) / (1 << 24) * side;
  };
  std::vector<float> points;
  for (int32_t i = 0; i < n; ++i) {
    const double x = next(), y = next(), z = 3 * wave(x / 20) * wave(y / 30);
    for (const double c : {x, y, z}) points.push_back(static_cast<float>(std::floor(c * 65536) / 65536));
  }
  return points;
}

inline std::vector<float> shifted(std::vector<float> points) {
  for (float& x : points) x += kShift;
  return points;
}

}  // namespace bench
