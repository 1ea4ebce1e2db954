// The caller supplies the damped normal equations.
#include "prmt/lm_hmsp.h"

#include <cstdio>

#include "optim/lm/lm.h"
#include "optim/lm/lm_loop.h"
#include "optim/sparse/cholesky_analysis.h"

namespace dax {
namespace {

constexpr const char* kStars = "**********************";

class Hmsp : public CallerProblem<PrmtLmHmspFunctions> {
 public:
  Hmsp(Arena& arena, int32_t n, int32_t m, const PrmtLmHmspFunctions& functions, void* user, uint64_t* bytes)
      : CallerProblem(arena, n, m, functions, user),
        bytes_(bytes),
        h_(takeMatrix(arena, n, n, roomFor(n, n, functions.elements))),
        arena_(arena),
        mark_(arena.mark()) {}

  void start() { clearPattern(h_); }

  int32_t evaluate(const double* x, double* energy) { return functions().energy(copied(x), n(), m(), user(), energy); }
  void accept() {}
  int32_t linearise(const double*) { return PRMT_STS_OK; }  // the matrix contains the damping: see solve()

  int32_t solve(const double* x, double lambda, double* step) {
    PrmtMsp given = h_;
    std::fill_n(given.value, elementsOf(given), 0.0);
    std::fill_n(step, n(), 0.0);
    PRMT_REQUIRE_OK(functions().normal(copied(x), n(), lambda, user(), &given, step));
    h_.patternVersion = given.patternVersion;
    if (factor_.n == 0 || factor_.patternVersion != h_.patternVersion) {
      arena_.release(mark_);
      if (!analyse(arena_, h_, factor_)) return checkFit(arena_, bytes_);
    }
    const int32_t solved = PRM_Cholesky_Process_64f(&factor_, h_.value, elementsOf(h_), 0, step);
    return solved == 1 ? PRMT_STS_OK : PRMT_STS_FAILURE;
  }

  double error(double energy) const { return energy; }

  void print(int32_t iteration, double lambda, double before, double after, double change, double norm) const {
    std::printf(
        "iter"
        "|lambda     "
        "|energy_init"
        "|energy_post"
        "|d_energy   "
        "|dx_norm    "
        "\n");
    std::printf("%04d|%+6.3e|%+6.3e|%+6.3e|%+6.3e|%+6.3e\n", iteration, lambda, before, after, change, norm);
  }

 private:
  uint64_t* bytes_;
  PrmtMsp h_;
  Arena& arena_;
  uint64_t mark_;
  PrmCholesky factor_ = {};
};

int32_t check(const double* x, int32_t n, int32_t m, const PrmtLmHmspFunctions* functions, const void* user,
              const PrmtLmParam* param, const double* energy, const double* stepNorm, const void* buffer,
              const uint64_t* bytes) {
  DAX_REQUIRE(x && functions && user && param && energy && stepNorm && buffer && bytes, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(functions->energy && functions->normal && functions->update, PRMT_STS_NULL_POINTER);
  return checkCounts(n, m, functions->elements);
}

}  // namespace

void measureNormalSolver(Arena& arena, int32_t n, int64_t elements) {
  const LmVectors vectors(arena, n);
  const PrmtLmHmspFunctions functions{nullptr, nullptr, nullptr, elements};
  const Hmsp problem(arena, n, 1, functions, nullptr, nullptr);
}

}  // namespace dax

int32_t PRMT_LM_HMSP_BufferSize_f64(int32_t n, int32_t m, int64_t elements, uint64_t* bytes) {
  DAX_REQUIRE(bytes, PRMT_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(dax::checkCounts(n, m, elements));
  dax::Arena arena(nullptr, 0);
  dax::measureNormalSolver(arena, n, elements);
  dax::measureCholesky(arena, n, static_cast<uint64_t>(dax::roomFor(n, n, elements)));
  return dax::storeNeed(arena, bytes);
}

int32_t PRMT_LM_HMSP_Process_f64(double* x, int32_t n, int32_t m, const PrmtLmHmspFunctions* functions, void* user,
                                 PrmtLmParam* param, double* energy, double* stepNorm, void* buffer, uint64_t* bytes) {
  PRMT_REQUIRE_OK(dax::check(x, n, m, functions, user, param, energy, stepNorm, buffer, bytes));
  dax::Arena arena(buffer, *bytes);
  const dax::LmVectors vectors(arena, n);
  dax::Hmsp problem(arena, n, m, *functions, user, bytes);
  PRMT_REQUIRE_OK(dax::checkFit(arena, bytes));
  problem.start();
  if (param->verbose == 1) std::printf("%sPRGO_OPTI_START_HMSP%s\n", dax::kStars, dax::kStars);
  const int32_t status = dax::minimise(problem, x, vectors, param, energy, stepNorm);
  if (param->verbose == 1 && status == PRMT_STS_OK) std::printf("*%sPRGO_OPTI_END_HMSP%s*\n", dax::kStars, dax::kStars);
  return status;
}
