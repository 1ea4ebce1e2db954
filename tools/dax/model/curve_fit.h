// Curves fitted to points by least squares, with the library's solver.
#pragma once

#include <optional>

#include "model/curve_model.h"

namespace dax::tool {

struct CurveFit {
  Values parameters;      // in the user's coordinates
  Values standardErrors;  // of each, from the covariance s^2 (J^T J)^-1
  double deviation;       // s: standard deviation of the residuals, over points less parameters
  std::optional<double> rSquared;
  int iterations;
  Points curve;      // for drawing
  Values residuals;  // of the points, signed
};

// Starts at the given parameters or at its own. Throws Failure(kRefused) if the points are too few or do not determine
// the parameters.
CurveFit fitCurve(const CurveModel& model, const Points& points, const std::optional<Values>& start);

}  // namespace dax::tool
