// Points and circles of the circle fit, about the mean of the points.
#pragma once

#include <cstdint>

namespace dax {

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
