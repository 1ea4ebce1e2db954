#include <memory>

#include "bench/optim/equation/equation_operations.h"
#include "bench/support/operation.h"
#include "prmt.h"

namespace {

using bench::Task;

Task solveQuartics(bool areRootsReal) {
  auto polynomials = std::make_shared<std::vector<bench::Quartic>>(bench::quartics(areRootsReal));
  auto roots = std::make_shared<PrmtRealRoots>();
  return {[polynomials, roots] {
    for (const bench::Quartic& p : *polynomials) bench::require(PRMT_EQ_Quartic_f64(p.data(), roots.get()));
  }};
}
const bench::Own random("256 quartics, random coefficients", 0, [] { return solveQuartics(false); });
const bench::Own real("256 quartics, four real roots", 0, [] { return solveQuartics(true); });

Task solveDegree(int32_t degree) {
  struct Problem {
    std::vector<double> p, parts, work;
    int32_t counts[2];
  };
  auto problem = std::make_shared<Problem>();
  const auto n = static_cast<size_t>(degree);
  *problem = {bench::coefficients(degree), std::vector<double>(3 * n), std::vector<double>(20 * n + 40), {}};
  return {[problem, degree, n] {
    double* const parts = problem->parts.data();
    bench::require(PRMT_EQ_Roots_f64(problem->p.data(), degree, parts, parts + n, parts + 2 * n, problem->counts,
                                     problem->counts + 1, problem->work.data()));
  }};
}

const std::vector<bench::Own> degrees = [] {
  std::vector<bench::Own> made;
  for (const int32_t degree : bench::kDegrees) {
    made.emplace_back(bench::titleOfDegree(degree), 0, [degree] { return solveDegree(degree); });
  }
  return made;
}();

// A spline or Akima's curve through 1000 points, and 1000 values of it.
using Make = DaxStatus (*)(const double*, const double*, double*, double*);
Task interpolate(Make make) {
  constexpr int32_t kPoints = 1000;
  struct Problem {
    std::vector<double> x, y, slopes, values, work;
  };
  bench::Numbers numbers;
  auto problem = std::make_shared<Problem>();
  for (int32_t i = 0; i < kPoints; ++i)
    problem->x.push_back(i + 0.4 * numbers.next()), problem->y.push_back(numbers.next());
  problem->slopes.resize(kPoints), problem->values.resize(kPoints), problem->work.resize(8 * kPoints);
  return {[problem, make] {
    const double *const x = problem->x.data(), *const y = problem->y.data();
    double* const slopes = problem->slopes.data();
    bench::require(make(x, y, slopes, problem->work.data()));
    bench::require(PRMT_EQ_Interpolate1_f64(x, y, slopes, kPoints, x, kPoints, 0, problem->values.data()));
  }};
}
const bench::Own spline("spline of 1000 points", 0, [] {
  return interpolate([](const double* x, const double* y, double* slopes, double* work) {
    return PRMT_EQ_Spline1_f64(x, y, 1000, nullptr, slopes, work);
  });
});
const bench::Own akima("Akima of 1000 points", 0, [] {
  return interpolate([](const double* x, const double* y, double* slopes, double* work) {
    return PRMT_EQ_Akima1_f64(x, y, 1000, slopes, work);
  });
});

}  // namespace
