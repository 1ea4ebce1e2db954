// Parameters in two groups of blocks; solves by the Schur complement of the second group.
#include "prmt/lm_hblk.h"

#include "optim/lm/lm_loop.h"
#include "optim/sparse/schur.h"

namespace dax {
namespace {

class Hblk : public CallerProblem<PrmtLmHblkFunctions> {
 public:
  Hblk(Arena& arena, int32_t n, int32_t m, const PrmtLmHblkFunctions& functions, void* user, uint64_t* bytes)
      : CallerProblem(arena, n, m, functions, user),
        arena_(arena),
        bytes_(bytes),
        blocks_(takeBlocks(arena, functions.shape)),
        schur_(arena, functions.shape) {}

  // Counts in a measuring arena what the solver may take later.
  void measure() { schur_.measure(); }

  int32_t evaluate(const double* x, double* energy) { return functions().energy(copied(x), n(), m(), user(), energy); }
  void accept() {}

  int32_t linearise(const double* x) {
    clearBlocks(blocks_);
    PrmtHblk given = blocks_;
    return functions().normal(copied(x), n(), m(), user(), &given);
  }

  int32_t solve(const double*, double lambda, double* step) {
    const int32_t status = schur_.solve(blocks_, lambda, step);
    return status == PRMT_STS_BUFFER_TOO_SMALL ? checkFit(arena_, bytes_) : status;
  }

 private:
  const Arena& arena_;
  uint64_t* bytes_;
  PrmtHblk blocks_;
  SchurSolver schur_;
};

int32_t checkShape(int32_t n, int32_t m, const PrmtHblkShape& shape) {
  DAX_REQUIRE(shape.countB <= 0 || (shape.linkStart && shape.linkA), PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(n >= 1 && m >= 1, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(shape.sizeA >= 1 && shape.sizeA <= 64 && shape.countA >= 1, PRMT_STS_BAD_PARAM);
  DAX_REQUIRE(shape.sizeB >= 1 && shape.sizeB <= 16 && shape.countB >= 0, PRMT_STS_BAD_PARAM);
  const int64_t columns = int64_t{shape.sizeA} * shape.countA + int64_t{shape.sizeB} * shape.countB;
  DAX_REQUIRE(columns == n, PRMT_STS_BAD_PARAM);
  // All starts are checked before the first link is read, so that no read is out of bounds.
  if (shape.countB > 0) DAX_REQUIRE(shape.linkStart[0] == 0, PRMT_STS_BAD_PARAM);
  for (int32_t j = 0; j < shape.countB; ++j) {
    DAX_REQUIRE(shape.linkStart[j] <= shape.linkStart[j + 1], PRMT_STS_BAD_PARAM);
  }
  for (int32_t j = 0; j < shape.countB; ++j) {
    for (int32_t k = shape.linkStart[j]; k < shape.linkStart[j + 1]; ++k) {
      const int32_t smallest = k == shape.linkStart[j] ? 0 : shape.linkA[k - 1] + 1;
      DAX_REQUIRE(shape.linkA[k] >= smallest && shape.linkA[k] < shape.countA, PRMT_STS_BAD_PARAM);
    }
  }
  return PRMT_STS_OK;
}

}  // namespace
}  // namespace dax

int32_t PRMT_LM_HBLK_BufferSize_f64(int32_t n, int32_t m, const PrmtHblkShape* shape, uint64_t* bytes) {
  DAX_REQUIRE(shape && bytes, PRMT_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(dax::checkShape(n, m, *shape));
  dax::Arena arena(nullptr, 0);
  const dax::LmVectors vectors(arena, n);
  const PrmtLmHblkFunctions functions{nullptr, nullptr, nullptr, *shape};
  dax::Hblk problem(arena, n, m, functions, nullptr, nullptr);
  problem.measure();
  return dax::storeNeed(arena, bytes);
}

int32_t PRMT_LM_HBLK_Process_f64(double* x, int32_t n, int32_t m, const PrmtLmHblkFunctions* functions, void* user,
                                 PrmtLmParam* param, double* rmse, double* stepNorm, void* buffer, uint64_t* bytes) {
  DAX_REQUIRE(x && functions && user && param && rmse && stepNorm && buffer && bytes, PRMT_STS_NULL_POINTER);
  DAX_REQUIRE(functions->energy && functions->normal && functions->update, PRMT_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(dax::checkShape(n, m, functions->shape));
  dax::Arena arena(buffer, *bytes);
  const dax::LmVectors vectors(arena, n);
  dax::Hblk problem(arena, n, m, *functions, user, bytes);
  PRMT_REQUIRE_OK(dax::checkFit(arena, bytes));
  return dax::minimise(problem, x, vectors, param, rmse, stepNorm);
}
