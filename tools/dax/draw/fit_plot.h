// Drawings of fitted curves.
#pragma once

#include <string>

#include "model/curve_fit.h"

namespace dax::tool {

// An SVG: the points with the curve through them, and below the residuals. Beyond some thousands every k-th point is drawn.
std::string drawFit(const CurveModel& model, const Points& points, const CurveFit& fit, std::string_view title);

}  // namespace dax::tool
