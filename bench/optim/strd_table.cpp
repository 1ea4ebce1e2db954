// The NIST nonlinear regression problems from both starts: digits that agree with the certified parameters, and iterations,
// as a table for docs/accuracy.md. Usage: strd_table DATA
#include <cstdio>

#include "tests/support/strd.h"

using namespace dax::test::strd;

int main(int argc, char** argv) {
  const std::vector<Problem> problems = readProblems(argc > 1 ? argv[1] : "tests/data/strd/problems.txt");
  if (problems.empty()) {
    std::fprintf(stderr, "usage: strd_table problems.txt\n");
    return 2;
  }
  const double smallest = argc > 2 ? std::atof(argv[2]) : 1e-6, first = argc > 3 ? std::atof(argv[3]) : 0.01;
  int good = 0;
  std::printf(
      "| problem | parameters | observations | digits, start 1 | iterations | digits, start 2 | iterations |\n");
  std::printf("| --- | ---: | ---: | ---: | ---: | ---: | ---: |\n");
  for (const Problem& problem : problems) {
    std::printf("| %s | %d | %d |", problem.name.c_str(), problem.n, problem.m);
    for (const int start : {0, 1}) {
      const Result result = solve(problem, start, {1e-15, 1e-15, 20000, smallest, first, 10, 0, 0});
      const double agreed = result.status == 0 ? digits(problem, result.x) : 0;
      good += agreed >= 4;
      std::printf(" %.1f | %d |", agreed, result.iterations);
    }
    std::printf("\n");
  }
  std::printf("\n%d of %zu runs agree to 4 digits or more.\n", good, 2 * problems.size());
  return 0;
}
