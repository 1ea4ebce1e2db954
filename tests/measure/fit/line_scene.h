// Points along lines, with noise and outliers.
#pragma once

#include <cmath>
#include <vector>

#include "daxi/line_fit.h"
#include "tests/support/test_image.h"

namespace dax::test {

using Points = std::vector<DaxiPoint32f>;

inline LineFitCfg config(int32_t method, int32_t weights, int32_t rejected, float threshold = 3) {
  return {method, weights, 50, rejected, threshold, 0, 0, 0};
}

class Noise {
 public:
  explicit Noise(uint64_t seed) : random_(seed) {}
  double uniform(double low, double high) { return low + (high - low) * (random_.below(1 << 24) + 0.5) / (1 << 24); }
  double normal() {
    double sum = -6;
    for (int i = 0; i < 12; ++i) sum += uniform(0, 1);
    return sum;
  }

 private:
  Random random_;
};

// Points along a line at an angle, with noise across it; every `spoil`-th one is moved away by 8 to 60.
inline Points pointsOnLine(int count, double angle, double sigma, int spoil, uint64_t seed) {
  Noise noise(seed);
  const double c = std::cos(angle), s = std::sin(angle);
  Points points;
  for (int i = 0; i < count; ++i) {
    const double t = noise.uniform(-200, 200);
    double d = sigma * noise.normal();
    if (spoil && i % spoil == 0) d += noise.uniform(8, 60) * (i % 2 ? 1 : -1);
    points.push_back({static_cast<float>(300 + t * c - d * s), static_cast<float>(250 + t * s + d * c)});
  }
  return points;
}

}  // namespace dax::test
