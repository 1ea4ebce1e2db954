#include "measure/fit/circle_geometric.h"

#include <algorithm>
#include <cmath>

namespace dax {
namespace {

constexpr int kMaxSteps = 50;
constexpr double kSmallStep = 1e-13;  // of the radius

struct Cholesky3 {
  double l00, l10, l11, l20, l21, l22;

  bool factor(double a00, double a10, double a11, double a20, double a21, double a22) {
    l00 = std::sqrt(a00);
    if (!(l00 > 0)) return false;
    l10 = a10 / l00, l20 = a20 / l00;
    const double second = a11 - l10 * l10;
    if (!(second > kTiny * a11)) return false;
    l11 = std::sqrt(second), l21 = (a21 - l20 * l10) / l11;
    const double third = a22 - l20 * l20 - l21 * l21;
    if (!(third > kTiny * a22)) return false;
    l22 = std::sqrt(third);
    return true;
  }

  void solve(const double (&b)[3], double (&x)[3]) const {
    const double y0 = b[0] / l00, y1 = (b[1] - l10 * y0) / l11, y2 = (b[2] - l20 * y0 - l21 * y1) / l22;
    x[2] = y2 / l22;
    x[1] = (y1 - l21 * x[2]) / l11;
    x[0] = (y0 - l10 * x[1] - l20 * x[2]) / l00;
  }

 private:
  static constexpr double kTiny = 1e-15;
};

}  // namespace

// The distance of a point falls by its direction u from the centre: the row of J is (-u, -1), of a point at the centre (0, 0, -1).
CircleEquations::CircleEquations(const CirclePoints& points, const float* weights, const Circle& circle) {
  for (int32_t k = 0; k < points.count; ++k) {
    if (!(weights[k] > 0)) continue;
    const double w = weights[k], dx = points.x[k] - circle.x, dy = points.y[k] - circle.y;
    const double distance = std::sqrt(dx * dx + dy * dy), e = distance - circle.r;
    const double ux = distance > 0 ? dx / distance : 0, uy = distance > 0 ? dy / distance : 0;
    xx += w * (ux * ux), xy += w * (ux * uy), yy += w * (uy * uy);
    xr += w * ux, yr += w * uy, rr += w;
    right[0] += w * (ux * e), right[1] += w * (uy * e), right[2] += w * e;
    squares += w * (e * e);
  }
}

bool CircleEquations::solve(double damping, double (&step)[3]) const {
  const double more = 1 + damping;
  Cholesky3 factor;
  if (!factor.factor(xx * more, xy, yy * more, xr, yr, rr * more)) return false;
  factor.solve(right, step);
  return true;
}

bool CircleEquations::invert(double (&inverse)[6]) const {
  Cholesky3 factor;
  if (!factor.factor(xx, xy, yy, xr, yr, rr)) return false;
  double x[3], y[3], r[3];
  factor.solve({1, 0, 0}, x);
  factor.solve({0, 1, 0}, y);
  factor.solve({0, 0, 1}, r);
  const double elements[] = {x[0], y[1], r[2], y[0], r[0], r[1]};
  std::copy_n(elements, 6, inverse);
  return true;
}

bool fitGeometric(const CirclePoints& points, const float* weights, double spread, Circle* circle) {
  constexpr double kFirstDamping = 1e-3, kDampingFactor = 10, kLeastDamping = 1e-12;
  Circle best = *circle;
  CircleEquations equations(points, weights, best);
  double damping = 0;
  for (int i = 0; i < kMaxSteps; ++i) {
    double step[3];
    if (!equations.solve(damping, step)) return false;
    const Circle trial = {best.x + step[0], best.y + step[1], best.r + step[2]};
    const CircleEquations there(points, weights, trial);
    const double size = std::sqrt(step[0] * step[0] + step[1] * step[1] + step[2] * step[2]);
    const bool isSmall = size <= kSmallStep * best.r;
    if (there.squares <= equations.squares && trial.r > 0) {
      best = trial, equations = there;
      damping = damping <= kLeastDamping ? 0 : damping / kDampingFactor;
    } else {
      damping = std::max(kFirstDamping, damping * kDampingFactor);
    }
    if (isSmall) break;
  }
  if (!(best.r <= kMaxCircleRadius * spread)) return false;
  *circle = best;
  return true;
}

}  // namespace dax
