// The angle constraint of the line fit.
#pragma once

#include "daxi/line_fit.h"

namespace dax {

// Whether directions (dx, dy), of any length but 0, satisfy the angle constraint of a configuration.
class AngleGate {
 public:
  explicit AngleGate(const LineFitCfg& cfg);
  bool accepts(double dx, double dy, double length) const;
  bool accepts(const DaxiLine& line) const { return accepts(line.b, -double{line.a}, 1); }

 private:
  // Without a constraint no sine exceeds the limit.
  double x_ = 1, y_ = 0, maxSine_ = 2;
};

}  // namespace dax
