// The same problems through Ceres, on one thread: the same starts, derivatives and manifolds.
#include <memory>

#include "bench/optim/lm/ceres_problems.h"
#include "bench/optim/lm/problems.h"
#include "bench/support/operation.h"

namespace {

using bench::addBundle;
using bench::baseOptions;
using bench::StepManifold;
using bench::Task;

// Observations first .. first + count - 1.
class SmallCost : public ceres::CostFunction {
 public:
  SmallCost(const bench::Small& small, int first, int count)
      : data_(bench::regression(small.problem)),
        model_(*small.model),
        first_(size_t(first)),
        kept_(size_t(count) * bench::kKept),
        residuals_(size_t(count)) {
    set_num_residuals(count);
    mutable_parameter_block_sizes()->push_back(data_.n);
  }
  bool Evaluate(double const* const* x, double* r, double** by) const override {
    const size_t count = residuals_.size();
    if (!std::equal(at_.begin(), at_.end(), x[0], x[0] + data_.n)) {
      at_.assign(x[0], x[0] + data_.n);
      for (size_t i = 0; i < count; ++i) {
        residuals_[i] = model_.value(x[0], data_.x[first_ + i], &kept_[i * bench::kKept]) - data_.y[first_ + i];
      }
    }
    std::copy(residuals_.begin(), residuals_.end(), r);
    if (!by || !by[0]) return true;
    for (size_t i = 0; i < count; ++i) {
      model_.derivatives(x[0], data_.x[first_ + i], &kept_[i * bench::kKept], by[0] + i * size_t(data_.n), 1);
    }
    return true;
  }

 private:
  const bench::Regression& data_;
  const bench::Model& model_;
  size_t first_;
  mutable std::vector<double> at_, kept_, residuals_;
};

Task prepareSmall(const bench::Small& small) {
  struct State {
    std::vector<double> start, x;
    ceres::Problem problem;
    double cost = 0;
  };
  auto state = std::make_shared<State>();
  const bench::Regression& data = bench::regression(small.problem);
  state->start = state->x = data.starts[small.start];
  const int count = small.together ? data.m : 1;
  for (int first = 0; first < data.m; first += count) {
    state->problem.AddResidualBlock(new SmallCost(small, first, count), nullptr, state->x.data());
  }
  return {[state] {
            std::copy(state->start.begin(), state->start.end(), state->x.begin());
            ceres::Solver::Options options = baseOptions(ceres::DENSE_NORMAL_CHOLESKY);
            options.function_tolerance = 1e-9;
            ceres::Solver::Summary summary;
            ceres::Solve(options, &state->problem, &summary);
            state->cost = summary.final_cost;
          },
          [state] { return bench::sixDigits(state->cost); }};
}

struct MoveStep {
  void operator()(double* x, const double* step) const { PRMT_SE3_Update_f64(x, step); }
};

class EdgeCost : public ceres::SizedCostFunction<6, 6, 6> {
 public:
  explicit EdgeCost(const PoseGraph::Edge& edge) : edge_(edge) {}
  bool Evaluate(double const* const* x, double* r, double** by) const override {
    double ti[16], tj[16];
    PRMT_SE3_Exp_f64(x[0], ti);
    PRMT_SE3_Exp_f64(x[1], tj);
    if (!by) {
      PoseGraph::residuals(edge_, ti, tj, r);
      return true;
    }
    PoseGraph::Linear linear;
    PoseGraph::linearise(edge_, ti, tj, linear);
    std::copy_n(linear.e, 6, r);
    if (by[0]) std::copy_n(linear.byI, 36, by[0]);
    if (by[1]) std::copy_n(linear.byJ, 36, by[1]);
    return true;
  }

 private:
  const PoseGraph::Edge& edge_;
};

Task preparePoseGraph(ceres::LinearSolverType solver) {
  struct State {
    PoseGraph graph = bench::poseGraph();
    std::vector<double> x = graph.start;
    ceres::Problem problem;
    double cost = 0;
  };
  auto state = std::make_shared<State>();
  for (const PoseGraph::Edge& edge : state->graph.edges) {
    state->problem.AddResidualBlock(new EdgeCost(edge), nullptr, &state->x[6 * size_t(edge.i)],
                                    &state->x[6 * size_t(edge.j)]);
  }
  for (int k = 0; k < state->graph.count; ++k) {
    state->problem.SetManifold(&state->x[6 * size_t(k)], new StepManifold<MoveStep>);
  }
  state->problem.SetParameterBlockConstant(state->x.data());
  return {[state, solver] {
            std::copy(state->graph.start.begin(), state->graph.start.end(), state->x.begin());
            ceres::Solver::Options options = baseOptions(solver);
            options.function_tolerance = 1e-7;
            ceres::Solver::Summary summary;
            ceres::Solve(options, &state->problem, &summary);
            state->cost = summary.final_cost;
          },
          [state] { return bench::sixDigits(state->cost); }};
}

Task prepareBundle() {
  struct State {
    Bundle bundle = bench::bundle();
    std::vector<double> x = bundle.start;
    ceres::Problem problem;
    double cost = 0;
  };
  auto state = std::make_shared<State>();
  const auto ordering = addBundle(state->problem, state->bundle, state->x.data());
  return {[state, ordering] {
            std::copy(state->bundle.start.begin(), state->bundle.start.end(), state->x.begin());
            ceres::Solver::Options options = baseOptions(ceres::DENSE_SCHUR);
            options.linear_solver_ordering = ordering;
            options.function_tolerance = 1e-7;
            ceres::Solver::Summary summary;
            ceres::Solve(options, &state->problem, &summary);
            state->cost = summary.final_cost;
          },
          [state] { return bench::sixDigits(state->cost); }};
}

const struct SmallOperations {
  SmallOperations() {
    for (const bench::Small& small : bench::kSmall) {
      bench::Peer(small.operation, "ceres", [&small] { return prepareSmall(small); });
    }
  }
} smallOperations;
const bench::Peer operations[] = {
    {bench::kPoseGraph, "ceres", [] { return preparePoseGraph(ceres::SPARSE_NORMAL_CHOLESKY); }},
    {bench::kGradients, "ceres", [] { return preparePoseGraph(ceres::CGNR); }},
    {bench::kBundle, "ceres", prepareBundle},
};

}  // namespace
