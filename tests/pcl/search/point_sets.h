// Point sets that are awkward in different ways.
#pragma once

#include <cmath>
#include <cstdint>
#include <vector>

#include "tests/support/test_image.h"

namespace dax::test {

enum class PointKind { uniform, clustered, grid, line, duplicates, identical, exponential };
inline constexpr PointKind kPointKinds[] = {PointKind::uniform,    PointKind::clustered,  PointKind::grid,
                                            PointKind::line,       PointKind::duplicates, PointKind::identical,
                                            PointKind::exponential};

// In -1..1, a multiple of 2^-23.
inline float unitFloat(Random& random) {
  return static_cast<float>(random.below(1 << 24) - (1 << 23)) / static_cast<float>(1 << 23);
}

// n rows of d floats.
inline std::vector<float> makePoints(PointKind kind, int32_t n, int32_t d, uint64_t seed = 1) {
  Random random(seed * 1000 + static_cast<uint64_t>(kind));
  std::vector<float> points;
  const float step = unitFloat(random);
  for (int32_t i = 0; i < n; ++i) {
    const float along = unitFloat(random);
    for (int32_t a = 0; a < d; ++a) {
      const float x = unitFloat(random);
      switch (kind) {
        case PointKind::uniform:
          points.push_back(10 * x);
          break;
        case PointKind::clustered:
          points.push_back(static_cast<float>(i % 5 * (a + 1)) + 0.01f * x);
          break;
        case PointKind::grid:
          points.push_back(static_cast<float>(random.below(6)));
          break;
        case PointKind::line:
          points.push_back(along * (step + static_cast<float>(a)));
          break;
        case PointKind::duplicates:
          points.push_back(static_cast<float>((i % 7 * 31 + a * 17) % 11));
          break;
        case PointKind::identical:
          points.push_back(2.5f);
          break;
        case PointKind::exponential:
          points.push_back(a == i % d ? std::ldexp(1.0f, i / d % 160 - 100) : 0.0f);
          break;
      }
    }
  }
  return points;
}

}  // namespace dax::test
