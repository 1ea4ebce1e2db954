// Base of the variants whose callbacks give residuals and a Jacobian.
#pragma once

#include <cmath>
#include <utility>

#include "optim/lm/lm_loop.h"

namespace dax {

class ResidualSide : public CallerProblem<PrmtLmFunctions> {
 public:
  ResidualSide(Arena& arena, int32_t n, int32_t m, const PrmtLmFunctions& functions, void* user)
      : CallerProblem(arena, n, m, functions, user),
        residuals_(arena.take<double>(unsignedOf(m))),
        trial_(arena.take<double>(unsignedOf(m))),
        jacobian_(takeMatrix(arena, m, n, roomFor(m, n, functions.elements))) {}

  void start() { clearPattern(jacobian_); }

  int32_t evaluate(const double* x, double* energy) {
    PRMT_REQUIRE_OK(functions().residuals(copied(x), n(), m(), user(), trial_));
    *energy = 0.5 * sumOfSquares(trial_, m());
    return PRMT_STS_OK;
  }
  void accept() { std::swap(residuals_, trial_); }

  // The Jacobian at x.
  int32_t fillJacobian(const double* x) {
    PrmtMsp given = jacobian_;
    std::fill_n(given.value, elementsOf(given), 0.0);
    PRMT_REQUIRE_OK(functions().jacobian(copied(x), n(), m(), user(), &given));
    jacobian_.patternVersion = given.patternVersion;
    return PRMT_STS_OK;
  }

  const double* residuals() const { return residuals_; }
  double* trial() const { return trial_; }
  const PrmtMsp& jacobian() const { return jacobian_; }

 private:
  double* residuals_;  // at the current point
  double* trial_;      // at the last evaluated point
  PrmtMsp jacobian_;
};

// The checks that the variants with residuals share.
inline int32_t checkArguments(const double* x, int32_t n, int32_t m, const PrmtLmFunctions* functions, const void* user,
                              const PrmtLmParam* param, const double* error, const double* stepNorm, const void* buffer,
                              const uint64_t* bytes) {
  DAX_REQUIRE(x && functions && user && param && error && stepNorm && buffer && bytes, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(functions->residuals && functions->jacobian && functions->update, PRMT_STS_NULL_POINTER);
  return checkCounts(n, m, functions->elements);
}

}  // namespace dax
