// The geometric fit of a circle, and the equations that its errors follow from.
#pragma once

#include "measure/fit/circle_points.h"

namespace dax {

// Normal equations of the distances d(k) - r: J^T W J of x, y and r, -J^T W e, and the sum of the weighted squares.
struct CircleEquations {
  CircleEquations(const CirclePoints& points, const float* weights, const Circle& circle);

  // Solves (J^T W J + damping * its diagonal) step = -J^T W e; false where that is not positive definite.
  bool solve(double damping, double (&step)[3]) const;

  // The inverse of J^T W J: its elements xx, yy, rr, xy, xr, yr; false where there is none.
  bool invert(double (&inverse)[6]) const;

  double xx = 0, xy = 0, xr = 0, yy = 0, yr = 0, rr = 0;
  double right[3] = {};
  double squares = 0;
};

// The least weighted sum of squared distances next to a circle, by damped Gauss-Newton steps. False where no step can be computed or
// the points turn out to lie on a line: `spread` is their root mean square distance from their mean.
bool fitGeometric(const CirclePoints& points, const float* weights, double spread, Circle* circle);

}  // namespace dax
