// Points and circles of the circle fit, about the mean of the points.
#pragma once

#include <cstdint>

namespace dax {

// In units of the root mean square distance of the points from their mean: above it, they lie on a line.
constexpr double kMaxCircleRadius = 1e4;

struct CirclePoints {
  const double* x;
  const double* y;
  int32_t count;
};

struct Circle {
  double x;
  double y;
  double r;
};

}  // namespace dax
