// The same problems through Ceres, on one thread: the same starts, derivatives and manifolds.
#include <ceres/ceres.h>

#include <memory>

#include "bench/optim/lm/problems.h"
#include "bench/support/operation.h"

namespace {

using bench::Task;

ceres::Solver::Options baseOptions(ceres::LinearSolverType solver) {
  ceres::Solver::Options options;
  options.linear_solver_type = solver;
  options.num_threads = 1;
  options.logging_type = ceres::SILENT;
  options.max_num_iterations = 500;
  return options;
}

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

// A manifold whose derivative is the identity: costs return derivatives by the step.
template <class Step>
class StepManifold : public ceres::Manifold {
 public:
  int AmbientSize() const override { return 6; }
  int TangentSize() const override { return 6; }
  bool Plus(const double* x, const double* step, double* to) const override {
    std::copy_n(x, 6, to);
    Step()(to, step);
    return true;
  }
  bool PlusJacobian(const double*, double* jacobian) const override {
    for (int k = 0; k < 36; ++k) jacobian[k] = k % 7 == 0;
    return true;
  }
  bool Minus(const double*, const double*, double*) const override { return false; }
  bool MinusJacobian(const double*, double*) const override { return false; }
};
struct MoveStep {
  void operator()(double* x, const double* step) const { PRMT_SE3_Update_f64(x, step); }
};
struct CameraStep {
  void operator()(double* x, const double* step) const {
    PRMT_SO3_Update_f64(x, step);
    for (int k = 3; k < 6; ++k) x[k] += step[k];
  }
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

Task preparePoseGraph() {
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
  return {[state] {
            std::copy(state->graph.start.begin(), state->graph.start.end(), state->x.begin());
            ceres::Solver::Options options = baseOptions(ceres::SPARSE_NORMAL_CHOLESKY);
            options.function_tolerance = 1e-7;
            ceres::Solver::Summary summary;
            ceres::Solve(options, &state->problem, &summary);
            state->cost = summary.final_cost;
          },
          [state] { return bench::sixDigits(state->cost); }};
}

class PointCost : public ceres::SizedCostFunction<2, 6, 3> {
 public:
  explicit PointCost(const double* seen) : seen_(seen) {}
  bool Evaluate(double const* const* x, double* r, double** by) const override {
    double rotation[9];
    PRMT_SO3_Exp_f64(x[0], rotation);
    if (!by) {
      Bundle::residual(rotation, x[0], x[1], seen_, r);
      return true;
    }
    Bundle::Linear linear;
    Bundle::linearise(rotation, x[0], x[1], seen_, linear);
    std::copy_n(linear.e, 2, r);
    if (by[0]) std::copy_n(linear.byCamera, 12, by[0]);
    if (by[1]) std::copy_n(linear.byPoint, 6, by[1]);
    return true;
  }

 private:
  const double* seen_;
};

class HoldCost : public ceres::SizedCostFunction<1, 6> {
 public:
  HoldCost(int index, double value) : index_(index), value_(value) {}
  bool Evaluate(double const* const* x, double* r, double** by) const override {
    r[0] = Bundle::kHold * (x[0][index_] - value_);
    if (by && by[0]) {
      for (int k = 0; k < 6; ++k) by[0][k] = k == index_ ? Bundle::kHold : 0;
    }
    return true;
  }

 private:
  int index_;
  double value_;
};

Task prepareBundle() {
  struct State {
    Bundle bundle = bench::bundle();
    std::vector<double> x = bundle.start;
    ceres::Problem problem;
    std::shared_ptr<ceres::ParameterBlockOrdering> ordering = std::make_shared<ceres::ParameterBlockOrdering>();
    double cost = 0;
  };
  auto state = std::make_shared<State>();
  Bundle& bundle = state->bundle;
  double* const x = state->x.data();
  bundle.forEachLink(x, [&](int i, int j, int32_t k, const double*) {
    state->problem.AddResidualBlock(new PointCost(&bundle.seen[2 * size_t(k)]), nullptr, x + 6 * i,
                                    x + 6 * bundle.cameras + 3 * j);
  });
  for (int k = 0; k < 9; ++k) {
    const int at = Bundle::held(k);
    state->problem.AddResidualBlock(new HoldCost(at % 6, bundle.truth[size_t(at)]), nullptr, x + 6 * (at / 6));
  }
  for (int i = 0; i < bundle.cameras; ++i) {
    state->problem.SetManifold(x + 6 * i, new StepManifold<CameraStep>);
    state->ordering->AddElementToGroup(x + 6 * i, 1);
  }
  for (int j = 0; j < bundle.points; ++j) state->ordering->AddElementToGroup(x + 6 * bundle.cameras + 3 * j, 0);
  return {[state] {
            std::copy(state->bundle.start.begin(), state->bundle.start.end(), state->x.begin());
            ceres::Solver::Options options = baseOptions(ceres::DENSE_SCHUR);
            options.linear_solver_ordering = state->ordering;
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
    {bench::kPoseGraph, "ceres", preparePoseGraph},
    {bench::kBundle, "ceres", prepareBundle},
};

}  // namespace
