// Optimisation of graphs by the solvers of optim/lm.
#include "prgo/optimise.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "frame/check.h"
#include "optim/graph/storage.h"
#include "optim/graph/work.h"
#include "optim/lm/lm.h"
#include "optim/sparse/cholesky_analysis.h"
#include "optim/sparse/msp.h"
#include "prmt/lm_cg.h"
#include "prmt/lm_hmsp.h"

static_assert(sizeof(PrgoVertex) == 72 && offsetof(PrgoVertex, estimate) == 24 && sizeof(PrgoEdge) == 264 &&
              offsetof(PrgoEdge, measurement) == 32 && sizeof(PrgoCfg) == 72 && sizeof(PrgoResult) == 72);

namespace dax {
namespace {

constexpr uint64_t kMaxDenseBytes = 1 << 30;
constexpr double kLargeFall = 1e-3;  // the tolerance of energy is chosen anew when this share or less is left
constexpr int kMaxRuns = 4;

int32_t checkCfg(const PrgoCfg& cfg) {
  DAX_REQUIRE(cfg.maxIterations >= 1, PRGO_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.energyTolerance >= 0 && cfg.energyTolerance <= 1, PRGO_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.stepTolerance >= 0, PRGO_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.initialDamping >= 0 && cfg.smallestDamping >= 0, PRGO_STS_BAD_PARAM);
  DAX_REQUIRE(cfg.dampingFactor >= 1 && cfg.verbose <= 1, PRGO_STS_BAD_PARAM);
  return PRGO_STS_OK;
}

int32_t checkCall(const PrgoGraph* graph, const PrgoCfg* cfg, const void* other) {
  DAX_REQUIRE(isSet(graph) && cfg && other, PRGO_STS_NULL_POINTER);
  return checkCfg(*cfg);
}

// What a solver takes for the laid out graph; its order of elimination is found in `work`.
int32_t solverNeed(const Layout& layout, Solver solver, Arena& work, uint64_t* bytes) {
  const int32_t n = layout.parameters(), m = layout.residuals();
  if (solver == Solver::gradients) return PRMT_LM_CG_BufferSize_f64(n, m, layout.jacobianElements(), bytes);
  if (solver == Solver::blocks) {
    const PrmtHblkShape shape = layout.shape();
    PRMT_REQUIRE_OK(PRMT_LM_HBLK_BufferSize_f64(n, m, &shape, bytes));
    return *bytes > kMaxDenseBytes ? PRGO_STS_BUFFER_TOO_SMALL : PRGO_STS_OK;
  }
  Arena counted(nullptr, 0);
  const int64_t lower = layout.normalElements();
  if (solver == Solver::normal) {
    measureNormalSolver(counted, n, lower);
  } else {
    measureJacobianSolver(counted, n, m, layout.jacobianElements(), lower);
  }
  DAX_REQUIRE(measureBlocks(counted, work, layout.blocks, layout.column, unsignedOf(lower)), PRGO_STS_BUFFER_TOO_SMALL);
  return storeNeed(counted, bytes);
}

PrmtLmParam settingsOf(const PrgoCfg& cfg, double energy, const Trace& trace, bool isFirst) {
  return {cfg.stepTolerance,
          cfg.energyTolerance * energy,
          cfg.maxIterations - trace.iterations,
          cfg.smallestDamping,
          isFirst ? cfg.initialDamping : cfg.smallestDamping,
          cfg.dampingFactor,
          cfg.verbose,
          0};
}

int32_t commonSize(const Layout& layout) {
  const int32_t size = layout.column[1];
  for (int32_t p = 1; p < layout.free; ++p) {
    if (layout.column[p + 1] - layout.column[p] != size) return 3;
  }
  return size;
}

int32_t runSolver(GraphProblem& problem, const Layout& layout, Solver solver, PrmtLmParam& param, void* buffer,
                  uint64_t bytes) {
  const int32_t n = layout.parameters(), m = layout.residuals();
  double error = 0, norm = 0;
  if (solver == Solver::normal) {
    const PrmtLmHmspFunctions functions{GraphProblem::energy, GraphProblem::normal, GraphProblem::update,
                                        layout.normalElements()};
    return PRMT_LM_HMSP_Process_f64(problem.x(), n, m, &functions, &problem, &param, &error, &norm, buffer, &bytes);
  }
  if (solver == Solver::blocks) {
    const PrmtLmHblkFunctions functions{GraphProblem::energy, GraphProblem::blocks, GraphProblem::update,
                                        layout.shape()};
    return PRMT_LM_HBLK_Process_f64(problem.x(), n, m, &functions, &problem, &param, &error, &norm, buffer, &bytes);
  }
  const PrmtLmFunctions functions{GraphProblem::residuals, GraphProblem::jacobian, GraphProblem::update,
                                  layout.jacobianElements()};
  if (solver == Solver::jacobian) {
    return PRMT_LM_Process_f64(problem.x(), n, m, &functions, &problem, &param, &error, &norm, buffer, &bytes);
  }
  PrmtCgParam cg{1e-8, 500, commonSize(layout), 0, 0.1};
  return PRMT_LM_CG_Process_f64(problem.x(), n, m, &functions, &problem, &param, &cg, &error, &norm, buffer, &bytes);
}

// Runs the solver, again where the energy fell far. PRGO_STS_NOT_CONVERGED at the limit of iterations.
int32_t solve(GraphProblem& problem, const Layout& layout, const PrgoCfg& cfg, void* buffer, uint64_t bytes) {
  Trace& trace = problem.trace();
  const Solver solver = solverOf(cfg.solverType);
  double before = trace.energy;
  for (int run = 0; run < kMaxRuns; ++run) {
    trace.evaluations = 0;
    PrmtLmParam param = settingsOf(cfg, before, trace, run == 0);
    const int32_t status = runSolver(problem, layout, solver, param, buffer, bytes);
    DAX_REQUIRE(status != PRMT_STS_FAILURE, PRGO_STS_SINGULAR);
    PRMT_REQUIRE_OK(status);
    const bool isEnded = std::fabs(trace.change) <= param.energyTolerance || trace.step <= param.stepTolerance;
    DAX_REQUIRE(isEnded, PRGO_STS_NOT_CONVERGED);
    if (!(trace.energy < kLargeFall * before) || trace.iterations >= cfg.maxIterations) break;
    before = trace.energy;
  }
  return PRGO_STS_OK;
}

bool isIdle(const Layout& layout) {
  return layout.free == 0 || layout.edges == 0;
}

void describe(const Layout& layout, double initial, PrgoResult* result) {
  *result = {};
  result->initialEnergy = result->finalEnergy = initial;
  result->parameters = layout.parameters();
  result->residuals = layout.residuals();
  result->components = layout.gauge.components;
  result->heldVertices = layout.gauge.held;
  result->firstHeld = layout.gauge.firstHeld;
  result->heldScales = layout.gauge.scales;
  result->looseComponents = layout.gauge.loose;
  result->firstWeightless = -1;
}

// After the checks. PRGO_STS_BUFFER_TOO_SMALL without a need.
int32_t optimise(PrgoGraph& graph, const PrgoCfg& cfg, PrgoResult* result, void* buffer, uint64_t bytes) {
  Arena arena(buffer, bytes);
  Work work(arena, graph);
  DAX_REQUIRE(arena.fits(), PRGO_STS_BUFFER_TOO_SMALL);
  Layout& layout = work.layout;
  layout.build(arena, graph, solverOf(cfg.solverType));
  GraphProblem problem(arena, layout, graph, cfg, layout.parameters());
  DAX_REQUIRE(arena.fits() && bytes > arena.mark(), PRGO_STS_BUFFER_TOO_SMALL);
  problem.start();
  const double initial = problem.trace().energy;
  DAX_REQUIRE(std::isfinite(initial), PRGO_STS_NOT_FINITE);
  int32_t status = PRGO_STS_OK;
  if (!isIdle(layout)) {
    char* const rest = static_cast<char*>(buffer) + arena.mark();
    status = solve(problem, layout, cfg, rest, bytes - arena.mark());
    DAX_REQUIRE(status == PRGO_STS_OK || status == PRGO_STS_NOT_CONVERGED, status);
  }
  describe(layout, initial, result);
  const Trace& trace = problem.trace();
  result->finalEnergy = trace.energy;
  result->stepNorm = trace.acceptedStep;
  result->iterations = trace.iterations;
  result->accepted = trace.accepted;
  result->weightlessEdges = problem.weightless(&result->firstWeightless);
  problem.store(graph);
  return status;
}

}  // namespace
}  // namespace dax

