// 100000 points, half of them within 0.02 of a plane, the others in a cube of side 10, mixed.
#pragma once

#include <cstdint>
#include <random>
#include <vector>

namespace bench {

constexpr int32_t kPlanePoints = 100000;
constexpr double kPlaneThreshold = 0.02;
constexpr const char* kPlaneTitle = "plane in 100000 points, half of them outliers";

inline std::vector<float> planeScene() {
  std::mt19937 random(5);
  std::uniform_real_distribution<float> inside(0, 10), near(-0.02f, 0.02f);
  std::vector<float> points;
  for (int32_t i = 0; i < kPlanePoints; ++i) {
    const float x = inside(random), y = inside(random);
    points.insert(points.end(), {x, y, i % 2 == 0 ? 0.3f * x - 0.2f * y + 4 + near(random) : inside(random)});
  }
  return points;
}

}  // namespace bench
