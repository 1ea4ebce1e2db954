// Drawings of fitted curves.
#pragma once

#include <string>

#include "model/curve_fit.h"

namespace dax::tool {

// An SVG: points and curve, residuals below. Of several thousand points only every k-th is drawn.
std::string drawFit(const CurveModel& model, const Points& points, const CurveFit& fit, std::string_view title);

}  // namespace dax::tool