int32_t PRGO_CORE_DefaultCfg(PrgoCfg* cfg) {
  DAX_REQUIRE(cfg, PRGO_STS_NULL_POINTER);
  *cfg = {3, 100, 1e-12, 1e-10, 1e-6, 1e-12, 10, 0, nullptr, nullptr};
  return PRGO_STS_OK;
}

int32_t PRGO_CORE_BufferSize(const PrgoGraph* graph, const PrgoCfg* cfg, uint64_t* bytes) {
  PRMT_REQUIRE_OK(dax::checkCall(graph, cfg, bytes));
  dax::Arena scratch(graph->scratch, graph->scratchBytes), counted(nullptr, 0);
  const dax::Solver solver = dax::solverOf(cfg->solverType);
  dax::Work work(scratch, *graph);
  DAX_REQUIRE(scratch.fits(), PRGO_STS_NULL_POINTER);
  work.layout.build(scratch, *graph, solver);
  const dax::Work copy(counted, *graph);
  const dax::GraphProblem problem(counted, copy.layout, *graph, *cfg, work.layout.parameters());
  uint64_t need = 128;
  const int32_t status = dax::isIdle(work.layout) ? PRGO_STS_OK : dax::solverNeed(work.layout, solver, scratch, &need);
  DAX_REQUIRE(status == PRGO_STS_OK || status == PRGO_STS_BUFFER_TOO_SMALL, status);
  *bytes = dax::bothNeeds(counted, need);
  return status;
}

int32_t PRGO_CORE_optimize(PrgoGraph* graph, const PrgoCfg* cfg, PrgoResult* result, void* buffer, uint64_t* bytes) {
  DAX_REQUIRE(result && buffer && bytes, PRGO_STS_NULL_POINTER);
  PRMT_REQUIRE_OK(dax::checkCall(graph, cfg, bytes));
  const int32_t status = dax::optimise(*graph, *cfg, result, buffer, *bytes);
  if (status != PRGO_STS_BUFFER_TOO_SMALL) return status;
  // The need is known only where the solver's is.
  PRGO_CORE_BufferSize(graph, cfg, bytes);
  return PRGO_STS_BUFFER_TOO_SMALL;
}
