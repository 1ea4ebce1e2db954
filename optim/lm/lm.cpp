// The generic and the Huber variant.
#include "optim/lm/lm.h"

#include <cstddef>
#include <cstdio>

#include "optim/lm/lm_loop.h"
#include "optim/lm/normal_equations.h"
#include "optim/lm/residual_side.h"

static_assert(sizeof(PrmtLmParam) == 56 && offsetof(PrmtLmParam, smallestDamping) == 24 &&
              offsetof(PrmtLmParam, verbose) == 48);

double PRMT_lm_huber_energy(const double* residuals, int32_t m, double threshold, double* weights) {
  double energy = 0;
  for (int32_t i = 0; i < m; ++i) {
    const double size = std::fabs(residuals[i]);
    const bool inside = size <= threshold;
    weights[i] = inside ? 1 : threshold / size;
    energy += inside ? 0.5 * (residuals[i] * residuals[i]) : threshold * (size - 0.5 * threshold);
  }
  return energy;
}

namespace dax {
namespace {

class Generic : public ResidualSide {
 public:
  Generic(Arena& arena, int32_t n, int32_t m, const PrmtLmFunctions& functions, void* user, uint64_t* bytes)
      : ResidualSide(arena, n, m, functions, user), arena_(arena), equations_(arena), bytes_(bytes) {}

  int32_t linearise(const double* x) { return lineariseWeighted(x, nullptr); }

  int32_t solve(const double*, double lambda, double* step) {
    return equations_.solve(lambda, step) ? PRMT_STS_OK : PRMT_STS_FAILURE;
  }

 protected:
  int32_t lineariseWeighted(const double* x, const double* weights) {
    PRMT_REQUIRE_OK(fillJacobian(x));
    return equations_.form(jacobian(), weights, residuals()) ? PRMT_STS_OK : checkFit(arena_, bytes_);
  }

 private:
  const Arena& arena_;
  NormalEquations equations_;
  uint64_t* bytes_;
};

// Weights are kept like residuals: for the current and for the last evaluated point.
class Huber : public Generic {
 public:
  // `weights` has 2 m values, or is null when the arena is too small.
  Huber(Arena& arena, int32_t n, int32_t m, const PrmtLmFunctions& functions, void* user, uint64_t* bytes,
        double threshold, double* weights)
      : Generic(arena, n, m, functions, user, bytes),
        threshold_(threshold),
        weights_(weights),
        trialWeights_(weights ? weights + m : nullptr) {}

  int32_t evaluate(const double* x, double* energy) {
    PRMT_REQUIRE_OK(ResidualSide::evaluate(x, energy));
    *energy = PRMT_lm_huber_energy(trial(), m(), threshold_, trialWeights_);
    return PRMT_STS_OK;
  }
  void accept() {
    ResidualSide::accept();
    std::swap(weights_, trialWeights_);
  }
  int32_t linearise(const double* x) { return lineariseWeighted(x, weights_); }

 private:
  double threshold_;
  double* weights_;
  double* trialWeights_;
};

int32_t measure(int32_t n, int32_t m, int64_t elements, uint64_t weights, uint64_t* bytes) {
  DAX_REQUIRE(bytes, PRMT_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(checkCounts(n, m, elements));
  Arena arena(nullptr, 0);
  arena.take<double>(weights);
  const LmVectors vectors(arena, n);
  const PrmtLmFunctions functions{nullptr, nullptr, nullptr, elements};
  const ResidualSide side(arena, n, m, functions, nullptr);
  NormalEquations::measure(arena, n, m, static_cast<uint64_t>(side.jacobian().capacity));
  return storeNeed(arena, bytes);
}

}  // namespace

void measureJacobianSolver(Arena& arena, int32_t n, int32_t m, int64_t elements, int64_t lower) {
  const LmVectors vectors(arena, n);
  const PrmtLmFunctions functions{nullptr, nullptr, nullptr, elements};
  const ResidualSide side(arena, n, m, functions, nullptr);
  NormalEquations::measureMatrices(arena, n, m, elements, lower);
}

}  // namespace dax

int32_t PRMT_LM_BufferSize_f64(int32_t n, int32_t m, int64_t elements, uint64_t* bytes) {
  return dax::measure(n, m, elements, 0, bytes);
}

int32_t PRMT_LM_Process_f64(double* x, int32_t n, int32_t m, const PrmtLmFunctions* functions, void* user,
                            PrmtLmParam* param, double* rmse, double* stepNorm, void* buffer, uint64_t* bytes) {
  PRMT_REQUIRE_OK(dax::checkArguments(x, n, m, functions, user, param, rmse, stepNorm, buffer, bytes));
  dax::Arena arena(buffer, *bytes);
  const dax::LmVectors vectors(arena, n);
  dax::Generic problem(arena, n, m, *functions, user, bytes);
  PRMT_REQUIRE_OK(dax::checkFit(arena, bytes));
  problem.start();
  return dax::minimise(problem, x, vectors, param, rmse, stepNorm);
}

int32_t PRMT_LM_HUBER_BufferSize_f64(int32_t n, int32_t m, int64_t elements, uint64_t* bytes) {
  return dax::measure(n, m, elements, 2 * dax::unsignedOf(m), bytes);
}

int32_t PRMT_LM_HUBER_Process_f64(double* x, int32_t n, int32_t m, const PrmtLmFunctions* functions, void* user,
                                  PrmtLmParam* param, double threshold, double* rmse, double* stepNorm, void* buffer,
                                  uint64_t* bytes) {
  PRMT_REQUIRE_OK(dax::checkArguments(x, n, m, functions, user, param, rmse, stepNorm, buffer, bytes));
  DAX_REQUIRE(threshold > 0, PRMT_STS_BAD_PARAM);
  dax::Arena arena(buffer, *bytes);
  double* const weights = arena.take<double>(2 * dax::unsignedOf(m));
  const dax::LmVectors vectors(arena, n);
  dax::Huber problem(arena, n, m, *functions, user, bytes, threshold, weights);
  PRMT_REQUIRE_OK(dax::checkFit(arena, bytes));
  problem.start();
  return dax::minimise(problem, x, vectors, param, rmse, stepNorm);
}

void PRMT_LM_print_iter_info(int32_t iter, double lambda, double rmseInit, double rmsePost, double drmse,
                             double dxnorm) {
  std::printf(
      "iter "
      "|lambda     "
      "|rmse_init  "
      "|rmse_post  "
      "|drmse      "
      "|dxnorm     "
      "\n");
  std::printf("%04d |%+6.3e |%+6.3e |%+6.3e |%+6.3e |%+6.3e\n", iter, lambda, rmseInit, rmsePost, drmse, dxnorm);
}
