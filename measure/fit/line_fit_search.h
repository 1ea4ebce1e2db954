// The initial line of the line fit, by search over pairs of points.
#pragma once

#include "measure/fit/line_points.h"

namespace dax {

// A line before its coefficients are rounded to single precision.
struct ExactLine {
  double a;
  double b;
  double c;
};

// Returns false when there is no line. `covered` has a byte for every point.
bool searchLine(const LinePoints& points, const LineFitCfg& cfg, uint8_t* covered, ExactLine& line);

}  // namespace dax
