#include "measure/fit/angle_gate.h"

#include <cmath>
#include <numbers>

#include "frame/math.h"
#include "measure/fit/line_points.h"

namespace dax {

AngleGate::AngleGate(const LineFitCfg& cfg) {
  if (cfg.angleConstraint == 0 || cfg.angleTolerance >= std::numbers::pi / 2) return;
  const SinCos expected = sinCosExact(cfg.expectedAngle);
  x_ = expected.cosine;
  y_ = expected.sine;
  maxSine_ = sinCosExact(cfg.angleTolerance).sine + kLineSlack;
}

bool AngleGate::accepts(double dx, double dy, double length) const {
  return std::fabs(dx * y_ - dy * x_) <= maxSine_ * length;
}

}  // namespace dax
