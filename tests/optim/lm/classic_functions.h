// The classical test functions of unconstrained minimisation (More, Garbow and Hillstrom 1981).
#pragma once

#include <cmath>
#include <numbers>

#include "tests/optim/lm/least_squares.h"

namespace dax::test {

struct ClassicFunction {
  const char* name;
  LeastSquares problem;
  Vector solution;
};

inline std::vector<ClassicFunction> classicFunctions() {
  std::vector<ClassicFunction> all;
  all.push_back({"Rosenbrock",
                 {2,
                  2,
                  {-1.2, 1},
                  [](const double* x, double* r) { r[0] = 10 * (x[1] - x[0] * x[0]), r[1] = 1 - x[0]; },
                  [](const double* x, int32_t i, int32_t j) {
                    const double d[2][2] = {{-20 * x[0], 10}, {-1, 0}};
                    return d[i][j];
                  }},
                 {1, 1}});
  all.push_back({"Powell singular",
                 {4,
                  4,
                  {3, -1, 0, 1},
                  [](const double* x, double* r) {
                    r[0] = x[0] + 10 * x[1];
                    r[1] = std::sqrt(5.0) * (x[2] - x[3]);
                    r[2] = (x[1] - 2 * x[2]) * (x[1] - 2 * x[2]);
                    r[3] = std::sqrt(10.0) * (x[0] - x[3]) * (x[0] - x[3]);
                  },
                  [](const double* x, int32_t i, int32_t j) {
                    const double a = 2 * (x[1] - 2 * x[2]), b = 2 * std::sqrt(10.0) * (x[0] - x[3]);
                    const double d[4][4] = {
                        {1, 10, 0, 0}, {0, 0, std::sqrt(5.0), -std::sqrt(5.0)}, {0, a, -2 * a, 0}, {b, 0, 0, -b}};
                    return d[i][j];
                  }},
                 {0, 0, 0, 0}});
  all.push_back({"Wood",
                 {4,
                  6,
                  {-3, -1, -3, -1},
                  [](const double* x, double* r) {
                    r[0] = 10 * (x[1] - x[0] * x[0]), r[1] = 1 - x[0];
                    r[2] = std::sqrt(90.0) * (x[3] - x[2] * x[2]), r[3] = 1 - x[2];
                    r[4] = std::sqrt(10.0) * (x[1] + x[3] - 2), r[5] = (x[1] - x[3]) / std::sqrt(10.0);
                  },
                  [](const double* x, int32_t i, int32_t j) {
                    const double a = std::sqrt(90.0), b = std::sqrt(10.0);
                    const double d[6][4] = {{-20 * x[0], 10, 0, 0}, {-1, 0, 0, 0}, {0, 0, -2 * a * x[2], a},
                                            {0, 0, -1, 0},          {0, b, 0, b},  {0, 1 / b, 0, -1 / b}};
                    return d[i][j];
                  }},
                 {1, 1, 1, 1}});
  all.push_back({"helical valley",
                 {3,
                  3,
                  {-1, 0, 0},
                  [](const double* x, double* r) {
                    const double turn = std::atan2(x[1], x[0]) / (2 * std::numbers::pi);
                    r[0] = 10 * (x[2] - 10 * (turn < -0.25 ? turn + 1 : turn));
                    r[1] = 10 * (std::hypot(x[0], x[1]) - 1), r[2] = x[2];
                  },
                  [](const double* x, int32_t i, int32_t j) {
                    const double q = x[0] * x[0] + x[1] * x[1], s = std::sqrt(q), c = 50 / (std::numbers::pi * q);
                    const double d[3][3] = {{c * x[1], -c * x[0], 10}, {10 * x[0] / s, 10 * x[1] / s, 0}, {0, 0, 1}};
                    return d[i][j];
                  }},
                 {1, 0, 0}});
  all.push_back(
      {"Beale",
       {2,
        3,
        {1, 1},
        [](const double* x, double* r) {
          r[0] = 1.5 - x[0] * (1 - x[1]);
          r[1] = 2.25 - x[0] * (1 - x[1] * x[1]);
          r[2] = 2.625 - x[0] * (1 - x[1] * x[1] * x[1]);
        },
        [](const double* x, int32_t i, int32_t j) {
          const double y = x[1];
          const double d[3][2] = {{y - 1, x[0]}, {y * y - 1, 2 * x[0] * y}, {y * y * y - 1, 3 * x[0] * y * y}};
          return d[i][j];
        }},
       {3, 0.5}});
  all.push_back({"Brown badly scaled",
                 {2,
                  3,
                  {1, 1},
                  [](const double* x, double* r) { r[0] = x[0] - 1e6, r[1] = x[1] - 2e-6, r[2] = x[0] * x[1] - 2; },
                  [](const double* x, int32_t i, int32_t j) {
                    const double d[3][2] = {{1, 0}, {0, 1}, {x[1], x[0]}};
                    return d[i][j];
                  }},
                 {1e6, 2e-6}});
  all.push_back({"Meyer",
                 {3,
                  16,
                  {0.02, 4000, 250},
                  [](const double* x, double* r) {
                    const double y[16] = {34780, 28610, 23650, 19630, 16370, 13720, 11540, 9744,
                                          8261,  7030,  6005,  5147,  4427,  3820,  3307,  2872};
                    for (int i = 0; i < 16; ++i) r[i] = x[0] * std::exp(x[1] / (50 + 5 * i + x[2])) - y[i];
                  },
                  [](const double* x, int32_t i, int32_t j) {
                    const double t = 50 + 5 * i + x[2], e = std::exp(x[1] / t);
                    const double d[3] = {e, x[0] * e / t, -x[0] * e * x[1] / (t * t)};
                    return d[j];
                  }},
                 {0.005609636471049, 6181.346346303, 345.2236346244}});
  return all;
}

}  // namespace dax::test
