// What the peer's programs share: options, manifolds and the costs of a bundle.
#pragma once

#include <ceres/ceres.h>

#include <memory>

#include "examples/optim/bundle.h"

namespace bench {

inline ceres::Solver::Options baseOptions(ceres::LinearSolverType solver) {
  ceres::Solver::Options options;
  options.linear_solver_type = solver;
  options.num_threads = 1;
  options.logging_type = ceres::SILENT;
  options.max_num_iterations = 500;
  return options;
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
struct CameraStep {
  void operator()(double* x, const double* step) const {
    PRMT_SO3_Update_f64(x, step);
    for (int k = 3; k < 6; ++k) x[k] += step[k];
  }
};

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

// Adds everything of a bundle; returns the order of elimination: points first.
inline std::shared_ptr<ceres::ParameterBlockOrdering> addBundle(ceres::Problem& problem, Bundle& bundle, double* x) {
  auto ordering = std::make_shared<ceres::ParameterBlockOrdering>();
  bundle.forEachLink(x, [&](int i, int j, int32_t k, const double*) {
    problem.AddResidualBlock(new PointCost(&bundle.seen[2 * size_t(k)]), nullptr, x + 6 * i,
                             x + 6 * bundle.cameras + 3 * j);
  });
  for (int k = 0; k < 9; ++k) {
    const int at = Bundle::held(k);
    problem.AddResidualBlock(new HoldCost(at % 6, bundle.truth[size_t(at)]), nullptr, x + 6 * (at / 6));
  }
  for (int i = 0; i < bundle.cameras; ++i) {
    problem.SetManifold(x + 6 * i, new StepManifold<CameraStep>);
    ordering->AddElementToGroup(x + 6 * i, 1);
  }
  for (int j = 0; j < bundle.points; ++j) ordering->AddElementToGroup(x + 6 * bundle.cameras + 3 * j, 0);
  return ordering;
}

}  // namespace bench
