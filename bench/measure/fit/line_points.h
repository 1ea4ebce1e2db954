// Points to fit a line to.
#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include "daxi/point.h"

namespace bench {

// Points along a line with noise of sigma 0.3 across it, the given share of them anywhere within 600 x 600.
inline std::vector<DaxiPoint32f> linePoints(int32_t count, double outliers) {
  uint64_t state = 1;
  const auto next = [&] {
    state = state * 6364136223846793005u + 1442695040888963407u;
    return static_cast<double>(state >> 40) / (1 << 24);
  };
  std::vector<DaxiPoint32f> points;
  for (int32_t i = 0; i < count; ++i) {
    const double t = 600 * next(), u = 600 * next(), noise = next() + next() + next() - 1.5;
    const bool outlier = next() < outliers;
    const double x = outlier ? t : 20 + 0.8 * t - 0.36 * noise;
    const double y = outlier ? u : 30 + 0.6 * t + 0.48 * noise;
    points.push_back({static_cast<float>(x), static_cast<float>(y)});
  }
  return points;
}

}  // namespace bench
