// Solves by conjugate gradients.
#include "prmt/lm_cg.h"

#include "optim/lm/residual_side.h"
#include "optim/sparse/conjugate_gradients.h"
#include "optim/sparse/msp_product.h"

namespace dax {
namespace {

class ConjugateGradients : public ResidualSide {
 public:
  ConjugateGradients(Arena& arena, int32_t n, int32_t m, const PrmtLmFunctions& functions, void* user,
                     const PrmtCgParam& param)
      : ResidualSide(arena, n, m, functions, user),
        param_(param),
        rhs_(arena.take<double>(unsignedOf(n))),
        work_(takeCgWork(arena, n, m, param.blockSize)) {}

  int32_t linearise(const double* x) {
    PRMT_REQUIRE_OK(fillJacobian(x));
    multiplyTransposed(jacobian(), residuals(), rhs_);
    for (int32_t j = 0; j < n(); ++j) rhs_[j] = -rhs_[j];
    return PRMT_STS_OK;
  }

  int32_t solve(const double*, double lambda, double* step) {
    DAX_REQUIRE(factorBlocks(jacobian(), lambda, param_.blockSize, work_.blocks), PRMT_STS_FAILURE);
    const bool solved = PRMT_MSP_SolveLinCG_LM_Process_f64(&jacobian(), lambda, rhs_, &param_, &work_, step) == 1;
    return solved ? PRMT_STS_OK : PRMT_STS_FAILURE;
  }

 private:
  const PrmtCgParam& param_;
  double* rhs_;
  PrmtCgWork work_;
};

int32_t checkCg(const PrmtCgParam& cg) {
  DAX_REQUIRE(cg.tolerance >= 0 && cg.tolerance < 1 && cg.maxIterations >= 1, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(cg.modelTolerance >= 0 && cg.modelTolerance <= 1, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(cg.blockSize >= 1 && cg.blockSize <= kMaxCgBlock, PRMT_STS_BAD_PARAM);
  return PRMT_STS_OK;
}

}  // namespace
}  // namespace dax

int32_t PRMT_LM_CG_BufferSize_f64(int32_t n, int32_t m, int64_t elements, uint64_t* bytes) {
  DAX_REQUIRE(bytes, PRMT_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(dax::checkCounts(n, m, elements));
  dax::Arena arena(nullptr, 0);
  const dax::LmVectors vectors(arena, n);
  const PrmtLmFunctions functions{nullptr, nullptr, nullptr, elements};
  const PrmtCgParam largest{0, 1, dax::kMaxCgBlock, 0, 0};
  const dax::ConjugateGradients problem(arena, n, m, functions, nullptr, largest);
  return dax::storeNeed(arena, bytes);
}

int32_t PRMT_LM_CG_Process_f64(double* x, int32_t n, int32_t m, const PrmtLmFunctions* functions, void* user,
                               PrmtLmParam* param, PrmtCgParam* cg, double* rmse, double* stepNorm, void* buffer,
                               uint64_t* bytes) {
  DAX_REQUIRE(cg, PRMT_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(dax::checkArguments(x, n, m, functions, user, param, rmse, stepNorm, buffer, bytes));
  const PrmtCgParam settings = cg->useDefaults == 1 ? PrmtCgParam{1e-8, 500, 1, 1, 0.1} : *cg;
  PRMT_REQUIRE_OK(dax::checkCg(settings));
  dax::Arena arena(buffer, *bytes);
  const dax::LmVectors vectors(arena, n);
  dax::ConjugateGradients problem(arena, n, m, *functions, user, settings);
  PRMT_REQUIRE_OK(dax::checkFit(arena, bytes));
  *cg = settings;
  problem.start();
  return dax::minimise(problem, x, vectors, param, rmse, stepNorm);
}
