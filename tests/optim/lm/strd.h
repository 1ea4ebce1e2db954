// The nonlinear regression problems of the NIST Statistical Reference Datasets: data file, models, agreement.
#pragma once

#include <cmath>
#include <fstream>
#include <limits>
#include <numbers>
#include <sstream>
#include <string>
#include <vector>

#include "prmt.h"
#include "tests/optim/lm/dual.h"

namespace dax::test::strd {

using std::atan;
using std::cos;
using std::exp;
using std::pow;
using std::sin;

struct Problem {
  std::string name;
  int32_t n, m;
  std::vector<double> starts[2];
  std::vector<double> certified;
  double squares;
  std::vector<double> y, x, x2;  // x2: second predictor of Nelson
};

// Empty when the file cannot be read.
inline std::vector<Problem> readProblems(const std::string& path) {
  std::ifstream file(path);
  std::vector<Problem> problems;
  std::string line, word;
  int start = 0;
  while (std::getline(file, line)) {
    std::istringstream fields(line);
    const auto numbers = [&](std::vector<double>& to) {
      for (double value; fields >> value;) to.push_back(value);
    };
    if (line[0] == '#') continue;
    if (line.compare(0, 7, "problem") == 0) {
      problems.emplace_back();
      fields >> word >> problems.back().name >> problems.back().n >> problems.back().m;
      start = 0;
    } else if (line[0] == 's' && line[1] == 't') {
      fields >> word;
      numbers(problems.back().starts[start++]);
    } else if (line[0] == 'c') {
      fields >> word;
      numbers(problems.back().certified);
    } else if (line[0] == 's') {
      fields >> word >> problems.back().squares;
    } else {
      std::vector<double> values;
      numbers(values);
      Problem& problem = problems.back();
      problem.y.push_back(values[0]), problem.x.push_back(values[1]);
      problem.x2.push_back(values.size() > 2 ? values[2] : 0);
    }
  }
  return problems;
}

constexpr double kPi = std::numbers::pi;

template <class T>
T gaussians(const T* b, double x) {
  const T u = (x - b[3]) / b[4], v = (x - b[6]) / b[7];
  return b[0] * exp(-b[1] * x) + b[2] * exp(-(u * u)) + b[5] * exp(-(v * v));
}

// The model at observation i.
template <class T>
T model(const Problem& p, const T* b, int32_t i) {
  const double x = p.x[static_cast<size_t>(i)];
  switch (p.name[0]) {
    case 'B':
      if (p.name == "BoxBOD") return b[0] * (1.0 - exp(-b[1] * x));
      return b[0] * pow(b[1] + x, -1.0 / b[2]);
    case 'C':
      return exp(-b[0] * x) / (b[1] + b[2] * x);
    case 'D':
      return b[0] * pow(T(x), b[1]);
    case 'E':
      if (p.name == "ENSO") {
        const double year = 2 * kPi * x / 12;
        const T slow = 2 * kPi * x / b[3], fast = 2 * kPi * x / b[6];
        return b[0] + b[1] * std::cos(year) + b[2] * std::sin(year) + b[4] * cos(slow) + b[5] * sin(slow) +
               b[7] * cos(fast) + b[8] * sin(fast);
      } else {
        const T u = (x - b[2]) / b[1];
        return b[0] / b[1] * exp(-0.5 * u * u);
      }
    case 'G':
      return gaussians(b, x);
    case 'K':
      return (b[0] + x * (b[1] + x * b[2])) / (1.0 + x * (b[3] + x * b[4]));
    case 'L':
      return b[0] * exp(-b[1] * x) + b[2] * exp(-b[3] * x) + b[4] * exp(-b[5] * x);
    case 'M':
      if (p.name == "MGH09") return b[0] * (x * x + x * b[1]) / (x * x + x * b[2] + b[3]);
      if (p.name == "MGH10") return b[0] * exp(b[1] / (x + b[2]));
      if (p.name == "MGH17") return b[0] + b[1] * exp(-x * b[3]) + b[2] * exp(-x * b[4]);
      if (p.name == "Misra1a") return b[0] * (1.0 - exp(-b[1] * x));
      if (p.name == "Misra1b") return b[0] * (1.0 - 1.0 / ((1.0 + b[1] * x / 2.0) * (1.0 + b[1] * x / 2.0)));
      if (p.name == "Misra1c") return b[0] * (1.0 - pow(1.0 + 2.0 * b[1] * x, T(-0.5)));
      return b[0] * b[1] * x / (1.0 + b[1] * x);
    case 'N':
      return b[0] - b[1] * x * exp(-b[2] * p.x2[static_cast<size_t>(i)]);
    case 'R':
      if (p.name == "Rat42") return b[0] / (1.0 + exp(b[1] - b[2] * x));
      if (p.name == "Rat43") return b[0] / pow(1.0 + exp(b[1] - b[2] * x), 1.0 / b[3]);
      return b[0] - b[1] * x - atan(b[2] / (x - b[3])) / kPi;
    default:  // Hahn1 and Thurber
      return (b[0] + x * (b[1] + x * (b[2] + x * b[3]))) / (1.0 + x * (b[4] + x * (b[5] + x * b[6])));
  }
}

inline double observed(const Problem& p, int32_t i) {
  const double y = p.y[static_cast<size_t>(i)];
  return p.name == "Nelson" ? std::log(y) : y;
}

template <int kSize>
void derivatives(const Problem& p, const double* b, int32_t i, double* by) {
  Dual<kSize> dual[kSize];
  for (int k = 0; k < kSize; ++k) dual[k] = Dual<kSize>::parameter(b[k], k);
  const Dual<kSize> value = model(p, dual, i);
  for (int k = 0; k < kSize; ++k) by[k] = value.by[k];
}

// Derivatives of the model at observation i by its n parameters.
inline void derivatives(const Problem& p, const double* b, int32_t i, double* by) {
  switch (p.n) {
    case 2:
      return derivatives<2>(p, b, i, by);
    case 3:
      return derivatives<3>(p, b, i, by);
    case 4:
      return derivatives<4>(p, b, i, by);
    case 5:
      return derivatives<5>(p, b, i, by);
    case 6:
      return derivatives<6>(p, b, i, by);
    case 7:
      return derivatives<7>(p, b, i, by);
    case 8:
      return derivatives<8>(p, b, i, by);
    default:
      return derivatives<9>(p, b, i, by);
  }
}

// The solver's callbacks; the user data is a Run.
struct Run {
  const Problem& problem;
  int32_t iterations = 0;  // Jacobians asked for: accepted steps and the start
  std::vector<double> by = std::vector<double>(static_cast<size_t>(problem.n));
};

inline int32_t residuals(const double* x, int32_t, int32_t m, void* user, double* r) {
  const Problem& p = static_cast<Run*>(user)->problem;
  for (int32_t i = 0; i < m; ++i) r[i] = model(p, x, i) - observed(p, i);
  return 0;
}

inline int32_t update(double* x, const double* step, int32_t n, void* user) {
  ++static_cast<Run*>(user)->iterations;
  for (int32_t j = 0; j < n; ++j) x[j] += step[j];
  return 0;
}

inline int32_t jacobian(const double* x, int32_t n, int32_t m, void* user, PrmtMsp* to) {
  Run& run = *static_cast<Run*>(user);
  if (to->start[n] == 0) {
    for (int32_t j = 0; j < n; ++j) {
      for (int32_t i = 0; i < m; ++i) {
        if (const int32_t status = PRMT_MSP_AddEle_tpl_f64(to, i, j, 0)) return status;
      }
    }
  }
  // All elements are there, column by column.
  for (int32_t i = 0; i < m; ++i) {
    derivatives(run.problem, x, i, run.by.data());
    for (int32_t j = 0; j < n; ++j) to->value[static_cast<ptrdiff_t>(j) * m + i] = run.by[static_cast<size_t>(j)];
  }
  return 0;
}

// Digits of the worst parameter, at most the eleven that are certified.
inline double digits(const Problem& p, const std::vector<double>& x) {
  double min = 11;
  for (size_t j = 0; j < x.size(); ++j) {
    const double error = std::fabs(x[j] / p.certified[j] - 1);
    const double agreed = error > 0 ? -std::log10(error) : 11;
    min = std::isnan(agreed) ? 0 : std::fmin(min, std::fmax(agreed, 0));
  }
  return min;
}

struct Result {
  int32_t status;
  std::vector<double> x;
  double rmse;
  int32_t iterations;
};

inline Result solve(const Problem& problem, int start, PrmtLmParam param) {
  Run run{problem};
  Result result{0, problem.starts[start], 0, 0};
  uint64_t bytes = 0;
  PRMT_LM_BufferSize_f64(problem.n, problem.m, 0, &bytes);
  std::vector<uint8_t> buffer(bytes);
  const PrmtLmFunctions functions{residuals, jacobian, update, 0};
  double norm = 0;
  result.status = PRMT_LM_Process_f64(result.x.data(), problem.n, problem.m, &functions, &run, &param, &result.rmse,
                                      &norm, buffer.data(), &bytes);
  result.iterations = run.iterations;
  return result;
}

}  // namespace dax::test::strd
