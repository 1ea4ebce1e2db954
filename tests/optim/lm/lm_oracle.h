// Levenberg-Marquardt as it is described, densely and without reusing anything: residuals, Jacobian and normal equations
// are formed anew in every iteration and solved by Gaussian elimination.
#pragma once

#include <cmath>
#include <utility>
#include <vector>

#include "tests/optim/lm/least_squares.h"

namespace dax::oracle {

using test::LeastSquares;
using test::Vector;

struct Row {
  double lambda, before, after, norm;
};

struct Minimum {
  Vector x;
  std::vector<Row> rows;
  double rmse;  // of the last accepted step
};

inline Vector eliminate(std::vector<Vector> a, Vector b) {
  const size_t n = b.size();
  for (size_t k = 0; k < n; ++k) {
    size_t largest = k;
    for (size_t i = k; i < n; ++i) largest = std::fabs(a[i][k]) > std::fabs(a[largest][k]) ? i : largest;
    std::swap(a[k], a[largest]), std::swap(b[k], b[largest]);
    for (size_t i = k + 1; i < n; ++i) {
      const double factor = a[i][k] / a[k][k];
      for (size_t j = k; j < n; ++j) a[i][j] -= factor * a[k][j];
      b[i] -= factor * b[k];
    }
  }
  for (size_t k = n; k-- > 0;) {
    for (size_t j = k + 1; j < n; ++j) b[k] -= a[k][j] * b[j];
    b[k] /= a[k][k];
  }
  return b;
}

inline double halfSquares(const Vector& r) {
  double sum = 0;
  for (const double value : r) sum += 0.5 * value * value;
  return sum;
}

inline Minimum minimise(const LeastSquares& problem, const PrmtLmParam& param) {
  const auto n = static_cast<size_t>(problem.n), m = static_cast<size_t>(problem.m);
  const auto residualsAt = [&](const Vector& x) {
    Vector r(m);
    problem.residuals(x.data(), r.data());
    return r;
  };
  const auto derivative = [&](const Vector& x, size_t i, size_t j) {
    if (problem.derivative) return problem.derivative(x.data(), static_cast<int32_t>(i), static_cast<int32_t>(j));
    Vector moved = x, step(n);
    step[j] = 1e-6;
    problem.move(moved.data(), step.data());
    return (residualsAt(moved)[i] - residualsAt(x)[i]) / 1e-6;
  };
  Minimum result{problem.start, {}, 0};
  double lambda = param.initialDamping;
  for (int32_t count = 0;;) {
    const Vector r = residualsAt(result.x);
    std::vector<Vector> jacobian(m, Vector(n)), a(n, Vector(n));
    Vector b(n);
    for (size_t i = 0; i < m; ++i) {
      for (size_t j = 0; j < n; ++j) jacobian[i][j] = derivative(result.x, i, j);
    }
    for (size_t j = 0; j < n; ++j) {
      for (size_t i = 0; i < m; ++i) {
        for (size_t k = 0; k < n; ++k) a[j][k] += jacobian[i][j] * jacobian[i][k];
        b[j] -= jacobian[i][j] * r[i];
      }
      a[j][j] += lambda;
    }
    const Vector step = eliminate(a, b);
    Vector trial = result.x;
    problem.move(trial.data(), step.data());
    const double before = halfSquares(r), after = halfSquares(residualsAt(trial));
    const auto rmse = [&](double energy) { return std::sqrt(2 * energy / static_cast<double>(m)); };
    double norm = 0;
    for (const double s : step) norm += s * s;
    norm = std::sqrt(norm);
    result.rows.push_back({lambda, rmse(before), rmse(after), norm});
    if (after - before < 2.220446049250313e-16) {
      result.x = trial;
      result.rmse = rmse(after);
      lambda = std::max(lambda / param.dampingFactor, param.smallestDamping);
    } else {
      lambda *= param.dampingFactor;
    }
    if (++count >= param.maxIterations || std::fabs(after - before) <= param.energyTolerance ||
        norm <= param.stepTolerance) {
      return result;
    }
  }
}

}  // namespace dax::oracle
