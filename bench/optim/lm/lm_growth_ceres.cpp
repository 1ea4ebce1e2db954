#include "bench/optim/lm/ceres_problems.h"
#include "bench/optim/lm/growth_peer.h"
#include "bench/support/stopwatch.h"

namespace bench {

double peerMilliseconds(Bundle& bundle, bool sparse, int iterations) {
  std::vector<double> x = bundle.start;
  ceres::Problem problem;
  const auto ordering = addBundle(problem, bundle, x.data());
  ceres::Solver::Options options = baseOptions(sparse ? ceres::SPARSE_SCHUR : ceres::DENSE_SCHUR);
  options.linear_solver_ordering = ordering;
  options.max_num_iterations = iterations;
  options.function_tolerance = options.gradient_tolerance = options.parameter_tolerance = 0;
  ceres::Solver::Summary summary;
  return cpuMilliseconds([&] { ceres::Solve(options, &problem, &summary); });
}

}  // namespace bench
