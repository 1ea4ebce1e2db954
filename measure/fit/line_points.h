// Points and lines of the line fit.
#pragma once

#include <cfloat>
#include <cstdint>

#include "daxi/line_fit.h"

namespace dax {

constexpr double kLineSlack = 1.1920929e-7;  // FLT_EPSILON, the slack of the contract
constexpr double kLineTiny = DBL_EPSILON;    // sums below it count as 0

struct LinePoints {
  const double* x;
  const double* y;
  int32_t count;
};

}  // namespace dax
