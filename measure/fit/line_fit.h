// Robust line fitting: what its phases share.
#pragma once

#include <cfloat>
#include <cstdint>

#include "daxi/line_fit.h"

namespace dax {

constexpr double kLineSlack = 1.1920929e-7;
constexpr double kLineTiny = DBL_EPSILON;

struct LinePoints {
  const double* x;
  const double* y;
  int32_t count;
};

// A line before its coefficients are rounded.
struct ExactLine {
  double a;
  double b;
  double c;
};

// Whether directions (dx, dy), of any length but 0, keep the angle constraint of a configuration.
class AngleGate {
 public:
  explicit AngleGate(const LineFitCfg& cfg);
  bool accepts(double dx, double dy, double length) const;
  bool accepts(const DaxiLine& line) const { return accepts(line.b, -double{line.a}, 1); }

 private:
  double x_ = 1, y_ = 0, mostSine_ = 2;
};

// One round of the refinement: in go residuals and threshold, out come flags and weights of all points.
struct LineRound {
  LinePoints points;
  const float* residuals;
  float threshold;
  float* scratch;  // a float for every point
  uint8_t* inliers;
  float* weights;
};

// The initial line by search over pairs; false when there is none. `covered` has a byte for every point.
bool searchLine(const LinePoints& points, const LineFitCfg& cfg, uint8_t* covered, ExactLine& line);

// Refines the line; false when a round fails.
bool refineLine(const LineRound& round, const LineFitCfg& cfg, float* residuals, DaxiLine& line, double& rms);

}  // namespace dax

extern "C" {

DaxStatus DAXI_LineFitRegre_check_cfg(const LineFitCfg* cfg);

// Median of n >= 1 values without NaNs, of an even number the mean of the middle two. Reorders the values.
float _DAXS_Median_32f(float* values, int32_t n);

// The distance beyond which lie the `rejected` worst of n residuals (rejected + 1 < n); FLT_MAX for none. Uses n floats of
// scratch.
float DAXI_LineFitRegre_adaptive_dist_th(const float* residuals, float* scratch, int32_t n, int32_t rejected);

// Total least squares about a centre over the n points that take part. Returns 1, or 0 when no direction is best or the
// coefficients are not finite.
int32_t DAXI_LineFitRegre_get_fitline_coe(const dax::LinePoints* points, const float* weights, double centreX,
                                          double centreY, int32_t n, DaxiLine* line);

// A round by each of the weight functions. They return 1, or 0 when the round fails.
int32_t DAXI_LineFitRegre_least_square(const dax::LineRound* round, DaxiLine* line, double* rms);
int32_t DAXI_LineFitRegre_huber(const dax::LineRound* round, DaxiLine* line, double* rms);
int32_t DAXI_LineFitRegre_tukey(const dax::LineRound* round, DaxiLine* line, double* rms);
}
