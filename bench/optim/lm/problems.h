// The problems that the solver and its peer run: small dense regressions with derivatives written out, a pose graph, a
// bundle adjustment.
#pragma once

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

#include "bench/support/amount.h"
#include "examples/optim/bundle.h"
#include "examples/optim/pose_graph.h"
#include "tests/optim/lm/strd.h"

namespace bench {

using Regression = dax::test::strd::Problem;

inline const Regression& regression(const std::string& name) {
  static const std::vector<Regression> all = dax::test::strd::readProblems(DAX_TEST_DATA "/strd/problems.txt");
  for (const Regression& each : all) {
    if (each.name == name) return each;
  }
  std::fprintf(stderr, "no problem %s\n", name.c_str());
  std::exit(1);
}

// A model's value at x and its derivatives, in rows `step` doubles apart. Expensive terms are kept from the value for
// the derivatives, in the library's callbacks and in the peer's.
constexpr int kKept = 5;
struct Model {
  double (*value)(const double* b, double x, double* kept);
  void (*derivatives)(const double* b, double x, const double* kept, double* by, ptrdiff_t step);
};

inline constexpr Model kMisra1a = {[](const double* b, double x, double* kept) {
                                     kept[0] = std::exp(-b[1] * x);
                                     return b[0] * (1 - kept[0]);
                                   },
                                   [](const double* b, double x, const double* kept, double* by, ptrdiff_t step) {
                                     by[0] = 1 - kept[0], by[step] = b[0] * x * kept[0];
                                   }};

inline constexpr Model kMgh09 = {[](const double* b, double x, double* kept) {
                                   kept[0] = 1 / (x * (x + b[2]) + b[3]), kept[1] = x * (x + b[1]) * kept[0];
                                   return b[0] * kept[1];
                                 },
                                 [](const double* b, double x, const double* kept, double* by, ptrdiff_t step) {
                                   by[0] = kept[1], by[step] = b[0] * x * kept[0];
                                   by[3 * step] = -b[0] * kept[1] * kept[0], by[2 * step] = x * by[3 * step];
                                 }};

inline constexpr Model kRat43 = {
    [](const double* b, double x, double* kept) {
      kept[0] = std::exp(b[1] - b[2] * x), kept[1] = std::log(1 + kept[0]), kept[2] = std::exp(-kept[1] / b[3]);
      return b[0] * kept[2];
    },
    [](const double* b, double x, const double* kept, double* by, ptrdiff_t step) {
      const double value = b[0] * kept[2], g = -value * kept[0] / (b[3] * (1 + kept[0]));
      by[0] = kept[2], by[step] = g, by[2 * step] = -x * g, by[3 * step] = value * kept[1] / (b[3] * b[3]);
    }};

// Thurber and Hahn1.
inline constexpr Model kCubics = {[](const double* b, double x, double* kept) {
                                    kept[0] = 1 / (1 + x * (b[4] + x * (b[5] + x * b[6])));
                                    return kept[1] = (b[0] + x * (b[1] + x * (b[2] + x * b[3]))) * kept[0];
                                  },
                                  [](const double*, double x, const double* kept, double* by, ptrdiff_t step) {
                                    double power = kept[0];
                                    for (int k = 0; k < 4; ++k, power *= x) by[k * step] = power;
                                    power = -kept[1] * x * kept[0];
                                    for (int k = 4; k < 7; ++k, power *= x) by[k * step] = power;
                                  }};

inline constexpr Model kGauss = {
    [](const double* b, double x, double* kept) {
      const double u = (x - b[3]) / b[4], v = (x - b[6]) / b[7];
      kept[0] = std::exp(-b[1] * x), kept[1] = std::exp(-u * u), kept[2] = std::exp(-v * v), kept[3] = u, kept[4] = v;
      return b[0] * kept[0] + b[2] * kept[1] + b[5] * kept[2];
    },
    [](const double* b, double x, const double* kept, double* by, ptrdiff_t step) {
      const double u = kept[3], v = kept[4];
      by[0] = kept[0], by[step] = -b[0] * x * kept[0];
      by[2 * step] = kept[1], by[3 * step] = 2 * b[2] * kept[1] * u / b[4], by[4 * step] = by[3 * step] * u;
      by[5 * step] = kept[2], by[6 * step] = 2 * b[5] * kept[2] * v / b[7], by[7 * step] = by[6 * step] * v;
    }};

struct Small {
  const char* operation;
  const char* problem;
  int start;
  const Model* model;
  bool together;  // the peer gets all residuals as one block, not each as its own
};
inline constexpr Small kSmall[] = {{"Misra1a, n = 2, m = 14", "Misra1a", 1, &kMisra1a, false},
                                   {"Misra1a, residuals in one block", "Misra1a", 1, &kMisra1a, true},
                                   {"MGH09, n = 4, m = 11", "MGH09", 1, &kMgh09, false},
                                   {"MGH09, residuals in one block", "MGH09", 1, &kMgh09, true},
                                   {"Rat43, n = 4, m = 15", "Rat43", 1, &kRat43, false},
                                   {"Rat43, residuals in one block", "Rat43", 1, &kRat43, true},
                                   {"Thurber, n = 7, m = 37", "Thurber", 0, &kCubics, false},
                                   {"Thurber, residuals in one block", "Thurber", 0, &kCubics, true},
                                   {"Hahn1, n = 7, m = 236", "Hahn1", 1, &kCubics, false},
                                   {"Hahn1, residuals in one block", "Hahn1", 1, &kCubics, true},
                                   {"Gauss1, n = 8, m = 250", "Gauss1", 0, &kGauss, false},
                                   {"Gauss1, residuals in one block", "Gauss1", 0, &kGauss, true}};

inline constexpr const char* kPoseGraph = "pose graph, 2500 poses on SE(3)";
inline constexpr const char* kGradients = "the same by conjugate gradients";
inline constexpr const char* kBundle = "bundle, 20 cameras, 3000 points";

// The amount is the number of poses, one lap for every 250, or of points.
inline PoseGraph poseGraph() {
  const int poses = scaled(2500);
  return {poses, std::max(poses / 250, 1)};
}

inline Bundle bundle() {
  return {20, scaled(3000), 0};
}

// Six digits of a final cost, for comparison.
inline uint64_t sixDigits(double cost) {
  const double scale = std::pow(10, 5 - std::floor(std::log10(cost)));
  return static_cast<uint64_t>(std::llround(cost * scale));
}

}  // namespace bench
