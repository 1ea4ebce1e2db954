// The problems that the solver and its peer run: small dense regressions with derivatives written out, a pose graph, a
// bundle adjustment.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "examples/optim/bundle.h"
#include "examples/optim/pose_graph.h"
#include "tests/support/strd.h"

namespace bench {

using Regression = dax::test::strd::Problem;

inline const Regression& regression(const std::string& name) {
  static const std::vector<Regression> all = dax::test::strd::readProblems(DAX_STRD_DATA);
  for (const Regression& each : all) {
    if (each.name == name) return each;
  }
  std::fprintf(stderr, "no problem %s\n", name.c_str());
  std::exit(1);
}

// Value of a model at x; its derivatives where wanted. A row of derivatives lies `step` doubles apart.
using Model = double (*)(const double* b, double x, double* by, ptrdiff_t step);

inline double misra1a(const double* b, double x, double* by, ptrdiff_t step) {
  const double e = std::exp(-b[1] * x);
  if (by) by[0] = 1 - e, by[step] = b[0] * x * e;
  return b[0] * (1 - e);
}
inline double rat43(const double* b, double x, double* by, ptrdiff_t step) {
  const double e = std::exp(b[1] - b[2] * x), l = std::log(1 + e), p = std::exp(-l / b[3]);
  if (by) {
    const double g = -b[0] * p * e / (b[3] * (1 + e));
    by[0] = p, by[step] = g, by[2 * step] = -x * g, by[3 * step] = b[0] * p * l / (b[3] * b[3]);
  }
  return b[0] * p;
}
inline double thurber(const double* b, double x, double* by, ptrdiff_t step) {
  const double top = b[0] + x * (b[1] + x * (b[2] + x * b[3])), bottom = 1 + x * (b[4] + x * (b[5] + x * b[6]));
  const double value = top / bottom;
  if (by) {
    double power = 1 / bottom;
    for (int k = 0; k < 4; ++k, power *= x) by[k * step] = power;
    power = -value * x / bottom;
    for (int k = 4; k < 7; ++k, power *= x) by[k * step] = power;
  }
  return value;
}
inline double gauss(const double* b, double x, double* by, ptrdiff_t step) {
  const double e = std::exp(-b[1] * x), u = (x - b[3]) / b[4], v = (x - b[6]) / b[7];
  const double f = std::exp(-u * u), g = std::exp(-v * v);
  if (by) {
    by[0] = e, by[step] = -b[0] * x * e;
    by[2 * step] = f, by[3 * step] = 2 * b[2] * f * u / b[4], by[4 * step] = by[3 * step] * u;
    by[5 * step] = g, by[6 * step] = 2 * b[5] * g * v / b[7], by[7 * step] = by[6 * step] * v;
  }
  return b[0] * e + b[2] * f + b[5] * g;
}

struct Small {
  const char* operation;
  const char* problem;
  int start;
  Model model;
};
inline constexpr Small kSmall[] = {{"Misra1a, n = 2, m = 14", "Misra1a", 1, misra1a},
                                   {"Rat43, n = 4, m = 15", "Rat43", 1, rat43},
                                   {"Thurber, n = 7, m = 37", "Thurber", 0, thurber},
                                   {"Gauss1, n = 8, m = 250", "Gauss1", 0, gauss}};

inline constexpr const char* kPoseGraph = "pose graph, 2500 poses on SE(3)";
inline constexpr const char* kBundle = "bundle, 20 cameras, 3000 points";

// Six digits of a final cost, for comparison.
inline uint64_t sixDigits(double cost) {
  const double scale = std::pow(10, 5 - std::floor(std::log10(cost)));
  return static_cast<uint64_t>(std::llround(cost * scale));
}

}  // namespace bench
