// Rendered straight edges, every pixel the exact mean over its area.
#pragma once

#include <algorithm>
#include <cmath>

namespace dax::test {

// The part of the pixel around (x, y) beyond the line at distance `offset` from (centreX, centreY), whose normal points at
// an angle. Along the normal a pixel is a trapezoid, the convolution of two boxes as wide as the normal's components.
struct StraightEdge {
  double centreX, centreY, angle, offset;

  double coverage(double x, double y) const {
    const double c = std::cos(angle), s = std::sin(angle);
    const double d = (x - centreX) * c + (y - centreY) * s - offset;
    const double p = std::max(std::fabs(c), std::fabs(s)), q = std::min(std::fabs(c), std::fabs(s));
    if (q < 1e-9) return std::clamp(d / p + 0.5, 0.0, 1.0);
    const auto ramp = [](double t) { return t > 0 ? t * t : 0; };
    return (ramp(d + (p + q) / 2) - ramp(d + (p - q) / 2) - ramp(d - (p - q) / 2) + ramp(d - (p + q) / 2)) /
           (2 * p * q);
  }
};

}  // namespace dax::test
