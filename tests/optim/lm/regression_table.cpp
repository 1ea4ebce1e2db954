// The tables of docs/regression.md: certified regressions and classical test functions. Usage: regression_table PROBLEMS
#include <algorithm>
#include <cstdio>

#include "tests/optim/lm/classic_functions.h"
#include "tests/optim/lm/strd.h"

namespace dax::test {
namespace {

constexpr double kTight = 1e-15;

void printRegressions(const std::vector<strd::Problem>& problems) {
  const PrmtLmParam settings[] = {{kTight, kTight, 20000, 1e-12, 0.01, 10, 0, 0},
                                  {kTight, kTight, 20000, 1e-6, 0.01, 10, 0, 0}};
  int good[2] = {};
  std::printf("| problem | n | m | digits, start 1 | iterations | digits, start 2 | iterations |\n");
  std::printf("| --- | ---: | ---: | ---: | ---: | ---: | ---: |\n");
  for (const strd::Problem& problem : problems) {
    std::printf("| %s | %d | %d |", problem.name.c_str(), problem.n, problem.m);
    for (const int start : {0, 1}) {
      for (const int k : {0, 1}) {
        const strd::Result result = strd::solve(problem, start, settings[k]);
        const double agreed = result.status == 0 ? strd::digits(problem, result.x) : 0;
        good[k] += agreed >= 4;
        if (k == 0) std::printf(" %.1f | %d |", agreed, result.iterations);
      }
    }
    std::printf("\n");
  }
  std::printf("| runs that agree to 4 digits or more | | | %d of %zu | | | |\n", good[0], 2 * problems.size());
  std::printf("| the same, smallest damping 1e-6 | | | %d of %zu | | | |\n", good[1], 2 * problems.size());
}

struct Run {
  int iterations = 0;
  double squares = 0, error = 0;
};

Run minimise(const ClassicFunction& function, double tolerance) {
  Run run;
  LeastSquares problem = function.problem;
  problem.update = [&run, n = problem.n](double* x, const double* step) {
    ++run.iterations;
    for (int32_t j = 0; j < n; ++j) x[j] += step[j];
  };
  uint64_t bytes = 0;
  PRMT_LM_BufferSize_f64(problem.n, problem.m, 0, &bytes);
  std::vector<uint8_t> buffer(bytes);
  const PrmtLmFunctions functions{callResiduals, callJacobian, callUpdate, 0};
  PrmtLmParam param{tolerance, tolerance, 5000, 1e-6, 0.01, 10, 0, 0};
  Vector x = problem.start;
  double rmse = 0, norm = 0;
  PRMT_LM_Process_f64(x.data(), problem.n, problem.m, &functions, &problem, &param, &rmse, &norm, buffer.data(),
                      &bytes);
  run.squares = rmse * rmse * problem.m;
  for (size_t j = 0; j < x.size(); ++j) {
    run.error = std::max(run.error, std::fabs(x[j] - function.solution[j]) / (1 + std::fabs(function.solution[j])));
  }
  return run;
}

void printClassics() {
  std::printf("\n| function | n | m | iterations | squares left | iterations | squares left | error |\n");
  std::printf("| --- | ---: | ---: | ---: | ---: | ---: | ---: | ---: |\n");
  for (const ClassicFunction& each : classicFunctions()) {
    const Run usual = minimise(each, 1e-6), tight = minimise(each, kTight);
    std::printf("| %s | %d | %d | %d | %.0e | %d | %.0e | %.0e |\n", each.name, each.problem.n, each.problem.m,
                usual.iterations, usual.squares, tight.iterations, tight.squares, tight.error);
  }
}

}  // namespace
}  // namespace dax::test

int main(int argc, char** argv) {
  const std::vector<dax::test::strd::Problem> problems = dax::test::strd::readProblems(argc > 1 ? argv[1] : "");
  if (problems.empty()) {
    std::fprintf(stderr, "usage: regression_table problems.txt\n");
    return 2;
  }
  dax::test::printRegressions(problems);
  dax::test::printClassics();
  return 0;
}
