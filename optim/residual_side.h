// Residuals and Jacobian of the variants that get them from callbacks.
#pragma once

#include <cmath>
#include <utility>

#include "optim/lm_loop.h"

// Huber energy of m residuals; writes their weights, 1 up to the threshold and threshold / |r| beyond.
extern "C" double PRMT_lm_huber_energy(const double* residuals, int32_t m, double threshold, double* weights);

namespace dax {

class ResidualSide {
 public:
  ResidualSide(Arena& arena, int32_t n, int32_t m, const PrmtLmFunctions& functions, void* user)
      : n_(n),
        m_(m),
        functions_(functions),
        user_(user),
        residuals_(arena.take<double>(static_cast<uint64_t>(m))),
        trial_(arena.take<double>(static_cast<uint64_t>(m))),
        given_(arena.take<double>(static_cast<uint64_t>(n))),
        jacobian_(takeMatrix(arena, m, n, roomFor(m, n, functions.elements))) {}

  void start() { clearPattern(jacobian_); }

  int32_t evaluate(const double* x, double* energy) {
    PRMT_REQUIRE_OK(functions_.residuals(copied(x), n_, m_, user_, trial_));
    *energy = 0.5 * sumOfSquares(trial_, m_);
    return PRMT_STS_OK;
  }
  void accept() { std::swap(residuals_, trial_); }
  int32_t update(double* x, const double* step) { return functions_.update(x, step, n_, user_); }
  double error(double energy) const { return std::sqrt(2 * energy / m_); }
  void print(int32_t iteration, double lambda, double before, double after, double change, double norm) const {
    PRMT_LM_print_iter_info(iteration, lambda, before, after, change, norm);
  }

  // The Jacobian at x.
  int32_t fillJacobian(const double* x) {
    PrmtMsp given = jacobian_;
    std::fill_n(given.value, elementsOf(given), 0.0);
    PRMT_REQUIRE_OK(functions_.jacobian(copied(x), n_, m_, user_, &given));
    jacobian_.patternVersion = given.patternVersion;
    return PRMT_STS_OK;
  }

  int32_t n() const { return n_; }
  int32_t m() const { return m_; }
  const double* residuals() const { return residuals_; }
  double* trial() const { return trial_; }
  const PrmtMsp& jacobian() const { return jacobian_; }

 private:
  // Callbacks get copies.
  const double* copied(const double* x) const { return std::copy_n(x, n_, given_) - n_; }

  int32_t n_, m_;
  const PrmtLmFunctions& functions_;
  void* user_;
  double* residuals_;  // at the current point
  double* trial_;      // at the point evaluated last
  double* given_;
  PrmtMsp jacobian_;
};

inline int32_t checkCounts(int32_t n, int32_t m, int64_t elements) {
  DAX_REQUIRE(n >= 1 && m >= 1 && elements >= 0, PRMT_STS_BAD_PARAM);
  return PRMT_STS_OK;
}

// The checks that the variants with residuals share.
inline int32_t checkArguments(const double* x, int32_t n, int32_t m, const PrmtLmFunctions* functions, const void* user,
                              const PrmtLmParam* param, const double* error, const double* stepNorm, const void* buffer,
                              const uint64_t* bytes) {
  DAX_REQUIRE(x && functions && user && param && error && stepNorm && buffer && bytes, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(functions->residuals && functions->jacobian && functions->update, PRMT_STS_NULL_POINTER);
  return checkCounts(n, m, functions->elements);
}

}  // namespace dax
