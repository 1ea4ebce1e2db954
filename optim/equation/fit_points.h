// The points of a fit, scaled.
#pragma once

#include <algorithm>
#include <cmath>

#include "frame/check.h"
#include "optim/equation/wide.h"

namespace dax {

struct FitPoints {
  const double *x, *y, *weights;  // weights may be null
  int32_t count;
  int exponent = 0, weightExponent = 0;  // of y, and even of weights

  DaxStatus check() {
    Magnitude values, factors;
    values.add(y, count);
    if (weights) factors.add(weights, count);
    DAX_REQUIRE(areFinite(x, count) && values.isFinite() && factors.isFinite(), DAX_STS_DATA_RANGE);
    exponent = values.exponent(), weightExponent = 2 * ((factors.exponent() + 1) >> 1);
    const bool areWeights = !weights || std::all_of(weights, weights + count, [](double each) { return each >= 0; });
    return areWeights ? DAX_STS_OK : DAX_STS_BAD_PARAM;
  }
  double weight(int32_t i) const { return weights ? PowerOfTwo(-weightExponent)(weights[i]) : 1; }
  double root(int32_t i) const { return std::sqrt(weight(i)); }
  double value(int32_t i) const { return PowerOfTwo(-exponent)(y[i]); }

  // From the weighted sum of squares.
  double rms(double squares) const {
    double sum = 0;
    for (int32_t i = 0; i < count; ++i) sum += weight(i);
    return PowerOfTwo(exponent)(std::sqrt(squares / sum));
  }
  // Coefficients scaled back, unless one of them would not be finite.
  DaxStatus store(double* coefficients, int32_t n, double squares, double* to, double* rmsTo) const {
    const PowerOfTwo back(exponent);
    for (int32_t k = 0; k < n; ++k) coefficients[k] = back(coefficients[k]) + 0.0;
    DAX_REQUIRE(areFinite(coefficients, n), DAX_STS_LEAST_SQUARES);
    std::copy_n(coefficients, n, to);
    *rmsTo = rms(squares);
    return DAX_STS_OK;
  }
};

}  // namespace dax
