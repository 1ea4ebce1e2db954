// The rounds of the line fit: residuals, threshold, weights, total least squares.
#pragma once

#include "measure/fit/line_points.h"

namespace dax {

// One round of the refinement. Input: residuals and threshold; output: flags and weights of all points.
struct LineRound {
  LinePoints points;
  const float* residuals;
  float threshold;
  float* scratch;  // a float for every point
  uint8_t* inliers;
  float* weights;
};

// Refines the line; returns false when a round fails.
bool refineLine(const LineRound& round, const LineFitCfg& cfg, float* residuals, DaxiLine& line, double& rms);

}  // namespace dax

extern "C" {

// The distance beyond which the `rejected` worst of n residuals lie (rejected + 1 < n); FLT_MAX for none. Uses n floats
// of scratch.
float DAXI_LineFitRegre_adaptive_dist_th(const float* residuals, float* scratch, int32_t n, int32_t rejected);

// Total least squares about a centre over the n points with a weight above 0. Returns 1, or 0 when no direction is best
// or the coefficients are not finite.
int32_t DAXI_LineFitRegre_get_fitline_coe(const dax::LinePoints* points, const float* weights, double centreX,
                                          double centreY, int32_t n, DaxiLine* line);

// A round with each of the weight functions. They return 1, or 0 when the round fails.
int32_t DAXI_LineFitRegre_least_square(const dax::LineRound* round, DaxiLine* line, double* rms);
int32_t DAXI_LineFitRegre_huber(const dax::LineRound* round, DaxiLine* line, double* rms);
int32_t DAXI_LineFitRegre_tukey(const dax::LineRound* round, DaxiLine* line, double* rms);
}
