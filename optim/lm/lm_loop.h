// The loop that all variants share. A problem provides
//
//   int32_t evaluate(const double* x, double* energy)   energy at x; keeps the values computed with it for accept()
//   void accept()                                       makes the last evaluated point the current one
//   int32_t linearise(const double* x)                  the normal equations at the current point
//   int32_t solve(const double* x, double lambda, double* step)
//   int32_t update(double* x, const double* step)
//   double error(double energy)                         the error that is returned and printed
//   void print(iteration, lambda, before, after, change, norm)
#pragma once

#include <algorithm>
#include <cfloat>
#include <cmath>

#include "frame/check.h"
#include "frame/memory/arena.h"
#include "optim/dense/dense.h"
#include "optim/sparse/msp.h"
#include "prmt/lm.h"

namespace dax {

constexpr double kAcceptedRise = DBL_EPSILON;  // a step is accepted when the energy rises by less

// The solver's own vectors of n doubles.
struct LmVectors {
  LmVectors(Arena& arena, int32_t n)
      : size(n),
        x(arena.take<double>(unsignedOf(n))),
        trial(arena.take<double>(unsignedOf(n))),
        step(arena.take<double>(unsignedOf(n))) {}
  int32_t size;
  double* x;
  double* trial;
  double* step;
};

// Base of the problems: the caller's update function, error and printing.
template <class Functions>
class CallerProblem {
 public:
  CallerProblem(Arena& arena, int32_t n, int32_t m, const Functions& functions, void* user)
      : n_(n), m_(m), functions_(functions), user_(user), given_(arena.take<double>(unsignedOf(n))) {}

  int32_t update(double* x, const double* step) { return functions_.update(x, step, n_, user_); }
  double error(double energy) const { return std::sqrt(2 * energy / m_); }
  void print(int32_t iteration, double lambda, double before, double after, double change, double norm) const {
    PRMT_LM_print_iter_info(iteration, lambda, before, after, change, norm);
  }

  int32_t n() const { return n_; }
  int32_t m() const { return m_; }

 protected:
  const Functions& functions() const { return functions_; }
  void* user() const { return user_; }
  // Callbacks get a copy, so that they cannot change the parameters.
  const double* copied(const double* x) const { return std::copy_n(x, n_, given_) - n_; }

 private:
  int32_t n_, m_;
  const Functions& functions_;
  void* user_;
  double* given_;
};

inline bool allFinite(const double* v, int32_t n) {
  return std::all_of(v, v + n, [](double value) { return std::isfinite(value); });
}

// The settings of a call; writes the defaults into the caller's record if useDefaults is 1.
inline PrmtLmParam readSettings(PrmtLmParam* param) {
  if (param->useDefaults == 1) *param = {1e-6, 1e-6, 500, 1e-6, 0.01, 10.0, param->verbose, param->useDefaults};
  return *param;
}

template <class Problem>
int32_t iterate(Problem& problem, const LmVectors& v, const PrmtLmParam& param, double* error, double* stepNorm) {
  double energy = 0, lambda = param.initialDamping;
  PRMT_REQUIRE_OK(problem.evaluate(v.x, &energy));
  DAX_REQUIRE(std::isfinite(energy), PRMT_STS_NOT_FINITE);
  problem.accept();
  bool moved = true;
  for (int32_t iteration = 0;; ++iteration) {
    if (moved) PRMT_REQUIRE_OK(problem.linearise(v.x));
    PRMT_REQUIRE_OK(problem.solve(v.x, lambda, v.step));
    const double norm = PRM_MATRIX_VectorNorm_64f(v.step, v.size);
    std::copy_n(v.x, v.size, v.trial);
    PRMT_REQUIRE_OK(problem.update(v.trial, v.step));
    double trialEnergy = 0;
    PRMT_REQUIRE_OK(problem.evaluate(v.trial, &trialEnergy));
    const double change = trialEnergy - energy, before = problem.error(energy), after = problem.error(trialEnergy);
    if (param.verbose == 1) problem.print(iteration, lambda, before, after, after - before, norm);
    moved = change < kAcceptedRise && allFinite(v.trial, v.size);
    if (moved) {
      std::copy_n(v.trial, v.size, v.x);
      problem.accept();
      energy = trialEnergy;
      lambda = std::max(lambda / param.dampingFactor, param.smallestDamping);
      *error = after;
      *stepNorm = norm;
    } else {
      lambda *= param.dampingFactor;
    }
    // A NaN change or norm does not end the loop.
    if (iteration + 1 >= param.maxIterations || std::fabs(change) <= param.energyTolerance ||
        norm <= param.stepTolerance) {
      return PRMT_STS_OK;
    }
  }
}

// Runs the loop on a copy of the caller's parameters; writes them back when it succeeds.
template <class Problem>
int32_t minimise(Problem& problem, double* x, const LmVectors& v, PrmtLmParam* param, double* error, double* stepNorm) {
  const PrmtLmParam settings = readSettings(param);
  *error = 0;
  *stepNorm = 0;
  std::copy_n(x, v.size, v.x);
  PRMT_REQUIRE_OK(iterate(problem, v, settings, error, stepNorm));
  std::copy_n(v.x, v.size, x);
  return PRMT_STS_OK;
}

// Fails and stores the bytes needed when the arena was too small.
inline int32_t checkFit(const Arena& arena, uint64_t* bytes) {
  if (arena.fits()) return PRMT_STS_OK;
  *bytes = arena.needed();
  return PRMT_STS_BUFFER_TOO_SMALL;
}

inline int32_t checkCounts(int32_t n, int32_t m, int64_t elements) {
  DAX_REQUIRE(n >= 1 && m >= 1 && elements >= 0, PRMT_STS_BAD_PARAM);
  return PRMT_STS_OK;
}

// Capacity of a rows x cols matrix: `elements`; all elements if that is 0.
inline int64_t roomFor(int64_t rows, int64_t cols, int64_t elements) {
  return elements == 0 ? rows * cols : std::min(elements, rows * cols);
}

}  // namespace dax
