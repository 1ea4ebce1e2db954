#include "measure/fit/circle_hyper.h"

#include <cmath>

namespace dax {
namespace {

// Weighted mean of the points, and their root mean square distance from it.
struct Frame {
  double x = 0, y = 0, spread = 0, sum = 0;

  Frame(const CirclePoints& points, const float* weights) {
    double first = 0, second = 0, square = 0;
    for (int32_t k = 0; k < points.count; ++k) {
      if (!(weights[k] > 0)) continue;
      sum += weights[k];
      first += weights[k] * points.x[k];
      second += weights[k] * points.y[k];
    }
    x = first / sum, y = second / sum;
    for (int32_t k = 0; k < points.count; ++k) {
      if (!(weights[k] > 0)) continue;
      const double dx = points.x[k] - x, dy = points.y[k] - y;
      square += weights[k] * (dx * dx + dy * dy);
    }
    spread = std::sqrt(square / sum);
  }
};

// Weighted means of products of x, y and z = x^2 + y^2 in a frame of spread 1.
struct Moments {
  double xx = 0, xy = 0, yy = 0, xz = 0, yz = 0, zz = 0;

  Moments(const CirclePoints& points, const float* weights, const Frame& frame) {
    for (int32_t k = 0; k < points.count; ++k) {
      if (!(weights[k] > 0)) continue;
      const double w = weights[k] / frame.sum, x = (points.x[k] - frame.x) / frame.spread,
                   y = (points.y[k] - frame.y) / frame.spread, z = x * x + y * y;
      xx += w * (x * x), xy += w * (x * y), yy += w * (y * y);
      xz += w * (x * z), yz += w * (y * z), zz += w * (z * z);
    }
  }
};

// The root next to 0 of the characteristic polynomial A0 + A1 t + A2 t^2 + 4 t^4, by Newton's method from 0, which approaches it from
// one side.
double rootOf(const Moments& m) {
  const double z = m.xx + m.yy, c = m.xx * m.yy - m.xy * m.xy, v = m.zz - z * z;
  const double a2 = 4 * c - 3 * z * z - m.zz;
  const double a1 = v * z + 4 * c * z - m.xz * m.xz - m.yz * m.yz;
  const double a0 = m.xz * (m.xz * m.yy - m.yz * m.xy) + m.yz * (m.yz * m.xx - m.xz * m.xy) - v * c;
  double t = 0, value = a0;
  for (int i = 0; i < 20; ++i) {
    const double slope = a1 + t * (2 * a2 + 16 * t * t);
    const double next = t - value / slope;
    const double there = a0 + next * (a1 + next * (a2 + 4 * next * next));
    if (!(std::fabs(there) < std::fabs(value))) break;
    t = next, value = there;
  }
  return t;
}

}  // namespace

bool fitHyper(const CirclePoints& points, const float* weights, Circle* circle) {
  const Frame frame(points, weights);
  if (!(frame.spread > 0)) return false;
  const Moments m(points, weights, frame);
  const double t = rootOf(m), z = m.xx + m.yy;
  const double d = t * t - t * z + (m.xx * m.yy - m.xy * m.xy);
  const double x = (m.xz * (m.yy - t) - m.yz * m.xy) / d / 2, y = (m.yz * (m.xx - t) - m.xz * m.xy) / d / 2;
  const double r = std::sqrt(x * x + y * y + z - 2 * t);
  if (!(r > 0 && r <= kMaxCircleRadius)) return false;
  *circle = {frame.x + frame.spread * x, frame.y + frame.spread * y, frame.spread * r};
  return true;
}

}  // namespace dax
