// Least-squares problems for tests: residuals and dense derivatives as functions, handed to the solvers through their C
// callbacks; calls are counted and made to fail on demand.
#pragma once

#include <functional>
#include <vector>

#include "prmt.h"

namespace dax::test {

using Vector = std::vector<double>;

struct LeastSquares {
  int32_t n = 0;
  int32_t m = 0;
  Vector start;
  std::function<void(const double* x, double* r)> residuals;
  std::function<double(const double* x, int32_t i, int32_t j)> derivative = {};  // none: by differences
  std::function<void(double* x, const double* step)> update = {};                // none: x + step

  int32_t failingCall = -1;  // this call of a callback, counted from 0, returns `failure`
  int32_t failure = 4711;
  int32_t calls = 0;
  bool rude = false;  // callbacks overwrite what they were given
  Vector scratch = {};

  bool fails() { return calls++ == failingCall; }
  void spoil(const double* x) const {
    if (rude) std::fill_n(const_cast<double*>(x), n, 1e30);
  }
  void move(double* x, const double* step) const {
    if (update) return update(x, step);
    for (int32_t j = 0; j < n; ++j) x[j] += step[j];
  }
};

inline LeastSquares& problemOf(void* user) {
  return *static_cast<LeastSquares*>(user);
}

inline int32_t callResiduals(const double* x, int32_t, int32_t, void* user, double* r) {
  LeastSquares& problem = problemOf(user);
  if (problem.fails()) return problem.failure;
  problem.residuals(x, r);
  problem.spoil(x);
  return 0;
}

inline int32_t callUpdate(double* x, const double* step, int32_t, void* user) {
  LeastSquares& problem = problemOf(user);
  if (problem.fails()) return problem.failure;
  problem.move(x, step);
  problem.spoil(step);
  return 0;
}

inline int32_t callJacobian(const double* x, int32_t n, int32_t m, void* user, PrmtMsp* jacobian) {
  LeastSquares& problem = problemOf(user);
  if (problem.fails()) return problem.failure;
  if (!problem.derivative) {
    problem.scratch.resize(static_cast<size_t>(2 * (n + m)));
    return PRMT_JacNum_Process_f64(x, n, m, user, callResiduals, callUpdate, jacobian, problem.scratch.data());
  }
  for (int32_t j = 0; j < n; ++j) {
    for (int32_t i = 0; i < m; ++i) {
      const double value = problem.derivative(x, i, j);
      if (value == 0) continue;
      if (const int32_t status = PRMT_MSP_AddEle_tpl_f64(jacobian, i, j, value)) return status;
    }
  }
  problem.spoil(x);
  return 0;
}

inline int32_t callEnergy(const double* x, int32_t, int32_t m, void* user, double* energy) {
  LeastSquares& problem = problemOf(user);
  if (problem.fails()) return problem.failure;
  Vector r(static_cast<size_t>(m));
  problem.residuals(x, r.data());
  *energy = 0;
  for (const double value : r) *energy += 0.5 * value * value;
  problem.spoil(x);
  return 0;
}

// J^T J + lambda I and -J^T r from the derivatives, densely.
inline int32_t callNormal(const double* x, int32_t n, double lambda, void* user, PrmtMsp* h, double* b) {
  LeastSquares& problem = problemOf(user);
  if (problem.fails()) return problem.failure;
  Vector r(static_cast<size_t>(problem.m));
  problem.residuals(x, r.data());
  for (int32_t j = 0; j < n; ++j) {
    for (int32_t k = j; k < n; ++k) {
      double sum = j == k ? lambda : 0;
      for (int32_t i = 0; i < problem.m; ++i) sum += problem.derivative(x, i, j) * problem.derivative(x, i, k);
      if (sum == 0) continue;
      if (const int32_t status = PRMT_MSP_AddEle_tpl_f64(h, k, j, sum)) return status;
    }
    for (int32_t i = 0; i < problem.m; ++i) b[j] -= problem.derivative(x, i, j) * r[static_cast<size_t>(i)];
  }
  problem.spoil(x);
  return 0;
}

inline PrmtLmFunctions functionsOf(int64_t elements = 0) {
  return {callResiduals, callJacobian, callUpdate, elements};
}

}  // namespace dax::test
