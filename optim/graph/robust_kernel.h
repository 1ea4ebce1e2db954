// Robust kernels: rho(s) of the squared length s of an edge's whitened residual.
#pragma once

#include <cmath>

#include "frame/numeric/elementary.h"
#include "prgo/graph.h"

namespace dax {

constexpr double kKernelWidths[] = {1, 1.345, 2.385, 4.685, 3};
constexpr int32_t kKernels = 5;

// rho(s) = s * weight + rest, weight = rho'(s). rho is concave, so the rest is not negative: the residuals
// sqrt(weight) r and sqrt(rest), the second of which counts as constant, have the energy and the gradient of the kernel.
struct Robust {
  double weight, rest;
  double rho(double s) const { return s * weight + rest; }
};

// k^2 (ln(1 + u) - u / (1 + u)), whose terms cancel for small u: there u^2 / 2 - 2 u^3 / 3 + 3 u^4 / 4 - ...
inline double cauchyRest(double u) {
  if (u > 0.05) return elementary::log(1 + u) - u / (1 + u);
  double sum = 0;
  for (int n = 12; n >= 2; --n) sum = (n - 1.0) / n - u * sum;
  return u * u * sum;
}

// Of 0 <= s < infinity.
inline Robust robust(int32_t kernel, double width, double s) {
  const double square = width * width, u = s / square;
  switch (kernel) {
    case PRGO_KERNEL_HUBER: {
      if (u <= 1) return {1, 0};
      const double size = std::sqrt(s);
      return {width / size, width * (size - width)};
    }
    case PRGO_KERNEL_CAUCHY:
      return {1 / (1 + u), square * cauchyRest(u)};
    case PRGO_KERNEL_TUKEY:
      if (u >= 1) return {0, square / 3};
      return {(1 - u) * (1 - u), square * (u * u * (1 - 2 * u / 3))};
    case PRGO_KERNEL_GEMAN_MCCLURE: {
      const double share = 1 / (1 + u);
      return {share * share, square * (u * share) * (u * share)};
    }
    default:
      return {1, 0};
  }
}

}  // namespace dax
