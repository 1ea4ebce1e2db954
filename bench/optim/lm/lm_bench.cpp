#include <memory>

#include "bench/optim/lm/problems.h"
#include "bench/support/operation.h"
#include "prmt.h"

namespace {

using bench::Task;

void check(int32_t status) {
  bench::require(static_cast<uint32_t>(status));
}

struct SmallProblem {
  explicit SmallProblem(const bench::Small& small)
      : data(bench::regression(small.problem)),
        model(*small.model),
        start(data.starts[small.start]),
        zeros(size_t(data.m)),
        kept(size_t(data.m) * bench::kKept) {
    check(PRMT_LM_BufferSize_f64(data.n, data.m, 0, &bytes));
    buffer.resize(bytes);
  }
  static int32_t residuals(const double* x, int32_t, int32_t m, void* user, double* r) {
    SmallProblem& p = *static_cast<SmallProblem*>(user);
    for (int32_t i = 0; i < m; ++i) {
      r[i] = p.model.value(x, p.data.x[size_t(i)], &p.kept[size_t(i) * bench::kKept]) - p.data.y[size_t(i)];
    }
    return 0;
  }
  static int32_t jacobian(const double* x, int32_t n, int32_t m, void* user, PrmtMsp* to) {
    const SmallProblem& p = *static_cast<SmallProblem*>(user);
    // The first call creates the pattern: all elements.
    for (int32_t j = 0; to->start[n] < int64_t{m} * n && j < n; ++j) {
      check(PRMT_MSP_AddBlk_tpl_f64(to, 0, j, p.zeros.data(), m, 1, 1));
    }
    // The residuals at x were requested before.
    for (int32_t i = 0; i < m; ++i) {
      p.model.derivatives(x, p.data.x[size_t(i)], &p.kept[size_t(i) * bench::kKept], to->value + i, m);
    }
    return 0;
  }
  static int32_t update(double* x, const double* step, int32_t n, void*) {
    for (int32_t j = 0; j < n; ++j) x[j] += step[j];
    return 0;
  }
  void run() {
    x = start;
    const PrmtLmFunctions functions{residuals, jacobian, update, 0};
    PrmtLmParam param{1e-12, 1e-9 * data.squares, 500, 1e-9, 1e-4, 10, 0, 0};
    double norm = 0;
    uint64_t size = bytes;
    check(PRMT_LM_Process_f64(x.data(), data.n, data.m, &functions, this, &param, &rmse, &norm, buffer.data(), &size));
  }
  const bench::Regression& data;
  const bench::Model& model;
  std::vector<double> start, x, zeros, kept;
  std::vector<uint8_t> buffer;
  uint64_t bytes = 0;
  double rmse = 0;
};

Task prepareSmall(const bench::Small& small) {
  auto problem = std::make_shared<SmallProblem>(small);
  return {[problem] { problem->run(); },
          [problem] { return bench::sixDigits(0.5 * problem->rmse * problem->rmse * problem->data.m); }};
}

template <class Solve>
void growAndSolve(std::vector<uint8_t>& buffer, const Solve& solve) {
  for (;;) {
    uint64_t bytes = buffer.size();
    const int32_t status = solve(buffer.data(), &bytes);
    if (status != PRMT_STS_BUFFER_TOO_SMALL) return check(status);
    buffer.resize(bytes);
  }
}

Task preparePoseGraph() {
  struct State {
    PoseGraph graph = bench::poseGraph();
    std::vector<uint8_t> buffer = std::vector<uint8_t>(1 << 20);
    double energy = 0;
  };
  auto state = std::make_shared<State>();
  return {
      [state] {
        PoseGraph& graph = state->graph;
        std::vector<double> x = graph.startParameters();
        const PrmtLmHmspFunctions functions{PoseGraph::energy, PoseGraph::normal, PoseGraph::update, graph.elements()};
        growAndSolve(state->buffer, [&](void* memory, uint64_t* bytes) {
          PrmtLmParam param{1e-9, 1e-4, 50, 1e-6, 1e-3, 10, 0, 0};
          double norm = 0;
          return PRMT_LM_HMSP_Process_f64(x.data(), graph.parameters(), 6 * int32_t(graph.edges.size()), &functions,
                                          &graph, &param, &state->energy, &norm, memory, bytes);
        });
      },
      [state] { return bench::sixDigits(state->energy); }};
}

Task prepareGradients() {
  struct State {
    PoseGraph graph = bench::poseGraph();
    std::vector<uint8_t> buffer = std::vector<uint8_t>(1 << 20);
    double rmse = 0;
  };
  auto state = std::make_shared<State>();
  return {[state] {
            PoseGraph& graph = state->graph;
            std::vector<double> x = graph.startParameters();
            const PrmtLmFunctions functions{PoseGraph::allResiduals, PoseGraph::jacobian, PoseGraph::update,
                                            graph.jacobianElements()};
            growAndSolve(state->buffer, [&](void* memory, uint64_t* bytes) {
              PrmtLmParam param{1e-9, 1e-4, 50, 1e-6, 1e-3, 10, 0, 0};
              PrmtCgParam cg{1e-12, 500, 6, 0, 0.1};
              double norm = 0;
              return PRMT_LM_CG_Process_f64(x.data(), graph.parameters(), graph.residualCount(), &functions, &graph,
                                            &param, &cg, &state->rmse, &norm, memory, bytes);
            });
          },
          [state] { return bench::sixDigits(0.5 * state->rmse * state->rmse * state->graph.residualCount()); }};
}

Task prepareBundle() {
  struct State {
    Bundle bundle = bench::bundle();
    std::vector<uint8_t> buffer = std::vector<uint8_t>(1 << 20);
    double rmse = 0;
  };
  auto state = std::make_shared<State>();
  return {[state] {
            Bundle& bundle = state->bundle;
            std::vector<double> x = bundle.start;
            const PrmtLmHblkFunctions functions{Bundle::energy, Bundle::blocks, Bundle::update, bundle.shape()};
            growAndSolve(state->buffer, [&](void* memory, uint64_t* bytes) {
              PrmtLmParam param{1e-9, 1e-3, 50, 1e-9, 1e-3, 10, 0, 0};
              double norm = 0;
              return PRMT_LM_HBLK_Process_f64(x.data(), bundle.parameters(), bundle.residualCount(), &functions,
                                              &bundle, &param, &state->rmse, &norm, memory, bytes);
            });
          },
          [state] { return bench::sixDigits(0.5 * state->rmse * state->rmse * state->bundle.residualCount()); }};
}

const struct SmallOperations {
  SmallOperations() {
    for (const bench::Small& small : bench::kSmall) {
      bench::Own(small.operation, 0, [&small] { return prepareSmall(small); });
    }
  }
} smallOperations;
const bench::Own operations[] = {
    {bench::kPoseGraph, 0, preparePoseGraph},
    {bench::kGradients, 0, prepareGradients},
    {bench::kBundle, 0, prepareBundle},
};

}  // namespace
